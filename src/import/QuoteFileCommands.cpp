#include "import/QuoteFileCommands.h"

#include "core/AppIdentity.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/QuoteFile.h"

#include <exception>

namespace {

QString programName()
{
    return QString::fromUtf8(qbidentity::kProcessName);
}

} // namespace

void QBQuoteFileCommands::say(const QString& line)
{
    std::fputs((line + u'\n').toLocal8Bit().constData(), mOut);
    std::fflush(mOut);
}

void QBQuoteFileCommands::complain(const QString& line)
{
    std::fputs((programName() + u": " + line + u'\n').toLocal8Bit().constData(), mErr);
}

std::optional<QStringList>
QBQuoteFileCommands::quotesOf(const QStringList& paths,
                              const std::optional<QBSeparatorChoice>& separator, bool report)
{
    QStringList quotes;
    bool failed = false;
    for (const QString& path : paths) {
        const QBQuoteFile file = QBQuoteFile::load(path);
        if (!file.ok()) {
            //% "%1: cannot import: %2"
            complain(qtTrId("CommandLineCannotImport").arg(path, file.error));
            failed = true;
            continue;
        }
        QBSeparatorChoice choice = separator.value_or(file.analysis.choices.value(0));
        const QStringList fileQuotes = file.quotes(choice);
        if (report) {
            //% "%1: %Ln quote(s), separator “%2”"
            say(qtTrId("CommandLineDryRun", static_cast<int>(fileQuotes.size()))
                    .arg(path, file.isCollection ? QStringLiteral("json") : choice.name()));
        }
        quotes << fileQuotes;
    }
    if (failed)
        return std::nullopt;
    return quotes;
}

int QBQuoteFileCommands::dryRunImport(const QStringList& paths,
                                      const std::optional<QBSeparatorChoice>& separator)
{
    return quotesOf(paths, separator, true) ? 0 : 1;
}

bool QBQuoteFileCommands::loadCollection()
{
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
    const std::optional<std::string> path = QBQuotesDBHelper::getPathToQuotesDb();
    if (!QBQuotesDBHelper::fileExistsAtPath(path))
        QBQuotesDBHelper::copyDefaultQuotesToQuotesDb(path);
    if (!path) {
        //% "no place for the collection (is $HOME set?)"
        complain(qtTrId("CommandLineNoCollection"));
        return false;
    }
    CQuotesRepository& repository = CQuotesRepository::getInstance();
    repository.mFilePath = *path;
    if (QBQuotesDBHelper::fileExistsAtPath(path))
        repository.loadQuotes();
    if (repository.isSavingRefused()) {
        //% "%1: the collection cannot be read, so it is left alone"
        complain(qtTrId("CommandLineCollectionUnreadable").arg(QString::fromStdString(*path)));
        return false;
    }
    return true;
}

int QBQuoteFileCommands::importIntoCollection(const QStringList& paths,
                                              const std::optional<QBSeparatorChoice>& separator)
{
    const std::optional<QStringList> quotes = quotesOf(paths, separator, false);
    if (!quotes || !loadCollection())
        return 1;
    const QBImportResult result = QBQuoteBatchImportHelper::addQuotes(*quotes);
    CQuotesRepository& repository = CQuotesRepository::getInstance();
    repository.saveQuotes();
    // The save logs its failures; the file itself says whether the quotes are in it.
    std::vector<CQuoteRecord> saved;
    try {
        readQuotesFile(repository.mFilePath, saved);
    } catch (const std::exception&) {
    }
    if (saved.size() != repository.mQuotes.size()) {
        //% "%1: the collection could not be saved"
        complain(qtTrId("CommandLineCollectionNotSaved")
                     .arg(QString::fromStdString(repository.mFilePath)));
        return 1;
    }
    say(QBQuoteBatchImportHelper::summaryText(result, paths.size(), paths.value(0), 0));
    return 0;
}

int QBQuoteFileCommands::exportCollection(const QString& path, QBQuoteExport::Format format)
{
    const std::optional<std::string> collection = QBQuotesDBHelper::getPathToQuotesDb();
    std::vector<CQuoteRecord> quotes;
    if (QBQuotesDBHelper::fileExistsAtPath(collection)) {
        try {
            readQuotesFile(*collection, quotes);
        } catch (const std::exception&) {
            complain(
                qtTrId("CommandLineCollectionUnreadable").arg(QString::fromStdString(*collection)));
            return 1;
        }
    }
    if (const std::optional<QString> error = QBQuoteExport::writeExport(path, quotes, format)) {
        //% "%1: cannot export: %2"
        complain(qtTrId("CommandLineCannotExport").arg(path, *error));
        return 1;
    }
    //% "Exported %Ln quote(s) to “%1”."
    say(qtTrId("ExportSummary", static_cast<int>(quotes.size())).arg(path));
    if (const qsizetype lost = QBQuoteExport::quotesNotReadingBack(quotes, format)) {
        //% "%1: %Ln quote(s) will not read back as they are from this format; --format json "
        //% "keeps every quote."
        complain(qtTrId("CommandLineExportNotReadingBack", static_cast<int>(lost)).arg(path));
    }
    return 0;
}
