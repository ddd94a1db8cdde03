#pragma once

#include "core/QuoteRecord.h"
#include "import/QuoteTextAnalysis.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

class QBUndoManager;

// What adding imported quotes did: how many came in, and which of the new records repeat
// a quote that was already in the collection.
struct QBImportResult
{
    qsizetype added = 0;
    std::vector<std::string> duplicateUIDs;
};

// Turns plain-text files holding many quotes into quotes of the collection: reads them,
// normalises their line ends, works out how the quotes are separated (QuoteTextAnalysis.h),
// asks the user only when that is not clear, and adds the quotes of every file as one
// undoable step with one summary. Class operations only; main thread (the files
// themselves are read on the thread pool).
//
// The flow, which shows dialogs, lives in the widgets library quillbox2_import_widgets
// (QuoteBatchImportFlow.cpp); the text work below it links no widgets.
class QBQuoteBatchImportHelper
{
public:
    QBQuoteBatchImportHelper() = delete;

    // The flow. Logs "Initiating batch import." and asks for files on the main window
    // (QBBatchImportDialogs::setParentWindow); returns at once, the rest runs in the
    // dialogs' completions. Without a main window nothing is shown.
    static void importFromTextFile();
    // The flow from the chosen files on: read, check, detect, maybe ask, add, report.
    // |separator|, when given, cuts every text file without asking.
    static void importFiles(const QStringList& paths,
                            const std::optional<QBSeparatorChoice>& separator = std::nullopt);
    static void importFromFile(const QString& path) { importFiles({path}); }
    // Whether an import is still reading its files (on the thread pool); questions and
    // adding the quotes come after.
    static bool isReadingFiles();
    // How long reading may take before its progress is shown (400 ms).
    static void setProgressDelay(std::chrono::milliseconds delay);

    // Asks where and in which format to export the collection (or |selection|, when the
    // user chooses it and it is not empty), writes the file and reports in the message bar.
    static void exportFromWindow(std::vector<CQuoteRecord> selection);

    // "\r\n", then every remaining "\r", become "\n".
    static QString normalizedLineEnds(QString text);

    // The undo manager an import files its undo step on (the quotes window's); without
    // one an import cannot be undone.
    static void setUndoManager(QBUndoManager* undoManager);
    static QBUndoManager* undoManager();
    // Adds the quotes to the collection (blank ones are skipped) as one undo step.
    static QBImportResult addQuotes(const QStringList& quotes);
    // Removes the repeated quotes an import added, as one undo step.
    static void skipDuplicates(const std::vector<std::string>& duplicateUIDs);
    // Tells the user what an import of |fileCount| files (the first named |firstFile|)
    // did, with a button to take it back or to drop the quotes that were there already.
    static QString summaryText(const QBImportResult& result, qsizetype fileCount,
                               const QString& firstFile, qsizetype failedFiles);
    static void postSummary(const QBImportResult& result, qsizetype fileCount,
                            const QString& firstFile, qsizetype failedFiles);
};
