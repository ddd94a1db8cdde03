#include "ui/HelpBook.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

bool QBHelpBook::openHelpAnchor(const QString& anchor)
{
    const QFileInfo index(QCoreApplication::applicationDirPath() +
                          QStringLiteral("/../share/quillbox2/help/index.html"));
    if (!index.isFile()) {
        return false;
    }
    QUrl url = QUrl::fromLocalFile(index.canonicalFilePath());
    if (!anchor.isEmpty()) {
        url.setFragment(anchor);
    }
    return QDesktopServices::openUrl(url);
}
