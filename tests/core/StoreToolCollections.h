#pragma once

#include "core/QuoteRecord.h"
#include "core/QuotesDocument.h"
#include "core/QuotesRepository.h"

#include <sstream>
#include <string>
#include <vector>

// |count| quotes with fixed identifiers whose text is made of |fill|: the same for the
// store tool and the tests that check what it saved.
inline std::vector<CQuoteRecord> generatedCollection(int count, char fill)
{
    std::vector<CQuoteRecord> records;
    records.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        records.emplace_back(std::string(60 + index % 40, fill), "uid-" + std::to_string(index));
    }
    return records;
}

// The bytes a save of |records| writes.
inline std::string documentOf(const std::vector<CQuoteRecord>& records)
{
    std::ostringstream stream;
    writeQuotesDocument(stream, records);
    return stream.str();
}

// A repository of its own, apart from the process-wide one.
struct StandaloneRepository : CQuotesRepository
{
};
