#include "app/MainMenu.h"

#include "app/AppDelegate.h"
#include "ui/HelpBook.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenuBar>

void installMainMenu(QMainWindow& window, QBAppDelegate& delegate)
{
    QMenu* fileMenu = window.menuBar()->addMenu(QApplication::translate("MainMenu", "&File"));
    QAction* save = fileMenu->addAction(QApplication::translate("MainMenu", "&Save"));
    save->setObjectName(QStringLiteral("saveAction"));
    save->setShortcut(QKeySequence::Save);
    QObject::connect(save, &QAction::triggered, &delegate, &QBAppDelegate::saveDocument);
    fileMenu->addSeparator();
    QAction* quit = fileMenu->addAction(QApplication::translate("MainMenu", "&Quit"));
    quit->setObjectName(QStringLiteral("quitAction"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setMenuRole(QAction::QuitRole);
    // Queued: the action's own signal handling finishes before the loop winds down.
    QObject::connect(quit, &QAction::triggered, qApp, &QCoreApplication::quit,
                     Qt::QueuedConnection);

    QMenu* editMenu = window.menuBar()->addMenu(QApplication::translate("MainMenu", "&Edit"));
    QBUndoManager* undoManager = &delegate.undoManager();
    QAction* undo = editMenu->addAction(QApplication::translate("MainMenu", "&Undo"));
    undo->setObjectName(QStringLiteral("undoAction"));
    undo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    QObject::connect(undo, &QAction::triggered, undoManager, &QBUndoManager::undo);
    QAction* redo = editMenu->addAction(QApplication::translate("MainMenu", "&Redo"));
    redo->setObjectName(QStringLiteral("redoAction"));
    redo->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    QObject::connect(redo, &QAction::triggered, undoManager, &QBUndoManager::redo);
    const auto followStacks = [undo, redo, undoManager] {
        undo->setEnabled(undoManager->canUndo());
        redo->setEnabled(undoManager->canRedo());
    };
    followStacks();
    QObject::connect(undoManager, &QBUndoManager::stackChanged, undo, followStacks);

    QMenu* helpMenu = window.menuBar()->addMenu(QApplication::translate("MainMenu", "&Help"));
    // Without a help book in the bundle there is nothing to open, so no item either.
    if (!QBHelpBook::helpURL().isEmpty()) {
        //% "%1 Help"
        QAction* help =
            helpMenu->addAction(qtTrId("MenuHelpBook").arg(QApplication::applicationDisplayName()));
        help->setObjectName(QStringLiteral("helpBookAction"));
        help->setShortcut(QKeySequence::HelpContents);
        QObject::connect(help, &QAction::triggered, [] { QBHelpBook::openHelpAnchor(); });
        helpMenu->addSeparator();
    }
    QAction* about = helpMenu->addAction(QApplication::translate("MainMenu", "&About %1")
                                             .arg(QApplication::applicationDisplayName()));
    about->setObjectName(QStringLiteral("aboutAction"));
    about->setMenuRole(QAction::AboutRole);
    QObject::connect(about, &QAction::triggered, &delegate, &QBAppDelegate::showAboutWindow);
}
