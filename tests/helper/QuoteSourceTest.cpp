#include "helper/QuoteSource.h"
#include "HelperWorld.h"
#include "TestHome.h"
#include "core/QuotesDocument.h"

#include <set>

#include <gtest/gtest.h>

namespace {

using Access = QBHelperQuoteSource::Access;
constexpr Access kAccesses[] = {Access::Mapped, Access::Copied};

// The in-place read and the application's full reader pick alike and share one cycle.
TEST(QuoteSourceTest, BothReadersAndBothAccessesShareOneCycle)
{
    QBTestHome home;
    const QStringList texts{QStringLiteral("One"), QStringLiteral("Two — 2"),
                            QStringLiteral("Three\n3")};
    const QStringList uids = helperworld::writeQuotes(texts);
    const auto content = [](Access access) {
        const QBHelperQuoteSource::Pick pick = QBHelperQuoteSource::nextQuote(access);
        EXPECT_TRUE(pick.problem.isEmpty()) << pick.problem.toStdString();
        return QString::fromStdString(pick.content.value_or(std::string()));
    };
    std::multiset<QString> round{content(Access::Mapped), content(Access::Copied)};
    // The same quotes on one line, which only the full reader takes: the round goes on.
    QByteArray compact = "{\"Quotes\":[";
    for (qsizetype i = 0; i < texts.size(); ++i) {
        compact += (i ? ",{\"UID\":\"" : "{\"UID\":\"") + uids[i].toUtf8() + "\",\"Content\":\"" +
                   texts[i].toUtf8().replace('\n', "\\n") + "\"}";
    }
    ASSERT_TRUE(writeFileBytes(helperworld::quotesDbPath(), compact + "]}"));
    round.insert(content(Access::Mapped));
    EXPECT_EQ(round, std::multiset<QString>(texts.cbegin(), texts.cend()));

    // UIDs the full reader replaces or decodes: the pick follows its records.
    for (const auto& [uid, text] : std::vector<std::pair<std::string, std::string>>{
             {"", "made up UID"},
             {"a\\/b", "escaped UID"},
             {"caf\\u00e9", "\\u00e9 \\ud83d\\ude00"}}) {
        const std::string document =
            R"({"Quotes": [{"UID": ")" + uid + R"(", "Content": ")" + text + R"("}]})";
        std::vector<CQuoteRecord> expected;
        readQuotesDocument(document, "test", expected);
        ASSERT_EQ(expected.size(), 1u);
        ASSERT_TRUE(
            writeFileBytes(helperworld::quotesDbPath(), QByteArray::fromStdString(document)));
        for (const Access access : kAccesses) {
            EXPECT_EQ(QBHelperQuoteSource::nextQuote(access).content, expected[0].mContent)
                << document;
        }
    }
}

} // namespace
