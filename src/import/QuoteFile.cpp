#include "import/QuoteFile.h"

#include "core/QuotesDocument.h"
#include "import/FortuneIndex.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/TextFileReader.h"

#include <exception>

namespace {

// The app's own export: a JSON document with its "Quotes". Anything else is text.
bool readCollection(const QString& text, QStringList& quotes)
{
    if (!text.trimmed().startsWith(u'{'))
        return false;
    std::vector<CQuoteRecord> records;
    try {
        readQuotesDocument(text.toStdString(), {}, records);
    } catch (const std::exception&) {
        return false;
    }
    for (const CQuoteRecord& record : records)
        quotes << QString::fromStdString(record.mContent);
    return true;
}

} // namespace

QBQuoteFile QBQuoteFile::load(const QString& path)
{
    QBQuoteFile file;
    file.path = path;
    QBTextFileReader::Result read = QBTextFileReader::readTextFile(path);
    if (!read.ok()) {
        file.status =
            read.status == QBTextFileReader::Status::TooLarge ? Status::TooLarge : Status::NotText;
        file.error = read.error;
        return file;
    }
    if (read.text.isEmpty()) {
        file.status = Status::Empty;
        file.error = QStringLiteral("the file is empty");
        return file;
    }
    file.status = Status::Ok;
    file.encoding = read.encoding;
    file.text = QBQuoteBatchImportHelper::normalizedLineEnds(std::move(read.text));
    file.isCollection = readCollection(file.text, file.collectionQuotes);
    if (file.isCollection)
        return file;
    if (const std::optional<QBFortuneIndex> index = QBFortuneIndex::readBeside(path)) {
        file.fortuneIndexed = true;
        file.rotated = index->rotated;
        if (file.rotated)
            file.text = QBFortuneIndex::unrotated(std::move(file.text));
        file.analysis = QBQuoteTextAnalysis::analyzeFortuneFile(file.text, index->delimiter);
    } else {
        file.analysis = QBQuoteTextAnalysis::analyze(file.text);
    }
    return file;
}

QStringList QBQuoteFile::quotes(const QBSeparatorChoice& choice) const
{
    return isCollection ? collectionQuotes : choice.split(text);
}
