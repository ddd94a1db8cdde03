#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include "core/QuotesDocument.h"
#include "core/QuotesRepository.h"

#include "TestHome.h"

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>

#include <optional>
#include <sstream>

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

// (UID, Content) of each record; an identifier generated for an empty "UID" shows as "".
Pairs pairsOf(const std::vector<CQuoteRecord>& records)
{
    Pairs pairs;
    for (const CQuoteRecord& record : records) {
        pairs.emplace_back(record.mUID.size() == 36 ? "" : record.mUID, record.mContent);
    }
    return pairs;
}

// What reading means, spelled out with a property tree; nothing where it fails.
std::optional<Pairs> readThroughPropertyTree(const std::string& document)
{
    namespace pt = boost::property_tree;
    Pairs result;
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

TEST(QuotesFileTest, WritesTheExactPrettyPrintedDocument)
{
    QBTestHome home;
    const std::string path = home.stdPath(QStringLiteral("quotes.db"));
    const auto written = [&path](const std::vector<CQuoteRecord>& records) {
        writeQuotesFile(path, records);
        return readFileBytes(QString::fromStdString(path));
    };
    EXPECT_EQ(QByteArray("{\n    \"Quotes\": \"\"\n}\n"), written({}));
    EXPECT_EQ(QByteArray("{\n"
                         "    \"Quotes\": [\n"
                         "        {\n"
                         "            \"UID\": \"id-1\",\n"
                         "            \"Content\": \"First quote\"\n"
                         "        }\n"
                         "    ]\n"
                         "}\n"),
              written({CQuoteRecord("First quote", "id-1")}));
    const std::vector<CQuoteRecord> special = {
        CQuoteRecord("He said \"yes\" / no \\ maybe", "id-1"),
        CQuoteRecord("tab\there\nnext\r\x01 Gr\xc3\xbc\xc3\x9f"
                     "e \xe2\x82\xac",
                     "id-2")};
    EXPECT_EQ(QByteArray("{\n"
                         "    \"Quotes\": [\n"
                         "        {\n"
                         "            \"UID\": \"id-1\",\n"
                         "            \"Content\": \"He said \\\"yes\\\" \\/ no \\\\ maybe\"\n"
                         "        },\n"
                         "        {\n"
                         "            \"UID\": \"id-2\",\n"
                         "            \"Content\": \"tab\\there\\nnext\\r\\u0001 Gr\xc3\xbc\xc3\x9f"
                         "e \xe2\x82\xac\"\n"
                         "        }\n"
                         "    ]\n"
                         "}\n"),
              written(special));
    std::vector<CQuoteRecord> reread;
    readQuotesFile(path, reread);
    EXPECT_EQ(pairsOf(special), pairsOf(reread));
}

// The direct writer prints what Boost's writer prints, and the direct reader gives the
// records (or the failure) of a walk through Boost's property tree.
TEST(QuotesFileTest, DirectReaderAndWriterAgreeWithBoost)
{
    std::vector<CQuoteRecord> everyByte{CQuoteRecord("", "empty content")};
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        allBytes += static_cast<char>(byte);
        everyByte.emplace_back(std::string(1, static_cast<char>(byte)), std::to_string(byte));
    }
    everyByte.emplace_back(allBytes, allBytes);
    for (const auto& sample : {std::vector<CQuoteRecord>{}, everyByte}) {
        std::ostringstream direct;
        std::ostringstream reference;
        writeQuotesDocument(direct, sample);
        writeQuotesDocumentWithPropertyTree(reference, sample);
        EXPECT_EQ(reference.str(), direct.str());
    }
    const char* documents[] = {
        R"({"Quotes": [{"UID": "a", "Content": "x"}, {"Content": "y", "UID": ""}]})",
        R"({"Quotes": {"k1": {"UID": 1.5e3, "Content": null}, "k2": {"UID": false, "Content": -0}}})",
        R"({"Version": 2, "Quotes": {"k": {"Content": true, "UID": 12, "Extra": [1]}}})",
        R"({"Quotes": [{"UID": {"nested": "no"}, "Content": ["a", "b"]}]})",
        R"({"Quotes": [{"UID": "first", "UID": "second", "Content": "c", "Content": "d"}]})",
        R"({"Other": {"Quotes": []}, "Quotes": [{"UID": "u", "Content": "\u00e9\"\/"}], "Quotes": 1})",
        R"({"Quotes": [{"UID": "u", "Content": "c", "More": {"UID": "x", "Content": "y"}}]})",
        R"({"Quotes": ""})",
        R"({"Quotes": "text"})",
        R"({"Quotes": ["scalar"]})",
        R"([{"Quotes": []}])",
        R"({"Quotes": [{"UID": "u", "Content": "c"},]})",
    };
    for (const char* document : documents) {
        std::vector<CQuoteRecord> records;
        std::optional<Pairs> read;
        try {
            readQuotesDocument(document, "test", records);
            read = pairsOf(records);
        } catch (const std::exception&) {
        }
        EXPECT_EQ(readThroughPropertyTree(document), read) << document;
    }
}
