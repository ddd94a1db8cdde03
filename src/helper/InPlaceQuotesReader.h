#pragma once

#include <functional>
#include <string>
#include <string_view>

// Reads the quotes database without copying it, when the file has exactly the layout
// the application writes (core/QuotesDocument.h): the UIDs and the still escaped
// contents come out as views into the bytes, so a caller can pick one quote and decode
// only that one. A document in any other layout, or a damaged one, is refused as a
// whole and left to the full reader, which gives the records or the error. What is
// accepted here is therefore read exactly as the full reader reads it: strings are
// checked byte for byte as its parser checks them, and anything it would change (an
// empty UID, an escaped UID, a \u escape beyond ASCII) counts as another layout.
class QBInPlaceQuotesReader
{
public:
    // Gets each quote in document order; returning false stops the walk early.
    using Visitor = std::function<bool(std::string_view uid, std::string_view escapedContent)>;

    // False when |document| is not in the application's layout (then what was visited
    // so far means nothing). An early stop by |visit| still returns true.
    static bool forEachQuote(std::string_view document, const Visitor& visit);

    // At least the number of quotes in |document|, from its size: reserving this much
    // costs address space only, while growing a vector step by step touches new memory
    // pages at every step.
    static std::size_t quoteCountBound(std::string_view document);

    // The text of an escaped content that forEachQuote gave.
    static std::string decodedContent(std::string_view escapedContent);
};
