// Reading and writing the quotes database document with Boost.PropertyTree.
// The JSON reader includes the old boost/bind.hpp; keep its global placeholders quiet.
#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include "core/AtomicFileWriter.h"
#include "core/QuotesRepository.h"
#include "logging/Log.h"

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include <sstream>

namespace pt = boost::property_tree;

namespace {

const std::string kQuotesKey = "Quotes";
const std::string kUIDKey = "UID";
const std::string kContentKey = "Content";

// Children are added empty and filled in place: ptree has no move operations, so
// inserting filled subtrees would copy every string once more.
void appendLeaf(pt::ptree& parent, const std::string& key, const std::string& value)
{
    parent.push_back(pt::ptree::value_type(key, pt::ptree()))->second.data() = value;
}

pt::ptree buildQuotesDocument(const std::vector<CQuoteRecord>& records)
{
    pt::ptree root;
    pt::ptree& quotes = root.push_back(pt::ptree::value_type(kQuotesKey, pt::ptree()))->second;
    for (const CQuoteRecord& record : records) {
        pt::ptree& element =
            quotes.push_back(pt::ptree::value_type(std::string(), pt::ptree()))->second;
        appendLeaf(element, kUIDKey, record.mUID);
        appendLeaf(element, kContentKey, record.mContent);
    }
    return root;
}

std::string quotesDocumentText(const std::vector<CQuoteRecord>& records)
{
    std::ostringstream stream;
    pt::write_json(stream, buildQuotesDocument(records), true);
    return std::move(stream).str();
}

} // namespace

void writeQuotesFile(const std::string& path, const std::vector<CQuoteRecord>& records)
{
    if (path.empty()) {
        logWarningMessage("No file path for quotes specified - Cannot save quotes.");
        return;
    }
    replaceFileAtomically(path, quotesDocumentText(records));
}

void readQuotesFile(const std::string& path, std::vector<CQuoteRecord>& records)
{
    pt::ptree root;
    pt::read_json(path, root);
    // Element keys are ignored, so members of an object are read like array elements.
    for (const auto& [key, element] : root.get_child(kQuotesKey)) {
        const std::string& uid = element.get_child(kUIDKey).data();
        const std::string& content = element.get_child(kContentKey).data();
        records.emplace_back(content, uid);
    }
}
