#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

// Stands in for the browser: while it lives, every address of |scheme| that the program
// asks the desktop to open is kept in |opened| instead.
class QBUrlRecorder : public QObject
{
    Q_OBJECT
public:
    explicit QBUrlRecorder(const QString& scheme = QStringLiteral("file")) : mScheme(scheme)
    {
        QDesktopServices::setUrlHandler(mScheme, this, "open");
    }
    ~QBUrlRecorder() override { QDesktopServices::unsetUrlHandler(mScheme); }

    QList<QUrl> opened;

public slots:
    void open(const QUrl& url) { opened << url; }

private:
    QString mScheme;
};
