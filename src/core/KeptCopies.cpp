#include "core/KeptCopies.h"

#include "core/AtomicFileWriter.h"
#include "core/FileIdentity.h"

#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace fs = boost::filesystem;

namespace {

constexpr int kMaxNameAttempts = 100;
constexpr std::size_t kTimeStampLength = 15; // YYYYmmdd-HHMMSS
constexpr std::size_t kCopyBufferBytes = 1024 * 1024;

std::string currentLocalTimeStamp()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
    return text;
}

struct ExistingCopy
{
    std::string timeStamp;
    int number = 1;
    std::string name;

    bool operator<(const ExistingCopy& other) const
    {
        return std::tie(timeStamp, number) < std::tie(other.timeStamp, other.number);
    }
};

// "<prefix>YYYYmmdd-HHMMSS" or "<prefix>YYYYmmdd-HHMMSS-N"; anything else is not a copy.
std::optional<ExistingCopy> parseCopyName(const std::string& name, const std::string& prefix)
{
    if (name.size() < prefix.size() + kTimeStampLength || name.compare(0, prefix.size(), prefix)) {
        return std::nullopt;
    }
    ExistingCopy copy{name.substr(prefix.size(), kTimeStampLength), 1, name};
    const std::string rest = name.substr(prefix.size() + kTimeStampLength);
    if (!rest.empty()) {
        const char* end = rest.data() + rest.size();
        if (rest[0] != '-' || std::from_chars(rest.data() + 1, end, copy.number).ptr != end) {
            return std::nullopt;
        }
    }
    return copy;
}

// Oldest first. Names only: beside a database near the path limit, a copy's whole path
// may be too long to use, so copies are always reached through the open folder.
std::vector<ExistingCopy> existingCopies(const QBOpenFolder& folder, const std::string& prefix)
{
    std::vector<ExistingCopy> copies;
    boost::system::error_code error;
    for (fs::directory_iterator entry(folder.path(), error), end; !error && entry != end;
         entry.increment(error)) {
        if (auto copy = parseCopyName(entry->path().filename().string(), prefix)) {
            copies.push_back(std::move(*copy));
        }
    }
    std::sort(copies.begin(), copies.end());
    return copies;
}

bool sameBytes(QBRegularFileForReading& a, QBRegularFileForReading& b)
{
    if (a.identity().size != b.identity().size) {
        return false;
    }
    std::vector<char> bufferA(kCopyBufferBytes);
    std::vector<char> bufferB(kCopyBufferBytes);
    for (;;) {
        const std::size_t countA = a.read(bufferA.data(), bufferA.size());
        std::size_t countB = 0;
        while (countB < countA) {
            const std::size_t more = b.read(bufferB.data() + countB, countA - countB);
            if (more == 0) {
                return false;
            }
            countB += more;
        }
        if (countA == 0) {
            return b.read(bufferB.data(), 1) == 0;
        }
        if (!std::equal(bufferA.begin(), bufferA.begin() + static_cast<std::ptrdiff_t>(countA),
                        bufferB.begin())) {
            return false;
        }
    }
}

bool sameBytes(const QBOpenFolder& folder, const std::string& first, const std::string& second)
{
    try {
        QBRegularFileForReading a(first, folder.descriptor());
        QBRegularFileForReading b(second, folder.descriptor());
        return sameBytes(a, b);
    } catch (const std::system_error&) {
        return false;
    }
}

// A name that sorts after every existing copy, even when the older ones of this second
// were pruned.
std::string freeCopyName(const QBOpenFolder& folder, const std::string& prefix,
                         const std::vector<ExistingCopy>& copies)
{
    const std::string timeStamp = currentLocalTimeStamp();
    const std::string base = prefix + timeStamp;
    int first = 1;
    for (const ExistingCopy& copy : copies) {
        if (copy.timeStamp == timeStamp) {
            first = std::max(first, copy.number + 1);
        }
    }
    for (int attempt = first; attempt < first + kMaxNameAttempts; ++attempt) {
        const std::string candidate = attempt == 1 ? base : base + "-" + std::to_string(attempt);
        struct stat status
        {
        };
        if (::fstatat(folder.descriptor(), candidate.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 &&
            errno == ENOENT) {
            return candidate;
        }
    }
    throw std::system_error(EEXIST, std::generic_category(),
                            "no free name for a copy of " + folder.pathOf(prefix));
}

} // namespace

std::optional<QBKeptCopy> keepCopyOfFile(const std::string& path, const std::string& kind,
                                         std::size_t maxKept)
{
    boost::system::error_code statusError;
    if (path.empty() || !fs::is_regular_file(fs::status(path, statusError))) {
        return std::nullopt;
    }
    const fs::path original = fs::canonical(path);
    const QBOpenFolder folder(original.parent_path().string());
    const std::string prefix = original.filename().string() + "." + kind + "-";
    std::vector<ExistingCopy> copies = existingCopies(folder, prefix);
    const std::string name = original.filename().string();
    if (!copies.empty() && sameBytes(folder, name, copies.back().name)) {
        return QBKeptCopy{folder.pathOf(copies.back().name), true};
    }

    const std::string copyPath = folder.pathOf(freeCopyName(folder, prefix, copies));
    QBRegularFileForReading source(name, folder.descriptor());
    replaceFileAtomically(copyPath, [&source](std::ostream& stream) {
        std::vector<char> buffer(kCopyBufferBytes);
        while (const std::size_t count = source.read(buffer.data(), buffer.size())) {
            stream.write(buffer.data(), static_cast<std::streamsize>(count));
        }
    });

    if (maxKept > 0) {
        copies = existingCopies(folder, prefix);
        for (std::size_t index = 0; index + maxKept < copies.size(); ++index) {
            ::unlinkat(folder.descriptor(), copies[index].name.c_str(), 0);
        }
    }
    return QBKeptCopy{copyPath, false};
}
