#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

// What tells one version of a file from another without reading it: device and inode
// (a replaced file is a new inode), size, and modification time to the nanosecond.
struct QBFileIdentity
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;

    static QBFileIdentity of(const struct stat& status);
    bool operator==(const QBFileIdentity& other) const = default;
};

// The identity of the file at |path| (links followed); nothing when there is none.
std::optional<QBFileIdentity> fileIdentityAt(const std::string& path);

// A folder kept open so that files in it are named relative to it: a name that fits in
// a folder entry then works even when the folder's path and the name together would
// exceed the system's path limit. Throws std::system_error when it cannot be opened.
class QBOpenFolder
{
public:
    explicit QBOpenFolder(const std::string& path);
    ~QBOpenFolder();
    QBOpenFolder(const QBOpenFolder&) = delete;
    QBOpenFolder& operator=(const QBOpenFolder&) = delete;

    int descriptor() const { return mDescriptor; }
    const std::string& path() const { return mPath; }
    // |name| inside the folder, for messages.
    std::string pathOf(const std::string& name) const { return mPath + "/" + name; }

private:
    std::string mPath;
    int mDescriptor = -1;
};

// Opens |path| (relative to |folder| when given) for reading without blocking on a FIFO
// or device, and keeps it open only when it is a regular file (links followed). Throws
// std::system_error otherwise.
class QBRegularFileForReading
{
public:
    explicit QBRegularFileForReading(const std::string& path, int folder = AT_FDCWD);
    ~QBRegularFileForReading();
    QBRegularFileForReading(const QBRegularFileForReading&) = delete;
    QBRegularFileForReading& operator=(const QBRegularFileForReading&) = delete;

    const QBFileIdentity& identity() const { return mIdentity; }
    // Up to |capacity| bytes; 0 at the end. Throws on a read error.
    std::size_t read(char* buffer, std::size_t capacity);
    // Everything from the current position to the end.
    std::string readAll();
    // Back to the first byte. Throws on failure.
    void rewind();

private:
    std::string mPath;
    int mDescriptor = -1;
    QBFileIdentity mIdentity;
};
