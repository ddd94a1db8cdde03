#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include "StoreToolCollections.h"
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
std::optional<Pairs> viaTree(const std::string& document)
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

std::optional<Pairs> viaBoost(const std::string& document)
{
    std::vector<CQuoteRecord> records;
    try {
        readQuotesDocumentWithBoost(document, "test", records);
    } catch (const std::exception&) {
        return std::nullopt;
    }
    return pairsOf(records);
}

// The single-pass reader through its three front ends (the whole text, the helper's
// views, and a source handing out |piece| bytes at a time), which must agree; nothing
// when it leaves the document to Boost, and then no half-read records either.
std::optional<Pairs> viaPlain(const std::string& document, std::size_t piece = 3)
{
    std::vector<CQuoteRecord> records{CQuoteRecord("kept", "earlier")};
    const bool accepted = readPlainQuotesDocument(document, records);
    records.erase(records.begin());
    EXPECT_TRUE(accepted || records.empty()) << document;

    Pairs viewed;
    const bool viewAccepted =
        forEachPlainQuote(document, [&viewed](std::string_view uid, std::string_view content) {
            viewed.emplace_back(decodedQuoteText(uid), decodedQuoteText(content));
            return true;
        });
    std::size_t offset = 0;
    const QBByteSource source = [&](char* buffer, std::size_t capacity) {
        const std::size_t count = std::min({piece, capacity, document.size() - offset});
        document.copy(buffer, count, offset);
        offset += count;
        return count;
    };
    std::vector<CQuoteRecord> pieces;
    const bool piecesAccepted = readPlainQuotesDocument(source, document.size(), pieces);
    EXPECT_EQ(viewAccepted, accepted) << document;
    EXPECT_EQ(piecesAccepted, accepted) << piece << ": " << document;
    if (!accepted) {
        return std::nullopt;
    }
    EXPECT_EQ(viewed, pairsOf(records)) << document;
    EXPECT_EQ(pairsOf(pieces), pairsOf(records)) << piece << ": " << document;
    EXPECT_LE(viewed.size(), plainQuoteCountBound(document));
    return pairsOf(records);
}

std::string element(const std::string& uid, const std::string& content)
{
    return "{\"UID\": \"" + uid + "\", \"Content\": \"" + content + "\"}";
}

} // namespace

// The direct writer prints what Boost's writer prints, for every byte value.
TEST(QuotesFileTest, WriterPrintsBoostsDocumentByteForByte)
{
    EXPECT_EQ("{\n    \"Quotes\": \"\"\n}\n", documentOf({}));
    std::vector<CQuoteRecord> everyByte{CQuoteRecord("", "empty content")};
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        allBytes += static_cast<char>(byte);
        everyByte.emplace_back(std::string(1, static_cast<char>(byte)), std::to_string(byte));
    }
    everyByte.emplace_back(allBytes, allBytes);
    for (const auto& sample : {std::vector<CQuoteRecord>{}, everyByte}) {
        std::ostringstream reference;
        writeQuotesDocumentWithPropertyTree(reference, sample);
        EXPECT_EQ(reference.str(), documentOf(sample));
    }
}

// Reading gives the records (or the failure) of a walk through Boost's property tree;
// the single-pass reader takes the usual shape itself and leaves the rest to Boost.
TEST(QuotesFileTest, ReadingMeansWhatWalkingBoostsTreeMeans)
{
    const std::string general[] = {
        R"({"Quotes": {"k1": {"UID": 1.5e3, "Content": null}, "k2": {"UID": false, "Content": -0}}})",
        R"({"Version": 2, "Quotes": {"k": {"Content": true, "UID": 12, "Extra": [1]}}})",
        R"({"Quotes": [{"UID": {"nested": "no"}, "Content": ["a", "b"]}]})",
        R"({"Quotes": [{"UID": "first", "UID": "second", "Content": "c", "Content": "d"}]})",
        R"({"Other": {"Quotes": []}, "Quotes": [{"UID": "u", "Content": "\u00e9\"\/"}], "Quotes": 1})",
        R"({"Quotes": [{"UID": "u", "Content": "c", "More": {"UID": "x", "Content": "y"}}]})",
        R"({"Quotes": [{"U\u0049D": "a", "Content": "x"}]})",
        R"({"Quotes": [{"UID": 1, "Content": "x"}]})",
        R"({"Quotes": [{"UID": "a", "Content": "\x"}]})",
        R"({"Quotes": "text"})",
        R"({"Quotes": ["scalar"]})",
        R"([{"Quotes": []}])",
        "\xef\xbb\xbf{\"Quotes\": []}",
        R"({"Quotes": [{"UID": "a", "Content": "\ude00"}]})",
        R"({"Quotes": [{"UID": "a", "Content": "\ud83d"}]})",
        "{\"Quotes\": [" + element("a", "tab\there") + "]}",
        "{\"Quotes\": [" + element("a", "\xff") + "]}",
        "{\"Quotes\": [" + element("a", "\xc3(") + "]}",
        "{\"Quotes\": [" + element("a", "x") + ",]}",
        "{\"Quotes\": [" + element("a", "x") + "]} x",
    };
    for (const std::string& document : general) {
        std::vector<CQuoteRecord> records;
        std::optional<Pairs> read;
        try {
            readQuotesDocument(document, "test", records);
            read = pairsOf(records);
        } catch (const std::exception&) {
        }
        EXPECT_EQ(viaTree(document), read) << document;
        EXPECT_EQ(viaPlain(document), std::nullopt) << document;
    }
    // Taken by the plain reader: escapes, surrogate pairs, multi-byte and overlong UTF-8
    // (Boost checks only the byte structure), member order, whitespace, empty forms.
    const std::string plain[] = {
        R"({"Quotes": ""})",
        " \t\r\n{ \"Quotes\" : [ ] }\n",
        "{\"Quotes\": [" +
            element("a", R"(\"q\" \\ \/ \b\f\n\r\t \u00e9 \u20AC \ud83d\ude00 \u0000)") + "]}",
        "{\"Quotes\": [" + element("", "x") + ", {\"Content\": \"y\", \"UID\": \"a\\/b\"}]}",
        "{\"Quotes\": [" +
            element("c", "Gr\xc3\xbc\xc3\x9f \xe2\x82\xac \xf0\x9f\x98\x80 \xc0\x80 "
                         "\xed\xa0\x80 \xf7\xbf\xbf\xbf \x7f") +
            "]}",
        "{\"Quotes\": [" + element("d", std::string(50, 'z') + "\xc3\xa9" + std::string(9, 'w')) +
            ",\n" + element("e", "") + "]}",
        documentOf({{"Line\nbreak\ttab\r\n\"quote\" back\\slash / slash", "u1"},
                    {std::string("controls \x01\x1f\b\f and nul ") + '\0' + "end", "u2"},
                    {"", "u4"},
                    {"Plain words", "u1"}}), // a repeated UID stays repeated
    };
    for (const std::string& document : plain) {
        const std::optional<Pairs> expected = viaTree(document);
        ASSERT_TRUE(expected) << document;
        EXPECT_EQ(viaBoost(document), expected) << document;
        std::vector<CQuoteRecord> records;
        readQuotesDocument(document, "test", records);
        EXPECT_EQ(pairsOf(records), expected) << document;
        for (const std::size_t piece : {1, 2, 7, 64}) {
            EXPECT_EQ(viaPlain(document, piece), expected) << document;
        }
    }
    // Every cut of a real document: the plain reader never accepts what Boost refuses.
    const std::string whole = "{\"Quotes\": [" + element("a\xc3\xa9", "x\\u00e9\xe2\x82\xac\\n") +
                              ", " + element("b", "y") + "]}\n";
    for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        EXPECT_EQ(viaPlain(cut, 5), std::nullopt) << cut;
        EXPECT_EQ(viaBoost(cut), std::nullopt) << cut;
    }
}

// Runs of plain text and of whitespace are skipped in blocks: wherever in a block the byte
// that ends a run falls, the plain reader takes and refuses what Boost's tree does.
TEST(QuotesFileTest, BlockSkippingStopsAtEveryByteThatMattersWhereverItFalls)
{
    const std::string stops[] = {"\\n",  "\\\"", "\xc3\xa9", "\x7f",
                                 "\x1f", "\t",   "\xff",     "\xe2\x82y"};
    for (std::size_t offset = 0; offset < 34; ++offset) {
        for (const std::string& stop : stops) {
            const std::string indent(offset, ' ');
            const std::string document =
                "{\"Quotes\": [\n" + indent + element("u", std::string(offset, 'x') + stop + "zz") +
                ",\r\n" + indent + "\t" + element("v", std::string(40, 'w')) + "\n]}";
            EXPECT_EQ(viaPlain(document), viaTree(document)) << offset << ": " << document;
        }
    }
}

// A file of many buffers' worth, with one quote larger than a buffer, reads back whole.
TEST(QuotesFileTest, LargeFileReadsBackWhole)
{
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
    EXPECT_EQ(viaPlain(documentOf(large) + " ", 100000), pairsOf(large));
}

// A visitor that has what it needs stops the walk; the rest is not looked at.
TEST(QuotesFileTest, PlainQuoteWalkStopsWhenTheVisitorSaysSo)
{
    const std::string document = documentOf({{"one", "u1"}, {"two", "u2"}});
    std::vector<std::string> uids;
    const auto firstOnly = [&uids](std::string_view uid, std::string_view) {
        uids.emplace_back(uid);
        return false;
    };
    EXPECT_TRUE(forEachPlainQuote(document, firstOnly));
    EXPECT_TRUE(forEachPlainQuote(document + "damage after the first", firstOnly));
    EXPECT_EQ(uids, (std::vector<std::string>{"u1", "u1"}));
}
