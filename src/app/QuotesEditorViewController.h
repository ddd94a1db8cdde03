#pragma once

#include "model/NotificationObserverTracker.h"
#include "model/QuoteValueObject.h"

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <QWidget>

#include <memory>

class QAction;
class QBUndoManager;
class QComboBox;
class QKeyEvent;
class QLabel;
class QTextEdit;
namespace Ui {
class QBQuotesEditorView;
}

// Shows the selected quote's text and decides when typed text becomes an edit: leaving
// the text by any way (confirm, another quote, another page, the window closing) keeps
// it as one undoable change; only cancel (forceReset) puts the stored text back.
class QBQuotesEditorViewController : public QWidget
{
    Q_OBJECT
public:
    explicit QBQuotesEditorViewController(QBUndoManager* undoManager, QWidget* parent = nullptr);
    ~QBQuotesEditorViewController() override;

    void updateActiveQuote(const std::shared_ptr<QBQuoteValueObject>& quote);
    void editQuote(const QVariantMap& userInfo);
    void handleWillRemoveQuote(const QVariantMap& userInfo);
    // Removes the quote without telling anyone, then announces it 250 ms later.
    void removeEmptyQuote(const QString& uid);

    // Confirm and cancel the open edit.
    void forceOk();
    void forceReset();
    // Keeps the open edit now and saves what it changed, without asking about duplicates:
    // the window or the program is going away.
    void keepOpenEdit();

    void editorFontSelected(int entry);
    void changeEditorFont(const QFont& font);
    void restoreEditorFontSelectionWithFont(const QString& fontName);
    void adjustTextViewAppearance();

    void textDidBeginEditing();
    void textDidEndEditing();

    const std::shared_ptr<QBQuoteValueObject>& currentQuote() const { return mCurrentQuote; }
    bool isEditing() const { return mIsEditing; }
    bool editIsConfirmed() const { return mEditIsConfirmed; }
    QTextEdit* quoteTextView() const;
    QComboBox* fontPopup() const;
    QLabel* overlayImageView() const;

    // The pop-up's entries and the fonts they stand for (18 pt).
    enum FontEntry
    {
        MonospacedFont = 0,
        SystemFont = 1,
        SerifFont = 2
    };
    static QFont fontForEntry(int entry);
    static int entryForFontName(const QString& fontName);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void registerForNotifications();
    void setUpControls();
    void showContent(const QString& content);
    void applyLineSpacing();
    void updateOverlayImage();
    // Return in the text view: a new paragraph with the line spacing, every time.
    bool insertParagraph(const QKeyEvent& event);
    // Ends the open edit as the text view losing the focus does.
    void endEditing();
    // Posts the delayed removal notice of an emptied quote, once.
    void announceRemoval(const QString& uid);

    std::unique_ptr<Ui::QBQuotesEditorView> mUi;
    QPointer<QBUndoManager> mUndoManager;
    QBNotificationObserverTracker mNotificationTracker;
    std::shared_ptr<QBQuoteValueObject> mCurrentQuote;
    QMetaObject::Connection mContentConnection;
    QString mContentBeforeEditing;
    bool mIsEditing = false;
    bool mEditIsConfirmed = false;
    bool mEditIsCancelled = false;
    bool mLeavingForGood = false; // no questions: the program is ending
    QStringList mUnannouncedRemovals;
    QAction* mConfirmAction = nullptr;
    QAction* mCancelAction = nullptr;
    bool mShowingContent = false; // the text view changes because the quote did
};
