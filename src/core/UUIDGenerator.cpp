#include "core/UUIDGenerator.h"
#include "core/QuoteRecord.h"

#include <mutex>
#include <random>

namespace {

// A seed sequence that hands the engine raw words from the system's random device, so
// every one of the 624 state words comes straight from /dev/urandom. The engine's
// seed() then applies the usual rule against an all-zero state.
class RandomDeviceSeedSequence
{
public:
    using result_type = std::uint32_t;

    template <typename Iterator> void generate(Iterator first, Iterator last)
    {
        std::random_device device("/dev/urandom");
        for (; first != last; ++first) {
            *first = static_cast<result_type>(device());
        }
    }
};

std::mt19937& sharedGenerator()
{
    static std::mt19937 generator = [] {
        std::mt19937 engine;
        RandomDeviceSeedSequence seedSequence;
        engine.seed(seedSequence);
        return engine;
    }();
    return generator;
}

std::mutex& generatorMutex()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace

std::string uuidTextFromWords(const std::array<std::uint32_t, 4>& words)
{
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        bytes[index] = static_cast<std::uint8_t>(words[index / 4] >> (8 * (index % 4)));
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);

    static constexpr char kHexDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(36);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        text += kHexDigits[bytes[index] >> 4];
        text += kHexDigits[bytes[index] & 0x0F];
        if (index == 3 || index == 5 || index == 7 || index == 9) {
            text += '-';
        }
    }
    return text;
}

std::string generateUUIDString()
{
    std::array<std::uint32_t, 4> words{};
    {
        std::mt19937& generator = sharedGenerator();
        std::lock_guard<std::mutex> lock(generatorMutex());
        for (std::uint32_t& word : words) {
            word = static_cast<std::uint32_t>(generator());
        }
    }
    return uuidTextFromWords(words);
}
