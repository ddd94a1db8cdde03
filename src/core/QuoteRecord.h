#pragma once

#include <string>

// One quote: its identity (a UUID text) and its UTF-8 text. A plain value type.
class CQuoteRecord
{
public:
    // Empty content and a freshly generated identifier.
    CQuoteRecord();
    // An empty |uid| is replaced by a freshly generated identifier.
    CQuoteRecord(std::string content, std::string uid);

    // "<CQuoteRecord %p> { mUID = %s, mContent = %s", cut to 511 bytes.
    std::string description() const;
    // The same text for a record that stood at |address| with |uid| and |content|.
    static std::string describe(const void* address, const std::string& uid,
                                const std::string& content);

    std::string mUID;
    std::string mContent;
};

// A 36-character lower-case version-4 UUID text, e.g. "3f0c9a4e-7d21-4b8e-9c55-0e6a2f1d8b73".
std::string generateUUIDString();
