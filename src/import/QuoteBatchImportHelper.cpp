#include "import/QuoteBatchImportHelper.h"

#include "core/QuotesRepository.h"
#include "model/Actions.h"
#include "model/QuoteEditHelper.h"
#include "model/QuotesChangeBatch.h"
#include "util/StringUtilities.h"
#include "util/UndoManager.h"
#include "util/UserMessages.h"

#include <QFileInfo>
#include <QLocale>
#include <QPointer>

#include <algorithm>
#include <memory>
#include <unordered_set>

namespace {

QPointer<QBUndoManager>& importUndoManager()
{
    static QPointer<QBUndoManager> undoManager;
    return undoManager;
}

// Identifies the import steps on the undo manager.
const char kImportUndoTarget = 0;

bool isBlankQuote(const QString& quote)
{
    return stringByStrippingWhitespace(quote).isEmpty();
}

} // namespace

QString QBQuoteBatchImportHelper::normalizedLineEnds(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

void QBQuoteBatchImportHelper::setUndoManager(QBUndoManager* undoManager)
{
    importUndoManager() = undoManager;
}

QBUndoManager* QBQuoteBatchImportHelper::undoManager()
{
    return importUndoManager();
}

QBImportResult QBQuoteBatchImportHelper::addQuotes(const QStringList& quotes)
{
    QBUndoManager* undoManager = importUndoManager();
    auto& records = CQuotesRepository::getInstance().mQuotes;
    std::unordered_set<std::string> existing;
    existing.reserve(records.size());
    for (const CQuoteRecord& record : records)
        existing.insert(record.mContent);
    // Which of the quotes to add repeat one the collection has, in the order they are added.
    std::vector<bool> repeats;
    for (const QString& quote : quotes) {
        if (!isBlankQuote(quote))
            repeats.push_back(
                existing.contains(QBQuoteEditHelper::preprocessQuote(quote).toStdString()));
    }
    // Blank quotes are skipped, so a file of nothing but blanks leaves no step to undo.
    if (undoManager != nullptr && !repeats.empty()) {
        // Undo puts the whole collection back as it was before the import, and redo
        // as it was after it: the remove-all and add-all actions register each other.
        undoManager->registerUndoWithTarget(&kImportUndoTarget, [undoManager, before = records] {
            const auto clearImported = std::make_shared<QBAddAllQuotesAction>(
                undoManager, CQuotesRepository::getInstance().mQuotes);
            const auto restoreEarlier =
                std::make_shared<QBRemoveAllQuotesAction>(undoManager, before);
            clearImported->performUndo();
            restoreEarlier->performUndo();
        });
    }
    const std::size_t firstNew = records.size();
    QBQuoteEditHelper::addQuotesFromStringArray(quotes);

    QBImportResult result;
    result.added = static_cast<qsizetype>(records.size() - firstNew);
    for (std::size_t index = 0; index < repeats.size() && firstNew + index < records.size();
         ++index) {
        if (repeats[index])
            result.duplicateUIDs.push_back(records[firstNew + index].mUID);
    }
    return result;
}

void QBQuoteBatchImportHelper::skipDuplicates(const std::vector<std::string>& duplicateUIDs)
{
    QBUndoManager* undoManager = importUndoManager();
    const QBQuotesChangeBatch batch;
    if (undoManager != nullptr) {
        // A step of its own, even when the import's step is still open.
        undoManager->closeAutomaticGroup();
        undoManager->beginUndoGrouping();
    }
    QBQuoteEditHelper::removeQuotes(duplicateUIDs, undoManager);
    if (undoManager != nullptr)
        undoManager->endUndoGrouping();
}

QString QBQuoteBatchImportHelper::summaryText(const QBImportResult& result, qsizetype fileCount,
                                              const QString& firstFile, qsizetype failedFiles)
{
    const auto count = static_cast<int>(result.added);
    QString text = fileCount == 1
                       //% "Imported %Ln quote(s) from “%1”."
                       ? qtTrId("ImportSummaryOneFile", count).arg(QFileInfo(firstFile).fileName())
                       //% "Imported %Ln quote(s) from %1 files."
                       : qtTrId("ImportSummaryFiles", count).arg(QLocale().toString(fileCount));
    if (!result.duplicateUIDs.empty()) {
        //% "%Ln of them were already in the collection."
        text +=
            u' ' + qtTrId("ImportSummaryDuplicates", static_cast<int>(result.duplicateUIDs.size()));
    }
    if (failedFiles > 0) {
        //% "%Ln file(s) could not be read."
        text += u' ' + qtTrId("ImportSummaryUnreadableFiles", static_cast<int>(failedFiles));
    }
    return text;
}

void QBQuoteBatchImportHelper::postSummary(const QBImportResult& result, qsizetype fileCount,
                                           const QString& firstFile, qsizetype failedFiles)
{
    QBUserMessage message;
    message.kind = result.added > 0  ? QBUserMessage::Kind::Success
                   : failedFiles > 0 ? QBUserMessage::Kind::Warning
                                     : QBUserMessage::Kind::Information;
    message.topic = QStringLiteral("import");
    message.text = summaryText(result, fileCount, firstFile, failedFiles);
    QPointer<QBUndoManager> undoManager = importUndoManager();
    if (!result.duplicateUIDs.empty()) {
        //% "Skip Duplicates"
        message.actionText = qtTrId("ImportSkipDuplicatesButton");
        message.action = [uids = result.duplicateUIDs] { skipDuplicates(uids); };
    } else if (undoManager != nullptr && result.added > 0) {
        //% "Undo"
        message.actionText = qtTrId("ImportUndoButton");
        message.action = [undoManager] {
            if (undoManager != nullptr && undoManager->canUndo())
                undoManager->undo();
        };
    }
    QBUserMessages::shared().show(message);
}
