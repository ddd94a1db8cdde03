#pragma once

#include "model/NotificationObserverTracker.h"
#include "model/QuotesListModel.h"
#include "model/QuotesSource.h"

#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QVariantMap>

#include <functional>
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
    // Asks where and how to export the collection (or the selected quote) and writes it.
    void startExport();
    void addQuote();
    void removeCurrentQuote();
    // Asks first, with the count, when there is more than one quote.
    void removeAllQuotes();
    void switchToSettings();
    void handleQuoteListDoubleClick();
    // Puts the next quote of the helper's no-repeat cycle into the signature file now and
    // selects it.
    void nextQuoteNow();
    void chooseSignatureFile();

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

    // Keeps the text typed into the editor and remembers the window's place and selected
    // quote for the next launch: the window or the program is going away.
    void keepEditAndRememberPlace();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

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
    void rearrangeKeepingSelection(const std::function<void()>& change);
    void focusFilterField();
    // Work deferred while a batch of changes runs, done once when it ends.
    void finishChangeBatch();
    void rebuildQuotesArray();
    void selectLastQuoteForEditing();
    void setUpSignatureState();
    // Selects the quote with |quoteUID|, clearing the filter when it hides it.
    void selectQuoteWithUID(const QString& quoteUID);
    // The row of the quote with |quoteUID| in the arranged list, or -1.
    int rowOfQuote(const QString& quoteUID);
    void selectQuoteForEditing(const QString& quoteUID);
    void removeAllQuotesNow();

    std::unique_ptr<Ui::QBQuotesWindow> mUi;
    QPointer<QBUndoManager> mUndoManager;
    QBQuotesSource mQuotesSource;
    QBQuotesListModel* mQuotesArrayController = nullptr;
    QBEditorAreaViewController* mEditorArea = nullptr;
    class QBSignatureFitControl* mSignatureFit = nullptr;
    QBNotificationObserverTracker mNotificationTracker;
    QBSettingsViewController* mSettingsView = nullptr;
    QBSignatureState* mSignatureState = nullptr;

    std::weak_ptr<QBQuoteValueObject> mLastSelected;
    bool mHadSelection = false;
    bool mRearranging = false;
    bool mSplitterRestored = false;

    bool mRebuildPending = false;
    QString mQuoteToSelect;       // once the batch ends
    QStringList mPendingRemovals; // identifiers

    QMenu* mQuotesMenu = nullptr;
    QAction* mChooseAction = nullptr;
    QAction* mAddAction = nullptr;
    QAction* mRemoveAction = nullptr;
    QAction* mRemoveAllAction = nullptr;
    QAction* mImportAction = nullptr;
    QAction* mExportAction = nullptr;
    QAction* mSettingsAction = nullptr;
    QAction* mEditAction = nullptr;
    QAction* mFindAction = nullptr;
    QAction* mNextQuoteAction = nullptr;
    QAction* mChooseFileAction = nullptr;
};
