#pragma once

#include "signature/SignatureComposer.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <string>

// The collection as the helper sees it: quotes.db is read afresh whenever a quote is
// due, so a changed file counts at once and nothing stays in memory in between.
class QBHelperQuoteSource
{
public:
    enum class Access
    {
        // The file's pages are read where they are: the fastest way, for --print. A
        // program truncating the file in place during those milliseconds would end the
        // process (SIGBUS); the application itself always replaces the file.
        Mapped,
        // Read into memory first: for the long-running helper, which must survive that.
        Copied,
    };
    struct Pick
    {
        std::optional<std::string> content; // the quote's text
        QString problem; // why there is no quote to show; empty when there is one
        std::string uid; // the quote's UID when there is a content
    };
    // The next quote of the shared cycle (see QBQuoteCycle) among the quotes in the
    // database now, passing over those that do not fit the line limit of |settings|.
    static Pick nextQuote(Access access, const QBSignatureSettings& settings = {});

    // The next quote composed into the signature by the settings of the shared suite: the
    // one path of the rotation and the command line. Standard output always gets plain
    // text; a signature file named .html or .htm gets HTML.
    enum class Output
    {
        SignatureFile,
        StandardOutput,
    };
    struct Signature
    {
        QByteArray bytes;
        QString problem; // why there is nothing to write; empty when there is
        std::string uid; // the quote's UID when there are bytes
    };
    static Signature nextSignature(Access access, Output output);

    // Where the shuffled order of quotes is kept; empty without a container.
    static QString cycleStatePath();
};
