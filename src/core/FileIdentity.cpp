#include "core/FileIdentity.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

QBFileIdentity QBFileIdentity::of(const struct stat& status)
{
    return {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino),
            static_cast<std::int64_t>(status.st_size),
            static_cast<std::int64_t>(status.st_mtim.tv_sec),
            static_cast<std::int64_t>(status.st_mtim.tv_nsec)};
}

std::optional<QBFileIdentity> fileIdentityAt(const std::string& path)
{
    struct stat status
    {
    };
    if (::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return QBFileIdentity::of(status);
}

QBOpenFolder::QBOpenFolder(const std::string& path) : mPath(path.empty() ? "." : path)
{
    mDescriptor = ::open(mPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (mDescriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot open folder " + mPath);
    }
}

QBOpenFolder::~QBOpenFolder()
{
    ::close(mDescriptor);
}

QBRegularFileForReading::QBRegularFileForReading(const std::string& path, int folder) : mPath(path)
{
    // O_NONBLOCK: opening a FIFO without a writer would otherwise wait forever.
    mDescriptor = ::openat(folder, path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (mDescriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot open " + path);
    }
    struct stat status
    {
    };
    if (::fstat(mDescriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        const int error = errno;
        ::close(mDescriptor);
        mDescriptor = -1;
        if (S_ISREG(status.st_mode)) {
            throw std::system_error(error, std::generic_category(), "cannot examine " + path);
        }
        throw std::system_error(EINVAL, std::generic_category(), path + " is not a regular file");
    }
    mIdentity = QBFileIdentity::of(status);
}

QBRegularFileForReading::~QBRegularFileForReading()
{
    if (mDescriptor >= 0) {
        ::close(mDescriptor);
    }
}

std::size_t QBRegularFileForReading::read(char* buffer, std::size_t capacity)
{
    for (;;) {
        const ssize_t count = ::read(mDescriptor, buffer, capacity);
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "cannot read " + mPath);
        }
    }
}

void QBRegularFileForReading::rewind()
{
    if (::lseek(mDescriptor, 0, SEEK_SET) != 0) {
        throw std::system_error(errno, std::generic_category(), "cannot rewind " + mPath);
    }
}

std::string QBRegularFileForReading::readAll()
{
    std::string bytes;
    // The size at open is a hint only: the file may grow or shrink while it is read.
    bytes.resize(static_cast<std::size_t>(mIdentity.size) + 1);
    std::size_t used = 0;
    for (;;) {
        if (used == bytes.size()) {
            bytes.resize(bytes.size() * 2 + 4096);
        }
        const std::size_t count = read(bytes.data() + used, bytes.size() - used);
        if (count == 0) {
            break;
        }
        used += count;
    }
    bytes.resize(used);
    return bytes;
}
