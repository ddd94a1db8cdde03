#include "core/QuotesRepository.h"

#include "TestHome.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace {

bool hasNonAscii(const std::string& text)
{
    for (const char c : text) {
        if (static_cast<unsigned char>(c) > 0x7f) {
            return true;
        }
    }
    return false;
}

TEST(SeedCollectionTest, IsWrittenExactlyAsTheQuoteStoreWritesIt)
{
    std::vector<CQuoteRecord> records;
    ASSERT_NO_THROW(readQuotesFile(QB_SEED_PATH, records));
    QBTestHome home;
    const QString rewritten = home.filePath(QStringLiteral("rewritten.db"));
    writeQuotesFile(rewritten.toStdString(), records);
    EXPECT_EQ(readFileBytes(rewritten), readFileBytes(QStringLiteral(QB_SEED_PATH)));
}

TEST(SeedCollectionTest, HoldsEnoughVariedAttributedQuotes)
{
    std::vector<CQuoteRecord> records;
    readQuotesFile(QB_SEED_PATH, records);
    EXPECT_GE(records.size(), 40u);

    const std::regex uuidV4("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<std::string> uids;
    int multiLine = 0;
    int nonAscii = 0;
    for (const CQuoteRecord& record : records) {
        EXPECT_TRUE(std::regex_match(record.mUID, uuidV4)) << record.mUID;
        uids.insert(record.mUID);
        // Every quote ends in its attribution line.
        const size_t attribution = record.mContent.rfind("\n-- ");
        EXPECT_NE(attribution, std::string::npos) << record.mContent;
        const std::string quote = record.mContent.substr(0, attribution);
        multiLine += std::count(quote.begin(), quote.end(), '\n') >= 2 ? 1 : 0;
        nonAscii += hasNonAscii(quote) ? 1 : 0;
    }
    EXPECT_EQ(uids.size(), records.size());
    EXPECT_GE(multiLine, 3);
    EXPECT_GE(nonAscii, 3);
}

} // namespace
