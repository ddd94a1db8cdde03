#include "signature/FileBookmark.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <optional>

namespace {

const QString kVersionKey = QStringLiteral("version");
const QString kRelativePathKey = QStringLiteral("relativePath");
const QString kAbsolutePathKey = QStringLiteral("absolutePath");
const QString kDeviceKey = QStringLiteral("device");
const QString kInodeKey = QStringLiteral("inode");
// The new file a write is about to rename into place: recorded before the rename, so a
// process killed between the rename and the bookmark update still finds its own file.
const QString kPendingDeviceKey = QStringLiteral("pendingDevice");
const QString kPendingInodeKey = QStringLiteral("pendingInode");

struct FileIdentity
{
    // Kept as decimal text: JSON numbers cannot hold every 64-bit inode exactly.
    QString device;
    QString inode;
};

std::optional<FileIdentity> identityOf(const QString& path, QString& error)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        error = QStringLiteral("Cannot read the file '%1': %2")
                    .arg(path, QString::fromLocal8Bit(std::strerror(errno)));
        return std::nullopt;
    }
    if (!S_ISREG(status.st_mode)) {
        error = QStringLiteral("'%1' is not a regular file").arg(path);
        return std::nullopt;
    }
    return FileIdentity{QString::number(static_cast<quint64>(status.st_dev)),
                        QString::number(static_cast<quint64>(status.st_ino))};
}

// 0 when something is at |path|, else why not (ENOENT when nothing is there).
int lookUp(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? 0 : errno;
}

bool matchesIdentity(const QJsonObject& object, const QString& deviceKey, const QString& inodeKey,
                     const QString& device, const QString& inode)
{
    return object.value(deviceKey).toString() == device &&
           object.value(inodeKey).toString() == inode;
}

bool recordsFile(const QJsonObject& object, const QString& device, const QString& inode)
{
    return matchesIdentity(object, kDeviceKey, kInodeKey, device, inode) ||
           matchesIdentity(object, kPendingDeviceKey, kPendingInodeKey, device, inode);
}

// The save dialog's choice may name a file that does not exist yet.
bool ensureFileExists(const QString& path, QString& error)
{
    const QFileInfo info(path);
    if (info.exists()) {
        return true;
    }
    if (!info.absoluteDir().exists()) {
        error = QStringLiteral("The folder '%1' does not exist").arg(info.absolutePath());
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        error = QStringLiteral("Cannot create the file '%1': %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

} // namespace

QBFileBookmark::Creation QBFileBookmark::create(const QString& targetPath,
                                                const QString& baseFilePath)
{
    Creation creation;
    if (!ensureFileExists(QFileInfo(targetPath).absoluteFilePath(), creation.error)) {
        return creation;
    }
    const QString absoluteTarget = QFileInfo(targetPath).canonicalFilePath();
    if (!QFileInfo(absoluteTarget).isWritable()) {
        creation.error = QStringLiteral("The file '%1' cannot be written").arg(absoluteTarget);
        return creation;
    }
    const std::optional<FileIdentity> identity = identityOf(absoluteTarget, creation.error);
    if (!identity) {
        return creation;
    }
    const QDir baseFolder = QFileInfo(baseFilePath).absoluteDir();
    const QJsonObject object{
        {kVersionKey, kFormatVersion},
        {kRelativePathKey, baseFolder.relativeFilePath(absoluteTarget)},
        {kAbsolutePathKey, absoluteTarget},
        {kDeviceKey, identity->device},
        {kInodeKey, identity->inode},
    };
    creation.data = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return creation;
}

QBFileBookmark::Resolution QBFileBookmark::resolve(const QByteArray& data,
                                                   const QString& baseFilePath)
{
    Resolution resolution;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(data, &parseError);
    const QJsonObject object = document.object();
    if (parseError.error != QJsonParseError::NoError || !document.isObject() ||
        object.value(kVersionKey).toInt() != kFormatVersion) {
        resolution.error = QStringLiteral("The bookmark data cannot be decoded");
        return resolution;
    }

    const QString relativePath = object.value(kRelativePathKey).toString();
    const QString absolutePath = object.value(kAbsolutePathKey).toString();
    QString candidate;
    if (!relativePath.isEmpty()) {
        candidate = QDir::cleanPath(QFileInfo(baseFilePath).absoluteDir().filePath(relativePath));
    }
    if (candidate.isEmpty() || lookUp(candidate) == ENOENT) {
        candidate = absolutePath;
    }
    const int lookUpError = candidate.isEmpty() ? ENOENT : lookUp(candidate);
    if (lookUpError == ENOENT || lookUpError == ENOTDIR) {
        resolution.error = QStringLiteral("The bookmarked file '%1' does not exist")
                               .arg(absolutePath.isEmpty() ? relativePath : absolutePath);
        return resolution;
    }
    if (lookUpError != 0) {
        // A folder on the way that may not be entered hides the file; say so.
        resolution.error = QStringLiteral("The bookmarked file '%1' cannot be reached: %2")
                               .arg(candidate, QString::fromLocal8Bit(std::strerror(lookUpError)));
        return resolution;
    }

    const std::optional<FileIdentity> identity = identityOf(candidate, resolution.error);
    if (!identity) {
        return resolution;
    }
    resolution.path = candidate;
    resolution.isStale = !recordsFile(object, identity->device, identity->inode);
    return resolution;
}

bool QBFileBookmark::recordsIdentity(const QByteArray& data, quint64 device, quint64 inode)
{
    return recordsFile(QJsonDocument::fromJson(data).object(), QString::number(device),
                       QString::number(inode));
}

QByteArray QBFileBookmark::withIdentity(const QByteArray& data, quint64 device, quint64 inode)
{
    QJsonObject object = QJsonDocument::fromJson(data).object();
    object.insert(kDeviceKey, QString::number(device));
    object.insert(kInodeKey, QString::number(inode));
    object.remove(kPendingDeviceKey);
    object.remove(kPendingInodeKey);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray QBFileBookmark::withPendingIdentity(const QByteArray& data, quint64 device,
                                               quint64 inode)
{
    QJsonObject object = QJsonDocument::fromJson(data).object();
    object.insert(kPendingDeviceKey, QString::number(device));
    object.insert(kPendingInodeKey, QString::number(inode));
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

void QBFileBookmark::startAccessingSecurityScopedResource(const QString& /*path*/) {}

void QBFileBookmark::stopAccessingSecurityScopedResource(const QString& /*path*/) {}
