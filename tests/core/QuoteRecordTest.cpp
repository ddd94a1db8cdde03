#include "core/QuoteRecord.h"
#include "core/UUIDGenerator.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <mutex>
#include <regex>
#include <set>
#include <thread>
#include <vector>

namespace {

bool isVersion4UUIDText(const std::string& text)
{
    static const std::regex pattern(
        "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    return std::regex_match(text, pattern);
}

} // namespace

TEST(QuoteRecordTest, EveryConstructedRecordHasAnIdentifier)
{
    const CQuoteRecord fresh;
    EXPECT_TRUE(fresh.mContent.empty());
    EXPECT_TRUE(isVersion4UUIDText(fresh.mUID)) << fresh.mUID;

    const CQuoteRecord given("text", "any id");
    EXPECT_EQ("any id", given.mUID);
    EXPECT_EQ("text", given.mContent);

    const CQuoteRecord filledIn("text", "");
    EXPECT_TRUE(isVersion4UUIDText(filledIn.mUID)) << filledIn.mUID;
    EXPECT_NE(fresh.mUID, filledIn.mUID);
}

TEST(QuoteRecordTest, DescriptionShowsAddressAndFieldsCutTo511Bytes)
{
    const CQuoteRecord record("Short 100% text", "id-1");
    char address[32];
    std::snprintf(address, sizeof address, "%p", static_cast<const void*>(&record));
    EXPECT_EQ(std::string("<CQuoteRecord ") + address +
                  "> { mUID = id-1, mContent = Short 100% text",
              record.description());

    const CQuoteRecord longRecord(std::string(1000, 'x'), "id-2");
    const std::string description = longRecord.description();
    EXPECT_EQ(511u, description.size());
    EXPECT_EQ(std::string(20, 'x'), description.substr(491));
}

TEST(UUIDTest, WordsBecomeLittleEndianBytesWithVersionAndVariantBits)
{
    EXPECT_EQ("00010203-0405-4607-8809-0a0b0c0d0e0f",
              uuidTextFromWords({0x03020100, 0x07060504, 0x0b0a0908, 0x0f0e0d0c}));
    EXPECT_EQ("00000000-0000-4000-8000-000000000000", uuidTextFromWords({0, 0, 0, 0}));
    EXPECT_EQ("ffffffff-ffff-4fff-bfff-ffffffffffff",
              uuidTextFromWords({0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}));
}

TEST(UUIDTest, IdentifiersFromManyThreadsAreWellFormedAndUnique)
{
    constexpr int kThreads = 4;
    constexpr int kPerThread = 5000;
    std::mutex mutex;
    std::set<std::string> identifiers;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&] {
            std::vector<std::string> made;
            for (int index = 0; index < kPerThread; ++index) {
                made.push_back(generateUUIDString());
            }
            std::lock_guard<std::mutex> lock(mutex);
            identifiers.insert(made.begin(), made.end());
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(static_cast<std::size_t>(kThreads * kPerThread), identifiers.size());
    std::set<char> variants;
    for (const std::string& identifier : identifiers) {
        ASSERT_TRUE(isVersion4UUIDText(identifier)) << identifier;
        variants.insert(identifier[19]);
    }
    // The random bits around the fixed ones really vary.
    EXPECT_EQ(4u, variants.size());
}
