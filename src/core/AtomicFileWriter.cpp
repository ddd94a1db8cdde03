#include "core/AtomicFileWriter.h"
#include "core/QuoteRecord.h"

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <streambuf>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace fs = boost::filesystem;

namespace {

// Same bound on link chains as the kernel's, so a loop fails instead of spinning.
constexpr int kMaxSymbolicLinkHops = 40;
constexpr int kMaxTemporaryNameAttempts = 100;
// Large enough that a database of thousands of quotes takes only a few system calls.
constexpr std::size_t kWriteBufferBytes = 256 * 1024;

[[noreturn]] void throwSystemError(int error, const std::string& what)
{
    throw std::system_error(error, std::generic_category(), what);
}

// The file a write to |path| should replace: the end of its chain of symbolic links.
// A dangling link yields its (missing) target, which the save then creates.
fs::path resolveSymbolicLinks(const fs::path& path)
{
    fs::path current = path;
    for (int hop = 0; hop < kMaxSymbolicLinkHops; ++hop) {
        boost::system::error_code error;
        if (!fs::is_symlink(fs::symlink_status(current, error))) {
            return current;
        }
        const fs::path target = fs::read_symlink(current, error);
        if (error) {
            throwSystemError(error.value(), "cannot read symbolic link " + current.string());
        }
        current = target.is_absolute() ? target : current.parent_path() / target;
    }
    throwSystemError(ELOOP, "too many symbolic links at " + path.string());
}

// Writes all of |bytes|; returns 0 or the errno of the failure.
int writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

// A stream buffer writing to a file descriptor. It keeps the first error instead of
// throwing, because streams turn exceptions from their buffer into a bare badbit.
class DescriptorStreamBuffer : public std::streambuf
{
public:
    explicit DescriptorStreamBuffer(int descriptor)
        : mDescriptor(descriptor), mBuffer(kWriteBufferBytes)
    {
        setp(mBuffer.data(), mBuffer.data() + mBuffer.size());
    }

    int error() const { return mError; }

protected:
    int_type overflow(int_type character) override
    {
        if (!flushBuffer()) {
            return traits_type::eof();
        }
        if (!traits_type::eq_int_type(character, traits_type::eof())) {
            *pptr() = traits_type::to_char_type(character);
            pbump(1);
        }
        return traits_type::not_eof(character);
    }

    int sync() override { return flushBuffer() ? 0 : -1; }

private:
    bool flushBuffer()
    {
        if (mError == 0) {
            mError = writeAll(mDescriptor, std::string_view(pbase(), pptr() - pbase()));
        }
        setp(mBuffer.data(), mBuffer.data() + mBuffer.size());
        return mError == 0;
    }

    int mDescriptor;
    std::vector<char> mBuffer;
    int mError = 0;
};

// The folder holding |target|, so every later step names the file relative to it: a
// temporary name longer than the file's own then never exceeds the path limit.
std::string folderOf(const fs::path& target)
{
    return target.has_parent_path() ? target.parent_path().string() : std::string(".");
}

constexpr std::string_view kTemporaryMarker = ".saving-";
constexpr std::size_t kTemporaryTagLength = 8;

// "<name>.saving-" with the name shortened so that the whole temporary name, with its
// 8 hex digits, still fits in a folder entry.
std::string temporaryNamePrefix(const std::string& name)
{
    const std::size_t room = NAME_MAX - kTemporaryMarker.size() - kTemporaryTagLength;
    return name.substr(0, room) + std::string(kTemporaryMarker);
}

// Temporary files of |name| itself and of the copies kept beside it ("<name>.damaged-...").
bool isTemporaryNameFor(const std::string& candidate, const std::string& name)
{
    const std::string stem = temporaryNamePrefix(name);
    const std::size_t nameLength = stem.size() - kTemporaryMarker.size();
    const std::size_t tail = kTemporaryMarker.size() + kTemporaryTagLength;
    if (candidate.size() < nameLength + tail ||
        candidate.compare(0, nameLength, stem, 0, nameLength) ||
        candidate.compare(candidate.size() - tail, kTemporaryMarker.size(), kTemporaryMarker)) {
        return false;
    }
    return std::all_of(candidate.end() - static_cast<std::ptrdiff_t>(kTemporaryTagLength),
                       candidate.end(), [](char c) { return std::isxdigit(c) != 0; });
}

// An exclusively created file beside the target, locked for as long as it is open so
// that a later launch can tell a save in progress from one that was killed. Removed
// again unless committed.
class TemporaryFile
{
public:
    TemporaryFile(const QBOpenFolder& folder, const std::string& targetName) : mFolder(folder)
    {
        const std::string prefix = temporaryNamePrefix(targetName);
        for (int attempt = 0; attempt < kMaxTemporaryNameAttempts; ++attempt) {
            mName = prefix + generateUUIDString().substr(0, kTemporaryTagLength);
            mDescriptor = ::openat(folder.descriptor(), mName.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
            if (mDescriptor >= 0 || errno != EEXIST) {
                break;
            }
        }
        if (mDescriptor < 0) {
            throwSystemError(errno, "cannot create temporary file " + displayPath());
        }
        (void)::flock(mDescriptor, LOCK_EX | LOCK_NB);
    }

    ~TemporaryFile()
    {
        if (!mCommitted) {
            ::unlinkat(mFolder.descriptor(), mName.c_str(), 0);
        }
        if (mDescriptor >= 0) {
            ::close(mDescriptor);
        }
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void copyPermissionsFrom(const struct stat& original)
    {
        // Best effort: a file we may not chmod is still better saved than not.
        (void)::fchmod(mDescriptor, original.st_mode & 07777);
    }

    void writeWith(const std::function<void(std::ostream&)>& writeContents)
    {
        DescriptorStreamBuffer buffer(mDescriptor);
        std::ostream stream(&buffer);
        writeContents(stream);
        stream.flush();
        if (buffer.error() != 0) {
            throwSystemError(buffer.error(), "cannot write " + displayPath());
        }
        if (!stream) {
            throwSystemError(EIO, "cannot write " + displayPath());
        }
    }

    // Flushes to disk; returns the identity the file keeps once renamed.
    QBFileIdentity flush()
    {
        struct stat status
        {
        };
        if (::fsync(mDescriptor) != 0 || ::fstat(mDescriptor, &status) != 0) {
            throwSystemError(errno, "cannot flush " + displayPath());
        }
        return QBFileIdentity::of(status);
    }

    // Moves the file over |targetName|. The lock is held until after the rename, so the
    // clean-up at launch never takes a finished save for a killed one.
    void commit(const std::string& targetName)
    {
        if (::renameat(mFolder.descriptor(), mName.c_str(), mFolder.descriptor(),
                       targetName.c_str()) != 0) {
            throwSystemError(errno, "cannot rename " + displayPath() + " to " + targetName);
        }
        mCommitted = true;
    }

private:
    std::string displayPath() const { return mFolder.pathOf(mName); }

    const QBOpenFolder& mFolder;
    std::string mName;
    int mDescriptor = -1;
    bool mCommitted = false;
};

} // namespace

QBFileIdentity replaceFileAtomically(const std::string& path,
                                     const std::function<void(std::ostream&)>& writeContents,
                                     const std::function<void(const std::string&)>& beforeReplacing)
{
    const fs::path target = resolveSymbolicLinks(fs::path(path));
    const std::string name = target.filename().string();
    const QBOpenFolder folder(folderOf(target));
    struct stat original
    {
    };
    const bool exists = ::fstatat(folder.descriptor(), name.c_str(), &original, 0) == 0;
    // The mode is checked too, since root may write whatever the mode says.
    if (exists && ((original.st_mode & 0222) == 0 ||
                   ::faccessat(folder.descriptor(), name.c_str(), W_OK, AT_EACCESS) != 0)) {
        throwSystemError(EACCES, target.string() + " is read-only");
    }
    TemporaryFile temporary(folder, name);
    if (exists) {
        temporary.copyPermissionsFrom(original);
    }
    temporary.writeWith(writeContents);
    const QBFileIdentity identity = temporary.flush();
    if (beforeReplacing) {
        beforeReplacing(target.string());
    }
    temporary.commit(name);
    // Makes the rename itself durable. The new contents are already in place, so a
    // folder that cannot be flushed is not a reason to report failure.
    (void)::fsync(folder.descriptor());
    return identity;
}

int removeStaleTemporaryFiles(const std::string& path)
{
    if (path.empty()) {
        return 0; // names would be matched against nothing, in the working folder
    }
    fs::path target;
    try {
        target = resolveSymbolicLinks(fs::path(path));
    } catch (const std::system_error&) {
        return 0;
    }
    const std::string name = target.filename().string();
    DIR* folder = ::opendir(folderOf(target).c_str());
    if (!folder) {
        return 0;
    }
    int removed = 0;
    while (const dirent* entry = ::readdir(folder)) {
        if (!isTemporaryNameFor(entry->d_name, name)) {
            continue;
        }
        const int descriptor = ::openat(::dirfd(folder), entry->d_name,
                                        O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
        if (descriptor < 0) {
            continue;
        }
        // A save in progress holds the lock; a killed one released it with its process.
        if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 &&
            ::unlinkat(::dirfd(folder), entry->d_name, 0) == 0) {
            ++removed;
        }
        ::close(descriptor);
    }
    ::closedir(folder);
    return removed;
}
