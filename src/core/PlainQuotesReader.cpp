#include "core/PlainQuotesReader.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace {

// Reads one document; every method returns false at the first byte it does not expect.
class PlainDocumentScanner
{
public:
    explicit PlainDocumentScanner(std::string_view bytes)
        : mCursor(bytes.data()), mEnd(bytes.data() + bytes.size())
    {}

    bool readInto(std::vector<CQuoteRecord>& records)
    {
        // Boost's parser skips three bytes after a leading 0xEF, whatever they are.
        if (mCursor != mEnd && static_cast<unsigned char>(*mCursor) == 0xEF) {
            return false;
        }
        if (!(take('{') && takeKey("Quotes"))) {
            return false;
        }
        if (takeEmptyString()) {
            return take('}') && atEnd();
        }
        if (!take('[')) {
            return false;
        }
        if (!take(']')) {
            const char* const firstElement = mCursor;
            if (!readElement(records)) {
                return false;
            }
            reserveLike(records, std::size_t(mCursor - firstElement));
            while (take(',')) {
                if (!readElement(records)) {
                    return false;
                }
            }
            if (!take(']')) {
                return false;
            }
        }
        return take('}') && atEnd();
    }

private:
    // Room for the rest, guessed from the size of the first element: growing the vector
    // step by step moved and first-touched its memory several times.
    void reserveLike(std::vector<CQuoteRecord>& records, std::size_t firstElementSize) const
    {
        const std::size_t remaining = std::size_t(mEnd - mCursor) / (firstElementSize + 1);
        records.reserve(records.size() + remaining + remaining / 4 + 1);
    }

    // Whitespace as JSON (and Boost) knows it.
    static bool isSpace(char byte)
    {
        return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t';
    }

    void skipSpace()
    {
        while (mCursor != mEnd && isSpace(*mCursor)) {
            ++mCursor;
        }
    }

    // |token| after optional whitespace.
    bool take(char token)
    {
        skipSpace();
        if (mCursor == mEnd || *mCursor != token) {
            return false;
        }
        ++mCursor;
        return true;
    }

    bool atEnd()
    {
        skipSpace();
        return mCursor == mEnd;
    }

    // "|name|" and the colon; keys with escapes are left to the general reader.
    bool takeKey(std::string_view name)
    {
        if (!take('"')) {
            return false;
        }
        if (std::size_t(mEnd - mCursor) < name.size() + 1 ||
            std::string_view(mCursor, name.size()) != name || mCursor[name.size()] != '"') {
            return false;
        }
        mCursor += name.size() + 1;
        return take(':');
    }

    bool takeEmptyString()
    {
        skipSpace();
        if (mEnd - mCursor >= 2 && mCursor[0] == '"' && mCursor[1] == '"') {
            mCursor += 2;
            return true;
        }
        return false;
    }

    // {"UID": "..", "Content": ".."} in either order.
    bool readElement(std::vector<CQuoteRecord>& records)
    {
        std::string uid;
        std::string content;
        if (!take('{')) {
            return false;
        }
        skipSpace();
        const bool uidFirst = mEnd - mCursor > 1 && mCursor[1] == 'U';
        std::string& first = uidFirst ? uid : content;
        std::string& second = uidFirst ? content : uid;
        if (!(takeKey(uidFirst ? "UID" : "Content") && readString(first) && take(',') &&
              takeKey(uidFirst ? "Content" : "UID") && readString(second) && take('}'))) {
            return false;
        }
        records.emplace_back(std::move(content), std::move(uid));
        return true;
    }

    // Number of continuation bytes after |lead|, or -1 where Boost's parser refuses the
    // byte: it checks only the structure (overlong forms and surrogates pass).
    static int continuationBytesAfter(unsigned char lead)
    {
        if (lead < 0xC0) {
            return -1;
        }
        if (lead < 0xE0) {
            return 1;
        }
        if (lead < 0xF0) {
            return 2;
        }
        return lead < 0xF8 ? 3 : -1;
    }

    bool readString(std::string& text)
    {
        if (!take('"')) {
            return false;
        }
        const char* run = mCursor;
        while (mCursor != mEnd) {
            skipPlainASCII();
            if (mCursor == mEnd) {
                break;
            }
            const auto byte = static_cast<unsigned char>(*mCursor);
            if (byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\') {
                ++mCursor;
                continue;
            }
            if (byte == '"' || byte == '\\') {
                text.append(run, mCursor);
                ++mCursor;
                if (byte == '"') {
                    return true;
                }
                if (!readEscape(text)) {
                    return false;
                }
                run = mCursor;
                continue;
            }
            const int continuation = byte < 0x20 ? -1 : continuationBytesAfter(byte);
            if (continuation < 0 || mEnd - mCursor <= continuation) {
                return false;
            }
            for (int index = 1; index <= continuation; ++index) {
                if ((static_cast<unsigned char>(mCursor[index]) & 0xC0) != 0x80) {
                    return false;
                }
            }
            mCursor += continuation + 1;
        }
        return false; // unterminated
    }

    // Skips printable ASCII other than '"' and '\\', eight bytes at a time while it can:
    // the bulk of every quote.
    void skipPlainASCII()
    {
        constexpr std::uint64_t kOnes = 0x0101010101010101;
        constexpr std::uint64_t kHighBits = 0x8080808080808080;
        const auto hasZeroByte = [](std::uint64_t word) {
            return ((word - kOnes) & ~word & kHighBits) != 0;
        };
        while (mEnd - mCursor >= 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, mCursor, sizeof word);
            const bool belowSpace = ((word - 0x20 * kOnes) & ~word & kHighBits) != 0;
            if ((word & kHighBits) != 0 || belowSpace || hasZeroByte(word ^ ('"' * kOnes)) ||
                hasZeroByte(word ^ ('\\' * kOnes))) {
                break;
            }
            mCursor += 8;
        }
    }

    bool readHexQuad(unsigned& value)
    {
        if (mEnd - mCursor < 4) {
            return false;
        }
        value = 0;
        for (int index = 0; index < 4; ++index, ++mCursor) {
            const char digit = *mCursor;
            unsigned nibble = 0;
            if (digit >= '0' && digit <= '9') {
                nibble = unsigned(digit - '0');
            } else if (digit >= 'a' && digit <= 'f') {
                nibble = unsigned(digit - 'a' + 10);
            } else if (digit >= 'A' && digit <= 'F') {
                nibble = unsigned(digit - 'A' + 10);
            } else {
                return false;
            }
            value = value * 16 + nibble;
        }
        return true;
    }

    // After the backslash.
    bool readEscape(std::string& text)
    {
        if (mCursor == mEnd) {
            return false;
        }
        const char kind = *mCursor++;
        switch (kind) {
        case '"':
        case '\\':
        case '/':
            text += kind;
            return true;
        case 'b':
            text += '\b';
            return true;
        case 'f':
            text += '\f';
            return true;
        case 'n':
            text += '\n';
            return true;
        case 'r':
            text += '\r';
            return true;
        case 't':
            text += '\t';
            return true;
        case 'u':
            return readCodePointReference(text);
        default:
            return false;
        }
    }

    bool readCodePointReference(std::string& text)
    {
        unsigned codePoint = 0;
        if (!readHexQuad(codePoint) || (codePoint & 0xFC00) == 0xDC00) {
            return false;
        }
        if ((codePoint & 0xFC00) == 0xD800) {
            unsigned low = 0;
            if (mEnd - mCursor < 2 || mCursor[0] != '\\' || mCursor[1] != 'u') {
                return false;
            }
            mCursor += 2;
            if (!readHexQuad(low) || (low & 0xFC00) != 0xDC00) {
                return false;
            }
            codePoint = 0x10000 + (((codePoint & 0x3FF) << 10) | (low & 0x3FF));
        }
        appendUTF8(text, codePoint);
        return true;
    }

    static void appendUTF8(std::string& text, unsigned codePoint)
    {
        const auto continuation = [](unsigned bits) { return char(0x80 | (bits & 0x3F)); };
        if (codePoint < 0x80) {
            text += char(codePoint);
        } else if (codePoint < 0x800) {
            text += char(0xC0 | (codePoint >> 6));
            text += continuation(codePoint);
        } else if (codePoint < 0x10000) {
            text += char(0xE0 | (codePoint >> 12));
            text += continuation(codePoint >> 6);
            text += continuation(codePoint);
        } else {
            text += char(0xF0 | (codePoint >> 18));
            text += continuation(codePoint >> 12);
            text += continuation(codePoint >> 6);
            text += continuation(codePoint);
        }
    }

    const char* mCursor;
    const char* const mEnd;
};

} // namespace

bool readPlainQuotesDocument(std::string_view bytes, std::vector<CQuoteRecord>& records)
{
    const std::size_t kept = records.size();
    if (PlainDocumentScanner(bytes).readInto(records)) {
        return true;
    }
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(kept), records.end());
    return false;
}
