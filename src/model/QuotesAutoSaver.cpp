#include "model/QuotesAutoSaver.h"

#include "core/QuotesRepository.h"
#include "logging/ULog.h"
#include "model/Notifications.h"
#include "model/QuotesChangeBatch.h"
#include "util/UndoManager.h"

namespace {
const QString kClassName = QStringLiteral("QBQuotesAutoSaver");
}

QBQuotesAutoSaver::QBQuotesAutoSaver()
{
    logInfoMessage(QStringLiteral("%1 initialized").arg(kClassName));
    registerForNotifications();
}

void QBQuotesAutoSaver::registerForNotifications()
{
    mNotificationTracker.observeNotifications(
        {QBQuoteDidUpdateNotification, QBQuoteAddedNotification, QBQuoteRemovedNotification,
         QBQuotesModifiedNotification, QBQuotesImportedNotification},
        [this](const QBNotification&) { handleQuotesChanged(); });

    // Undo or redo of a group is one user command: one save at its end.
    mNotificationTracker.observeNotifications(
        {QBUndoManagerWillUndoChangeNotification, QBUndoManagerWillRedoChangeNotification},
        [](const QBNotification&) { QBQuotesChangeBatch::begin(); });
    mNotificationTracker.observeNotifications(
        {QBUndoManagerDidUndoChangeNotification, QBUndoManagerDidRedoChangeNotification},
        [](const QBNotification&) { QBQuotesChangeBatch::end(); });
    mNotificationTracker.observeNotification(
        QBQuotesChangeBatchDidEndNotification,
        [this](const QBNotification&) { handleBatchDidEnd(); });
}

void QBQuotesAutoSaver::handleQuotesChanged()
{
    if (QBQuotesChangeBatch::isOpen())
        mHasUnsavedChanges = true;
    else
        save();
}

void QBQuotesAutoSaver::handleBatchDidEnd()
{
    if (mHasUnsavedChanges)
        save();
}

void QBQuotesAutoSaver::save()
{
    mHasUnsavedChanges = false;
    CQuotesRepository::getInstance().saveQuotes();
    logDebugMessage(QStringLiteral("%1: Saved to repository").arg(kClassName));
}
