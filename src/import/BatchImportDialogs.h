#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>

class QAbstractButton;
class QWidget;

// The two dialogs of a batch import, both window-modal on the main window and opened
// with open(), so the caller goes on at once and the answer comes through a handler.
// Without a main window nothing is shown and no handler runs. Main thread only.
class QBBatchImportDialogs
{
public:
    QBBatchImportDialogs() = delete;

    // The window the dialogs attach to (the quotes window).
    static void setParentWindow(QWidget* window);
    static QWidget* parentWindow();

    // Asks for the file to import; |handler| runs with its URL only when the user
    // confirms.
    static void askForBatchImportFileWithHandler(std::function<void(const QUrl&)> handler);
    // Offers one radio button per candidate, in list order, none chosen at first.
    // |completionHandler| gets the chosen candidate, or an empty string when the dialog
    // ends without a choice (or is cancelled).
    static void askUserForSeparatorToUse(const QStringList& candidates,
                                         std::function<void(const QString&)> completionHandler);
    // Every radio button's action: logs its title and tag.
    static void radioButtonSelected(QAbstractButton* button);
    // A candidate as its radio button shows it: each newline as "⏎".
    static QString visibleForm(const QString& candidate);
};
