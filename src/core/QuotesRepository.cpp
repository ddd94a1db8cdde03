#include "core/QuotesRepository.h"
#include "core/DamagedFileCopy.h"
#include "logging/Log.h"

#include <algorithm>
#include <exception>

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

void keepCopyOfDamagedDatabase(const std::string& path)
{
    try {
        if (const auto copyPath = keepCopyOfDamagedFile(path)) {
            logWarning("Kept a copy of the damaged quotes database at '%s'", copyPath->c_str());
        }
    } catch (const std::exception& error) {
        logWarning("Failed to keep a copy of the damaged quotes database: %s", error.what());
    }
}

} // namespace

CQuotesRepository& CQuotesRepository::getInstance()
{
    static CQuotesRepository instance;
    return instance;
}

bool CQuotesRepository::loadQuotes()
{
    removeAllQuotes();
    try {
        mFileSystemPath = boost::filesystem::path(mFilePath);
        readQuotesFile(mFileSystemPath.string(), mQuotes);
    } catch (...) {
        const std::string reason = currentExceptionReason();
        logWarningMessage("Failed to read quotes from disk");
        logDebug("Reading the quotes database failed: %s", reason.c_str());
        // The next save writes what was read over the file, so keep the original.
        keepCopyOfDamagedDatabase(mFilePath);
    }
    logInfo("%d quotes read from database at '%s'", static_cast<int>(mQuotes.size()),
            mFilePath.c_str());
    return true;
}

bool CQuotesRepository::saveQuotes()
{
    logInfoMessage("Saving quotes");
    try {
        mFileSystemPath = boost::filesystem::path(mFilePath);
        writeQuotesFile(mFileSystemPath.string(), mQuotes);
    } catch (...) {
        const std::string reason = currentExceptionReason();
        logWarningMessage("Failed to write quotes to disk");
        logDebug("Writing the quotes database failed: %s", reason.c_str());
    }
    return true;
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
