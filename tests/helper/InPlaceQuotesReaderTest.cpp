#include "helper/InPlaceQuotesReader.h"
#include "HelperWorld.h"
#include "TestHome.h"
#include "core/QuotesDocument.h"
#include "helper/QuoteSource.h"

#include <set>
#include <sstream>

#include <gtest/gtest.h>

namespace {

using Quotes = std::vector<std::pair<std::string, std::string>>;

// The quotes as the in-place reader gives them, or nothing when it refuses the text.
std::optional<Quotes> readInPlace(std::string_view document)
{
    Quotes quotes;
    if (!QBInPlaceQuotesReader::forEachQuote(
            document, [&quotes](std::string_view uid, std::string_view content) {
                quotes.emplace_back(uid, QBInPlaceQuotesReader::decodedContent(content));
                return true;
            })) {
        return std::nullopt;
    }
    return quotes;
}

Quotes readFully(const std::string& document)
{
    std::vector<CQuoteRecord> records;
    readQuotesDocument(document, "test", records);
    Quotes quotes;
    for (const CQuoteRecord& record : records) {
        quotes.emplace_back(record.mUID, record.mContent);
    }
    return quotes;
}

std::string appLayout(const std::vector<CQuoteRecord>& records)
{
    std::ostringstream stream;
    writeQuotesDocument(stream, records);
    return stream.str();
}

std::string oneQuote(const std::string& uid, const std::string& content)
{
    return "{\n    \"Quotes\": [\n        {\n            \"UID\": \"" + uid +
           "\",\n            \"Content\": \"" + content + "\"\n        }\n    ]\n}\n";
}

TEST(InPlaceQuotesReaderTest, ReadsTheApplicationsLayoutExactlyAsTheFullReader)
{
    const std::vector<CQuoteRecord> records{
        {"Plain words", "u1"},
        {"Line\nbreak\ttab\r\n", "u2"},
        {"quote \" back\\slash / slash", "u3"},
        {std::string("controls \x01\x1f\b\f and nul ") + '\0' + "end", "u4"},
        {"Grüße — ☃ 😀", "u5"},
        {"", "u6"},
        {"Plain words", "u1"}, // a repeated UID stays repeated
    };
    const std::string document = appLayout(records);
    ASSERT_EQ(readInPlace(document), readFully(document));
    EXPECT_EQ(readInPlace(document)->size(), records.size());

    // Other writers of the same layout: lowercase \u escapes, a raw slash.
    const std::string handWritten = oneQuote("u7", "a/b \\u001f \\u0041");
    EXPECT_EQ(readInPlace(handWritten), readFully(handWritten));

    const std::string empty = appLayout({});
    EXPECT_EQ(readInPlace(empty), Quotes());
    EXPECT_EQ(readFully(empty), Quotes());

    int visits = 0;
    EXPECT_TRUE(QBInPlaceQuotesReader::forEachQuote(document, [&visits](auto, auto) {
        ++visits;
        return false;
    }));
    EXPECT_EQ(visits, 1);
}

TEST(InPlaceQuotesReaderTest, LeavesEveryOtherLayoutAndEveryFaultToTheFullReader)
{
    const std::string good = oneQuote("u1", "text");
    const std::vector<std::pair<const char*, std::string>> refused{
        {"compact", R"({"Quotes":[{"UID":"u1","Content":"text"}]})"},
        {"empty array", "{\n    \"Quotes\": [\n    ]\n}\n"},
        {"empty UID (the full reader makes one)", oneQuote("", "text")},
        {"escaped UID", oneQuote("a\\/b", "text")},
        {"\\u beyond ASCII", oneQuote("u1", "caf\\u00e9")},
        {"surrogate pair", oneQuote("u1", "\\ud83d\\ude00")},
        {"unknown escape", oneQuote("u1", "\\x")},
        {"raw control character", oneQuote("u1", "a\tb")},
        {"stray continuation byte", oneQuote("u1", "a\x80z")},
        {"cut UTF-8 sequence", oneQuote("u1", "a\xE2\x80")},
        {"lead byte F8", oneQuote("u1", "a\xF8\x80\x80\x80\x80z")},
        {"byte-order mark", "\xEF\xBB\xBF" + good},
        {"garbage after the document", good + "x"},
        {"no final line break", good.substr(0, good.size() - 1)},
        {"cut short", good.substr(0, good.size() / 2)},
        {"nothing", ""},
    };
    ASSERT_TRUE(readInPlace(good));
    for (const auto& [what, document] : refused) {
        EXPECT_FALSE(readInPlace(document)) << what;
    }
}

TEST(InPlaceQuotesReaderTest, BothLayoutsAndBothAccessesShareOneCycleAndOneSetOfProblems)
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

} // namespace
