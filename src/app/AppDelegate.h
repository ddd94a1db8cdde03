#pragma once

#include "app/QuotesWindowController.h"
#include "ui/AboutWindow.h"
#include "util/UndoManager.h"

#include <QMainWindow>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class QBQuotesAutoSaver;

// Drives start-up and shut-down: establishes the log, prepares and loads the quotes
// database, opens the main window and registers the default settings. At exit it keeps the
// editor's open edit; every other change has already been saved by the auto-saver.
class QBAppDelegate : public QObject
{
    Q_OBJECT
public:
    explicit QBAppDelegate(QObject* parent = nullptr);
    ~QBAppDelegate() override;

    // The launch sequence, in order: logging, the launch line, telemetry, the quotes
    // database, the main window, the registered defaults.
    void applicationDidFinishLaunching();
    // Creates the shared folder, seeds the database on first launch, loads it and
    // starts the auto-saver. Without a database only a warning is logged.
    void initializeQuotesDB();
    // Keeps the editor's open edit (which saves it), then logs "Shutting down.".
    void applicationWillTerminate();
    // File > Save: writes the quotes now.
    void saveDocument();
    // Closing the main window ends the program.
    bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }
    // Help > About: one About window, made on first use.
    void showAboutWindow();
    // Another launch of the program asked for the window: shows, raises and activates it.
    void bringWindowToFront();
    // Files named on a command line or handed over by another launch: brings the window
    // to the front and imports them (|separator| as --separator names it, or empty).
    void importFiles(const QStringList& files, const QString& separator);

    // <user library folder>/Logs/<process name>.log, or empty without a library folder.
    static QString getPathToLogFile();

    QMainWindow* window() const;
    QBQuotesWindowController* quotesWindowController() const { return mQuotesWindowController; }
    QBAboutWindow* aboutWindowController() const { return mAboutWindow; }
    QBQuotesAutoSaver* autoSaver() const { return mAutoSaver.get(); }
    // The main window's undo manager, shared by every command that changes quotes.
    QBUndoManager& undoManager() { return mUndoManager; }

private:
    void showMainWindow();
    // Alerts of the model (the duplicate question) attach to the main window.
    void installAlerts();

    QBUndoManager mUndoManager;
    QPointer<QBQuotesWindowController> mQuotesWindowController;
    QPointer<QBAboutWindow> mAboutWindow;
    std::unique_ptr<QBQuotesAutoSaver> mAutoSaver;
};
