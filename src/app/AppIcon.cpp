#include "app/AppIcon.h"

#include "core/AppIdentity.h"
#include "core/Bundle.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

namespace {
QString iconFileName(const QString& suffix)
{
    return QString::fromUtf8(qbidentity::kBundleIdentifier) + suffix;
}
} // namespace

QIcon applicationIconFromFolder(const QString& hicolorFolder, bool svgSupported)
{
    const QDir hicolor(hicolorFolder);
    QIcon icon;
    const QString svg = hicolor.filePath(u"scalable/apps/" + iconFileName(QStringLiteral(".svg")));
    if (svgSupported && QFileInfo::exists(svg)) {
        icon.addFile(svg);
        return icon;
    }
    const QStringList sizeFolders =
        hicolor.entryList({QStringLiteral("*x*")}, QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& sizeFolder : sizeFolders) {
        const QString png =
            hicolor.filePath(sizeFolder + u"/apps/" + iconFileName(QStringLiteral(".png")));
        if (QFileInfo::exists(png)) {
            icon.addFile(png);
        }
    }
    return icon;
}

QIcon applicationIcon()
{
    const QString hicolor = QString::fromStdString(
        (QBBundle::mainBundle().resourcePath() / ".." / "icons" / "hicolor").string());
    const QIcon icon = applicationIconFromFolder(
        hicolor, QImageReader::supportedImageFormats().contains(QByteArrayLiteral("svg")));
    return icon.isNull() ? QIcon::fromTheme(QString::fromUtf8(qbidentity::kBundleIdentifier))
                         : icon;
}
