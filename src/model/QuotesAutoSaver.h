#pragma once

#include "model/NotificationObserverTracker.h"

// Saves the repository after every change notification, so the file on disk is current
// whenever an operation returns. Inside a QBQuotesChangeBatch (undo and redo open one
// each) changes are only noted and saved once when the outermost batch ends. The
// application makes one at launch and keeps it until exit.
class QBQuotesAutoSaver
{
public:
    QBQuotesAutoSaver();
    QBQuotesAutoSaver(const QBQuotesAutoSaver&) = delete;
    QBQuotesAutoSaver& operator=(const QBQuotesAutoSaver&) = delete;

    QBNotificationObserverTracker& notificationTracker() { return mNotificationTracker; }

private:
    void registerForNotifications();
    void handleQuotesChanged();
    void handleBatchDidEnd();
    void save();

    QBNotificationObserverTracker mNotificationTracker;
    bool mHasUnsavedChanges = false;
};
