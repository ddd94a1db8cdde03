#pragma once

#include <QLabel>

// A label holding one link: it opens in the user's browser, Tab reaches it and Return
// follows it, and screen readers are told it is a link (a plain QLabel is announced as
// static text whatever it holds).
class QBLinkLabel : public QLabel
{
    Q_OBJECT
public:
    QBLinkLabel(const QString& html, QWidget* parent = nullptr);

    // The address of the label's first link.
    QString linkAddress() const;
};
