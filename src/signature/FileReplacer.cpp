#include "signature/FileReplacer.h"

#include <QFile>
#include <QFileInfo>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool writeAll(int fd, const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(fd, bytes.constData() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        done += written;
    }
    return true;
}

// Closes on every path out of a function.
class FileDescriptor
{
public:
    explicit FileDescriptor(int fd) : mFd(fd) {}
    ~FileDescriptor()
    {
        if (mFd >= 0) {
            ::close(mFd);
        }
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int get() const { return mFd; }
    bool close()
    {
        const int fd = mFd;
        mFd = -1;
        return ::close(fd) == 0;
    }

private:
    int mFd;
};

using Result = QBFileReplacer::Result;

Result failed(const QString& error)
{
    Result result;
    result.error = error;
    return result;
}

// NAME in ".NAME.XXXXXX", the name of a new version of NAME, shortened so that the
// whole name still fits in a folder entry.
QByteArray temporaryStem(const QByteArray& targetName)
{
    return targetName.first(qMin<qsizetype>(targetName.size(), NAME_MAX - 8));
}

bool isTemporaryNameFor(std::string_view name, const QByteArray& targetName)
{
    const QByteArray stemBytes = temporaryStem(targetName);
    const std::string_view stem(stemBytes.constData(), static_cast<std::size_t>(stemBytes.size()));
    if (name.size() != stem.size() + 8 || name.front() != '.' ||
        name.substr(1, stem.size()) != stem || name[stem.size() + 1] != '.') {
        return false;
    }
    return std::all_of(name.end() - 6, name.end(),
                       [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; });
}

// Removes the new versions that writes killed before their rename left beside the
// target. A write in progress holds a lock on its file, so only abandoned ones go.
void removeLeftoverTemporaryFiles(const QByteArray& folderPath, const QByteArray& targetName)
{
    DIR* folder = ::opendir(folderPath.constData());
    if (!folder) {
        return;
    }
    while (const dirent* entry = ::readdir(folder)) {
        if (!isTemporaryNameFor(entry->d_name, targetName)) {
            continue;
        }
        FileDescriptor leftover(::openat(::dirfd(folder), entry->d_name,
                                         O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
        struct stat status = {};
        if (leftover.get() >= 0 && ::fstat(leftover.get(), &status) == 0 &&
            S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
            ::flock(leftover.get(), LOCK_EX | LOCK_NB) == 0) {
            ::unlinkat(::dirfd(folder), entry->d_name, 0);
        }
    }
    ::closedir(folder);
}

// Writes |bytes| into a fresh file beside the target and renames it over the target, so
// a reader sees the old signature or the new one. A folder that takes no new file is a
// failure: rewriting the target in place would let a reader see it empty or half-written.
Result replaceThroughTemporaryFile(const QByteArray& targetPath, const struct stat& target,
                                   const QByteArray& bytes,
                                   const QBFileReplacer::IdentityCheck& beforeReplacing)
{
    const QFileInfo info(QFile::decodeName(targetPath));
    const QByteArray folder = QFile::encodeName(info.absolutePath());
    const QByteArray name = QFile::encodeName(info.fileName());
    removeLeftoverTemporaryFiles(folder, name);
    QByteArray temporaryPath = folder + "/." + temporaryStem(name) + ".XXXXXX";
    FileDescriptor temporary(::mkostemp(temporaryPath.data(), O_CLOEXEC));
    if (temporary.get() < 0) {
        return failed(QStringLiteral("no new file can be created in the folder '%1' (%2); the "
                                     "signature is not rewritten in place, where a mail client "
                                     "could read it half-written")
                          .arg(QFile::decodeName(folder), systemError()));
    }
    // Held until the rename is done, so a cleaner in another process leaves it alone.
    (void)::flock(temporary.get(), LOCK_EX | LOCK_NB);
    // The new file takes the place of the old one, so it keeps its mode and owner.
    ::fchmod(temporary.get(), target.st_mode & 07777);
    if (::fchown(temporary.get(), target.st_uid, target.st_gid) != 0) {
        // Only root may give a file away; the user's own file stays the user's anyway.
    }
    struct stat written = {};
    bool ok = writeAll(temporary.get(), bytes) && ::fsync(temporary.get()) == 0 &&
              ::fstat(temporary.get(), &written) == 0;
    QString error = ok ? QString() : systemError();
    if (ok && beforeReplacing && !beforeReplacing(written.st_dev, written.st_ino)) {
        ok = false;
        error = QStringLiteral("the new file could not be recorded");
    }
    if (ok && ::rename(temporaryPath.constData(), targetPath.constData()) != 0) {
        ok = false;
        error = systemError();
    }
    if (!ok) {
        ::unlink(temporaryPath.constData());
        return failed(error);
    }
    temporary.close();
    Result result;
    result.status = Result::Status::Written;
    result.device = written.st_dev;
    result.inode = written.st_ino;
    return result;
}

} // namespace

QBFileReplacer::Result QBFileReplacer::replaceContent(const QString& path, const QByteArray& bytes,
                                                      const IdentityCheck& isExpectedFile,
                                                      const IdentityCheck& beforeReplacing)
{
    const QByteArray encodedPath = QFile::encodeName(path);
    // O_WRONLY also proves the file may be written; O_NONBLOCK makes a FIFO without a
    // reader fail at once (and one with a reader is refused below) instead of waiting.
    FileDescriptor target(
        ::open(encodedPath.constData(), O_WRONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    if (target.get() < 0) {
        return failed(systemError());
    }
    struct stat status = {};
    if (::fstat(target.get(), &status) != 0) {
        return failed(systemError());
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(QStringLiteral("not a regular file"));
    }
    if (!isExpectedFile(status.st_dev, status.st_ino)) {
        Result result;
        result.status = Result::Status::NotTheExpectedFile;
        return result;
    }
    return replaceThroughTemporaryFile(encodedPath, status, bytes, beforeReplacing);
}
