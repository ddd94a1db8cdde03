#include "import/QuoteExport.h"

#include "core/AtomicFileWriter.h"
#include "core/QuotesDocument.h"
#include "import/QuoteFile.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <sstream>
#include <system_error>

namespace {

using Format = QBQuoteExport::Format;

void writeSeparated(std::ostream& stream, const std::vector<CQuoteRecord>& quotes,
                    std::string_view separator)
{
    for (const CQuoteRecord& quote : quotes) {
        stream << quote.mContent << separator;
    }
}

void writeFormat(std::ostream& stream, const std::vector<CQuoteRecord>& quotes, Format format)
{
    switch (format) {
    case Format::Fortune:
        writeSeparated(stream, quotes, "\n%\n");
        return;
    case Format::Text:
        writeSeparated(stream, quotes, "\n\n");
        return;
    case Format::Json:
        writeQuotesDocument(stream, quotes);
        return;
    }
}

} // namespace

std::optional<Format> QBQuoteExport::formatNamed(const QString& name)
{
    for (const Format format : {Format::Fortune, Format::Text, Format::Json}) {
        if (name == fileSuffix(format) || (format == Format::Text && name == u"txt"))
            return format;
    }
    return std::nullopt;
}

Format QBQuoteExport::formatForPath(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == u"json")
        return Format::Json;
    if (suffix == u"txt")
        return Format::Text;
    return Format::Fortune;
}

QString QBQuoteExport::fileSuffix(Format format)
{
    switch (format) {
    case Format::Fortune:
        return QStringLiteral("fortune");
    case Format::Text:
        return QStringLiteral("text");
    case Format::Json:
        break;
    }
    return QStringLiteral("json");
}

QByteArray QBQuoteExport::exportedBytes(const std::vector<CQuoteRecord>& quotes, Format format)
{
    std::ostringstream stream;
    writeFormat(stream, quotes, format);
    const std::string bytes = std::move(stream).str();
    return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::optional<QString> QBQuoteExport::writeExport(const QString& path,
                                                  const std::vector<CQuoteRecord>& quotes,
                                                  Format format)
{
    try {
        replaceFileAtomically(QFile::encodeName(path).toStdString(),
                              [&](std::ostream& stream) { writeFormat(stream, quotes, format); });
    } catch (const std::system_error& error) {
        return QString::fromLocal8Bit(error.what());
    }
    return std::nullopt;
}

qsizetype QBQuoteExport::quotesNotReadingBack(const std::vector<CQuoteRecord>& quotes,
                                              Format format)
{
    if (format == Format::Json || quotes.empty())
        return 0;
    // Every quote read back cancels one like it; the quotes left over are lost.
    QHash<QString, qsizetype> readBack;
    for (const QString& quote :
         QBQuoteFile::fromBytes(exportedBytes(quotes, format)).likelyQuotes())
        ++readBack[quote];
    return std::count_if(quotes.cbegin(), quotes.cend(), [&readBack](const CQuoteRecord& quote) {
        const auto found = readBack.find(QString::fromStdString(quote.mContent));
        if (found == readBack.end() || found.value() == 0)
            return true;
        --found.value();
        return false;
    });
}
