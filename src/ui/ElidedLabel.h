#pragma once

#include <QLabel>

// A one-line label that shows as much of its text as fits, with an ellipsis where the
// rest was cut, and never asks its layout for more room: a long path or a long
// translation cannot widen the window. The full text is its tooltip and accessible name.
class LMElidedLabel : public QLabel
{
    Q_OBJECT
public:
    explicit LMElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr);

    void setFullText(const QString& text);
    QString fullText() const { return mFullText; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void elide();

    Qt::TextElideMode mMode;
    QString mFullText;
};
