#include "core/QuotesRepository.h"

#include "TestHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

namespace {

TEST(SeedCollectionTest, IsVariedAttributedAndInTheStoresOwnFormat)
{
    std::vector<CQuoteRecord> records;
    ASSERT_NO_THROW(readQuotesFile(QB_SEED_PATH, records));
    QBTestHome home;
    const QString rewritten = home.filePath(QStringLiteral("rewritten.db"));
    writeQuotesFile(rewritten.toStdString(), records);
    EXPECT_EQ(readFileBytes(rewritten), readFileBytes(QStringLiteral(QB_SEED_PATH)));

    EXPECT_GE(records.size(), 40u);
    const std::regex uuidV4("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<std::string> uids;
    int multiLine = 0;
    int nonAscii = 0;
    for (const CQuoteRecord& record : records) {
        EXPECT_TRUE(std::regex_match(record.mUID, uuidV4)) << record.mUID;
        uids.insert(record.mUID);
        const size_t attribution = record.mContent.rfind("\n-- ");
        ASSERT_NE(attribution, std::string::npos) << record.mContent;
        const std::string quote = record.mContent.substr(0, attribution);
        multiLine += std::count(quote.begin(), quote.end(), '\n') >= 2;
        nonAscii += std::any_of(quote.begin(), quote.end(), [](char c) { return c & 0x80; });
    }
    EXPECT_EQ(uids.size(), records.size());
    EXPECT_GE(multiLine, 3);
    EXPECT_GE(nonAscii, 3);
}

} // namespace
