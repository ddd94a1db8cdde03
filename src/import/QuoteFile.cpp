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
    QBQuoteFile file = decoded(path, QBTextFileReader::readTextFile(path));
    if (file.ok() && !file.isCollection) {
        const std::optional<QBFortuneIndex> index = QBFortuneIndex::readBeside(path);
        file.fortuneIndexed = index.has_value();
        file.rotated = index && index->rotated;
        if (file.rotated)
            file.text = QBFortuneIndex::unrotated(std::move(file.text));
        file.analysis = index ? QBQuoteTextAnalysis::analyzeFortuneFile(file.text, index->delimiter)
                              : QBQuoteTextAnalysis::analyze(file.text);
    }
    return file;
}

QBQuoteFile QBQuoteFile::fromBytes(const QByteArray& bytes)
{
    QBQuoteFile file = decoded({}, QBTextFileReader::decodeText(bytes));
    if (file.ok() && !file.isCollection)
        file.analysis = QBQuoteTextAnalysis::analyze(file.text);
    return file;
}

// The file's text (or the reason it has none), and whether it is an exported collection.
QBQuoteFile QBQuoteFile::decoded(const QString& path, QBTextFileReader::Result read)
{
    QBQuoteFile file;
    file.path = path;
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
    return file;
}

QStringList QBQuoteFile::quotes(const QBSeparatorChoice& choice) const
{
    return isCollection ? collectionQuotes : choice.split(text);
}

QStringList QBQuoteFile::likelyQuotes() const
{
    if (isCollection)
        return collectionQuotes;
    return analysis.choices.isEmpty() ? QStringList{} : quotes(analysis.choices.first());
}
