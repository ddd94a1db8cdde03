#include "core/KeptCopies.h"

#include "core/AtomicFileWriter.h"
#include "core/FileIdentity.h"

#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <system_error>
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
    fs::path path;

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
    ExistingCopy copy{name.substr(prefix.size(), kTimeStampLength), 1, {}};
    const std::string rest = name.substr(prefix.size() + kTimeStampLength);
    if (!rest.empty()) {
        const char* end = rest.data() + rest.size();
        if (rest[0] != '-' || std::from_chars(rest.data() + 1, end, copy.number).ptr != end) {
            return std::nullopt;
        }
    }
    return copy;
}

// Oldest first.
std::vector<ExistingCopy> existingCopies(const fs::path& original, const std::string& kind)
{
    const std::string prefix = original.filename().string() + "." + kind + "-";
    std::vector<ExistingCopy> copies;
    boost::system::error_code error;
    for (fs::directory_iterator entry(original.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        if (auto copy = parseCopyName(entry->path().filename().string(), prefix)) {
            copy->path = entry->path();
            copies.push_back(std::move(*copy));
        }
    }
    std::sort(copies.begin(), copies.end());
    return copies;
}

bool sameBytes(const std::string& first, const std::string& second)
{
    try {
        QBRegularFileForReading a(first);
        QBRegularFileForReading b(second);
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
    } catch (const std::system_error&) {
        return false;
    }
}

// A name that sorts after every existing copy, even when the older ones of this second
// were pruned.
std::string freeCopyName(const fs::path& original, const std::string& kind,
                         const std::vector<ExistingCopy>& copies)
{
    const std::string timeStamp = currentLocalTimeStamp();
    const std::string base = original.string() + "." + kind + "-" + timeStamp;
    int first = 1;
    for (const ExistingCopy& copy : copies) {
        if (copy.timeStamp == timeStamp) {
            first = std::max(first, copy.number + 1);
        }
    }
    for (int attempt = first; attempt < first + kMaxNameAttempts; ++attempt) {
        const std::string candidate = attempt == 1 ? base : base + "-" + std::to_string(attempt);
        boost::system::error_code error;
        if (!fs::exists(fs::symlink_status(candidate, error))) {
            return candidate;
        }
    }
    throw std::system_error(EEXIST, std::generic_category(),
                            "no free name for a copy of " + original.string());
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
    std::vector<ExistingCopy> copies = existingCopies(original, kind);
    if (!copies.empty() && sameBytes(original.string(), copies.back().path.string())) {
        return QBKeptCopy{copies.back().path.string(), true};
    }

    const std::string copyPath = freeCopyName(original, kind, copies);
    QBRegularFileForReading source(original.string());
    replaceFileAtomically(copyPath, [&source](std::ostream& stream) {
        std::vector<char> buffer(kCopyBufferBytes);
        while (const std::size_t count = source.read(buffer.data(), buffer.size())) {
            stream.write(buffer.data(), static_cast<std::streamsize>(count));
        }
    });

    if (maxKept > 0) {
        copies = existingCopies(original, kind);
        for (std::size_t index = 0; index + maxKept < copies.size(); ++index) {
            boost::system::error_code error;
            fs::remove(copies[index].path, error);
        }
    }
    return QBKeptCopy{copyPath, false};
}
