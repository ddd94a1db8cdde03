#include "core/PlainQuotesReader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr char kSimpleEscapes[] = "\"\\/bfnrt";
constexpr char kSimpleEscapeBytes[] = "\"\\/\b\f\n\r\t";

// The four hexadecimal digits at |digits|.
bool hexQuadValue(const char* digits, unsigned& value)
{
    value = 0;
    for (int index = 0; index < 4; ++index) {
        const char digit = digits[index];
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

void appendUTF8(std::string& text, unsigned codePoint)
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

// Reads one document; every step returns false at the first byte it does not expect,
// or when it needs bytes beyond those at hand (then mNeedsMore is set).
class PlainDocumentScanner
{
public:
    // The whole document at once.
    explicit PlainDocumentScanner(std::string_view bytes)
        : mCursor(bytes.data()), mEnd(bytes.data() + bytes.size()), mSourceDone(true)
    {}
    // The document in pieces from |source|, about |expectedSize| bytes long.
    PlainDocumentScanner(const QBByteSource& source, std::size_t expectedSize)
        : mSource(&source), mExpectedSize(expectedSize)
    {}

    // Gives each element to |sink|.quote(uid, content) (still escaped views, valid during
    // the call) until that returns false, which ends the walk early with true; after the
    // first element, |sink|.sizeHint(bytes of that element, bytes left) once.
    template <typename Sink> bool walk(Sink& sink)
    {
        bool empty = false;
        if (!step([&] { return readHeader(empty); })) {
            return false;
        }
        if (empty) {
            return step([&] { return take('}') && atEnd(); });
        }
        bool closed = false;
        if (!step([&] { return takeIf(']', closed); })) {
            return false;
        }
        if (!closed) {
            const char* firstElement = nullptr;
            bool goOn = true;
            if (!step([&] {
                    firstElement = mCursor;
                    return readElement(sink, goOn);
                })) {
                return false;
            }
            if (!goOn) {
                return true;
            }
            sink.sizeHint(std::size_t(mCursor - firstElement), bytesLeft());
            bool more = true;
            while (more) {
                if (!step(
                        [&] { return takeIf(',', more) && (!more || readElement(sink, goOn)); })) {
                    return false;
                }
                if (!goOn) {
                    return true;
                }
            }
            if (!step([&] { return take(']'); })) {
                return false;
            }
        }
        return step([&] { return take('}') && atEnd(); });
    }

private:
    static constexpr std::size_t kChunkSize = 256 * 1024;

    // Runs |parse| from the current position; when it stopped for lack of bytes, reads
    // more and runs it again from the same position.
    template <typename Parse> bool step(Parse parse)
    {
        for (;;) {
            const char* const start = mCursor;
            mNeedsMore = false;
            if (parse()) {
                return true;
            }
            if (!mNeedsMore || mSourceDone) {
                return false;
            }
            readMore(start);
        }
    }

    // Keeps the bytes from |keep| on, at the front of the buffer, and appends what the
    // source gives next.
    void readMore(const char* keep)
    {
        const std::size_t kept = std::size_t(mEnd - keep);
        mBufferOffset += std::size_t(keep - mBuffer.get());
        if (kept == mCapacity) {
            mCapacity = std::max(kChunkSize, mCapacity * 2);
            auto larger = std::make_unique_for_overwrite<char[]>(mCapacity);
            if (kept != 0) {
                std::memcpy(larger.get(), keep, kept);
            }
            mBuffer = std::move(larger);
        } else if (kept != 0) {
            std::memmove(mBuffer.get(), keep, kept);
        }
        const std::size_t count = (*mSource)(mBuffer.get() + kept, mCapacity - kept);
        mSourceDone = count == 0;
        mCursor = mBuffer.get();
        mEnd = mCursor + kept + count;
    }

    // At least |count| more bytes at hand.
    bool have(std::ptrdiff_t count)
    {
        if (mEnd - mCursor >= count) {
            return true;
        }
        mNeedsMore = true;
        return false;
    }

    // {"Quotes": followed by "" (|empty|) or [.
    bool readHeader(bool& empty)
    {
        // Boost's parser skips three bytes after a leading 0xEF, whatever they are.
        if (have(1) && static_cast<unsigned char>(*mCursor) == 0xEF) {
            return false;
        }
        if (!(take('{') && takeKey("Quotes"))) {
            return false;
        }
        skipSpace();
        if (!have(2)) {
            return false;
        }
        empty = mCursor[0] == '"' && mCursor[1] == '"';
        if (empty) {
            mCursor += 2;
            return true;
        }
        return take('[');
    }

    // Bytes of the document after the cursor, as far as known.
    std::size_t bytesLeft() const
    {
        if (mSource == nullptr) {
            return std::size_t(mEnd - mCursor);
        }
        const std::size_t position = mBufferOffset + std::size_t(mCursor - mBuffer.get());
        return mExpectedSize > position ? mExpectedSize - position : 0;
    }

    // Whitespace as JSON (and Boost) knows it.
    static bool isSpace(char byte)
    {
        return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t';
    }

    void skipSpace()
    {
#if defined(__SSE2__)
        // The application's layout indents every line: runs of spaces, sixteen at a time.
        const __m128i space = _mm_set1_epi8(' ');
        const __m128i newline = _mm_set1_epi8('\n');
        const __m128i tab = _mm_set1_epi8('\t');
        const __m128i carriageReturn = _mm_set1_epi8('\r');
        while (mEnd - mCursor >= 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mCursor));
            const __m128i blank = _mm_or_si128(
                _mm_or_si128(_mm_cmpeq_epi8(bytes, space), _mm_cmpeq_epi8(bytes, newline)),
                _mm_or_si128(_mm_cmpeq_epi8(bytes, tab), _mm_cmpeq_epi8(bytes, carriageReturn)));
            const unsigned other = ~static_cast<unsigned>(_mm_movemask_epi8(blank)) & 0xFFFFu;
            if (other != 0) {
                mCursor += __builtin_ctz(other);
                return;
            }
            mCursor += 16;
        }
#endif
        while (have(1) && isSpace(*mCursor)) {
            ++mCursor;
        }
    }

    // |token| after optional whitespace.
    bool take(char token)
    {
        skipSpace();
        if (!have(1) || *mCursor != token) {
            return false;
        }
        ++mCursor;
        return true;
    }

    // |found|: whether |token| comes next (after optional whitespace); true unless more
    // bytes are needed to tell.
    bool takeIf(char token, bool& found)
    {
        skipSpace();
        if (!have(1)) {
            return false;
        }
        found = *mCursor == token;
        mCursor += found ? 1 : 0;
        return true;
    }

    // Only whitespace up to the end of the document.
    bool atEnd()
    {
        skipSpace();
        if (have(1)) {
            return false;
        }
        mNeedsMore = !mSourceDone;
        return mSourceDone;
    }

    // "|name|" and the colon; keys with escapes are left to the general reader.
    bool takeKey(std::string_view name)
    {
        if (!take('"') || !have(std::ptrdiff_t(name.size()) + 1)) {
            return false;
        }
        if (std::string_view(mCursor, name.size()) != name || mCursor[name.size()] != '"') {
            return false;
        }
        mCursor += name.size() + 1;
        return take(':');
    }

    // {"UID": "..", "Content": ".."} in either order, handed to |sink|; |goOn| gets its
    // answer. A retried step hands the element over only once it is whole.
    template <typename Sink> bool readElement(Sink& sink, bool& goOn)
    {
        std::string_view uid;
        std::string_view content;
        if (!take('{')) {
            return false;
        }
        skipSpace();
        if (!have(2)) {
            return false;
        }
        const bool uidFirst = mCursor[1] == 'U';
        std::string_view& first = uidFirst ? uid : content;
        std::string_view& second = uidFirst ? content : uid;
        if (!(takeKey(uidFirst ? "UID" : "Content") && readString(first) && take(',') &&
              takeKey(uidFirst ? "Content" : "UID") && readString(second) && take('}'))) {
            return false;
        }
        goOn = sink.quote(uid, content);
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

    // Checks a string as Boost's parser does; |raw| gets what stands between the
    // quotation marks, escapes and all.
    bool readString(std::string_view& raw)
    {
        if (!take('"')) {
            return false;
        }
        const char* const begin = mCursor;
        for (;;) {
            skipPlainASCII();
            if (!have(1)) {
                return false; // unterminated, or more to read
            }
            const auto byte = static_cast<unsigned char>(*mCursor);
            if (byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\') {
                ++mCursor;
                continue;
            }
            if (byte == '"') {
                raw = std::string_view(begin, std::size_t(mCursor - begin));
                ++mCursor;
                return true;
            }
            if (byte == '\\') {
                ++mCursor;
                if (!checkEscape()) {
                    return false;
                }
                continue;
            }
            const int continuation = byte < 0x20 ? -1 : continuationBytesAfter(byte);
            if (continuation < 0 || !have(continuation + 1)) {
                return false;
            }
            for (int index = 1; index <= continuation; ++index) {
                if ((static_cast<unsigned char>(mCursor[index]) & 0xC0) != 0x80) {
                    return false;
                }
            }
            mCursor += continuation + 1;
        }
    }

    // Skips printable ASCII other than '"' and '\\', sixteen bytes at a time where SSE2
    // is there (every x86-64), then eight at a time while it can: the bulk of every quote.
    void skipPlainASCII()
    {
#if defined(__SSE2__)
        const __m128i quote = _mm_set1_epi8('"');
        const __m128i backslash = _mm_set1_epi8('\\');
        const __m128i space = _mm_set1_epi8(0x20);
        while (mEnd - mCursor >= 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mCursor));
            // Signed, so bytes of 0x80 and above count as below the space too.
            const __m128i stop = _mm_or_si128(
                _mm_cmplt_epi8(bytes, space),
                _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, backslash)));
            const int mask = _mm_movemask_epi8(stop);
            if (mask != 0) {
                mCursor += __builtin_ctz(static_cast<unsigned>(mask));
                return;
            }
            mCursor += 16;
        }
#endif
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
        if (!have(4) || !hexQuadValue(mCursor, value)) {
            return false;
        }
        mCursor += 4;
        return true;
    }

    // After the backslash: one of the escapes JSON knows, a \u surrogate only as a pair.
    bool checkEscape()
    {
        if (!have(1)) {
            return false;
        }
        const char kind = *mCursor++;
        if (kind != 'u') {
            return std::string_view(kSimpleEscapes).find(kind) != std::string_view::npos;
        }
        unsigned codePoint = 0;
        if (!readHexQuad(codePoint) || (codePoint & 0xFC00) == 0xDC00) {
            return false;
        }
        if ((codePoint & 0xFC00) != 0xD800) {
            return true;
        }
        unsigned low = 0;
        if (!have(2) || mCursor[0] != '\\' || mCursor[1] != 'u') {
            return false;
        }
        mCursor += 2;
        return readHexQuad(low) && (low & 0xFC00) == 0xDC00;
    }

    const QBByteSource* mSource = nullptr;
    std::size_t mExpectedSize = 0;
    std::unique_ptr<char[]> mBuffer;
    std::size_t mCapacity = 0;
    std::size_t mBufferOffset = 0; // of the buffer's first byte in the document
    const char* mCursor = nullptr;
    const char* mEnd = nullptr;
    bool mSourceDone = false;
    bool mNeedsMore = false;
};

} // namespace

namespace {

// The records front end: decodes every string into a record.
class RecordSink
{
public:
    explicit RecordSink(std::vector<CQuoteRecord>& records) : mRecords(records) {}

    bool quote(std::string_view uid, std::string_view content)
    {
        mRecords.emplace_back(decodedQuoteText(content), decodedQuoteText(uid));
        return true;
    }

    // Room for the rest, guessed from the size of the first element: growing the vector
    // step by step moved and first-touched its memory several times.
    void sizeHint(std::size_t firstElementSize, std::size_t bytesLeft)
    {
        const std::size_t elements = bytesLeft / (firstElementSize + 1);
        mRecords.reserve(mRecords.size() + elements + elements / 4 + 1);
    }

private:
    std::vector<CQuoteRecord>& mRecords;
};

// The views front end: hands the still escaped strings on.
class VisitorSink
{
public:
    explicit VisitorSink(const QBPlainQuoteVisitor& visit) : mVisit(visit) {}

    bool quote(std::string_view uid, std::string_view content) { return mVisit(uid, content); }
    void sizeHint(std::size_t, std::size_t) {}

private:
    const QBPlainQuoteVisitor& mVisit;
};

bool readAllOrNothing(PlainDocumentScanner scanner, std::vector<CQuoteRecord>& records)
{
    const std::size_t kept = records.size();
    RecordSink sink(records);
    if (scanner.walk(sink)) {
        return true;
    }
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(kept), records.end());
    return false;
}

} // namespace

bool readPlainQuotesDocument(std::string_view bytes, std::vector<CQuoteRecord>& records)
{
    return readAllOrNothing(PlainDocumentScanner(bytes), records);
}

bool readPlainQuotesDocument(const QBByteSource& source, std::size_t expectedSize,
                             std::vector<CQuoteRecord>& records)
{
    return readAllOrNothing(PlainDocumentScanner(source, expectedSize), records);
}

bool forEachPlainQuote(std::string_view document, const QBPlainQuoteVisitor& visit)
{
    VisitorSink sink(visit);
    return PlainDocumentScanner(document).walk(sink);
}

std::size_t plainQuoteCountBound(std::string_view document)
{
    // The smallest element and its comma: {"UID":"x","Content":""},
    constexpr std::size_t kSmallestElement = 25;
    return document.size() / kSmallestElement + 1;
}

std::string decodedQuoteText(std::string_view escaped)
{
    std::size_t backslash = escaped.find('\\');
    if (backslash == std::string_view::npos) {
        return std::string(escaped);
    }
    std::string text;
    text.reserve(escaped.size());
    std::size_t run = 0;
    while (backslash != std::string_view::npos) {
        text.append(escaped.data() + run, backslash - run);
        const char kind = escaped[backslash + 1];
        run = backslash + 2;
        if (kind != 'u') {
            text += kSimpleEscapeBytes[std::string_view(kSimpleEscapes).find(kind)];
        } else {
            unsigned codePoint = 0;
            hexQuadValue(escaped.data() + run, codePoint);
            run += 4;
            if ((codePoint & 0xFC00) == 0xD800) {
                unsigned low = 0;
                hexQuadValue(escaped.data() + run + 2, low);
                run += 6;
                codePoint = 0x10000 + (((codePoint & 0x3FF) << 10) | (low & 0x3FF));
            }
            appendUTF8(text, codePoint);
        }
        backslash = escaped.find('\\', run);
    }
    text.append(escaped.data() + run, escaped.size() - run);
    return text;
}
