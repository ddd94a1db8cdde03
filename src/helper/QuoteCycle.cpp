#include "helper/QuoteCycle.h"

#include "logging/ULog.h"

#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>
#include <unordered_set>

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
    if (line.find('\\') == std::string_view::npos) {
        return std::string(line);
    }
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
void insertAtRandomPlaces(std::vector<std::string>& list, std::vector<std::string_view> added,
                          QRandomGenerator& random)
{
    if (added.empty()) {
        return;
    }
    std::shuffle(added.begin(), added.end(), random);
    std::vector<char> slotIsNew(list.size() + added.size(), 0);
    std::fill_n(slotIsNew.begin(), added.size(), 1);
    std::shuffle(slotIsNew.begin(), slotIsNew.end(), random);
    std::vector<std::string> merged;
    merged.reserve(slotIsNew.size());
    auto old = list.begin();
    auto fresh = added.cbegin();
    for (const char isNew : slotIsNew) {
        merged.push_back(isNew ? std::string(*fresh++) : std::move(*old++));
    }
    list = std::move(merged);
}

} // namespace

QBQuoteCycle::QBQuoteCycle(const QString& statePath)
    : mStatePath(statePath), mEncodedStatePath(QFile::encodeName(statePath))
{}

std::string QBQuoteCycle::advance(State& state, const std::vector<std::string_view>& uids)
{
    std::unordered_set<std::string_view> current(uids.cbegin(), uids.cend());
    const auto isGone = [&current](const std::string& uid) { return !current.contains(uid); };
    std::erase_if(state.remaining, isGone);
    std::erase_if(state.shown, isGone);

    std::vector<std::string_view> added;
    {
        std::unordered_set<std::string_view> known(state.remaining.cbegin(),
                                                   state.remaining.cend());
        known.reserve(uids.size());
        known.insert(state.shown.cbegin(), state.shown.cend());
        for (const std::string_view uid : uids) {
            if (known.insert(uid).second) {
                added.push_back(uid);
            }
        }
    }
    QRandomGenerator& random = *QRandomGenerator::global();
    insertAtRandomPlaces(state.remaining, std::move(added), random);

    if (state.remaining.empty()) {
        if (uids.empty()) {
            return std::string();
        }
        // Nothing was added, so the new round is the quotes shown in this one.
        const std::string last = state.shown.empty() ? std::string() : state.shown.back();
        state.remaining = std::move(state.shown);
        state.shown.clear();
        std::sort(state.remaining.begin(), state.remaining.end());
        state.remaining.erase(std::unique(state.remaining.begin(), state.remaining.end()),
                              state.remaining.end());
        std::shuffle(state.remaining.begin(), state.remaining.end(), random);
        // The new round does not open with the quote that closed the last one.
        const std::size_t size = state.remaining.size();
        if (size > 1 && state.remaining.front() == last) {
            std::swap(state.remaining.front(),
                      state.remaining[1 + random.bounded(static_cast<quint32>(size - 1))]);
        }
    }
    std::string uid = std::move(state.remaining.front());
    state.remaining.erase(state.remaining.begin());
    state.shown.push_back(uid);
    return uid;
}

std::string QBQuoteCycle::serialize(const State& state)
{
    std::string text;
    text.reserve((state.remaining.size() + state.shown.size()) * 37 + 1);
    for (const std::string& uid : state.remaining) {
        appendEscapedLine(text, uid);
    }
    text += '\n';
    for (const std::string& uid : state.shown) {
        appendEscapedLine(text, uid);
    }
    return text;
}

QBQuoteCycle::State QBQuoteCycle::parse(std::string_view text)
{
    State state;
    std::vector<std::string>* list = &state.remaining;
    bool separated = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() && !separated) {
            separated = true;
            list = &state.shown;
        } else {
            list->push_back(unescapedLine(line));
        }
    }
    return separated ? state : State();
}

std::string QBQuoteCycle::next(const std::vector<std::string_view>& uids)
{
    // Without the lock the step still happens; at worst a quote comes twice in a round.
    const ExclusiveFileLock lock(mEncodedStatePath + ".lock");
    State state = load();
    std::string uid = advance(state, uids);
    save(state);
    return uid;
}

QBQuoteCycle::State QBQuoteCycle::load() const
{
    QFile file(mStatePath);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray bytes = file.readAll();
    return parse(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
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
