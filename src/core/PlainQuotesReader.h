#pragma once

#include "core/QuoteRecord.h"

#include <cstddef>
#include <functional>
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
