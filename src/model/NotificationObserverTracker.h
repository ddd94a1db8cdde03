#pragma once

#include "util/NotificationCenter.h"

#include <QHash>
#include <QString>
#include <QStringList>

// One owner's registrations on the default notification centre, removed together
// when the owner drops the tracker.
class QBNotificationObserverTracker
{
public:
    QBNotificationObserverTracker() = default;
    ~QBNotificationObserverTracker();
    QBNotificationObserverTracker(const QBNotificationObserverTracker&) = delete;
    QBNotificationObserverTracker& operator=(const QBNotificationObserverTracker&) = delete;

    // Registers |handler| for |name| (empty: every notification) from any sender.
    // Registering a name twice keeps the first registration alive for good: only the
    // newer token is remembered, so removeObservers() cannot reach the older one.
    void observeNotification(const QString& name, const QBNotificationHandler& handler);
    void observeNotifications(const QStringList& names, const QBNotificationHandler& handler);
    void removeObservers();

    const QHash<QString, QBNotificationToken>& notificationObservers() const
    {
        return mNotificationObservers;
    }

private:
    QHash<QString, QBNotificationToken> mNotificationObservers;
};
