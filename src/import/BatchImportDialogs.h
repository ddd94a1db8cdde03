#pragma once

#include "import/QuoteExport.h"
#include "import/QuoteTextAnalysis.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QAbstractButton;
class QProgressDialog;
class QWidget;
struct QBQuoteFile;

// The dialogs of importing and exporting, all window-modal on the main window and opened
// with open(), so the caller goes on at once and the answer comes through a handler.
// Without a main window nothing is shown and no handler runs. Main thread only.
class QBBatchImportDialogs
{
public:
    QBBatchImportDialogs() = delete;

    // The window the dialogs attach to (the quotes window).
    static void setParentWindow(QWidget* window);
    static QWidget* parentWindow();

    // Asks for the files to import; |handler| runs with their paths only when the user
    // confirms.
    static void askForBatchImportFileWithHandler(std::function<void(const QStringList&)> handler);
    // Offers the ways of cutting |file| into quotes, each with the number of quotes it
    // makes, the most likely one chosen and the first quotes of the chosen one shown.
    // A file that holds a single quote whichever way it is cut is offered as that quote.
    // |completionHandler| gets the choice, or nothing when the dialog is cancelled.
    static void askUserForSeparatorToUse(
        const QBQuoteFile& file,
        std::function<void(std::optional<QBSeparatorChoice>)> completionHandler);
    // Every radio button's action: logs its title and tag.
    static void radioButtonSelected(QAbstractButton* button);
    // A choice as its radio button shows it.
    static QString title(const QBSeparatorChoice& choice);

    // Shows how far reading |fileCount| files has come, with a Cancel button that runs
    // |cancelHandler| (as does closing its window). The caller moves it on with
    // setValue(). Nullptr without a main window.
    static QProgressDialog* openImportProgress(qsizetype fileCount,
                                               std::function<void()> cancelHandler);
    // Closes it without cancelling (nothing for nullptr).
    static void closeImportProgress(QProgressDialog* dialog);

    struct ExportRequest
    {
        QString path;
        QBQuoteExport::Format format = QBQuoteExport::Format::Fortune;
        bool selectionOnly = false;
    };
    // Asks where to export and in which format; |canExportSelection| offers "only the
    // selected quotes". |handler| runs only when the user confirms.
    static void askForExportFile(bool canExportSelection,
                                 std::function<void(const ExportRequest&)> handler);

    enum class LosingExportAnswer
    {
        ExportAsJson,
        ExportAnyway,
        Cancel,
    };
    // Says, before an export is written, that |lost| of its |total| quotes would not
    // read back as they are from |format|, and offers the JSON format, which keeps
    // them all. |handler| gets the answer (Cancel also for Escape).
    static void askAboutLosingExport(qsizetype lost, qsizetype total, QBQuoteExport::Format format,
                                     std::function<void(LosingExportAnswer)> handler);
};
