#pragma once

#include "model/NotificationObserverTracker.h"
#include "model/QuotesListModel.h"
#include "model/QuotesSource.h"

#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <vector>

class QAction;
class QBEditorAreaViewController;
class QBSettingsViewController;
class QBSignatureState;
class QBUndoManager;
class QListView;
class QMenu;
namespace Ui {
class QBQuotesWindow;
}

// The quotes window: the list of quotes with its filter on one side, the editor area on
// the other, and the commands on the collection. It keeps the list in step with the
// model through notifications and writes the chosen quote to the signature file.
class QBQuotesWindowController : public QMainWindow
{
    Q_OBJECT
public:
    explicit QBQuotesWindowController(QBUndoManager* undoManager, QWidget* parent = nullptr);
    ~QBQuotesWindowController() override;

    // Commands.
    void chooseQuote();
    void startBatchImport();
    void addQuote();
    void removeCurrentQuote();
    void removeAllQuotes();
    void switchToSettings();
    void handleQuoteListDoubleClick();
    // Puts the next quote of the helper's no-repeat cycle into the signature file now and
    // selects it.
    void nextQuoteNow();

    // Adds the window's commands as a menu before the Help menu of the menu bar.
    void installQuotesMenu();

    QBQuotesSource& quotesSource() { return mQuotesSource; }
    QBQuotesListModel& quotesArrayController() { return *mQuotesArrayController; }
    QBEditorAreaViewController* editorAreaViewController() const { return mEditorArea; }
    QListView* quotesListView() const;
    QBSignatureState& signatureState() const { return *mSignatureState; }

    // The first selected quote, or null.
    std::shared_ptr<QBQuoteValueObject> selectedQuote() const;
    // Row of the selection in the arranged (filtered) list, or -1.
    int selectionIndex() const;

    void refreshWindowTitle();
    void handleNewQuoteSelected();
    void handleQuoteAdded(const QVariantMap& userInfo);
    void handleQuoteRemoved(const QVariantMap& userInfo);
    void handleQuotesImported(const QVariantMap& userInfo);
    void handleWriteCurrentQuote();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void createActions();
    void setUpList();
    void registerForNotifications();
    void restoreSplitter();
    // Posts the selection when the selected quote is another one than before.
    void followSelection();
    void arrangedObjectsChanged();
    void updateCommandStates();
    void selectRow(int row);
    void setFilterText(const QString& text);
    void focusFilterField();
    // Work deferred while a batch of changes runs, done once when it ends.
    void finishChangeBatch();
    void rebuildQuotesArray();
    void selectLastQuoteForEditing();
    void setUpSignatureState();
    // Selects the quote with |quoteUID|, clearing the filter when it hides it.
    void selectQuoteWithUID(const QString& quoteUID);

    std::unique_ptr<Ui::QBQuotesWindow> mUi;
    QPointer<QBUndoManager> mUndoManager;
    QBQuotesSource mQuotesSource;
    QBQuotesListModel* mQuotesArrayController = nullptr;
    QBEditorAreaViewController* mEditorArea = nullptr;
    QBNotificationObserverTracker mNotificationTracker;
    QBSettingsViewController* mSettingsView = nullptr;
    QBSignatureState* mSignatureState = nullptr;

    std::weak_ptr<QBQuoteValueObject> mLastSelected;
    bool mHadSelection = false;
    bool mRearranging = false;
    bool mSplitterRestored = false;

    bool mRebuildPending = false;
    bool mSelectLastPending = false;
    QStringList mPendingRemovals; // identifiers

    QMenu* mQuotesMenu = nullptr;
    QAction* mChooseAction = nullptr;
    QAction* mAddAction = nullptr;
    QAction* mRemoveAction = nullptr;
    QAction* mRemoveAllAction = nullptr;
    QAction* mImportAction = nullptr;
    QAction* mSettingsAction = nullptr;
    QAction* mEditAction = nullptr;
    QAction* mFindAction = nullptr;
    QAction* mNextQuoteAction = nullptr;
};
