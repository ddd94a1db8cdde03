#include "core/QuoteRecord.h"

#include <cstdio>
#include <utility>

namespace {
constexpr std::size_t kDescriptionBufferSize = 512;
}

CQuoteRecord::CQuoteRecord() : mUID(generateUUIDString()) {}

CQuoteRecord::CQuoteRecord(std::string content, std::string uid)
    : mUID(uid.empty() ? generateUUIDString() : std::move(uid)), mContent(std::move(content))
{}

std::string CQuoteRecord::description() const
{
    return describe(this, mUID, mContent);
}

std::string CQuoteRecord::describe(const void* address, const std::string& uid,
                                   const std::string& content)
{
    // A fixed buffer keeps log lines about huge quotes short; the missing closing
    // brace is the established form of this text.
    char buffer[kDescriptionBufferSize];
    std::snprintf(buffer, sizeof buffer, "<CQuoteRecord %p> { mUID = %s, mContent = %s", address,
                  uid.c_str(), content.c_str());
    return buffer;
}
