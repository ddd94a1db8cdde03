#include "model/Actions.h"

#include "core/QuotesRepository.h"
#include "logging/ULog.h"
#include "model/Notifications.h"
#include "util/NotificationCenter.h"
#include "util/StringUtilities.h"

namespace {

const QString kEditQuoteName = QStringLiteral("Edit Quote");

void postForQuote(const QString& name, QObject* sender, const std::string& uid)
{
    QBNotificationCenter::defaultCenter().post(name, sender,
                                               {{QBKeyQuoteUID, QString::fromStdString(uid)}});
}

// Actions register through shared_from_this, so they are always made shared.
template <class Action, class... Arguments> void registerNewAction(Arguments&&... arguments)
{
    std::make_shared<Action>(std::forward<Arguments>(arguments)...)->registerUndo();
}

} // namespace

QBAction::QBAction(QBUndoManager* undoManager, const QString& actionName)
    : mUndoManager(undoManager), mActionName(actionName),
      mCreationTime(QDateTime::currentDateTime())
{
    if (undoManager == nullptr)
        logWarningMessage(QStringLiteral("Invalid undo manager reference @ %1")
                              .arg(QStringLiteral("initWithUndoManager:name:")));
}

void QBAction::registerUndo()
{
    if (mUndoManager.isNull())
        return;
    mUndoManager->registerUndoWithTarget(this,
                                         [self = shared_from_this()] { self->performUndo(); });
}

void QBAction::performUndo()
{
    logWarningMessage("Default implementation of performUndo called");
}

QString QBAction::description() const
{
    return QStringLiteral("<%1(%2): 0x%3>")
        .arg(QString::fromLatin1(metaObject()->className()),
             mCreationTime.time().toString(QStringLiteral("HH:mm:ss")),
             QString::number(reinterpret_cast<quintptr>(this), 16));
}

QBAddQuoteAction::QBAddQuoteAction(QBUndoManager* undoManager, const CQuoteRecord& quote)
    : QBAction(undoManager, kEditQuoteName), mQuoteRecord(quote)
{}

void QBAddQuoteAction::performUndo()
{
    // The record still stands at its place, so the inverse remembers its present index.
    // It copies the live record: text typed into a new quote is undone with the add
    // (no edit step of its own), so redo must bring that text back too.
    const CQuoteRecord* live = CQuotesRepository::getInstance().findQuote(mQuoteRecord.mUID);
    registerNewAction<QBRemoveQuoteAction>(undoManager(), live != nullptr ? *live : mQuoteRecord);
    postForQuote(QBQuoteWillRemoveNotification, this, mQuoteRecord.mUID);
    CQuotesRepository::getInstance().removeQuote(mQuoteRecord.mUID);
    postForQuote(QBQuoteRemovedNotification, this, mQuoteRecord.mUID);
}

QBRemoveQuoteAction::QBRemoveQuoteAction(QBUndoManager* undoManager, const CQuoteRecord& quote)
    : QBRemoveQuoteAction(undoManager, quote,
                          CQuotesRepository::getInstance().indexOfQuote(quote.mUID))
{}

QBRemoveQuoteAction::QBRemoveQuoteAction(QBUndoManager* undoManager, const CQuoteRecord& quote,
                                         std::uint32_t index)
    : QBAction(undoManager, kEditQuoteName), mQuoteRecord(quote), mOriginalQuoteIndex(index)
{}

void QBRemoveQuoteAction::performUndo()
{
    registerNewAction<QBAddQuoteAction>(undoManager(), mQuoteRecord);
    // Indices past the 32-bit signed range wrap negative, which the repository appends.
    CQuotesRepository::getInstance().insertQuote(mQuoteRecord,
                                                 static_cast<std::int32_t>(mOriginalQuoteIndex));
    postForQuote(QBQuoteAddedNotification, this, mQuoteRecord.mUID);
}

QBEditQuoteAction::QBEditQuoteAction(QBUndoManager* undoManager, const CQuoteRecord& quote)
    : QBAction(undoManager, kEditQuoteName), mQuoteUID(quote.mUID),
      mOriginalContent(stringFromUnicodeCPPString(quote.mContent))
{}

void QBEditQuoteAction::performUndo()
{
    CQuoteRecord* record = CQuotesRepository::getInstance().findQuote(mQuoteUID);
    if (record == nullptr) {
        logWarningMessage(
            QStringLiteral("Quote <%1> not found").arg(QString::fromStdString(mQuoteUID)));
        return;
    }
    // The inverse captures the text about to be replaced, which is what redo restores.
    registerNewAction<QBEditQuoteAction>(undoManager(), *record);
    record->mContent = mOriginalContent.toStdString();
    postForQuote(QBQuoteDidUpdateNotification, this, mQuoteUID);
}

QBAddAllQuotesAction::QBAddAllQuotesAction(QBUndoManager* undoManager,
                                           std::vector<CQuoteRecord> quotes)
    : QBAction(undoManager, QStringLiteral("Add Quotes")), mQuotes(std::move(quotes))
{}

void QBAddAllQuotesAction::performUndo()
{
    registerNewAction<QBRemoveAllQuotesAction>(undoManager(), mQuotes);
    CQuotesRepository::getInstance().removeAllQuotes();
    QBNotificationCenter::defaultCenter().post(QBQuotesModifiedNotification, this);
}

QBRemoveAllQuotesAction::QBRemoveAllQuotesAction(QBUndoManager* undoManager,
                                                 std::vector<CQuoteRecord> quotes)
    : QBAction(undoManager, QStringLiteral("Remove All Quotes")), mQuotes(std::move(quotes))
{}

void QBRemoveAllQuotesAction::performUndo()
{
    registerNewAction<QBAddAllQuotesAction>(undoManager(), mQuotes);
    auto& repository = CQuotesRepository::getInstance();
    for (std::size_t index = 0; index < mQuotes.size(); ++index)
        repository.insertQuote(mQuotes[index], static_cast<std::int32_t>(index));
    QBNotificationCenter::defaultCenter().post(QBQuotesModifiedNotification, this);
}
