#pragma once

#include "util/NotificationCenter.h"

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

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

    // Name to token. A few entries per owner, and thousands of owners (one per listed
    // quote), so a small vector beats a hash table here.
    using ObserverMap = std::vector<std::pair<QString, QBNotificationToken>>;
    const ObserverMap& notificationObservers() const { return mNotificationObservers; }

private:
    ObserverMap mNotificationObservers;
};
