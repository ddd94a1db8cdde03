#pragma once

#include "core/FileIdentity.h"
#include "core/QuoteRecord.h"

#include <boost/filesystem/path.hpp>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// The one store of quotes: an ordered sequence of records, read from and written to
// the JSON database file. Used from the main thread only.
class CQuotesRepository
{
public:
    static CQuotesRepository& getInstance();

    virtual ~CQuotesRepository() = default;
    CQuotesRepository(const CQuotesRepository&) = delete;
    CQuotesRepository& operator=(const CQuotesRepository&) = delete;

    // Replaces the records by the file's; failures are logged, and a file that fails to
    // load is first copied aside (see KeptCopies.h). When no copy can be kept, saving is
    // refused until the next load. Temporary files of killed saves are removed first, and
    // a record whose identifier repeats an earlier one gets a fresh identifier. Always true.
    bool loadQuotes();
    // Writes the records to the file, crash-safely; failures are logged. When another
    // program replaced the file since it was loaded or saved, its version is first kept
    // as a copy. Always true.
    bool saveQuotes();
    // Told after every save with the reason it failed, or an empty text when it worked.
    void setSaveResultObserver(std::function<void(const std::string&)> observer)
    {
        mSaveResultObserver = std::move(observer);
    }
    // Where the last load kept a copy of the file it could not read; empty when it read it.
    const std::string& damagedCopyPath() const { return mDamagedCopyPath; }
    // Whether saving is refused because the file failed to load and no copy was kept.
    bool isSavingRefused() const { return mSaveRefusal.has_value(); }
    // Told once per load, at the first refused save, with the path and the reason.
    void
    setSaveRefusedObserver(std::function<void(const std::string&, const std::string&)> observer)
    {
        mSaveRefusedObserver = std::move(observer);
    }

    // Told at every save that kept another program's version, with the copy's path.
    void setConflictCopyObserver(std::function<void(const std::string&)> observer)
    {
        mConflictCopyObserver = std::move(observer);
    }

    // Appends an empty record with a fresh identifier; valid until the next change.
    CQuoteRecord* addNewQuote();
    // Inserts a copy before |index|; an index at or past the end (or negative) appends.
    void insertQuote(const CQuoteRecord& record, int32_t index);
    CQuoteRecord* findQuote(const std::string& uid);
    // Index of the first record with |uid|, or the record count when there is none.
    uint32_t indexOfQuote(const std::string& uid) const;
    // Removes every record with |uid|.
    void removeQuote(const std::string& uid);
    void removeAllQuotes();

    std::string mFilePath;
    std::vector<CQuoteRecord> mQuotes;
    boost::filesystem::path mFileSystemPath;

protected:
    CQuotesRepository() = default;

private:
    bool keepCopyOfDamagedDatabase();
    void keepVersionOfOtherWriter(const std::string& target);
    void giveRepeatedIdentifiersFreshOnes();
    void refuseSave();

    // The file as this process last read or wrote it; another identity means another writer.
    std::optional<QBFileIdentity> mKnownIdentity;
    std::optional<std::string> mSaveRefusal;
    bool mSaveRefusalReported = false;
    std::function<void(const std::string&, const std::string&)> mSaveRefusedObserver;
    std::function<void(const std::string&)> mSaveResultObserver;
    std::string mDamagedCopyPath;
    std::function<void(const std::string&)> mConflictCopyObserver;
};

// Replaces the file at |path| crash-safely with the database document of |records|
// (an empty path is only logged and gives nothing); |beforeReplacing| as for
// replaceFileAtomically. Returns the new file's identity. Throws on failure, leaving the
// old file as it was.
std::optional<QBFileIdentity>
writeQuotesFile(const std::string& path, const std::vector<CQuoteRecord>& records,
                const std::function<void(const std::string&)>& beforeReplacing = {});
// Appends the records of the database document at |path|, which must be a regular file,
// and returns the identity of what was read. Throws on the first fault, leaving the
// records read before it appended.
QBFileIdentity readQuotesFile(const std::string& path, std::vector<CQuoteRecord>& records);
