#pragma once

#include "core/QuoteRecord.h"

#include <ostream>
#include <string>
#include <vector>

// The quotes database document, {"Quotes": [{"UID": ..., "Content": ...}, ...]}, pretty
// printed byte for byte as Boost.PropertyTree's JSON writer prints it (four-space
// indentation, "\/" for slashes, raw UTF-8, and "Quotes": "" when there are no records).

// Writes the document directly, several times faster than going through a property tree.
void writeQuotesDocument(std::ostream& stream, const std::vector<CQuoteRecord>& records);

// Writes the same document through a property tree and Boost's own writer: the
// reference the direct writer is checked and measured against.
void writeQuotesDocumentWithPropertyTree(std::ostream& stream,
                                         const std::vector<CQuoteRecord>& records);

// Parses |bytes| with Boost's JSON parser and appends the records of "Quotes" in document
// order. Throws on malformed JSON, a missing "Quotes", or an element without "UID" or
// "Content", keeping the records appended before the faulty element.
// Documents of the usual shape take a faster path (PlainQuotesReader.h) with the same result.
void readQuotesDocument(const std::string& bytes, const std::string& sourceName,
                        std::vector<CQuoteRecord>& records);
// The same through Boost's parser alone, for every document: the general reader, and the
// reference the faster path is checked against.
void readQuotesDocumentWithBoost(const std::string& bytes, const std::string& sourceName,
                                 std::vector<CQuoteRecord>& records);
