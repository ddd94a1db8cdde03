#pragma once

#include "core/QuoteRecord.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// A single-pass reader for the shape every database file has, {"Quotes": [{"UID": "..",
// "Content": ".."}, ...]} (members of an element in either order, any JSON whitespace,
// "Quotes": "" for none), several times faster than Boost's parser with callbacks.
// Strings are taken exactly as Boost's parser takes them: the same escapes, surrogate
// pairs and (lenient) UTF-8 check.
//
// Returns false, leaving |records| as they were, for anything else: other members,
// other value types, a byte order mark, malformed JSON. The caller then reads the bytes
// with Boost's parser, which gives the general meaning and the error messages.
bool readPlainQuotesDocument(std::string_view bytes, std::vector<CQuoteRecord>& records);

// Up to |capacity| bytes into |buffer|; 0 only at the end.
using QBByteSource = std::function<std::size_t(char* buffer, std::size_t capacity)>;
// The same, reading |source| (about |expectedSize| bytes) through a buffer of a few
// hundred kilobytes: a whole database read at once is tens of megabytes of fresh memory,
// and first touching it cost more than parsing it.
bool readPlainQuotesDocument(const QBByteSource& source, std::size_t expectedSize,
                             std::vector<CQuoteRecord>& records);

// The same walk over a document at hand (a mapped file, say) without copying it: each
// quote's UID and content as still escaped views into |document|, so that a caller can
// pick one and decode only that. |visit| returning false ends the walk early, and true
// is returned; false means the document is not of the usual shape (what was visited so
// far then means nothing).
using QBPlainQuoteVisitor = std::function<bool(std::string_view uid, std::string_view content)>;
bool forEachPlainQuote(std::string_view document, const QBPlainQuoteVisitor& visit);

// At least the number of quotes |document| can hold, from its size: reserving this much
// costs address space only, while growing a vector step by step touches new pages.
std::size_t plainQuoteCountBound(std::string_view document);

// The text of a string forEachPlainQuote gave.
std::string decodedQuoteText(std::string_view escaped);
