#include "helper/InPlaceQuotesReader.h"

#include <cstdint>
#include <cstring>
#include <optional>

namespace {

// The writer's fixed text between the strings.
constexpr std::string_view kOpening = "{\n    \"Quotes\": ";
constexpr std::string_view kNoQuotes = "\"\"\n}\n";
constexpr std::string_view kQuotesBegin = "[\n";
constexpr std::string_view kUIDBegin = "        {\n            \"UID\": ";
constexpr std::string_view kContentBegin = ",\n            \"Content\": ";
constexpr std::string_view kElementEnd = "\n        }";
constexpr std::string_view kNextElement = ",\n";
constexpr std::string_view kQuotesEnd = "\n    ]\n}\n";

constexpr char kSimpleEscapes[] = "\"\\/bfnrt";
constexpr char kSimpleEscapeBytes[] = "\"\\/\b\f\n\r\t";

std::optional<unsigned> hexValue(std::string_view digits)
{
    unsigned value = 0;
    for (const char digit : digits) {
        value <<= 4;
        if (digit >= '0' && digit <= '9') {
            value |= static_cast<unsigned>(digit - '0');
        } else if (digit >= 'a' && digit <= 'f') {
            value |= static_cast<unsigned>(digit - 'a' + 10);
        } else if (digit >= 'A' && digit <= 'F') {
            value |= static_cast<unsigned>(digit - 'A' + 10);
        } else {
            return std::nullopt;
        }
    }
    return value;
}

// Length of the escape at the start of |text| (a backslash first), 0 when it is not
// one this reader decodes: the simple ones, and \u for ASCII, the writer's \u00XX.
std::size_t escapeLength(std::string_view text)
{
    if (text.size() < 2) {
        return 0;
    }
    if (std::string_view(kSimpleEscapes).find(text[1]) != std::string_view::npos) {
        return 2;
    }
    if (text[1] != 'u' || text.size() < 6) {
        return 0;
    }
    const std::optional<unsigned> codePoint = hexValue(text.substr(2, 4));
    return codePoint && *codePoint < 0x80 ? 6 : 0;
}

// Length of the UTF-8 sequence at the start of |text| (a byte of 0x80 or more first)
// as the full reader's parser measures it: a lead byte announcing one to three
// continuation bytes, which must follow; 0 when it would refuse the sequence.
std::size_t sequenceLength(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t continuations = lead >= 0xF8   ? 0
                                      : lead >= 0xF0 ? 3
                                      : lead >= 0xE0 ? 2
                                      : lead >= 0xC0 ? 1
                                                     : 0;
    if (continuations == 0 || text.size() <= continuations) {
        return 0;
    }
    for (std::size_t index = 1; index <= continuations; ++index) {
        if ((static_cast<unsigned char>(text[index]) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return continuations + 1;
}

// True when none of the eight bytes at |bytes| needs a closer look: no control
// character, quotation mark, backslash or non-ASCII byte. Eight bytes a step, since
// contents are nearly all such bytes. (Each subtraction sets a byte's top bit only at
// or above a byte that matches, so an all-clear answer is exact.)
bool eightPlainBytes(const char* bytes)
{
    constexpr std::uint64_t kEach = 0x0101010101010101;
    constexpr std::uint64_t kTopBits = 0x8080808080808080;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    const std::uint64_t flagged = (word - 0x20 * kEach) | ((word ^ ('"' * kEach)) - kEach) |
                                  ((word ^ ('\\' * kEach)) - kEach) | word;
    return (flagged & kTopBits) == 0;
}

class Cursor
{
public:
    explicit Cursor(std::string_view text) : mRest(text) {}

    bool atEnd() const { return mRest.empty(); }

    bool skip(std::string_view literal)
    {
        if (!mRest.starts_with(literal)) {
            return false;
        }
        mRest.remove_prefix(literal.size());
        return true;
    }

    // A string in quotation marks; |raw| gets what stands between them.
    bool quoted(std::string_view& raw, bool escapesAllowed)
    {
        if (!skip("\"")) {
            return false;
        }
        std::size_t index = 0;
        while (index < mRest.size()) {
            if (index + 8 <= mRest.size() && eightPlainBytes(mRest.data() + index)) {
                index += 8;
                continue;
            }
            const auto byte = static_cast<unsigned char>(mRest[index]);
            if (byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\') {
                ++index;
                continue;
            }
            if (byte == '"') {
                raw = mRest.substr(0, index);
                mRest.remove_prefix(index + 1);
                return true;
            }
            if (byte < 0x20) {
                return false;
            }
            const std::size_t length =
                byte == '\\' ? (escapesAllowed ? escapeLength(mRest.substr(index)) : 0)
                             : sequenceLength(mRest.substr(index));
            if (length == 0) {
                return false;
            }
            index += length;
        }
        return false;
    }

private:
    std::string_view mRest;
};

} // namespace

bool QBInPlaceQuotesReader::forEachQuote(std::string_view document, const Visitor& visit)
{
    Cursor cursor(document);
    if (!cursor.skip(kOpening)) {
        return false;
    }
    if (cursor.skip(kNoQuotes)) {
        return cursor.atEnd();
    }
    if (!cursor.skip(kQuotesBegin)) {
        return false;
    }
    do {
        std::string_view uid;
        std::string_view content;
        // The full reader replaces an empty UID by a new one: that is not read in place.
        if (!cursor.skip(kUIDBegin) || !cursor.quoted(uid, false) || uid.empty() ||
            !cursor.skip(kContentBegin) || !cursor.quoted(content, true) ||
            !cursor.skip(kElementEnd)) {
            return false;
        }
        if (!visit(uid, content)) {
            return true;
        }
    } while (cursor.skip(kNextElement));
    return cursor.skip(kQuotesEnd) && cursor.atEnd();
}

std::size_t QBInPlaceQuotesReader::quoteCountBound(std::string_view document)
{
    // The fixed text around a quote, its four quotation marks and a UID of one byte.
    constexpr std::size_t kSmallestQuote =
        kUIDBegin.size() + kContentBegin.size() + kElementEnd.size() + 4 + 1;
    return document.size() / kSmallestQuote + 1;
}

std::string QBInPlaceQuotesReader::decodedContent(std::string_view escapedContent)
{
    std::string text;
    text.reserve(escapedContent.size());
    for (std::size_t index = 0; index < escapedContent.size(); ++index) {
        const char character = escapedContent[index];
        if (character != '\\' || index + 1 >= escapedContent.size()) {
            text += character;
            continue;
        }
        const char kind = escapedContent[++index];
        if (kind == 'u') {
            text += static_cast<char>(hexValue(escapedContent.substr(index + 1, 4)).value_or(0));
            index += 4;
        } else {
            const std::size_t escape = std::string_view(kSimpleEscapes).find(kind);
            text += escape == std::string_view::npos ? kind : kSimpleEscapeBytes[escape];
        }
    }
    return text;
}
