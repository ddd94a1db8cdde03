#include "core/QuotesDocument.h"
#include "core/PlainQuotesReader.h"
#include "core/QuotesReaderCallbacks.h"

// The JSON reader includes the old boost/bind.hpp; keep its global placeholders quiet.
#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include <stdexcept>
#include <string_view>

namespace pt = boost::property_tree;

namespace {

const std::string kQuotesKey = "Quotes";
const std::string kUIDKey = "UID";
const std::string kContentKey = "Content";

// Output straight into the stream buffer: the stream's own operators cost a sentry
// per call. A short write marks the stream bad, as the operators would.
class DocumentPrinter
{
public:
    explicit DocumentPrinter(std::ostream& stream) : mStream(stream), mBuffer(*stream.rdbuf()) {}
    ~DocumentPrinter()
    {
        if (mFailed) {
            mStream.setstate(std::ios::badbit);
        }
    }
    DocumentPrinter(const DocumentPrinter&) = delete;
    DocumentPrinter& operator=(const DocumentPrinter&) = delete;

    void put(std::string_view text)
    {
        const auto size = static_cast<std::streamsize>(text.size());
        mFailed = mFailed || mBuffer.sputn(text.data(), size) != size;
    }

    // The string in quotation marks, escaped exactly as Boost's create_escapes does:
    // control characters, quotation mark, slash and backslash; bytes from 0x7F up stay raw.
    void putQuoted(std::string_view text)
    {
        put("\"");
        std::size_t runStart = 0;
        for (std::size_t index = 0; index < text.size(); ++index) {
            const auto byte = static_cast<unsigned char>(text[index]);
            if (byte >= 0x20 && byte != '"' && byte != '/' && byte != '\\') {
                continue;
            }
            put(text.substr(runStart, index - runStart));
            putEscape(byte);
            runStart = index + 1;
        }
        put(text.substr(runStart));
        put("\"");
    }

private:
    void putEscape(unsigned char byte)
    {
        switch (byte) {
        case '\b':
            put("\\b");
            return;
        case '\f':
            put("\\f");
            return;
        case '\n':
            put("\\n");
            return;
        case '\r':
            put("\\r");
            return;
        case '\t':
            put("\\t");
            return;
        case '/':
            put("\\/");
            return;
        case '"':
            put("\\\"");
            return;
        case '\\':
            put("\\\\");
            return;
        default:
            break;
        }
        static constexpr char kHexDigits[] = "0123456789ABCDEF";
        const char escape[] = {'\\', 'u', '0', '0', kHexDigits[byte >> 4], kHexDigits[byte & 0x0F]};
        put(std::string_view(escape, sizeof escape));
    }

    std::ostream& mStream;
    std::streambuf& mBuffer;
    bool mFailed = false;
};

// Children are added empty and filled in place: ptree has no move operations, so
// inserting filled subtrees would copy every string once more.
void appendLeaf(pt::ptree& parent, const std::string& key, const std::string& value)
{
    parent.push_back(pt::ptree::value_type(key, pt::ptree()))->second.data() = value;
}

} // namespace

void writeQuotesDocument(std::ostream& stream, const std::vector<CQuoteRecord>& records)
{
    DocumentPrinter printer(stream);
    if (records.empty()) {
        printer.put("{\n    \"Quotes\": \"\"\n}\n");
        return;
    }
    printer.put("{\n    \"Quotes\": [\n");
    for (std::size_t index = 0; index < records.size(); ++index) {
        printer.put("        {\n            \"UID\": ");
        printer.putQuoted(records[index].mUID);
        printer.put(",\n            \"Content\": ");
        printer.putQuoted(records[index].mContent);
        printer.put(index + 1 < records.size() ? "\n        },\n" : "\n        }\n");
    }
    printer.put("    ]\n}\n");
}

void writeQuotesDocumentWithPropertyTree(std::ostream& stream,
                                         const std::vector<CQuoteRecord>& records)
{
    pt::ptree root;
    pt::ptree& quotes = root.push_back(pt::ptree::value_type(kQuotesKey, pt::ptree()))->second;
    for (const CQuoteRecord& record : records) {
        pt::ptree& element =
            quotes.push_back(pt::ptree::value_type(std::string(), pt::ptree()))->second;
        appendLeaf(element, kUIDKey, record.mUID);
        appendLeaf(element, kContentKey, record.mContent);
    }
    pt::write_json(stream, root, true);
}

void readQuotesDocument(const std::string& bytes, const std::string& sourceName,
                        std::vector<CQuoteRecord>& records)
{
    if (!readPlainQuotesDocument(bytes, records)) {
        readQuotesDocumentWithBoost(bytes, sourceName, records);
    }
}

void readQuotesDocumentWithBoost(const std::string& bytes, const std::string& sourceName,
                                 std::vector<CQuoteRecord>& records)
{
    // Boost's parser, fed a plain character range and callbacks that keep only the
    // quotes: same grammar and errors as read_json, without building a tree.
    namespace detail = pt::json_parser::detail;
    QBQuotesReaderCallbacks callbacks;
    detail::encoding<char> encoding;
    detail::read_json_internal(bytes.data(), bytes.data() + bytes.size(), encoding, callbacks,
                               sourceName);
    if (!callbacks.foundQuotes()) {
        throw std::runtime_error(sourceName + ": no \"Quotes\" in the document");
    }
    records.reserve(records.size() + callbacks.elements().size());
    for (QBQuotesReaderCallbacks::Element& element : callbacks.elements()) {
        if (!element.uid || !element.content) {
            throw std::runtime_error(sourceName + ": a quote without \"UID\" or \"Content\"");
        }
        if (element.uid->empty()) {
            records.emplace_back(*element.content, *element.uid);
        } else {
            // The parsed strings are thrown away, so they are taken rather than copied.
            CQuoteRecord& record = records.emplace_back(std::string(), kUIDKey);
            record.mUID.swap(*element.uid);
            record.mContent.swap(*element.content);
        }
    }
}
