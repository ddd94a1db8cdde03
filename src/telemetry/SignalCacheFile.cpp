#include "SignalCacheFile.h"

#include "core/AppIdentity.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace qbsignalcachefile {

QString defaultLocation()
{
    const QString caches = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (caches.isEmpty()) {
        qFatal("No caches folder for the telemetry signal cache");
    }
    return caches + QLatin1Char('/') + QString::fromUtf8(qbidentity::kBundleIdentifier) +
           QStringLiteral("/telemetrysignalcache");
}

std::optional<QByteArray> takeContents(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray bytes = file.readAll();
    const bool readFailed = file.error() != QFileDevice::NoError;
    file.close();
    QFile::remove(path);
    if (readFailed) {
        return std::nullopt;
    }
    return bytes;
}

bool writeAtomically(const QString& path, const QByteArray& bytes)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        return false;
    }
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace qbsignalcachefile
