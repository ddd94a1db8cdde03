#include "core/AtomicFileWriter.h"
#include "core/QuoteRecord.h"

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

#include <cerrno>
#include <fcntl.h>
#include <streambuf>
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

// An exclusively created file beside the target; removed again unless committed.
class TemporaryFile
{
public:
    explicit TemporaryFile(const fs::path& target)
    {
        const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
        for (int attempt = 0; attempt < kMaxTemporaryNameAttempts; ++attempt) {
            const std::string suffix = ".saving-" + generateUUIDString().substr(0, 8);
            mPath = (folder / (target.filename().string() + suffix)).string();
            // 0666 lets the umask decide, as for any newly created file.
            mDescriptor = ::open(mPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (mDescriptor >= 0 || errno != EEXIST) {
                break;
            }
        }
        if (mDescriptor < 0) {
            throwSystemError(errno, "cannot create temporary file " + mPath);
        }
    }

    ~TemporaryFile()
    {
        if (mDescriptor >= 0) {
            ::close(mDescriptor);
        }
        if (!mCommitted) {
            ::unlink(mPath.c_str());
        }
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void copyPermissionsFrom(const fs::path& original)
    {
        struct stat status
        {
        };
        if (::stat(original.c_str(), &status) == 0) {
            // Best effort: a file we may not chmod is still better saved than not.
            (void)::fchmod(mDescriptor, status.st_mode & 07777);
        }
    }

    void writeWith(const std::function<void(std::ostream&)>& writeContents)
    {
        DescriptorStreamBuffer buffer(mDescriptor);
        std::ostream stream(&buffer);
        writeContents(stream);
        stream.flush();
        if (buffer.error() != 0) {
            throwSystemError(buffer.error(), "cannot write " + mPath);
        }
        if (!stream) {
            throwSystemError(EIO, "cannot write " + mPath);
        }
    }

    // Flushes to disk and moves the file over |target|.
    void commit(const fs::path& target)
    {
        if (::fsync(mDescriptor) != 0) {
            throwSystemError(errno, "cannot flush " + mPath);
        }
        const int descriptor = mDescriptor;
        mDescriptor = -1;
        if (::close(descriptor) != 0) {
            throwSystemError(errno, "cannot close " + mPath);
        }
        if (::rename(mPath.c_str(), target.c_str()) != 0) {
            throwSystemError(errno, "cannot rename " + mPath + " to " + target.string());
        }
        mCommitted = true;
    }

private:
    std::string mPath;
    int mDescriptor = -1;
    bool mCommitted = false;
};

// Makes the rename itself durable. The new contents are already in place, so a
// folder that cannot be flushed is not a reason to report failure.
void flushFolder(const fs::path& target)
{
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        (void)::fsync(descriptor);
        ::close(descriptor);
    }
}

} // namespace

void replaceFileAtomically(const std::string& path,
                           const std::function<void(std::ostream&)>& writeContents)
{
    const fs::path target = resolveSymbolicLinks(fs::path(path));
    TemporaryFile temporary(target);
    temporary.copyPermissionsFrom(target);
    temporary.writeWith(writeContents);
    temporary.commit(target);
    flushFolder(target);
}
