// libFuzzer target for the quotes database reader: any bytes must give records or an
// exception, never a crash, a hang or undefined behaviour.
#include "core/QuotesDocument.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::vector<CQuoteRecord> records;
    try {
        readQuotesDocument(std::string(reinterpret_cast<const char*>(data), size), "fuzz",
                           records);
    } catch (const std::exception&) {
        // A damaged document is an expected outcome.
    }
    return 0;
}
