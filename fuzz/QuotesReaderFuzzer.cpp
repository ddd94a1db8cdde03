// libFuzzer target for the quotes database reader: any bytes must give records or an
// exception, never a crash, a hang or undefined behaviour; and whatever the single-pass
// reader accepts, Boost's parser must read to the same records, and its views front end
// must decode to them too.
#include "core/PlainQuotesReader.h"
#include "core/QuotesDocument.h"

#include <algorithm>
#include <cstdlib>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

namespace {

// Generated identifiers (for empty ones) differ from run to run; compare the rest.
bool sameRecords(const std::vector<CQuoteRecord>& left, const std::vector<CQuoteRecord>& right)
{
    if (left.size() != right.size()) {
        return false;
    }
    for (std::size_t index = 0; index < left.size(); ++index) {
        const bool generated = left[index].mUID.size() == 36 && right[index].mUID.size() == 36;
        if (left[index].mContent != right[index].mContent ||
            (!generated && left[index].mUID != right[index].mUID)) {
            return false;
        }
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::vector<CQuoteRecord> records;
    try {
        readQuotesDocument(bytes, "fuzz", records);
    } catch (const std::exception&) {
        // A damaged document is an expected outcome.
    }
    std::vector<CQuoteRecord> plain;
    const bool accepted = readPlainQuotesDocument(bytes, plain);
    // Read in pieces of a size taken from the input, the result must be the same.
    std::size_t offset = 0;
    const std::size_t piece = size == 0 ? 1 : 1 + data[0] % 61;
    const QBByteSource source = [&](char* buffer, std::size_t capacity) {
        const std::size_t count = std::min({piece, capacity, size - offset});
        bytes.copy(buffer, count, offset);
        offset += count;
        return count;
    };
    // The views front end accepts the same and decodes to the same.
    std::vector<CQuoteRecord> viewed;
    const bool viewAccepted =
        forEachPlainQuote(bytes, [&viewed](std::string_view uid, std::string_view content) {
            viewed.emplace_back(decodedQuoteText(content), decodedQuoteText(uid));
            return true;
        });
    if (viewAccepted != accepted || (accepted && !sameRecords(plain, viewed))) {
        std::abort();
    }
    std::vector<CQuoteRecord> pieces;
    if (readPlainQuotesDocument(source, size, pieces) != accepted ||
        (accepted && !sameRecords(plain, pieces))) {
        std::abort();
    }
    if (accepted) {
        std::vector<CQuoteRecord> general;
        try {
            readQuotesDocumentWithBoost(bytes, "fuzz", general);
        } catch (const std::exception&) {
            std::abort(); // accepted a document Boost refuses
        }
        if (!sameRecords(plain, general)) {
            std::abort();
        }
    }
    return 0;
}
