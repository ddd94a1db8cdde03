#include "helper/QuoteCycle.h"

#include "logging/ULog.h"
#include "util/RegularFile.h"

#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <optional>
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

void appendEscapedLine(std::string& text, std::string_view uid)
{
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

constexpr std::string_view kStateHeader = "quillbox2-cycle 2";

std::string hexText(std::uint64_t value)
{
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
    return std::string(digits.data(), end);
}

bool parseHex(std::string_view text, std::uint64_t& value)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return error == std::errc() && end == text.data() + text.size() && !text.empty();
}

} // namespace

QBQuoteCycle::QBQuoteCycle(const QString& statePath)
    : mStatePath(statePath), mEncodedStatePath(QFile::encodeName(statePath))
{}

std::uint64_t QBQuoteCycle::orderHash(std::uint64_t key, std::string_view uid)
{
    // FNV-1a from the key, then the SplitMix64 finaliser: cheap, and every bit of the
    // key and the UID reaches every bit of the result, so each key is another shuffle.
    std::uint64_t hash = 0xcbf29ce484222325ULL ^ key;
    for (const char character : uid) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3ULL;
    }
    hash ^= key;
    hash = (hash ^ (hash >> 30)) * 0xbf58476d1ce4e5b9ULL;
    hash = (hash ^ (hash >> 27)) * 0x94d049bb133111ebULL;
    return hash ^ (hash >> 31);
}

namespace {

// An order held in memory: the collection's positions sorted by place.
class SortedOrder : public QBQuoteCycle::Order
{
public:
    SortedOrder(std::uint64_t key, const std::vector<std::string_view>& uids) : mUids(uids)
    {
        mEntries.reserve(uids.size());
        for (std::size_t index = 0; index < uids.size(); ++index) {
            mEntries.push_back({QBQuoteCycle::orderHash(key, uids[index]), index});
        }
        std::sort(mEntries.begin(), mEntries.end(), [&uids](const Entry& left, const Entry& right) {
            return left.hash != right.hash ? left.hash < right.hash
                                           : uids[left.index] < uids[right.index];
        });
    }
    std::size_t size() const override { return mEntries.size(); }
    std::uint64_t hashAt(std::size_t position) const override { return mEntries[position].hash; }
    std::string_view uidAt(std::size_t position) const override
    {
        return mUids[mEntries[position].index];
    }
    std::size_t indexAt(std::size_t position) const override { return mEntries[position].index; }

private:
    struct Entry
    {
        std::uint64_t hash;
        std::size_t index;
    };
    const std::vector<std::string_view>& mUids;
    std::vector<Entry> mEntries;
};

// The first position of |order| after the place (|hash|, |uid|).
std::size_t firstPositionAfter(const QBQuoteCycle::Order& order, std::uint64_t hash,
                               std::string_view uid)
{
    std::size_t low = 0;
    std::size_t high = order.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        const std::uint64_t middleHash = order.hashAt(middle);
        const bool after = middleHash != hash ? middleHash > hash : order.uidAt(middle) > uid;
        if (after) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return low;
}

void startRound(QBQuoteCycle::State& state, const QBQuoteCycle::OrderForKey& orderFor)
{
    if (!state.cursorUid.empty()) {
        state.previousRoundLast = state.cursorUid;
    }
    QRandomGenerator& random = *QRandomGenerator::global();
    // The new round does not open with the quote that closed the last one: another key
    // is drawn while it would (at two quotes, 64 draws fail once in 2^64). Sorted by
    // place, the first and last UIDs differ exactly when the collection has two.
    for (int draw = 0; draw < 64; ++draw) {
        state.key = random.generate64() | 1; // never 0, which means "no round yet"
        const QBQuoteCycle::Order& order = orderFor(state.key);
        if (order.size() < 2 || order.uidAt(0) == order.uidAt(order.size() - 1) ||
            order.uidAt(0) != state.previousRoundLast) {
            break;
        }
    }
    state.cursor = 0;
    state.cursorUid.clear();
}

} // namespace

std::unique_ptr<QBQuoteCycle::Order>
QBQuoteCycle::sortedOrder(std::uint64_t key, const std::vector<std::string_view>& uids)
{
    return std::make_unique<SortedOrder>(key, uids);
}

QBQuoteCycle::OrderForKey QBQuoteCycle::sortedOrders(const std::vector<std::string_view>& uids)
{
    // The last order made is kept: a step asks again for the key it has just drawn.
    auto last = std::make_shared<std::pair<std::uint64_t, std::unique_ptr<Order>>>();
    return [last, &uids](std::uint64_t key) -> const Order& {
        if (!last->second || last->first != key) {
            *last = {key, sortedOrder(key, uids)};
        }
        return *last->second;
    };
}

std::string QBQuoteCycle::advance(State& state, const std::vector<std::string_view>& uids,
                                  const Acceptance& accept)
{
    return advance(state, sortedOrders(uids), accept);
}

std::string QBQuoteCycle::advance(State& state, const OrderForKey& orderFor,
                                  const Acceptance& accept, std::size_t* chosenIndex)
{
    if (state.key == 0) {
        startRound(state, orderFor);
    }
    // The rest of this round, then (when nothing in it is taken) all of a new one.
    for (int round = 0; round < 2; ++round) {
        if (round == 1) {
            startRound(state, orderFor);
        }
        const Order& order = orderFor(state.key);
        if (order.size() == 0) {
            return std::string();
        }
        std::size_t position =
            state.cursorUid.empty() ? 0 : firstPositionAfter(order, state.cursor, state.cursorUid);
        for (; position < order.size(); ++position) {
            const std::uint64_t hash = order.hashAt(position);
            const std::string_view uid = order.uidAt(position);
            if (hash == state.cursor && uid == state.cursorUid) {
                continue; // the same UID twice in the collection
            }
            state.cursor = hash;
            state.cursorUid = std::string(uid);
            // A refused quote counts as shown: it is passed over for this round.
            if (!accept || accept(order.indexAt(position))) {
                if (chosenIndex != nullptr) {
                    *chosenIndex = order.indexAt(position);
                }
                return state.cursorUid;
            }
        }
    }
    return std::string();
}

std::string QBQuoteCycle::serialize(const State& state)
{
    std::string text(kStateHeader);
    text += '\n';
    text += hexText(state.key) + '\n' + hexText(state.cursor) + '\n';
    appendEscapedLine(text, state.cursorUid);
    appendEscapedLine(text, state.previousRoundLast);
    return text;
}

QBQuoteCycle::State QBQuoteCycle::parse(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty() && lines.size() < 6) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    State state;
    if (lines.size() != 5 || lines[0] != kStateHeader || !parseHex(lines[1], state.key) ||
        !parseHex(lines[2], state.cursor)) {
        return State();
    }
    state.cursorUid = unescapedLine(lines[3]);
    state.previousRoundLast = unescapedLine(lines[4]);
    return state;
}

std::string QBQuoteCycle::next(const std::vector<std::string_view>& uids, const Acceptance& accept,
                               std::size_t* chosenIndex)
{
    return next(sortedOrders(uids), accept, chosenIndex);
}

std::string QBQuoteCycle::next(const OrderForKey& orderFor, const Acceptance& accept,
                               std::size_t* chosenIndex)
{
    // Without the lock the step still happens; at worst a quote comes twice in a round.
    const ExclusiveFileLock lock(mEncodedStatePath + ".lock");
    // Opened without blocking and checked to be a regular file: a FIFO at this path
    // would otherwise hold a mail client's --print for ever.
    QFile file;
    QString error;
    State state = openRegularFileForReading(file, mStatePath, error)
                      ? parse(file.read(4096).toStdString())
                      : State();
    file.close();
    std::string uid = advance(state, orderFor, accept, chosenIndex);
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
    bool saved = descriptor >= 0 && writeAll(descriptor, serialize(state));
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
