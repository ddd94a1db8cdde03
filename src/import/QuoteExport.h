#pragma once

#include "core/QuoteRecord.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

// Writes quotes to a file another program, another machine or a later import can read.
// The app's JSON always reads back through the import as the same quotes, byte for byte.
// The text formats cannot say everything: a quote holding a line "%" splits in a fortune
// file, and plain text is cut by guessing (a blank line inside a quote, a line break at
// its start or end, or a line such as "----" repeated across quotes cut it otherwise).
// quotesNotReadingBack() counts the quotes an export would lose, before it is written.
class QBQuoteExport
{
public:
    QBQuoteExport() = delete;

    enum class Format
    {
        Fortune, // quotes between lines "%"
        Text,    // quotes between blank lines
        Json,    // the collection's own document
    };

    // "fortune", "text", "json"; nothing for any other name.
    static std::optional<Format> formatNamed(const QString& name);
    // The format a file name suggests: ".json" the JSON, ".txt" plain text, else fortune.
    static Format formatForPath(const QString& path);
    static QString fileSuffix(Format format);

    static QByteArray exportedBytes(const std::vector<CQuoteRecord>& quotes, Format format);
    // Replaces |path| atomically (all or nothing, as the collection itself is saved).
    // Returns the reason on failure.
    static std::optional<QString>
    writeExport(const QString& path, const std::vector<CQuoteRecord>& quotes, Format format);
    // How many of |quotes| an import of their |format| export would not give back as
    // they are: the export is read back as the import reads a file, with the separator
    // it finds most likely.
    static qsizetype quotesNotReadingBack(const std::vector<CQuoteRecord>& quotes, Format format);
};
