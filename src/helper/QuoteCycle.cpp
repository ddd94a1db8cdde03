#include "helper/QuoteCycle.h"

#include "logging/ULog.h"
#include "util/RegularFile.h"

#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <random>
#include <thread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr auto kLockWait = std::chrono::seconds(2);
constexpr auto kLockRetryPause = std::chrono::milliseconds(5);

// An flock(2) on a file beside the state, held while the object lives. The kernel drops
// it with the process, so a crashed holder leaves no stale lock behind, and unlike a
// QLockFile it writes nothing and syncs nothing: the lock costs two system calls.
class ExclusiveFileLock
{
public:
    explicit ExclusiveFileLock(const QByteArray& path)
        : mDescriptor(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600))
    {
        if (mDescriptor < 0) {
            return;
        }
        // Bounded: a holder that hangs must not hang a mail client waiting for --print.
        const auto deadline = std::chrono::steady_clock::now() + kLockWait;
        while (::flock(mDescriptor, LOCK_EX | LOCK_NB) != 0 &&
               (errno == EWOULDBLOCK || errno == EINTR) &&
               std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(kLockRetryPause);
        }
    }
    ~ExclusiveFileLock()
    {
        if (mDescriptor >= 0) {
            ::close(mDescriptor);
        }
    }
    ExclusiveFileLock(const ExclusiveFileLock&) = delete;
    ExclusiveFileLock& operator=(const ExclusiveFileLock&) = delete;

private:
    int mDescriptor;
};

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

constexpr std::size_t kWriteChunkBytes = 64 * 1024;

void appendEscapedLine(std::string& text, std::string_view uid)
{
    if (std::none_of(uid.cbegin(), uid.cend(), [](char c) { return c == '\\' || c == '\n'; })) {
        text.append(uid);
        text += '\n';
        return;
    }
    for (const char character : uid) {
        if (character == '\\') {
            text += "\\\\";
        } else if (character == '\n') {
            text += "\\n";
        } else {
            text += character;
        }
    }
    text += '\n';
}

std::string unescapedLine(std::string_view line)
{
    std::string uid;
    uid.reserve(line.size());
    for (std::size_t index = 0; index < line.size(); ++index) {
        if (line[index] == '\\' && index + 1 < line.size()) {
            ++index;
            uid += line[index] == 'n' ? '\n' : line[index];
        } else {
            uid += line[index];
        }
    }
    return uid;
}

// Puts |added| among the items of |list| at random places, keeping the order of the
// items already there: the same result as inserting them one by one at random
// positions, in one pass instead of one shift of the list per item.
void insertAtRandomPlaces(std::vector<std::string_view>& list, std::vector<std::string_view> added,
                          QRandomGenerator& random)
{
    if (added.empty()) {
        return;
    }
    std::shuffle(added.begin(), added.end(), random);
    std::vector<char> slotIsNew(list.size() + added.size(), 0);
    std::fill_n(slotIsNew.begin(), added.size(), 1);
    std::shuffle(slotIsNew.begin(), slotIsNew.end(), random);
    std::vector<std::string_view> merged;
    merged.reserve(slotIsNew.size());
    auto old = list.cbegin();
    auto fresh = added.cbegin();
    for (const char isNew : slotIsNew) {
        merged.push_back(isNew ? *fresh++ : *old++);
    }
    list = std::move(merged);
}

} // namespace

QBQuoteCycle::QBQuoteCycle(const QString& statePath)
    : mStatePath(statePath), mEncodedStatePath(QFile::encodeName(statePath))
{}

std::string QBQuoteCycle::advance(State& state, const std::vector<std::string_view>& uids)
{
    // Sorted by hash, the collection answers "is it still there" by binary search on
    // numbers, without building a hash table, and marks what the state already holds:
    // the rest is new. Entries are eight bytes, so ten thousand touch few memory pages.
    struct Entry
    {
        std::uint32_t hash;
        std::uint32_t index; // into |uids|
    };
    const auto hashOf = [](std::string_view uid) {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(uid));
    };
    const auto before = [&uids](const Entry& left, std::uint32_t hash, std::string_view uid) {
        return left.hash != hash ? left.hash < hash : uids[left.index] < uid;
    };
    std::vector<Entry> collection;
    collection.reserve(uids.size());
    for (std::uint32_t index = 0; index < uids.size(); ++index) {
        collection.push_back({hashOf(uids[index]), index});
    }
    std::sort(collection.begin(), collection.end(), [&](const Entry& left, const Entry& right) {
        return before(left, right.hash, uids[right.index]);
    });
    collection.erase(std::unique(collection.begin(), collection.end(),
                                 [&uids](const Entry& left, const Entry& right) {
                                     return left.hash == right.hash &&
                                            uids[left.index] == uids[right.index];
                                 }),
                     collection.end());
    std::vector<char> inState(collection.size(), 0);
    const auto isGoneOrRepeated = [&](std::string_view uid) {
        const std::uint32_t hash = hashOf(uid);
        const auto found = std::lower_bound(collection.cbegin(), collection.cend(), uid,
                                            [&](const Entry& entry, std::string_view wanted) {
                                                return before(entry, hash, wanted);
                                            });
        if (found == collection.cend() || found->hash != hash || uids[found->index] != uid) {
            return true;
        }
        char& mark = inState[static_cast<std::size_t>(found - collection.cbegin())];
        const bool repeated = mark != 0;
        mark = 1;
        return repeated;
    };
    std::erase_if(state.remaining, isGoneOrRepeated);
    std::erase_if(state.shown, isGoneOrRepeated);
    std::vector<std::string_view> added;
    for (std::size_t index = 0; index < collection.size(); ++index) {
        if (inState[index] == 0) {
            added.push_back(uids[collection[index].index]);
        }
    }
    QRandomGenerator& random = *QRandomGenerator::global();
    insertAtRandomPlaces(state.remaining, std::move(added), random);

    if (state.remaining.empty()) {
        if (collection.empty()) {
            return std::string();
        }
        // Nothing was added, so the new round is the quotes shown in this one.
        const std::string_view last = state.shown.back();
        state.remaining.swap(state.shown);
        std::shuffle(state.remaining.begin(), state.remaining.end(), random);
        // The new round does not open with the quote that closed the last one.
        const std::size_t size = state.remaining.size();
        if (size > 1 && state.remaining.front() == last) {
            std::swap(state.remaining.front(),
                      state.remaining[1 + random.bounded(static_cast<quint32>(size - 1))]);
        }
    }
    const std::string_view uid = state.remaining.front();
    state.remaining.erase(state.remaining.begin());
    state.shown.push_back(uid);
    return std::string(uid);
}

bool QBQuoteCycle::serialize(const State& state, const std::function<bool(std::string_view)>& write)
{
    std::string chunk;
    chunk.reserve(kWriteChunkBytes + 256);
    const auto flushed = [&chunk, &write](std::size_t threshold) {
        if (chunk.size() < threshold) {
            return true;
        }
        const bool written = write(chunk);
        chunk.clear();
        return written;
    };
    for (const std::string_view uid : state.remaining) {
        appendEscapedLine(chunk, uid);
        if (!flushed(kWriteChunkBytes)) {
            return false;
        }
    }
    chunk += '\n';
    for (const std::string_view uid : state.shown) {
        appendEscapedLine(chunk, uid);
        if (!flushed(kWriteChunkBytes)) {
            return false;
        }
    }
    return flushed(1);
}

QBQuoteCycle::State QBQuoteCycle::parse(std::string_view text)
{
    State state;
    state.remaining.reserve(static_cast<std::size_t>(std::count(text.cbegin(), text.cend(), '\n')));
    std::vector<std::string_view>* list = &state.remaining;
    bool separated = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() && !separated) {
            separated = true;
            state.shown.reserve(state.remaining.capacity() - state.remaining.size());
            list = &state.shown;
        } else if (line.find('\\') == std::string_view::npos) {
            list->push_back(line);
        } else {
            list->push_back(state.storage.emplace_back(unescapedLine(line)));
        }
    }
    return separated ? std::move(state) : State();
}

std::string QBQuoteCycle::next(const std::vector<std::string_view>& uids)
{
    // Without the lock the step still happens; at worst a quote comes twice in a round.
    const ExclusiveFileLock lock(mEncodedStatePath + ".lock");
    // Mapped rather than read: the state's views point into the file's pages.
    QFile file;
    QString error;
    const uchar* bytes = openRegularFileForReading(file, mStatePath, error) && file.size() > 0
                             ? file.map(0, file.size(), QFileDevice::MapPrivateOption)
                             : nullptr;
    State state = bytes ? parse(std::string_view(reinterpret_cast<const char*>(bytes),
                                                 static_cast<std::size_t>(file.size())))
                        : State();
    std::string uid = advance(state, uids);
    save(state);
    return uid;
}

void QBQuoteCycle::save(const State& state) const
{
    // Replaced through a rename so a reader never sees half a file. No fsync: after a
    // crash the worst is a new round, not worth a disk flush on every quote. mkstemp
    // creates the file for the owner only: which quotes the user has seen is theirs.
    QByteArray temporaryPath = mEncodedStatePath + ".XXXXXX";
    const int descriptor = ::mkostemp(temporaryPath.data(), O_CLOEXEC);
    bool saved = descriptor >= 0 && serialize(state, [descriptor](std::string_view bytes) {
                     return writeAll(descriptor, bytes);
                 });
    int error = errno;
    if (descriptor >= 0) {
        if (::close(descriptor) != 0 && saved) {
            saved = false;
            error = errno;
        }
        if (saved && ::rename(temporaryPath.constData(), mEncodedStatePath.constData()) != 0) {
            saved = false;
            error = errno;
        }
        if (!saved) {
            ::unlink(temporaryPath.constData());
        }
    }
    if (!saved) {
        logWarningMessage(QStringLiteral("Cannot save the order of quotes to '%1': %2")
                              .arg(mStatePath, qt_error_string(error)));
    }
}
