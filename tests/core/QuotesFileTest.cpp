#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include "core/QuotesDocument.h"
#include "core/QuotesRepository.h"

#include "TestHome.h"

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>

#include <optional>
#include <sstream>

namespace {

class QuotesFileTest : public ::testing::Test
{
protected:
    QByteArray writeAndRead(const std::vector<CQuoteRecord>& records)
    {
        writeQuotesFile(mPath, records);
        return readFileBytes(QString::fromStdString(mPath));
    }

    // Reads |document| and returns the records read until the end or the first fault.
    std::vector<CQuoteRecord> readDocument(const QByteArray& document, bool* failed)
    {
        writeFileBytes(QString::fromStdString(mPath), document);
        std::vector<CQuoteRecord> records;
        *failed = false;
        try {
            readQuotesFile(mPath, records);
        } catch (const std::exception&) {
            *failed = true;
        }
        return records;
    }

    QBTestHome mHome;
    const std::string mPath = mHome.stdPath(QStringLiteral("quotes.db"));
};

} // namespace

TEST_F(QuotesFileTest, WritesTheExactPrettyPrintedDocument)
{
    EXPECT_EQ(QByteArray("{\n    \"Quotes\": \"\"\n}\n"), writeAndRead({}));

    EXPECT_EQ(QByteArray("{\n"
                         "    \"Quotes\": [\n"
                         "        {\n"
                         "            \"UID\": \"id-1\",\n"
                         "            \"Content\": \"First quote\"\n"
                         "        }\n"
                         "    ]\n"
                         "}\n"),
              writeAndRead({CQuoteRecord("First quote", "id-1")}));

    const std::vector<CQuoteRecord> special = {
        CQuoteRecord("He said \"yes\" / no \\ maybe", "id-1"),
        CQuoteRecord("tab\there\nnext line\r\x01", "id-2"),
        CQuoteRecord("Gr\xc3\xbc\xc3\x9f"
                     "e \xe2\x82\xac",
                     "id-3")};
    EXPECT_EQ(QByteArray("{\n"
                         "    \"Quotes\": [\n"
                         "        {\n"
                         "            \"UID\": \"id-1\",\n"
                         "            \"Content\": \"He said \\\"yes\\\" \\/ no \\\\ maybe\"\n"
                         "        },\n"
                         "        {\n"
                         "            \"UID\": \"id-2\",\n"
                         "            \"Content\": \"tab\\there\\nnext line\\r\\u0001\"\n"
                         "        },\n"
                         "        {\n"
                         "            \"UID\": \"id-3\",\n"
                         "            \"Content\": \"Gr\xc3\xbc\xc3\x9f"
                         "e \xe2\x82\xac\"\n"
                         "        }\n"
                         "    ]\n"
                         "}\n"),
              writeAndRead(special));

    bool failed = true;
    const auto reread = readDocument(readFileBytes(QString::fromStdString(mPath)), &failed);
    EXPECT_FALSE(failed);
    ASSERT_EQ(special.size(), reread.size());
    for (std::size_t index = 0; index < special.size(); ++index) {
        EXPECT_EQ(special[index].mUID, reread[index].mUID);
        EXPECT_EQ(special[index].mContent, reread[index].mContent);
    }
}

TEST_F(QuotesFileTest, ReadingStopsAtEachKindOfFault)
{
    const QByteArray twoGood =
        R"({"Quotes": [{"UID": "a", "Content": "1"}, {"UID": "b", "Content": "2"},)";
    struct Case
    {
        const char* name;
        QByteArray document;
        std::size_t recordsRead;
    };
    const Case cases[] = {
        {"not JSON", "Quotes: none", 0},
        {"cut short", twoGood, 0},
        {"empty file", "", 0},
        {"no Quotes member", R"({"Other": []})", 0},
        {"element without Content", twoGood + R"({"UID": "c"}]})", 2},
        {"element without UID", twoGood + R"({"Content": "3"}]})", 2},
    };
    for (const Case& testCase : cases) {
        bool failed = false;
        EXPECT_EQ(testCase.recordsRead, readDocument(testCase.document, &failed).size())
            << testCase.name;
        EXPECT_TRUE(failed) << testCase.name;
    }
    std::vector<CQuoteRecord> records;
    EXPECT_ANY_THROW(readQuotesFile(mHome.stdPath(QStringLiteral("missing.db")), records));
}

TEST_F(QuotesFileTest, AcceptsLenientDocuments)
{
    bool failed = true;
    EXPECT_TRUE(readDocument(R"({"Quotes": ""})", &failed).empty());
    EXPECT_FALSE(failed);

    const auto records = readDocument(R"({"Version": 2, "Quotes": {
        "first": {"Content": true, "UID": 12, "Extra": [1]},
        "second": {"UID": "", "Content": "fresh"}}})",
                                      &failed);
    EXPECT_FALSE(failed);
    ASSERT_EQ(2u, records.size());
    EXPECT_EQ("12", records[0].mUID);
    EXPECT_EQ("true", records[0].mContent);
    EXPECT_EQ(36u, records[1].mUID.size());
    EXPECT_EQ("fresh", records[1].mContent);
}

TEST(QuotesDocumentTest, DirectWriterMatchesBoostWriterForEveryByte)
{
    std::vector<CQuoteRecord> records;
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte) {
        everyByte += static_cast<char>(byte);
        records.emplace_back(std::string(1, static_cast<char>(byte)), std::to_string(byte));
    }
    records.emplace_back(everyByte, everyByte);
    records.emplace_back("", "empty content");
    for (const auto& sample : {std::vector<CQuoteRecord>{}, records}) {
        std::ostringstream direct;
        std::ostringstream reference;
        writeQuotesDocument(direct, sample);
        writeQuotesDocumentWithPropertyTree(reference, sample);
        EXPECT_EQ(reference.str(), direct.str());
    }
}

namespace {

// What reading means, spelled out with a property tree: the tree-free reader must
// give the same records and fail in the same cases.
std::optional<std::vector<std::pair<std::string, std::string>>>
readThroughPropertyTree(const std::string& document)
{
    namespace pt = boost::property_tree;
    std::vector<std::pair<std::string, std::string>> result;
    try {
        std::istringstream stream(document);
        pt::ptree root;
        pt::read_json(stream, root);
        for (const auto& [key, element] : root.get_child("Quotes")) {
            result.emplace_back(element.get_child("UID").data(),
                                element.get_child("Content").data());
        }
    } catch (const std::exception&) {
        return std::nullopt;
    }
    return result;
}

} // namespace

TEST(QuotesDocumentTest, ReaderAgreesWithPropertyTreeWalk)
{
    const char* documents[] = {
        R"({"Quotes": [{"UID": "a", "Content": "x"}, {"Content": "y", "UID": "b"}]})",
        R"({"Quotes": {"k1": {"UID": 1.5e3, "Content": null}, "k2": {"UID": false, "Content": -0}}})",
        R"({"Quotes": [{"UID": {"nested": "no"}, "Content": ["a", "b"]}]})",
        R"({"Quotes": [{"UID": "first", "UID": "second", "Content": "c", "Content": "d"}]})",
        R"({"Other": {"Quotes": []}, "Quotes": [{"UID": "u", "Content": "\u00e9\"\/"}], "Quotes": 1})",
        R"({"Quotes": [{"UID": "u", "Content": "c", "More": {"UID": "x", "Content": "y"}}]})",
        R"({"Quotes": "text"})",
        R"({"Quotes": []})",
        R"({"Quotes": [["UID", "Content"]]})",
        R"({"Quotes": ["scalar"]})",
        R"([{"Quotes": []}])",
        R"("Quotes")",
        R"({"Quotes": [{"UID": "u", "Content": "c"},]})",
    };
    for (const char* document : documents) {
        std::vector<CQuoteRecord> records;
        std::optional<std::vector<std::pair<std::string, std::string>>> read;
        try {
            readQuotesDocument(document, "test", records);
            read.emplace();
            for (const CQuoteRecord& record : records) {
                // An empty "UID" came back as a fresh identifier; none of these is 36 long.
                read->emplace_back(record.mUID.size() == 36 ? "" : record.mUID, record.mContent);
            }
        } catch (const std::exception&) {
        }
        EXPECT_EQ(readThroughPropertyTree(document), read) << document;
    }
}
