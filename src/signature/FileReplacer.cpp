#include "signature/FileReplacer.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>

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

// Writes |bytes| into a fresh file beside the target and renames it over the target.
// Returns nothing when the folder takes no temporary file, so the caller writes in place.
std::optional<Result> replaceThroughTemporaryFile(const QByteArray& targetPath,
                                                  const struct stat& target,
                                                  const QByteArray& bytes)
{
    const QFileInfo info(QFile::decodeName(targetPath));
    QByteArray temporaryPath = QFile::encodeName(info.absolutePath()) + "/." +
                               QFile::encodeName(info.fileName()) + ".XXXXXX";
    FileDescriptor temporary(::mkostemp(temporaryPath.data(), O_CLOEXEC));
    if (temporary.get() < 0) {
        return std::nullopt;
    }
    // The new file takes the place of the old one, so it keeps its mode and owner.
    ::fchmod(temporary.get(), target.st_mode & 07777);
    if (::fchown(temporary.get(), target.st_uid, target.st_gid) != 0) {
        // Only root may give a file away; the user's own file stays the user's anyway.
    }
    struct stat written = {};
    const bool ok = writeAll(temporary.get(), bytes) && ::fsync(temporary.get()) == 0 &&
                    ::fstat(temporary.get(), &written) == 0 && temporary.close() &&
                    ::rename(temporaryPath.constData(), targetPath.constData()) == 0;
    if (!ok) {
        const QString error = systemError();
        ::unlink(temporaryPath.constData());
        return failed(error);
    }
    Result result;
    result.status = Result::Status::Written;
    result.device = written.st_dev;
    result.inode = written.st_ino;
    return result;
}

} // namespace

QBFileReplacer::Result QBFileReplacer::replaceContent(const QString& path, const QByteArray& bytes,
                                                      const IdentityCheck& isExpectedFile)
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
    if (std::optional<Result> replaced = replaceThroughTemporaryFile(encodedPath, status, bytes)) {
        return *replaced;
    }
    // The file keeps its identity here, so the caller's record of it stays valid.
    if (::ftruncate(target.get(), 0) != 0 || !writeAll(target.get(), bytes) ||
        ::fsync(target.get()) != 0 || !target.close()) {
        return failed(systemError());
    }
    Result result;
    result.status = Result::Status::Written;
    result.device = status.st_dev;
    result.inode = status.st_ino;
    return result;
}
