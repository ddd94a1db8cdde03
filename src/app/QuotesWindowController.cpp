#include "app/QuotesWindowController.h"

#include "app/EditorAreaViewController.h"
#include "app/QuoteListKeys.h"
#include "app/QuoteListPlaceholder.h"
#include "app/QuoteRowDelegate.h"
#include "app/QuotesEditorViewController.h"
#include "app/SignatureFitControl.h"
#include "app/SignatureStatusBar.h"
#include "app/SignatureWriteReport.h"
#include "app/WindowMemory.h"
#include "helper/NextQuote.h"
#include "import/BatchImportDialogs.h"
#include "import/FileDropImport.h"
#include "import/QuoteBatchImportHelper.h"
#include "logging/Log.h"
#include "logging/ULog.h"
#include "model/Notifications.h"
#include "model/QuoteEditHelper.h"
#include "model/QuotesChangeBatch.h"
#include "model/SignatureState.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/SettingsKeys.h"
#include "signature/SettingsViewController.h"
#include "signature/SignatureFileChooser.h"
#include "ui/Alert.h"
#include "ui/AppearanceHelper.h"
#include "ui/MessageBar.h"
#include "ui/ViewInstaller.h"
#include "ui/WrappingRow.h"
#include "util/CommandResults.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"
#include "util/UserMessages.h"

#include "ui_QBQuotesWindow.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>

#include <QKeySequence>
#include <QMenuBar>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <algorithm>

QBQuotesWindowController::QBQuotesWindowController(QBUndoManager* undoManager, QWidget* parent)
    : QMainWindow(parent), mUi(std::make_unique<Ui::QBQuotesWindow>()), mUndoManager(undoManager)
{
    mUi->setupUi(this);
    // The list's buttons wrap rather than widen the window in a long translation.
    QBWrappingRow::replace(mUi->listButtonsLayout);
    // A small screen (or a large scale factor) gets the whole window, not a clipped one.
    resize(size().boundedTo(screen()->availableSize()));
    // Failures and the results of commands show above the list and the editor.
    mUi->centralLayout->insertWidget(0, new QBMessageBar(QBUserMessages::shared(), this));
    mQuotesArrayController = new QBQuotesListModel(&mQuotesSource, this);
    registerForNotifications();
    mEditorArea = new QBEditorAreaViewController(undoManager, mUi->areaPlaceholderView);
    mSettingsView = new QBSettingsViewController;
    mEditorArea->setSettingsView(mSettingsView);

    createActions();
    setUpList();
    setUpSignatureState();
    restoreSplitter();

    // Imports ask their questions on this window and are undone with its other edits.
    QBBatchImportDialogs::setParentWindow(this);
    QBQuoteBatchImportHelper::setUndoManager(undoManager);
    installFileDropImport(this);
    LMViewInstaller::installViewSameSizeAsSuperInto(mEditorArea, mUi->areaPlaceholderView);
    QBAppearanceHelper::setGradientBackground(mUi->areaPlaceholderView);
    refreshWindowTitle();
    mUi->quotesListView->selectionModel()->clearSelection();
    updateCommandStates();
    QBWindowMemory::restoreGeometry(*this);
    selectRow(rowOfQuote(QBWindowMemory::selectedQuote()));
}

QBQuotesWindowController::~QBQuotesWindowController()
{
    mNotificationTracker.removeObservers();
}

QListView* QBQuotesWindowController::quotesListView() const
{
    return mUi->quotesListView;
}

void QBQuotesWindowController::keepEditAndRememberPlace()
{
    mEditorArea->quotesEditorViewController()->keepOpenEdit();
    QBWindowMemory::rememberGeometry(*this);
    const std::shared_ptr<QBQuoteValueObject> selected = selectedQuote();
    QBWindowMemory::rememberSelectedQuote(selected != nullptr ? selected->quoteUID() : QString());
}

void QBQuotesWindowController::closeEvent(QCloseEvent* event)
{
    keepEditAndRememberPlace();
    QMainWindow::closeEvent(event);
}

void QBQuotesWindowController::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // Without a stored position the list starts at a third of the window, once the
    // window has its real width, or wider (up to half) so that its buttons fit on one row.
    if (!std::exchange(mSplitterRestored, true)) {
        const int listWidth =
            std::max({width() / 3, qMin(mUi->listPanel->sizeHint().width(), width() / 2),
                      mUi->listPanel->minimumSizeHint().width()});
        mUi->splitter->setSizes({listWidth, qMax(0, mUi->splitter->width() - listWidth)});
    }
}

void QBQuotesWindowController::createActions()
{
    const auto makeAction = [this](QAction*& action, const char* name, const QString& text,
                                   const QKeySequence& keys,
                                   void (QBQuotesWindowController::*slot)()) {
        action = new QAction(text, this);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WindowShortcut);
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
    };
    // Not Ctrl+U: on Linux desktops a text field takes it to delete the line, so in the
    // filter field it would wipe the search instead.
    //% "&Use as Signature"
    makeAction(mChooseAction, "chooseQuoteAction", qtTrId("CommandChooseQuote"),
               QKeySequence(Qt::CTRL | Qt::Key_L), &QBQuotesWindowController::chooseQuote);
    //% "&Add Quote"
    makeAction(mAddAction, "addQuoteAction", qtTrId("CommandAddQuote"), QKeySequence::New,
               &QBQuotesWindowController::addQuote);
    //% "&Remove Quote"
    makeAction(mRemoveAction, "removeQuoteAction", qtTrId("CommandRemoveQuote"),
               QKeySequence::Delete, &QBQuotesWindowController::removeCurrentQuote);
    //% "Remove A&ll Quotes"
    makeAction(mRemoveAllAction, "removeAllQuotesAction", qtTrId("CommandRemoveAllQuotes"),
               QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete),
               &QBQuotesWindowController::removeAllQuotes);
    //% "&Edit Quote"
    makeAction(mEditAction, "editQuoteAction", qtTrId("CommandEditQuote"), QKeySequence(Qt::Key_F2),
               &QBQuotesWindowController::handleQuoteListDoubleClick);
    //% "&Import Quotes…"
    makeAction(mImportAction, "importQuotesAction", qtTrId("CommandImportQuotes"),
               QKeySequence(Qt::CTRL | Qt::Key_I), &QBQuotesWindowController::startBatchImport);
    //% "E&xport Quotes…"
    makeAction(mExportAction, "exportQuotesAction", qtTrId("CommandExportQuotes"),
               QKeySequence(Qt::CTRL | Qt::Key_E), &QBQuotesWindowController::startExport);
    //% "&Settings…"
    makeAction(mSettingsAction, "settingsAction", qtTrId("CommandSettings"),
               QKeySequence(Qt::CTRL | Qt::Key_Comma), &QBQuotesWindowController::switchToSettings);
    mSettingsAction->setMenuRole(QAction::PreferencesRole);
    //% "&Find Quotes"
    makeAction(mFindAction, "findQuotesAction", qtTrId("CommandFindQuotes"), QKeySequence::Find,
               &QBQuotesWindowController::focusFilterField);
    // No text field on Linux claims Ctrl+Shift+N, so it works while typing too.
    //% "&Next Quote Now"
    makeAction(mNextQuoteAction, "nextQuoteAction", qtTrId("CommandNextQuoteNow"),
               QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
               &QBQuotesWindowController::nextQuoteNow);
    // The menu's way to the chooser that the settings page and the status bar offer.
    //% "&Choose Signature File…"
    makeAction(mChooseFileAction, "chooseSignatureFileAction", qtTrId("CommandChooseSignatureFile"),
               QKeySequence(), &QBQuotesWindowController::chooseSignatureFile);
    for (QAction* action : actions()) {
        action->setToolTip(
            action->shortcut().isEmpty()
                ? action->iconText()
                : QStringLiteral("%1 (%2)").arg(
                      action->iconText(), action->shortcut().toString(QKeySequence::NativeText)));
    }
    // Buttons act like the menu items and follow their enabling. Tab reaches them, but a
    // click does not take the focus, which would end an edit before they act. Their labels
    // are short (the list is narrow); screen readers get the command's full name.
    const auto bind = [](QAbstractButton* button, QAction* action, const QString& label) {
        button->setText(label);
        button->setToolTip(action->toolTip());
        button->setAccessibleName(action->iconText());
        button->setFocusPolicy(Qt::TabFocus);
        button->setEnabled(action->isEnabled());
        connect(button, &QAbstractButton::clicked, action, &QAction::trigger);
        connect(action, &QAction::changed, button,
                [button, action] { button->setEnabled(action->isEnabled()); });
    };
    bind(mUi->addButton, mAddAction, QStringLiteral("+"));
    bind(mUi->removeButton, mRemoveAction, QStringLiteral("\u2212"));
    //% "Remove &All"
    bind(mUi->removeAllButton, mRemoveAllAction, qtTrId("ButtonRemoveAllQuotes"));
    //% "&Import…"
    bind(mUi->importButton, mImportAction, qtTrId("ButtonImportQuotes"));
    //% "Se&ttings…"
    bind(mUi->settingsButton, mSettingsAction, qtTrId("ButtonSettings"));
    for (QAbstractButton* button : {mUi->addButton, mUi->removeButton})
        button->setMinimumWidth(button->sizeHint().height() * 3 / 2);
    bind(mUi->chooseQuoteButton, mChooseAction, mChooseAction->text());
    mUi->chooseQuoteButton->setIcon(style()->standardIcon(QStyle::SP_DialogApplyButton));
}

void QBQuotesWindowController::installQuotesMenu()
{
    if (mQuotesMenu != nullptr)
        return;
    //% "&Quotes"
    mQuotesMenu = new QMenu(qtTrId("MenuQuotes"), this);
    mQuotesMenu->setObjectName(QStringLiteral("quotesMenu"));
    mQuotesMenu->addActions(
        {mChooseAction, mNextQuoteAction, mChooseFileAction, mEditAction, mFindAction});
    mQuotesMenu->addSeparator();
    mQuotesMenu->addActions({mAddAction, mRemoveAction, mRemoveAllAction});
    mQuotesMenu->addSeparator();
    mQuotesMenu->addActions({mImportAction, mExportAction, mSettingsAction});
    const QList<QAction*> menus = menuBar()->actions();
    // Before Help, which by custom is the last menu.
    menuBar()->insertMenu(menus.isEmpty() ? nullptr : menus.last(), mQuotesMenu);
}

void QBQuotesWindowController::setUpList()
{
    QListView* list = mUi->quotesListView;
    list->setModel(mQuotesArrayController);
    //% "Filter quotes"
    mUi->filterField->setPlaceholderText(qtTrId("QuotesFilterPlaceholder"));
    //% "Filter Quotes"
    mUi->filterField->setAccessibleName(qtTrId("QuotesFilterAccessibleName"));
    //% "Quotes"
    list->setAccessibleName(qtTrId("QuotesListAccessibleName"));
    mUi->filterField->setToolTip(QStringLiteral("%1 (%2)").arg(
        mFindAction->iconText(), mFindAction->shortcut().toString(QKeySequence::NativeText)));
    connect(mUi->filterField, &QLineEdit::textChanged, this,
            &QBQuotesWindowController::setFilterText);
    mSignatureFit = new QBSignatureFitControl(
        QBUserDefaults::standardUserDefaults(), mQuotesArrayController,
        [this](const std::function<void()>& change) { rearrangeKeepingSelection(change); }, this);
    mUi->listPanelLayout->insertWidget(mUi->listPanelLayout->indexOf(mUi->filterField) + 1,
                                       mSignatureFit->onlyTooLongCheckBox());
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &QBQuotesWindowController::followSelection);
    connect(list, &QListView::doubleClicked, this,
            &QBQuotesWindowController::handleQuoteListDoubleClick);
    // From the settings page, a click on a quote, also the one already selected, brings
    // the editor back: selecting it again would not.
    connect(list, &QListView::clicked, mEditorArea, [this] { mEditorArea->switchToEditorView(); });
    connect(mQuotesArrayController, &QAbstractItemModel::modelReset, this,
            &QBQuotesWindowController::arrangedObjectsChanged);
    connect(mQuotesArrayController, &QAbstractItemModel::layoutChanged, this,
            &QBQuotesWindowController::arrangedObjectsChanged);
    connect(mQuotesArrayController, &QAbstractItemModel::rowsRemoved, this,
            &QBQuotesWindowController::arrangedObjectsChanged);
    connect(mQuotesArrayController, &QAbstractItemModel::rowsInserted, this,
            &QBQuotesWindowController::arrangedObjectsChanged);
    new QBQuoteListKeys(
        mUi->filterField, list, mEditAction, mRemoveAction,
        [this] {
            return mEditorArea->currentEditorView() != mEditorArea->settingsViewController();
        },
        this);
    new QBQuoteListPlaceholder(list, mQuotesArrayController, mAddAction, mImportAction);
}

void QBQuotesWindowController::setUpSignatureState()
{
    mSignatureState = new QBSignatureState(QBUserDefaults::standardUserDefaults(), this);
    mQuotesArrayController->setCurrentSignatureUID(mSignatureState->currentQuoteUID());
    connect(mSignatureState, &QBSignatureState::currentQuoteChanged, mQuotesArrayController,
            &QBQuotesListModel::setCurrentSignatureUID);
    mUi->quotesListView->setItemDelegate(new QBQuoteRowDelegate(
        style()->standardIcon(QStyle::SP_DialogApplyButton), mUi->quotesListView));
    auto* statusBar = new QBSignatureStatusBar(mSignatureState, mNextQuoteAction, this);
    // The same chooser as the Quotes menu's and the first-run hint's.
    connect(statusBar, &QBSignatureStatusBar::chooseFileRequested, this,
            &QBQuotesWindowController::chooseSignatureFile);
    setStatusBar(statusBar);
    mSettingsView->setSignatureState(mSignatureState);
}

void QBQuotesWindowController::restoreSplitter()
{
    mSplitterRestored = QBWindowMemory::restoreSplitter(*mUi->splitter);
    mUi->splitter->setStretchFactor(0, 0);
    mUi->splitter->setStretchFactor(1, 1); // the editor takes what the window gains
    connect(mUi->splitter, &QSplitter::splitterMoved, this,
            [this] { QBWindowMemory::rememberSplitter(*mUi->splitter); });
}

void QBQuotesWindowController::registerForNotifications()
{
    QBNotificationObserverTracker& tracker = mNotificationTracker;
    tracker.observeNotification(QBQuoteAddedNotification,
                                [this](const QBNotification& n) { handleQuoteAdded(n.userInfo); });
    tracker.observeNotification(QBQuoteRemovedNotification, [this](const QBNotification& n) {
        handleQuoteRemoved(n.userInfo);
    });
    tracker.observeNotification(QBQuotesModifiedNotification, [this](const QBNotification&) {
        rebuildQuotesArray();
        // Quotes that come back are seen, whatever the filter says.
        if (mUndoManager != nullptr && (mUndoManager->isUndoing() || mUndoManager->isRedoing()))
            mUi->filterField->clear();
    });
    tracker.observeNotification(QBWriteCurrentQuoteNotification,
                                [this](const QBNotification&) { handleWriteCurrentQuote(); });
    tracker.observeNotification(
        QBCheckForDuplicateQuotesNotification, [this](const QBNotification&) {
            QBQuoteEditHelper::checkForDuplicateQuotesWithUndoManager(mUndoManager);
        });
    tracker.observeNotification(QBQuotesImportedNotification, [this](const QBNotification& n) {
        handleQuotesImported(n.userInfo);
    });
    tracker.observeNotification(QBUndoManagerWillUndoChangeNotification, [](const QBNotification&) {
        logInfoMessage(QStringLiteral("Processing Undo.."));
    });
    tracker.observeNotification(QBUndoManagerWillRedoChangeNotification, [](const QBNotification&) {
        logInfoMessage(QStringLiteral("Processing Redo.."));
    });
    tracker.observeNotification(QBQuotesChangeBatchDidEndNotification,
                                [this](const QBNotification&) { finishChangeBatch(); });
}

std::shared_ptr<QBQuoteValueObject> QBQuotesWindowController::selectedQuote() const
{
    return mQuotesArrayController->objectAtRow(selectionIndex());
}

int QBQuotesWindowController::selectionIndex() const
{
    const QModelIndexList rows = mUi->quotesListView->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void QBQuotesWindowController::selectRow(int row)
{
    QItemSelectionModel* selection = mUi->quotesListView->selectionModel();
    const QModelIndex index = mQuotesArrayController->index(row);
    selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    if (index.isValid())
        mUi->quotesListView->scrollTo(index);
}

void QBQuotesWindowController::followSelection()
{
    if (mRearranging)
        return;
    const std::shared_ptr<QBQuoteValueObject> selected = selectedQuote();
    const bool changed = selected != mLastSelected.lock() ||
                         (selected == nullptr && mHadSelection && mLastSelected.expired());
    mLastSelected = selected;
    mHadSelection = selected != nullptr;
    updateCommandStates();
    if (changed)
        handleNewQuoteSelected();
}

void QBQuotesWindowController::arrangedObjectsChanged()
{
    refreshWindowTitle();
    followSelection();
    updateCommandStates();
}

void QBQuotesWindowController::updateCommandStates()
{
    const bool hasSelection = selectionIndex() >= 0;
    mChooseAction->setEnabled(hasSelection);
    mRemoveAction->setEnabled(hasSelection);
    mEditAction->setEnabled(hasSelection);
    mRemoveAllAction->setEnabled(!mQuotesSource.isEmpty());
    mNextQuoteAction->setEnabled(!mQuotesSource.isEmpty());
}

void QBQuotesWindowController::refreshWindowTitle()
{
    //% "%1 – %L2 quotes"
    setWindowTitle(qtTrId("WindowTitleFormatString")
                       .arg(QCoreApplication::applicationName())
                       .arg(qlonglong(mQuotesSource.count())));
}

void QBQuotesWindowController::handleNewQuoteSelected()
{
    logInfoMessage(QStringLiteral("Quote %1 selected").arg(selectionIndex()));
    QBNotificationCenter::defaultCenter().post(QBQuoteSelectedNotification, selectedQuote().get());
}

void QBQuotesWindowController::setFilterText(const QString& text)
{
    rearrangeKeepingSelection([this, &text] { mQuotesArrayController->setFilterText(text); });
}

void QBQuotesWindowController::rearrangeKeepingSelection(const std::function<void()>& change)
{
    // The selected quote stays selected while it is still shown.
    const std::shared_ptr<QBQuoteValueObject> selected = selectedQuote();
    mRearranging = true;
    change();
    if (selected != nullptr)
        selectRow(mQuotesArrayController->rowOfObject(selected.get()));
    mRearranging = false;
    followSelection();
}

void QBQuotesWindowController::focusFilterField()
{
    mUi->filterField->setFocus(Qt::ShortcutFocusReason);
    mUi->filterField->selectAll();
}

void QBQuotesWindowController::rebuildQuotesArray()
{
    if (QBQuotesChangeBatch::isOpen()) {
        mRebuildPending = true;
        return;
    }
    mQuotesSource.rebuildQuotesArray();
}

int QBQuotesWindowController::rowOfQuote(const QString& quoteUID)
{
    if (quoteUID.isEmpty())
        return -1;
    const std::shared_ptr<QBQuoteValueObject> quote =
        mQuotesSource.valueObjectForQuoteUID(quoteUID);
    return quote != nullptr ? mQuotesArrayController->rowOfObject(quote.get()) : -1;
}

void QBQuotesWindowController::selectQuoteForEditing(const QString& quoteUID)
{
    int row = rowOfQuote(quoteUID);
    if (row < 0 && !mUi->filterField->text().isEmpty()) {
        mUi->filterField->clear(); // a quote that comes back is seen, whatever the filter says
        row = rowOfQuote(quoteUID);
    }
    selectRow(row);
    QBNotificationCenter::defaultCenter().post(QBQuoteDoubleClickedNotification,
                                               mQuotesArrayController->objectAtRow(row).get());
}

void QBQuotesWindowController::finishChangeBatch()
{
    if (mRebuildPending) {
        mRebuildPending = false;
        mPendingRemovals.clear(); // the rebuild reflects them
        mQuotesSource.rebuildQuotesArray();
    } else if (!mPendingRemovals.empty()) {
        mQuotesArrayController->removeQuotesWithUIDs(std::exchange(mPendingRemovals, {}));
    }
    if (!mQuoteToSelect.isEmpty())
        selectQuoteForEditing(std::exchange(mQuoteToSelect, {}));
}

void QBQuotesWindowController::handleQuoteAdded(const QVariantMap& userInfo)
{
    logInfoMessage(QStringLiteral("Refresh quotes source for added quote %1")
                       .arg(userInfo.value(QBKeyQuoteUID).toString()));
    rebuildQuotesArray();
    // The quote that came, new or brought back by an undo or redo.
    const QString uid = userInfo.value(QBKeyQuoteUID).toString();
    if (QBQuotesChangeBatch::isOpen()) {
        mQuoteToSelect = uid;
        return;
    }
    selectQuoteForEditing(uid);
}

void QBQuotesWindowController::handleQuoteRemoved(const QVariantMap& userInfo)
{
    const QString uid = userInfo.value(QBKeyQuoteUID).toString();
    logInfoMessage(QStringLiteral("Refresh quotes source for removed quote %1").arg(uid));
    if (QBQuotesChangeBatch::isOpen())
        mPendingRemovals.append(uid);
    else
        mQuotesArrayController->removeQuotesWithUIDs({uid});
}

void QBQuotesWindowController::handleQuotesImported(const QVariantMap& userInfo)
{
    // The import itself reports what it did in the message bar.
    logInfoMessage(
        QStringLiteral("%1 quotes imported").arg(userInfo.value(QBKeyImportedQuotesCount).toInt()));
    rebuildQuotesArray();
}

void QBQuotesWindowController::chooseQuote()
{
    // The button takes no focus, so an edit can be open: the signature gets what was typed.
    mEditorArea->quotesEditorViewController()->commitOpenEdit();
    const std::shared_ptr<QBQuoteValueObject> quote = selectedQuote();
    if (quote == nullptr)
        return;
    logInfoMessage(QStringLiteral("Making <%1> the current signature").arg(quote->quoteUID()));
    if (!QBUserDefaults::standardUserDefaults()
             .stringForKey(QBDefaultsSignatureOutputPath)
             .isEmpty()) {
        QBSignatureWriteReport::write(quote->content());
        return;
    }
    // No file yet: choosing one writes the selected quote into it.
    QBSignatureFileChooser::chooseAndUseFile();
}

void QBQuotesWindowController::handleWriteCurrentQuote()
{
    const std::shared_ptr<QBQuoteValueObject> quote = selectedQuote();
    const QString content = quote != nullptr ? quote->content() : QStringLiteral("...");
    if (!QBSignatureWriteReport::write(content, quote != nullptr)) {
        logWarningMessage(
            QStringLiteral("Failed to write current quote - bookmark may be invalid"));
        chooseQuote();
    }
}

void QBQuotesWindowController::chooseSignatureFile()
{
    QBSignatureFileChooser::chooseAndUseFile();
}

void QBQuotesWindowController::nextQuoteNow()
{
    logInfoMessage(QStringLiteral("Putting the next quote into the signature file"));
    if (QBUserDefaults::standardUserDefaults()
            .stringForKey(QBDefaultsSignatureOutputPath)
            .isEmpty()) {
        QBUserMessage message;
        message.kind = QBUserMessage::Kind::Warning;
        //% "Choose a signature file first."
        message.text = qtTrId("NextQuoteNoSignatureFile");
        message.actionText = qtTrId("StatusBarChooseSignatureFile");
        message.action = [] { QBSignatureFileChooser::chooseAndUseFile(); };
        message.topic = QStringLiteral("nextQuote");
        QBUserMessages::shared().show(message);
        return;
    }
    const QBNextQuoteResult result = writeNextQuote();
    QBCurrentSignatureFileHelper::logMessages(result.messages);
    if (!result.uid.isEmpty())
        selectQuoteWithUID(result.uid);
    if (!result.written) {
        const QString reason = result.messages.empty() ? QString() : result.messages.front().second;
        QBUserMessage message;
        message.kind = QBUserMessage::Kind::Error;
        //% "The next quote could not be put into the signature file: %1"
        message.text = qtTrId("NextQuoteNotWritten").arg(reason);
        message.topic = QStringLiteral("nextQuote");
        QBUserMessages::shared().show(message);
        return;
    }
    QBUserMessages::shared().dismiss(QStringLiteral("nextQuote"));
    mSignatureState->refresh(); // the mark moves now, not at the folder's notice
}

void QBQuotesWindowController::selectQuoteWithUID(const QString& quoteUID)
{
    const std::shared_ptr<QBQuoteValueObject> quote =
        mQuotesSource.valueObjectForQuoteUID(quoteUID);
    if (quote == nullptr)
        return;
    if (mQuotesArrayController->rowOfObject(quote.get()) < 0)
        mUi->filterField->clear();
    selectRow(mQuotesArrayController->rowOfObject(quote.get()));
}

void QBQuotesWindowController::startBatchImport()
{
    logInfoMessage(QStringLiteral("Launching batch import"));
    QBQuoteBatchImportHelper::importFromTextFile();
}

void QBQuotesWindowController::startExport()
{
    std::vector<CQuoteRecord> selection;
    if (const std::shared_ptr<QBQuoteValueObject> quote = selectedQuote())
        selection.emplace_back(quote->content().toStdString(), quote->quoteUID().toStdString());
    QBQuoteBatchImportHelper::exportFromWindow(std::move(selection));
}

void QBQuotesWindowController::addQuote()
{
    logInfoMessage(QStringLiteral("Adding new quote"));
    // The new quote must be visible to be selected and edited.
    mUi->filterField->clear();
    QBQuoteEditHelper::addQuoteWithUndoManager(mUndoManager);
}

void QBQuotesWindowController::removeCurrentQuote()
{
    const std::shared_ptr<QBQuoteValueObject> quote = selectedQuote();
    if (quote == nullptr)
        return;
    logInfoMessage(QStringLiteral("Removing selected quote '%1'").arg(quote->quoteUID()));
    const QString excerpt = quote->content().simplified();
    QBQuoteEditHelper::removeQuote(quote->quoteUID(), mUndoManager, true);
    //% "Removed “%1”"
    QBCommandResults::reportUndoable(
        qtTrId("QuoteRemovedResult")
            .arg(excerpt.size() > 40 ? excerpt.left(39) + QChar(0x2026) : excerpt),
        mUndoManager);
}

void QBQuotesWindowController::removeAllQuotes()
{
    const int count = static_cast<int>(mQuotesSource.count());
    if (count <= 1) {
        removeAllQuotesNow();
        return;
    }
    QPointer<QBQuotesWindowController> window(this);
    QBAlert::shared().showYesNoAlertWithLocalizedTitle(
        //% "Remove all %n quote(s)?"
        qtTrId("RemoveAllQuestionTitle", count),
        //% "Edit ▸ Undo brings them back."
        qtTrId("RemoveAllQuestionMessage"), QBAlert::Warning,
        [window] {
            if (window)
                window->removeAllQuotesNow();
        },
        {});
}

void QBQuotesWindowController::removeAllQuotesNow()
{
    mUi->filterField->clear();
    const int count = static_cast<int>(mQuotesSource.count());
    logInfoMessage(
        QStringLiteral("Removing all %1 quotes").arg(mQuotesArrayController->rowCount()));
    QBQuoteEditHelper::removeAllQuotesWithUndoManager(mUndoManager);
    //% "Removed all %n quote(s)"
    QBCommandResults::reportUndoable(qtTrId("RemovedAllResult", count), mUndoManager);
}

void QBQuotesWindowController::switchToSettings()
{
    QBNotificationCenter::defaultCenter().post(QBSwitchToSettingsNotification);
}

void QBQuotesWindowController::handleQuoteListDoubleClick()
{
    logInfoMessage(QStringLiteral("Quote %1 double-clicked").arg(selectionIndex()));
    if (selectionIndex() >= 0)
        mEditorArea->switchToEditorView(); // the editor can take the focus only when shown
    QBNotificationCenter::defaultCenter().post(QBQuoteDoubleClickedNotification,
                                               selectedQuote().get());
}
