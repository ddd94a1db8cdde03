#pragma once

#include "core/QuoteRecord.h"

#include <boost/filesystem/path.hpp>

#include <cstdint>
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
    // load is first copied aside (see DamagedFileCopy.h). Always true.
    bool loadQuotes();
    // Writes the records to the file, crash-safely; failures are logged. Always true.
    bool saveQuotes();

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
};

// Replaces the file at |path| crash-safely with the database document of |records|
// (an empty path is only logged). Throws on failure, leaving the old file as it was.
void writeQuotesFile(const std::string& path, const std::vector<CQuoteRecord>& records);
// Appends the records of the database document at |path|. Throws on the first fault,
// leaving the records read before it appended.
void readQuotesFile(const std::string& path, std::vector<CQuoteRecord>& records);
