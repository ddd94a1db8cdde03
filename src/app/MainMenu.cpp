#include "app/MainMenu.h"

#include "app/AppDelegate.h"
#include "core/AppIdentity.h"
#include "ui/HelpBook.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenuBar>

void installMainMenu(QMainWindow& window, QBAppDelegate& delegate)
{
    //% "&File"
    QMenu* fileMenu = window.menuBar()->addMenu(qtTrId("MenuFile"));
    // The window's own import and export commands, where people look for them first.
    for (const char* name : {"importQuotesAction", "exportQuotesAction"}) {
        if (auto* action = window.findChild<QAction*>(QString::fromLatin1(name)))
            fileMenu->addAction(action);
    }
    if (!fileMenu->isEmpty())
        fileMenu->addSeparator();
    //% "&Save"
    QAction* save = fileMenu->addAction(qtTrId("MenuFileSave"));
    save->setObjectName(QStringLiteral("saveAction"));
    save->setShortcut(QKeySequence::Save);
    QObject::connect(save, &QAction::triggered, &delegate, &QBAppDelegate::saveDocument);
    fileMenu->addSeparator();
    //% "&Quit"
    QAction* quit = fileMenu->addAction(qtTrId("MenuFileQuit"));
    quit->setObjectName(QStringLiteral("quitAction"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setMenuRole(QAction::QuitRole);
    // Queued: the action's own signal handling finishes before the loop winds down.
    QObject::connect(quit, &QAction::triggered, qApp, &QCoreApplication::quit,
                     Qt::QueuedConnection);

    //% "&Edit"
    QMenu* editMenu = window.menuBar()->addMenu(qtTrId("MenuEdit"));
    QBUndoManager* undoManager = &delegate.undoManager();
    //% "&Undo"
    QAction* undo = editMenu->addAction(qtTrId("MenuEditUndo"));
    undo->setObjectName(QStringLiteral("undoAction"));
    undo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    QObject::connect(undo, &QAction::triggered, undoManager, &QBUndoManager::undo);
    //% "&Redo"
    QAction* redo = editMenu->addAction(qtTrId("MenuEditRedo"));
    redo->setObjectName(QStringLiteral("redoAction"));
    redo->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    QObject::connect(redo, &QAction::triggered, undoManager, &QBUndoManager::redo);
    // The items name what they take back: "Undo Remove All".
    const auto followStacks = [undo, redo, undoManager] {
        undo->setEnabled(undoManager->canUndo());
        redo->setEnabled(undoManager->canRedo());
        const QString undoName = undoManager->canUndo() ? undoManager->undoActionName() : QString();
        const QString redoName = undoManager->canRedo() ? undoManager->redoActionName() : QString();
        //% "&Undo %1"
        const QString namedUndo = qtTrId("MenuEditUndoNamed").arg(undoName);
        //% "&Redo %1"
        const QString namedRedo = qtTrId("MenuEditRedoNamed").arg(redoName);
        undo->setText(undoName.isEmpty() ? qtTrId("MenuEditUndo") : namedUndo);
        redo->setText(redoName.isEmpty() ? qtTrId("MenuEditRedo") : namedRedo);
    };
    followStacks();
    QObject::connect(undoManager, &QBUndoManager::stackChanged, undo, followStacks);

    //% "&Help"
    QMenu* helpMenu = window.menuBar()->addMenu(qtTrId("MenuHelp"));
    // Without a help book in the bundle there is nothing to open, so no item either.
    if (!QBHelpBook::helpURL().isEmpty()) {
        //% "%1 &Help"
        QAction* help = helpMenu->addAction(
            qtTrId("MenuHelpBook").arg(QString::fromUtf8(qbidentity::kDisplayName)));
        help->setObjectName(QStringLiteral("helpBookAction"));
        help->setShortcut(QKeySequence::HelpContents);
        QObject::connect(help, &QAction::triggered, [] { QBHelpBook::openHelpAnchor(); });
        helpMenu->addSeparator();
    }
    //% "&About %1"
    QAction* about =
        helpMenu->addAction(qtTrId("MenuAbout").arg(QString::fromUtf8(qbidentity::kDisplayName)));
    about->setObjectName(QStringLiteral("aboutAction"));
    about->setMenuRole(QAction::AboutRole);
    QObject::connect(about, &QAction::triggered, &delegate, &QBAppDelegate::showAboutWindow);
}
