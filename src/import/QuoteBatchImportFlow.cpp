// The batch import flow: the part of QBQuoteBatchImportHelper that shows dialogs,
// alerts and the help, so it lives in the widgets library.
#include "import/BatchImportDialogs.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/TextFileReader.h"
#include "logging/ULog.h"
#include "ui/Alert.h"
#include "ui/HelpBook.h"

#include <QTimer>

#include <chrono>

namespace {

// Long enough for the file dialog to be gone when the alert comes up.
constexpr std::chrono::milliseconds kReadFailureAlertDelay(750);

void alertReadFailureLater(QBTextFileReader::Status status)
{
    QTimer::singleShot(kReadFailureAlertDelay, [status] {
        if (status == QBTextFileReader::Status::TooLarge) {
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

} // namespace

void QBQuoteBatchImportHelper::importFromTextFile()
{
    logInfoMessage("Initiating batch import.");
    QBBatchImportDialogs::askForBatchImportFileWithHandler(
        [](const QUrl& url) { importFromFile(url.toLocalFile()); });
}

void QBQuoteBatchImportHelper::importFromFile(const QString& path)
{
    logInfoMessage(QStringLiteral("Importing data from '") + path);
    QBTextFileReader::Result read = QBTextFileReader::readTextFile(path);
    if (!read.ok()) {
        logWarningMessage(QStringLiteral("Failed to read file: ") + read.error);
        alertReadFailureLater(read.status);
        return;
    }
    if (read.text.isEmpty()) {
        logWarningMessage("Failed to import: Contents of file empty?");
        return;
    }
    logDebugMessage(
        QStringLiteral("Read %1 characters as %2").arg(read.text.size()).arg(read.encoding));

    const QString text = normalizedLineEnds(std::move(read.text));
    const QStringList candidates = detectCandidateSeparators(text);
    logInfoMessage(QStringLiteral("Automatically detected %1 likely separators in input file")
                       .arg(candidates.size()));
    if (candidates.size() == 1) {
        importWithSeparator(text, candidates.first());
        return;
    }
    QBBatchImportDialogs::askUserForSeparatorToUse(
        candidates, [text](const QString& separator) { importWithSeparator(text, separator); });
}

void QBQuoteBatchImportHelper::importWithSeparator(const QString& normalizedText,
                                                   const QString& separator)
{
    if (separator.isEmpty()) {
        logInfoMessage("No separator specified - Aborting import.");
        return;
    }
    const QStringList pieces = splitText(normalizedText, separatorForSplitting(separator));
    if (pieces.size() < 2) {
        logWarningMessage(
            QStringLiteral("Failed to import: Quotes found in input file = %1").arg(pieces.size()));
        QBHelpBook::openHelpAnchor(QStringLiteral("QB_BATCH_IMPORT"));
        return;
    }
    logInfoMessage(QStringLiteral("Importing %1 quotes from input file").arg(pieces.size()));
    addQuotes(pieces);
}
