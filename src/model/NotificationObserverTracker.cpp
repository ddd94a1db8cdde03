#include "model/NotificationObserverTracker.h"

QBNotificationObserverTracker::~QBNotificationObserverTracker()
{
    removeObservers();
}

void QBNotificationObserverTracker::observeNotification(const QString& name,
                                                        const QBNotificationHandler& handler)
{
    mNotificationObservers.insert(name,
                                  QBNotificationCenter::defaultCenter().addObserver(name, handler));
}

void QBNotificationObserverTracker::observeNotifications(const QStringList& names,
                                                         const QBNotificationHandler& handler)
{
    for (const QString& name : names)
        observeNotification(name, handler);
}

void QBNotificationObserverTracker::removeObservers()
{
    auto& center = QBNotificationCenter::defaultCenter();
    for (const QBNotificationToken& token : std::as_const(mNotificationObservers))
        center.removeObserver(token);
    mNotificationObservers = {};
}
