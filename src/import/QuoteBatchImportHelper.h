#pragma once

#include <QString>
#include <QStringList>

class QBUndoManager;

// Turns one plain-text file holding many quotes into quotes of the collection: reads
// it, normalises its line ends, works out which line separates the quotes by counting
// repeated lines, asks the user only when that is not clear, splits the text and adds
// the pieces as one undoable step. Class operations only; main thread.
//
// The flow, which shows dialogs, lives in the widgets library quillbox2_import_widgets
// (QuoteBatchImportFlow.cpp); the text work below it links no widgets.
class QBQuoteBatchImportHelper
{
public:
    QBQuoteBatchImportHelper() = delete;

    // The flow. Logs "Initiating batch import." and asks for a file on the main window
    // (QBBatchImportDialogs::setParentWindow); returns at once, the rest runs in the
    // dialogs' completions. Without a main window nothing is shown.
    static void importFromTextFile();
    // The flow from the chosen file on: read, check, detect, maybe ask, split, add.
    static void importFromFile(const QString& path);
    // The last step with the separator found or chosen for |normalizedText|: an empty
    // one aborts, fewer than two pieces open the help on importing, else the pieces go
    // to the collection.
    static void importWithSeparator(const QString& normalizedText, const QString& separator);

    // The text work.
    // "\r\n", then every remaining "\r", become "\n".
    static QString normalizedLineEnds(QString text);
    // Keys of the lines (trimmed; "\n" for a blank line) that occur at least twice and
    // in at least a tenth of the lines, most frequent first (equal counts: first seen
    // first). One pass over the text.
    static QStringList detectCandidateSeparators(const QString& normalizedText);
    // The text a candidate line stands for: "%" is "%\n", a blank line "\n" is "\n\n".
    static QString separatorForSplitting(const QString& candidate);
    // |text| cut at every |separator| (as given), empty and untrimmed pieces kept.
    static QStringList splitText(const QString& text, const QString& separator);

    // The undo manager an import files its undo step on (the quotes window's); without
    // one an import cannot be undone.
    static void setUndoManager(QBUndoManager* undoManager);
    // Adds the pieces to the collection (blank ones are skipped) as one undo step.
    static void addQuotes(const QStringList& pieces);
};
