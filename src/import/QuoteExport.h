#pragma once

#include "core/QuoteRecord.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

// Writes quotes to a file another program, another machine or a later import can read.
// Every format reads back through the import as the same quotes, byte for byte, except
// where a quote holds its own separator (a line "%" in either text format, a blank line
// in plain text); the app's JSON always does.
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
    // How many of |quotes| would not read back alone from |format|.
    static qsizetype quotesHoldingTheirSeparator(const std::vector<CQuoteRecord>& quotes,
                                                 Format format);
};
