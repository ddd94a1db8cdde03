#include "core/QuotesRepository.h"
#include "core/AtomicFileWriter.h"
#include "core/KeptCopies.h"
#include "logging/Log.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <exception>
#include <functional>
#include <string_view>
#include <sys/stat.h>

namespace {

// The reason behind the exception being handled, for the debug log.
std::string currentExceptionReason()
{
    try {
        throw;
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "unknown error";
    }
}

// Identifiers match byte for byte: same length, same bytes, case matters.
auto hasUID(const std::string& uid)
{
    return [&uid](const CQuoteRecord& record) { return record.mUID == uid; };
}

// Copies of a damaged database: three are enough to go back a few launches, and each
// can be as large as the database.
constexpr std::size_t kMaxDamagedCopies = 3;

bool nothingAt(const std::string& path)
{
    struct stat status
    {
    };
    return ::stat(path.c_str(), &status) != 0 && errno == ENOENT;
}

// The identifiers of records seen so far, kept as record positions in an open-addressing
// table: with a node per identifier, this check took a tenth of the launch of a large
// collection.
class RecordIdentifierSet
{
public:
    explicit RecordIdentifierSet(const std::vector<CQuoteRecord>& records)
        : mRecords(records), mSlots(std::bit_ceil(records.size() * 2 + 2))
    {}

    // Adds the present identifier of the record at |index|; false when a record added
    // before has the same one.
    bool insert(std::size_t index)
    {
        const std::string& uid = mRecords[index].mUID;
        const std::size_t hash = std::hash<std::string_view>{}(uid);
        const auto fingerprint = static_cast<std::uint32_t>(static_cast<std::uint64_t>(hash) >> 32);
        const std::size_t mask = mSlots.size() - 1;
        for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
            Slot& candidate = mSlots[slot];
            if (candidate.positionPlusOne == 0) {
                candidate = {static_cast<std::uint32_t>(index + 1), fingerprint};
                return true;
            }
            if (candidate.fingerprint == fingerprint &&
                mRecords[candidate.positionPlusOne - 1].mUID == uid) {
                return false;
            }
        }
    }

private:
    struct Slot
    {
        std::uint32_t positionPlusOne = 0; // 0: free
        std::uint32_t fingerprint = 0;     // high bits of the hash, to compare fewer texts
    };

    const std::vector<CQuoteRecord>& mRecords;
    std::vector<Slot> mSlots; // at most half full: one insertion per record
};

} // namespace

CQuotesRepository& CQuotesRepository::getInstance()
{
    static CQuotesRepository instance;
    return instance;
}

bool CQuotesRepository::loadQuotes()
{
    removeAllQuotes();
    mKnownIdentity.reset();
    mSaveRefusal.reset();
    mSaveRefusalReported = false;
    mDamagedCopyPath.clear();
    if (const int removed = removeStaleTemporaryFiles(mFilePath)) {
        logInfo("Removed %d unfinished save files of '%s'", removed, mFilePath.c_str());
    }
    try {
        mFileSystemPath = boost::filesystem::path(mFilePath);
        mKnownIdentity = readQuotesFile(mFileSystemPath.string(), mQuotes);
    } catch (...) {
        const std::string reason = currentExceptionReason();
        logWarningMessage("Failed to read quotes from disk");
        logDebug("Reading the quotes database failed: %s", reason.c_str());
        // The next save writes what was read over the file, so keep the original; when
        // that is impossible, the file must not be overwritten at all.
        if (keepCopyOfDamagedDatabase()) {
            mKnownIdentity = fileIdentityAt(mFilePath);
        } else if (!nothingAt(mFilePath)) {
            mSaveRefusal = reason;
        }
    }
    giveRepeatedIdentifiersFreshOnes();
    logInfo("%d quotes read from database at '%s'", static_cast<int>(mQuotes.size()),
            mFilePath.c_str());
    return true;
}

bool CQuotesRepository::saveQuotes()
{
    logInfoMessage("Saving quotes");
    if (mSaveRefusal) {
        refuseSave();
        return true;
    }
    try {
        mFileSystemPath = boost::filesystem::path(mFilePath);
        mKnownIdentity =
            writeQuotesFile(mFileSystemPath.string(), mQuotes, [this](const std::string& target) {
                keepVersionOfOtherWriter(target);
            });
    } catch (...) {
        const std::string reason = currentExceptionReason();
        logWarningMessage("Failed to write quotes to disk");
        logWarning("Writing the quotes database failed: %s", reason.c_str());
        if (mSaveResultObserver)
            mSaveResultObserver(reason);
        return true;
    }
    if (mSaveResultObserver)
        mSaveResultObserver({});
    return true;
}

bool CQuotesRepository::keepCopyOfDamagedDatabase()
{
    try {
        const std::optional<QBKeptCopy> copy =
            keepCopyOfFile(mFilePath, "damaged", kMaxDamagedCopies);
        if (copy)
            mDamagedCopyPath = copy->path;
        if (copy && copy->alreadyKept) {
            logInfo("A copy of the damaged quotes database is already kept at '%s'",
                    copy->path.c_str());
        } else if (copy) {
            logWarning("Kept a copy of the damaged quotes database at '%s'", copy->path.c_str());
        }
        return copy.has_value();
    } catch (const std::exception& error) {
        logWarning("Failed to keep a copy of the damaged quotes database: %s", error.what());
        return false;
    }
}

void CQuotesRepository::refuseSave()
{
    logWarningMessage("Failed to write quotes to disk");
    logWarning("Not saving over '%s' until it is fixed: it could not be read (%s) and no copy "
               "of it could be kept",
               mFilePath.c_str(), mSaveRefusal->c_str());
    if (!mSaveRefusalReported && mSaveRefusedObserver) {
        mSaveRefusalReported = true;
        mSaveRefusedObserver(mFilePath, *mSaveRefusal);
    }
}

void CQuotesRepository::keepVersionOfOtherWriter(const std::string& target)
{
    const std::optional<QBFileIdentity> current = fileIdentityAt(target);
    if (!current || current == mKnownIdentity) {
        return;
    }
    // Throws when no copy can be made, which cancels the save: their file stays.
    if (const std::optional<QBKeptCopy> copy = keepCopyOfFile(target, "conflict")) {
        logWarning("Another program changed the quotes database since it was read; kept its "
                   "version at '%s'",
                   copy->path.c_str());
        if (mConflictCopyObserver) {
            mConflictCopyObserver(copy->path);
        }
    }
}

void CQuotesRepository::giveRepeatedIdentifiersFreshOnes()
{
    // Removing a record removes every record with its identifier, but undo restores one.
    RecordIdentifierSet seen(mQuotes);
    for (std::size_t index = 0; index < mQuotes.size(); ++index) {
        CQuoteRecord& record = mQuotes[index];
        if (seen.insert(index)) {
            continue;
        }
        const std::string repeated = record.mUID;
        do {
            record.mUID = generateUUIDString();
        } while (!seen.insert(index));
        logInfo("The quote at index %d repeated the identifier '%s'; it is now '%s'",
                static_cast<int>(index), repeated.c_str(), record.mUID.c_str());
    }
}

CQuoteRecord* CQuotesRepository::addNewQuote()
{
    return &mQuotes.emplace_back();
}

void CQuotesRepository::insertQuote(const CQuoteRecord& record, int32_t index)
{
    CQuoteRecord copy(record.mContent, record.mUID);
    // Compared as unsigned on purpose: a negative index is past the end and appends.
    const auto position = static_cast<uint64_t>(static_cast<int64_t>(index));
    if (position >= mQuotes.size()) {
        mQuotes.push_back(std::move(copy));
    } else {
        mQuotes.insert(mQuotes.begin() + static_cast<std::ptrdiff_t>(position), std::move(copy));
    }
}

CQuoteRecord* CQuotesRepository::findQuote(const std::string& uid)
{
    const auto found = std::find_if(mQuotes.begin(), mQuotes.end(), hasUID(uid));
    return found == mQuotes.end() ? nullptr : &*found;
}

uint32_t CQuotesRepository::indexOfQuote(const std::string& uid) const
{
    const auto found = std::find_if(mQuotes.begin(), mQuotes.end(), hasUID(uid));
    return static_cast<uint32_t>(found - mQuotes.begin());
}

void CQuotesRepository::removeQuote(const std::string& uid)
{
    std::erase_if(mQuotes, hasUID(uid));
}

void CQuotesRepository::removeAllQuotes()
{
    mQuotes.clear();
}
