#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include "core/PlainQuotesReader.h"
#include "core/QuotesDocument.h"
#include "core/QuotesRepository.h"

#include "TestHome.h"

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>

#include <algorithm>
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

std::string appLayout(const std::vector<CQuoteRecord>& records)
{
    std::ostringstream stream;
    writeQuotesDocument(stream, records);
    return stream.str();
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

// The single-pass reader takes the usual shape itself and must give exactly what Boost's
// parser gives; everything else it hands back untouched.
TEST(QuotesFileTest, PlainReaderAgreesWithBoostAndLeavesOtherShapesToIt)
{
    const auto viaBoost = [](const std::string& document) -> std::optional<Pairs> {
        std::vector<CQuoteRecord> records;
        try {
            readQuotesDocumentWithBoost(document, "test", records);
        } catch (const std::exception&) {
            return std::nullopt;
        }
        return pairsOf(records);
    };
    const auto viaPlain = [](const std::string& document) -> std::optional<Pairs> {
        std::vector<CQuoteRecord> records{CQuoteRecord("kept", "earlier")};
        if (!readPlainQuotesDocument(document, records)) {
            EXPECT_EQ(records.size(), 1u) << document; // nothing half-read left behind
            return std::nullopt;
        }
        records.erase(records.begin());
        return pairsOf(records);
    };
    // The views front end, every string decoded; it must agree with the records.
    const auto viaViews = [](const std::string& document) -> std::optional<Pairs> {
        Pairs pairs;
        if (!forEachPlainQuote(document, [&pairs](std::string_view uid, std::string_view content) {
                pairs.emplace_back(decodedQuoteText(uid), decodedQuoteText(content));
                return true;
            })) {
            return std::nullopt;
        }
        EXPECT_LE(pairs.size(), plainQuoteCountBound(document));
        return pairs;
    };
    // The same through a source that hands out |piece| bytes at a time.
    const auto viaPieces = [](const std::string& document,
                              std::size_t piece) -> std::optional<Pairs> {
        std::size_t offset = 0;
        const QBByteSource source = [&](char* buffer, std::size_t capacity) {
            const std::size_t count = std::min({piece, capacity, document.size() - offset});
            document.copy(buffer, count, offset);
            offset += count;
            return count;
        };
        std::vector<CQuoteRecord> records;
        if (!readPlainQuotesDocument(source, document.size(), records)) {
            EXPECT_TRUE(records.empty()) << document;
            return std::nullopt;
        }
        return pairsOf(records);
    };
    const auto element = [](const std::string& uid, const std::string& content) {
        return "{\"UID\": \"" + uid + "\", \"Content\": \"" + content + "\"}";
    };
    // Taken by the plain reader: escapes, surrogate pairs, multi-byte and overlong UTF-8
    // (Boost checks only the byte structure), member order, whitespace, empty forms.
    const std::string plain[] = {
        R"({"Quotes": ""})",
        " \t\r\n{ \"Quotes\" : [ ] }\n",
        "{\"Quotes\": [" +
            element("a", R"(\"q\" \\ \/ \b\f\n\r\t \u00e9 \u20AC \ud83d\ude00 \u0000)") + "]}",
        "{\"Quotes\": [" + element("", "x") + ", {\"Content\": \"y\", \"UID\": \"b\"}]}",
        "{\"Quotes\": [" +
            element("c", "Gr\xc3\xbc\xc3\x9f \xe2\x82\xac \xf0\x9f\x98\x80 \xc0\x80 "
                         "\xed\xa0\x80 \xf7\xbf\xbf\xbf \x7f") +
            "]}",
        "{\"Quotes\": [" + element("d", std::string(50, 'z') + "\xc3\xa9" + std::string(9, 'w')) +
            ",\n" + element("e", "") + "]}",
        "{\"Quotes\": [" + element("a\\/b", "x") + "]}",
        appLayout({{"Line\nbreak\ttab\r\n\"quote\" back\\slash / slash", "u1"},
                   {std::string("controls \x01\x1f\b\f and nul ") + '\0' + "end", "u2"},
                   {"Gr\xc3\xbc\xc3\x9f \xe2\x80\x94 \xf0\x9f\x98\x80", "u3"},
                   {"", "u4"},
                   {"Plain words", "u1"}}), // a repeated UID stays repeated
        appLayout({}),
    };
    for (const std::string& document : plain) {
        const std::optional<Pairs> expected = viaBoost(document);
        ASSERT_TRUE(expected) << document;
        EXPECT_EQ(viaPlain(document), expected) << document;
        EXPECT_EQ(viaViews(document), expected) << document;
        for (const std::size_t piece : {1, 2, 3, 7, 64}) {
            EXPECT_EQ(viaPieces(document, piece), expected) << piece << ": " << document;
        }
        std::vector<CQuoteRecord> records;
        readQuotesDocument(document, "test", records);
        EXPECT_EQ(pairsOf(records), *expected) << document;
    }
    // Left to Boost's parser, which reads them or fails.
    const std::string other[] = {
        "\xef\xbb\xbf{\"Quotes\": []}",
        R"({"Quotes": "text"})",
        R"({"Version": 1, "Quotes": []})",
        "{\"Quotes\": [" + element("a", "x") + "], \"More\": 1}",
        R"({"Quotes": [{"UID": "a", "Content": "x", "Extra": 1}]})",
        R"({"Quotes": [{"UID": "a", "UID": "b", "Content": "x"}]})",
        R"({"Quotes": [{"U\u0049D": "a", "Content": "x"}]})",
        R"({"Quotes": [{"UID": 1, "Content": "x"}]})",
        R"({"Quotes": {"k": {"UID": "a", "Content": "x"}}})",
        R"({"Quotes": [{"UID": "a", "Content": "\ude00"}]})",
        R"({"Quotes": [{"UID": "a", "Content": "\ud83d"}]})",
        R"({"Quotes": [{"UID": "a", "Content": "\x"}]})",
        "{\"Quotes\": [" + element("a", "tab\there") + "]}",
        "{\"Quotes\": [" + element("a", "\xff") + "]}",
        "{\"Quotes\": [" + element("a", "\xc3(") + "]}",
        "{\"Quotes\": [" + element("a", "x") + ",]}",
        "{\"Quotes\": [" + element("a", "x") + "]} x",
    };
    for (const std::string& document : other) {
        EXPECT_EQ(viaPlain(document), std::nullopt) << document;
        EXPECT_EQ(viaViews(document), std::nullopt) << document;
        EXPECT_EQ(viaPieces(document, 3), std::nullopt) << document;
    }
    // A file of many buffers' worth, with one quote larger than a buffer, read back whole.
    QBTestHome home;
    const std::string path = home.stdPath(QStringLiteral("large.db"));
    std::vector<CQuoteRecord> large;
    for (int number = 0; number < 3000; ++number) {
        large.emplace_back("Quote \"" + std::to_string(number) + "\" \xc3\xa9\n" +
                               std::string(std::size_t(number % 200), 'x'),
                           "uid-" + std::to_string(number));
    }
    large.insert(large.begin() + 1500, CQuoteRecord(std::string(600000, 'L'), "huge"));
    writeQuotesFile(path, large);
    std::vector<CQuoteRecord> reread;
    readQuotesFile(path, reread);
    EXPECT_EQ(pairsOf(reread), pairsOf(large));
    std::ostringstream general;
    writeQuotesDocument(general, large);
    EXPECT_EQ(viaPieces(general.str() + " ", 100000), pairsOf(large));

    // Every cut of a real document: the plain reader never accepts what Boost refuses.
    const std::string whole = "{\"Quotes\": [" + element("a\xc3\xa9", "x\\u00e9\xe2\x82\xac\\n") +
                              ", " + element("b", "y") + "]}\n";
    for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        EXPECT_EQ(viaPlain(cut), std::nullopt) << cut;
        EXPECT_EQ(viaViews(cut), std::nullopt) << cut;
        EXPECT_EQ(viaPieces(cut, 5), std::nullopt) << cut;
        EXPECT_EQ(viaBoost(cut), std::nullopt) << cut;
    }
}

// A visitor that has what it needs stops the walk; the rest is not looked at.
TEST(QuotesFileTest, PlainQuoteWalkStopsWhenTheVisitorSaysSo)
{
    std::ostringstream document;
    writeQuotesDocument(document, {{"one", "u1"}, {"two", "u2"}});
    std::vector<std::string> uids;
    const auto firstOnly = [&uids](std::string_view uid, std::string_view) {
        uids.emplace_back(uid);
        return false;
    };
    EXPECT_TRUE(forEachPlainQuote(document.str(), firstOnly));
    EXPECT_TRUE(forEachPlainQuote(document.str() + "damage after the first", firstOnly));
    EXPECT_EQ(uids, (std::vector<std::string>{"u1", "u1"}));
}
