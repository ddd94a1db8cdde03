#include "helper/QuoteSource.h"
#include "HelperWorld.h"
#include "TestHome.h"
#include "core/QuotesDocument.h"

#include <set>
#include <sstream>

#include <gtest/gtest.h>

namespace {

std::string appLayout(const std::vector<CQuoteRecord>& records)
{
    std::ostringstream stream;
    writeQuotesDocument(stream, records);
    return stream.str();
}

TEST(QuoteSourceTest, BothLayoutsAndBothAccessesShareOneCycleAndOneSetOfProblems)
{
    QBTestHome home;
    using Access = QBHelperQuoteSource::Access;
    const QStringList texts{QStringLiteral("One"), QStringLiteral("Two — 2"),
                            QStringLiteral("Three\n3")};
    const QStringList uids = helperworld::writeQuotes(texts);
    const auto content = [](Access access) {
        const QBHelperQuoteSource::Pick pick = QBHelperQuoteSource::nextQuote(access);
        EXPECT_TRUE(pick.problem.isEmpty()) << pick.problem.toStdString();
        return QString::fromStdString(pick.content.value_or(std::string()));
    };
    std::set<QString> round{content(Access::Mapped), content(Access::Copied)};

    // The same quotes on one line: read by the full reader, the round goes on.
    std::string compact = "{\"Quotes\":[";
    for (qsizetype i = 0; i < texts.size(); ++i) {
        compact += (i ? ",{\"UID\":\"" : "{\"UID\":\"") + uids[i].toStdString() +
                   "\",\"Content\":\"" + texts[i].toStdString() + "\"}";
    }
    compact.replace(compact.find('\n'), 1, "\\n");
    ASSERT_TRUE(
        writeFileBytes(helperworld::quotesDbPath(), QByteArray::fromStdString(compact + "]}")));
    round.insert(content(Access::Mapped));
    EXPECT_EQ(round, std::set<QString>(texts.cbegin(), texts.cend()));

    for (const auto& [bytes, problem] : std::vector<std::pair<QByteArray, QString>>{
             {QByteArray::fromStdString(appLayout({})), QStringLiteral("holds no quotes")},
             {"{\"Quotes\":\"\"}", QStringLiteral("holds no quotes")},
             {"{\"Quotes\": [", QStringLiteral("cannot be read: ")},
             {"", QStringLiteral("cannot be read: ")}}) {
        ASSERT_TRUE(writeFileBytes(helperworld::quotesDbPath(), bytes));
        for (const Access access : {Access::Mapped, Access::Copied}) {
            const QBHelperQuoteSource::Pick pick = QBHelperQuoteSource::nextQuote(access);
            EXPECT_FALSE(pick.content) << bytes.toStdString();
            EXPECT_TRUE(pick.problem.contains(problem)) << pick.problem.toStdString();
        }
    }
}

// UIDs the full reader changes or decodes are not compared in place: the pick still
// follows the full reader's UIDs.
TEST(QuoteSourceTest, UIDsTheFullReaderChangesAreReadThroughIt)
{
    QBTestHome home;
    for (const auto& [uid, content] : std::vector<std::pair<std::string, std::string>>{
             {"", "made up UID"},
             {"a\\/b", "escaped UID"},
             {"caf\\u00e9", "\\u00e9 \\ud83d\\ude00"}}) {
        const std::string document =
            R"({"Quotes": [{"UID": ")" + uid + R"(", "Content": ")" + content + R"("}]})";
        std::vector<CQuoteRecord> expected;
        readQuotesDocument(document, "test", expected);
        ASSERT_EQ(expected.size(), 1u);
        ASSERT_TRUE(
            writeFileBytes(helperworld::quotesDbPath(), QByteArray::fromStdString(document)));
        for (const auto access :
             {QBHelperQuoteSource::Access::Mapped, QBHelperQuoteSource::Access::Copied}) {
            EXPECT_EQ(QBHelperQuoteSource::nextQuote(access).content, expected[0].mContent)
                << document;
        }
    }
}

} // namespace
