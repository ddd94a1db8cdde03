// The batch import flow: the part of QBQuoteBatchImportHelper that shows dialogs and
// alerts, so it lives in the widgets library.
#include "core/QuotesRepository.h"
#include "import/BatchImportDialogs.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/QuoteFile.h"
#include "logging/ULog.h"
#include "ui/Alert.h"
#include "util/UserMessages.h"

#include <QFileInfo>
#include <QTimer>

#include <chrono>
#include <memory>

namespace {

// Long enough for the file dialog to be gone when the alert comes up.
constexpr std::chrono::milliseconds kReadFailureAlertDelay(750);

void alertReadFailureLater(QBQuoteFile::Status status)
{
    QTimer::singleShot(kReadFailureAlertDelay, [status] {
        if (status == QBQuoteFile::Status::TooLarge) {
            QBAlert::shared().warningWithTitle(
                //% "File Too Large"
                qtTrId("FileTooLarge"),
                //% "The provided file is larger than 64 MiB. Split it into smaller files and "
                //% "import them one by one."
                qtTrId("TheProvidedFileIsTooLargeToImport"));
            return;
        }
        QBAlert::shared().warningWithTitle(
            //% "File not Text"
            qtTrId("FileNotText"),
            //% "The provided file does not look like a text file"
            qtTrId("TheProvidedFileDoesNotLookLikeTextFile"));
    });
}

// One import of one or more files: each is read and cut in turn (asking when its
// separator is unclear), and the quotes of all of them are added at the end, as one
// undo step with one summary.
class ImportRun : public std::enable_shared_from_this<ImportRun>
{
public:
    ImportRun(QStringList paths, std::optional<QBSeparatorChoice> separator)
        : mPaths(std::move(paths)), mSeparator(std::move(separator))
    {}

    void next()
    {
        if (mNext == mPaths.size()) {
            finish();
            return;
        }
        const QString& path = mPaths[mNext++];
        logInfoMessage(QStringLiteral("Importing data from '") + path);
        QBQuoteFile file = QBQuoteFile::load(path);
        if (file.status == QBQuoteFile::Status::Empty) {
            logWarningMessage("Failed to import: Contents of file empty?");
            ++mFailed;
            next();
            return;
        }
        if (!file.ok()) {
            logWarningMessage(QStringLiteral("Failed to read file: ") + file.error);
            // One file: the alert says why. Several: the summary counts it.
            if (mPaths.size() == 1)
                alertReadFailureLater(file.status);
            ++mFailed;
            next();
            return;
        }
        logDebugMessage(
            QStringLiteral("Read %1 characters as %2").arg(file.text.size()).arg(file.encoding));
        if (file.isCollection) {
            logInfoMessage(QStringLiteral("Importing %1 quotes from an exported collection")
                               .arg(file.collectionQuotes.size()));
            take(file.collectionQuotes);
            return;
        }
        if (file.analysis.choices.isEmpty()) {
            logWarningMessage("Failed to import: Quotes found in input file = 0");
            ++mFailed;
            next();
            return;
        }
        if (mSeparator) {
            take(file.quotes(*mSeparator));
            return;
        }
        const QBQuoteTextAnalysis& analysis = file.analysis;
        logInfoMessage(QStringLiteral("Automatically detected %1 likely separators in input file")
                           .arg(analysis.choices.size()));
        if (analysis.clear) {
            take(file.quotes(analysis.choices.first()));
            return;
        }
        QBBatchImportDialogs::askUserForSeparatorToUse(
            file, [self = shared_from_this(), file](std::optional<QBSeparatorChoice> choice) {
                if (!choice) {
                    logInfoMessage("No separator specified - Aborting import.");
                    self->next();
                    return;
                }
                self->take(file.quotes(*choice));
            });
    }

private:
    void take(const QStringList& quotes)
    {
        logInfoMessage(QStringLiteral("Importing %1 quotes from input file").arg(quotes.size()));
        mQuotes << quotes;
        if (mImported++ == 0)
            mFirstImported = mPaths[mNext - 1];
        next();
    }

    void finish()
    {
        if (mImported == 0 && mFailed == mPaths.size() && mPaths.size() == 1)
            return; // the single file's own message says it all
        if (mImported == 0 && mFailed == 0)
            return; // cancelled
        const QBImportResult result =
            mImported > 0 ? QBQuoteBatchImportHelper::addQuotes(mQuotes) : QBImportResult{};
        QBQuoteBatchImportHelper::postSummary(result, mImported, mFirstImported, mFailed);
    }

    QStringList mPaths;
    std::optional<QBSeparatorChoice> mSeparator;
    qsizetype mNext = 0;
    qsizetype mImported = 0; // files whose quotes were taken
    qsizetype mFailed = 0;
    QString mFirstImported;
    QStringList mQuotes;
};

} // namespace

void QBQuoteBatchImportHelper::importFromTextFile()
{
    logInfoMessage("Initiating batch import.");
    QBBatchImportDialogs::askForBatchImportFileWithHandler(
        [](const QStringList& paths) { importFiles(paths); });
}

void QBQuoteBatchImportHelper::importFiles(const QStringList& paths,
                                           const std::optional<QBSeparatorChoice>& separator)
{
    if (!paths.isEmpty())
        std::make_shared<ImportRun>(paths, separator)->next();
}

void QBQuoteBatchImportHelper::exportFromWindow(std::vector<CQuoteRecord> selection)
{
    const bool canExportSelection = !selection.empty();
    QBBatchImportDialogs::askForExportFile(
        canExportSelection,
        [selection = std::move(selection)](const QBBatchImportDialogs::ExportRequest& request) {
            const std::vector<CQuoteRecord>& quotes =
                request.selectionOnly ? selection : CQuotesRepository::getInstance().mQuotes;
            logInfoMessage(QStringLiteral("Exporting %1 quotes as %2 to '%3'")
                               .arg(quotes.size())
                               .arg(QBQuoteExport::fileSuffix(request.format), request.path));
            QBUserMessage message;
            message.topic = QStringLiteral("export");
            if (const std::optional<QString> error =
                    QBQuoteExport::writeExport(request.path, quotes, request.format)) {
                logWarningMessage(QStringLiteral("Failed to export: ") + *error);
                message.kind = QBUserMessage::Kind::Error;
                //% "The quotes could not be exported to “%1”: %2"
                message.text = qtTrId("ExportFailed").arg(request.path, *error);
            } else {
                message.kind = QBUserMessage::Kind::Success;
                message.text = qtTrId("ExportSummary", static_cast<int>(quotes.size()))
                                   .arg(QFileInfo(request.path).fileName());
                if (const qsizetype unsafe =
                        QBQuoteExport::quotesHoldingTheirSeparator(quotes, request.format)) {
                    //% "%Ln of them hold their own separator and will not read back alone."
                    message.text +=
                        u' ' + qtTrId("ExportQuotesHoldingSeparator", static_cast<int>(unsafe));
                }
            }
            QBUserMessages::shared().show(message);
        });
}
