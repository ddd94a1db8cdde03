#include "SignalCacheFile.h"

#include "core/AppIdentity.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

std::optional<QByteArray> takeContents(const QString& path, qint64 maximumBytes, QString& problem)
{
    const QByteArray nativePath = QFile::encodeName(path);
    // Without O_NONBLOCK, opening a FIFO with no writer never returns.
    const int descriptor = ::open(nativePath.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        if (errno != ENOENT) {
            problem = QStringLiteral("Cannot open the Telemetry cache: ") +
                      QString::fromLocal8Bit(std::strerror(errno));
        }
        return std::nullopt;
    }
    struct stat status
    {
    };
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > maximumBytes) {
        ::close(descriptor);
        problem =
            S_ISREG(status.st_mode)
                ? QStringLiteral("Discarded a Telemetry cache file of %1 bytes").arg(status.st_size)
                : QStringLiteral("Ignored a Telemetry cache that is not a regular file");
        // Only a plain file is removed; whatever else sits there was not made by the cache.
        if (S_ISREG(status.st_mode)) {
            QFile::remove(path);
        }
        return std::nullopt;
    }
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::nullopt;
    }
    QByteArray bytes = file.read(maximumBytes);
    const bool readFailed = file.error() != QFileDevice::NoError;
    file.close();
    QFile::remove(path);
    if (readFailed) {
        return std::nullopt;
    }
    return bytes;
}

void remove(const QString& path)
{
    struct stat status
    {
    };
    if (::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISREG(status.st_mode)) {
        QFile::remove(path);
    }
}

bool writeAtomically(const QString& path, const QByteArray& bytes)
{
    // The rename would delete a FIFO or device that someone else put there.
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) == 0 && !S_ISREG(status.st_mode)) {
        return false;
    }
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        return false;
    }
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace qbsignalcachefile
