#include "app/QuotesEditorViewController.h"

#include "logging/Log.h"
#include "logging/ULog.h"
#include "model/Notifications.h"
#include "model/QuoteEditHelper.h"
#include "signature/SettingsKeys.h"
#include "ui/AppearanceHelper.h"
#include "ui/WrappingRow.h"
#include "util/StringUtilities.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"

#include "ui_QBQuotesEditorView.h"

#include <QAction>
#include <QApplication>
#include <QFocusEvent>
#include <QFontDatabase>
#include <QHideEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QStyle>
#include <QTextBlock>
#include <QTextCursor>
#include <QTimer>

namespace {

constexpr qreal kEditorFontPointSize = 18.0;
constexpr qreal kLineSpacing = 9.0;
constexpr qreal kTextInset = 10.0;
constexpr int kEmptyQuoteRemovalDelayMs = 250;
constexpr int kOverlayImageSize = 260;
constexpr qreal kOverlayImageAlpha = 0.25;
// The pop-up entry chosen last. Family names differ between desktops and say little about
// the entry they came from, so the entry itself is kept; the helper has no use for it.
const QString kEditorFontEntryKey = QStringLiteral("QBEditorFontEntry");

} // namespace

QBQuotesEditorViewController::QBQuotesEditorViewController(QBUndoManager* undoManager,
                                                           QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::QBQuotesEditorView>()), mUndoManager(undoManager)
{
    mUi->setupUi(this);
    // The font pop-up and the buttons wrap rather than widen the window.
    QBWrappingRow::replace(mUi->editorBarLayout);
    setUpControls();
    QBUserDefaults& defaults = QBUserDefaults::standardUserDefaults();
    const QVariant storedEntry = defaults.objectForKey(kEditorFontEntryKey);
    bool isEntry = false;
    const int entry = storedEntry.toInt(&isEntry);
    if (isEntry && entry >= MonospacedFont && entry <= SerifFont) {
        mUi->quoteTextView->setFont(fontForEntry(entry));
        mUi->fontPopup->setCurrentIndex(entry);
    } else {
        restoreEditorFontSelectionWithFont(defaults.stringForKey(QBDefaultsEditorFontName));
    }
    adjustTextViewAppearance();
    updateOverlayImage();
    QBAppearanceHelper::setGradientBackground(this);
    registerForNotifications();
    updateActiveQuote(nullptr);
}

QBQuotesEditorViewController::~QBQuotesEditorViewController() = default;

QTextEdit* QBQuotesEditorViewController::quoteTextView() const
{
    return mUi->quoteTextView;
}

QComboBox* QBQuotesEditorViewController::fontPopup() const
{
    return mUi->fontPopup;
}

QLabel* QBQuotesEditorViewController::overlayImageView() const
{
    return mUi->overlayImageView;
}

void QBQuotesEditorViewController::setUpControls()
{
    //% "Monospaced"
    mUi->fontPopup->addItem(qtTrId("EditorFontMonospaced"));
    //% "System"
    mUi->fontPopup->addItem(qtTrId("EditorFontSystem"));
    //% "Serif"
    mUi->fontPopup->addItem(qtTrId("EditorFontSerif"));
    //% "Font of the quote editor"
    mUi->fontPopup->setToolTip(qtTrId("EditorFontPopupToolTip"));
    // Screen readers on Linux read a pop-up by its label and its shown item; the name
    // serves the others.
    //% "Editor Font"
    mUi->fontPopup->setAccessibleName(qtTrId("EditorFontAccessibleName"));
    //% "Quote Text"
    mUi->quoteTextView->setAccessibleName(qtTrId("EditorQuoteTextAccessibleName"));
    // Only a choice the user makes changes the stored font.
    connect(mUi->fontPopup, &QComboBox::activated, this,
            &QBQuotesEditorViewController::editorFontSelected);

    // Actions rather than button shortcuts: a key acts at once instead of animating a
    // click. A click must not take the focus, which would end the edit before they act;
    // Tab still reaches them.
    const auto makeCommand = [this](QToolButton* button, QStyle::StandardPixmap icon,
                                    const QString& text, const QKeySequence& keys,
                                    void (QBQuotesEditorViewController::*slot)()) {
        auto* action = new QAction(style()->standardIcon(icon), text, this);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        action->setToolTip(
            QStringLiteral("%1 (%2)").arg(text, keys.toString(QKeySequence::NativeText)));
        action->setEnabled(false);
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
        button->setDefaultAction(action);
        button->setFocusPolicy(Qt::TabFocus);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        return action;
    };
    //% "Cancel"
    mCancelAction =
        makeCommand(mUi->cancelButton, QStyle::SP_DialogCancelButton, qtTrId("EditorCancelEdit"),
                    QKeySequence(Qt::Key_Escape), &QBQuotesEditorViewController::forceReset);
    //% "Confirm"
    mConfirmAction = makeCommand(
        mUi->confirmButton, QStyle::SP_DialogApplyButton, qtTrId("EditorConfirmEdit"),
        QKeySequence(Qt::CTRL | Qt::Key_Return), &QBQuotesEditorViewController::forceOk);

    QTextEdit* textView = mUi->quoteTextView;
    // Transparent, so the gradient and the drawing show behind the text.
    textView->viewport()->setAutoFillBackground(false);
    textView->setAttribute(Qt::WA_TranslucentBackground);
    textView->installEventFilter(this);
    connect(textView, &QTextEdit::textChanged, this, [this] {
        if (!mShowingContent && !mIsEditing && mCurrentQuote != nullptr)
            textDidBeginEditing();
    });
}

void QBQuotesEditorViewController::registerForNotifications()
{
    mNotificationTracker.observeNotification(
        QBQuoteSelectedNotification, [this](const QBNotification& notification) {
            auto* quote = qobject_cast<QBQuoteValueObject*>(notification.object);
            updateActiveQuote(quote == nullptr ? nullptr : quote->weak_from_this().lock());
        });
    mNotificationTracker.observeNotification(
        QBQuoteShouldUpdateNotification,
        [this](const QBNotification& notification) { editQuote(notification.userInfo); });
    mNotificationTracker.observeNotification(
        QBQuoteDoubleClickedNotification,
        [this](const QBNotification&) { mUi->quoteTextView->setFocus(Qt::OtherFocusReason); });
    mNotificationTracker.observeNotification(QBQuoteWillRemoveNotification,
                                             [this](const QBNotification& notification) {
                                                 handleWillRemoveQuote(notification.userInfo);
                                             });
}

bool QBQuotesEditorViewController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == mUi->quoteTextView && event->type() == QEvent::KeyPress &&
        insertParagraph(*static_cast<QKeyEvent*>(event)))
        return true;
    if (watched == mUi->quoteTextView && event->type() == QEvent::FocusOut) {
        // A menu or another window taking the keyboard for a moment does not end the edit.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            endEditing();
    }
    return QWidget::eventFilter(watched, event);
}

bool QBQuotesEditorViewController::insertParagraph(const QKeyEvent& event)
{
    // Qt's own Return in an empty paragraph that carries the line spacing starts no new
    // paragraph, so a blank line took three presses.
    const bool plainReturn = (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
                             (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (!plainReturn || mUi->quoteTextView->isReadOnly())
        return false;
    QTextCursor cursor = mUi->quoteTextView->textCursor();
    cursor.insertBlock();
    mUi->quoteTextView->setTextCursor(cursor);
    mUi->quoteTextView->ensureCursorVisible();
    return true;
}

void QBQuotesEditorViewController::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        updateOverlayImage();
    QWidget::changeEvent(event);
}

void QBQuotesEditorViewController::hideEvent(QHideEvent* event)
{
    // Another page takes the area: what was typed is kept. A minimised window is not left.
    if (!event->spontaneous())
        endEditing();
    QWidget::hideEvent(event);
}

void QBQuotesEditorViewController::showContent(const QString& content)
{
    mShowingContent = true;
    mUi->quoteTextView->setPlainText(content);
    applyLineSpacing();
    mShowingContent = false;
}

void QBQuotesEditorViewController::updateActiveQuote(
    const std::shared_ptr<QBQuoteValueObject>& quote)
{
    if (mIsEditing)
        endEditing();
    if (mCurrentQuote != nullptr && mCurrentQuote->content().isEmpty()) {
        const QString uid = mCurrentQuote->quoteUID();
        const bool stillStored = mCurrentQuote->quoteRecord() != nullptr;
        disconnect(mContentConnection);
        mCurrentQuote.reset();
        // An emptied quote already on its way out is not removed twice.
        if (stillStored)
            QBQuoteEditHelper::removeQuote(uid, mUndoManager, true);
    }
    disconnect(mContentConnection);
    mCurrentQuote = quote;
    const bool hasQuote = mCurrentQuote != nullptr;
    if (hasQuote) {
        mContentConnection = connect(mCurrentQuote.get(), &QBQuoteValueObject::contentChanged, this,
                                     &QBQuotesEditorViewController::showContent);
    }
    showContent(hasQuote ? mCurrentQuote->content() : QString());
    mUi->quoteTextView->setReadOnly(!hasQuote);
    // An empty quote being written asks for its text; an empty editor with no quote says how
    // to get one.
    //% "Type the quote here."
    const QString quotePlaceholder = qtTrId("EditorEmptyQuotePlaceholder");
    //% "Select a quote in the list, or add one."
    const QString noQuotePlaceholder = qtTrId("EditorNoQuotePlaceholder");
    mUi->quoteTextView->setPlaceholderText(hasQuote ? quotePlaceholder : noQuotePlaceholder);
    mConfirmAction->setEnabled(hasQuote);
    mCancelAction->setEnabled(hasQuote);
}

void QBQuotesEditorViewController::textDidBeginEditing()
{
    const QString text = mUi->quoteTextView->toPlainText();
    logDebugMessage(QStringLiteral("Begin editing (%1)").arg(text));
    mContentBeforeEditing = mCurrentQuote != nullptr ? mCurrentQuote->content() : text;
    mIsEditing = true;
    mEditIsConfirmed = false;
    mEditIsCancelled = false;
}

void QBQuotesEditorViewController::endEditing()
{
    if (!mIsEditing)
        return;
    // The text reaches the quote when editing ends; the quote asks for a commit, which
    // editQuote() grants unless the edit was cancelled: typed text is never lost.
    if (!mEditIsCancelled)
        mEditIsConfirmed = true;
    if (mCurrentQuote != nullptr)
        mCurrentQuote->setContent(mUi->quoteTextView->toPlainText());
    textDidEndEditing();
}

void QBQuotesEditorViewController::textDidEndEditing()
{
    if (!mIsEditing)
        return;
    logDebugMessage(QStringLiteral("End editing (%1)").arg(mUi->quoteTextView->toPlainText()));
    if (!mEditIsConfirmed && mCurrentQuote != nullptr)
        mCurrentQuote->resetContent();
    mContentBeforeEditing.clear();
    mIsEditing = false;
    mEditIsConfirmed = false;
    mEditIsCancelled = false;
    // The view's own undo steps would undo past the committed change.
    mUi->quoteTextView->document()->clearUndoRedoStacks();
}

void QBQuotesEditorViewController::forceOk()
{
    mUi->quoteTextView->document()->clearUndoRedoStacks();
    if (!mIsEditing)
        return;
    mEditIsConfirmed = true;
    mUi->quoteTextView->clearFocus();
    endEditing(); // in case the view had already lost the keyboard to another window
}

void QBQuotesEditorViewController::forceReset()
{
    if (mCurrentQuote == nullptr)
        return;
    mUi->quoteTextView->document()->clearUndoRedoStacks();
    mEditIsCancelled = true;
    if (!mContentBeforeEditing.isEmpty()) {
        QTextCursor cursor(mUi->quoteTextView->document());
        cursor.beginEditBlock();
        cursor.select(QTextCursor::Document);
        cursor.insertText(mContentBeforeEditing);
        cursor.endEditBlock();
    }
    mUi->quoteTextView->clearFocus();
    endEditing();
}

void QBQuotesEditorViewController::keepOpenEdit()
{
    mLeavingForGood = true;
    endEditing();
    mLeavingForGood = false;
    // No later turn of the event loop is coming to announce (and so save) removals.
    for (const QString& uid : QStringList(mUnannouncedRemovals))
        announceRemoval(uid);
}

void QBQuotesEditorViewController::editQuote(const QVariantMap& userInfo)
{
    if (!mEditIsConfirmed)
        return;
    QBUserDefaults& defaults = QBUserDefaults::standardUserDefaults();
    const bool clearTrailingEmptyLines = defaults.boolForKey(QBDefaultsClearTrailingEmptyLines);
    const bool warnForDuplicates = defaults.boolForKey(QBDefaultsWarnForDuplicates);
    QString content = userInfo.value(QBKeyStringContent).toString();
    const QString uid = userInfo.value(QBKeyQuoteUID).toString();
    if (!uid.isEmpty() && userInfo.contains(QBKeyStringContent)) {
        if (clearTrailingEmptyLines)
            content = stringByStrippingTrailingWhitespace(content);
        QBQuoteEditHelper::updateQuote(uid, content, mUndoManager);
    }
    if (content.isEmpty())
        removeEmptyQuote(uid);
    else if (warnForDuplicates && !mLeavingForGood)
        QBNotificationCenter::defaultCenter().post(QBCheckForDuplicateQuotesNotification, this);
}

void QBQuotesEditorViewController::removeEmptyQuote(const QString& uid)
{
    QBQuoteEditHelper::removeQuote(uid, mUndoManager, false);
    mUnannouncedRemovals.append(uid);
    QTimer::singleShot(kEmptyQuoteRemovalDelayMs, this, [this, uid] { announceRemoval(uid); });
}

void QBQuotesEditorViewController::announceRemoval(const QString& uid)
{
    if (!mUnannouncedRemovals.removeOne(uid))
        return;
    QBNotificationCenter::defaultCenter().post(QBQuoteRemovedNotification, this,
                                               {{QBKeyQuoteUID, uid}});
}

void QBQuotesEditorViewController::handleWillRemoveQuote(const QVariantMap& userInfo)
{
    if (mCurrentQuote == nullptr ||
        mCurrentQuote->quoteUID() != userInfo.value(QBKeyQuoteUID).toString())
        return;
    forceReset();
    disconnect(mContentConnection);
    mCurrentQuote.reset();
    updateActiveQuote(nullptr);
}

QFont QBQuotesEditorViewController::fontForEntry(int entry)
{
    QFont font;
    switch (entry) {
    case MonospacedFont:
        font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        break;
    case SerifFont:
        font.setStyleHint(QFont::Serif);
        font.setFamily(font.defaultFamily());
        break;
    default:
        font = QApplication::font();
        break;
    }
    font.setPointSizeF(kEditorFontPointSize);
    return font;
}

int QBQuotesEditorViewController::entryForFontName(const QString& fontName)
{
    // Names stored before the entry was kept; desktops spell them in either case.
    const auto has = [&fontName](const char* word) {
        return fontName.contains(QLatin1String(word), Qt::CaseInsensitive);
    };
    if (has("Menlo") || has("Mono"))
        return MonospacedFont;
    if (has("Times") || has("Serif"))
        return SerifFont;
    return SystemFont;
}

void QBQuotesEditorViewController::editorFontSelected(int entry)
{
    changeEditorFont(fontForEntry(entry));
    QBUserDefaults::standardUserDefaults().setObject(entry, kEditorFontEntryKey);
}

void QBQuotesEditorViewController::changeEditorFont(const QFont& font)
{
    mUi->quoteTextView->setFont(font);
    QBUserDefaults::standardUserDefaults().setObject(font.family(), QBDefaultsEditorFontName);
}

void QBQuotesEditorViewController::restoreEditorFontSelectionWithFont(const QString& fontName)
{
    if (fontName.isEmpty()) {
        mUi->quoteTextView->setFont(fontForEntry(MonospacedFont));
        return;
    }
    QFont font(fontName);
    font.setPointSizeF(kEditorFontPointSize);
    mUi->quoteTextView->setFont(font);
    mUi->fontPopup->setCurrentIndex(entryForFontName(fontName));
}

void QBQuotesEditorViewController::adjustTextViewAppearance()
{
    mUi->quoteTextView->document()->setDocumentMargin(kTextInset);
    applyLineSpacing();
}

void QBQuotesEditorViewController::applyLineSpacing()
{
    QTextCursor cursor(mUi->quoteTextView->document());
    cursor.select(QTextCursor::Document);
    QTextBlockFormat format;
    // Extra space between lines; new paragraphs inherit it from the one they split.
    format.setLineHeight(kLineSpacing * mUi->quoteTextView->logicalDpiY() / 72.0,
                         QTextBlockFormat::LineDistanceHeight);
    const bool undoWasOn = mUi->quoteTextView->document()->isUndoRedoEnabled();
    mUi->quoteTextView->document()->setUndoRedoEnabled(false);
    cursor.mergeBlockFormat(format);
    mUi->quoteTextView->document()->setUndoRedoEnabled(undoWasOn);
}

void QBQuotesEditorViewController::updateOverlayImage()
{
    mUi->overlayImageView->setPixmap(QPixmap::fromImage(QBAppearanceHelper::tintedImage(
        QStringLiteral("big_feather"), this, kOverlayImageSize, kOverlayImageAlpha)));
}
