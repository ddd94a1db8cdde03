#include "model/NotificationObserverTracker.h"

QBNotificationObserverTracker::~QBNotificationObserverTracker()
{
    removeObservers();
}

void QBNotificationObserverTracker::observeNotification(const QString& name,
                                                        const QBNotificationHandler& handler)
{
    QBNotificationToken token = QBNotificationCenter::defaultCenter().addObserver(name, handler);
    for (auto& [storedName, storedToken] : mNotificationObservers) {
        if (storedName == name) {
            storedToken = std::move(token);
            return;
        }
    }
    mNotificationObservers.emplace_back(name, std::move(token));
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
    for (const auto& [name, token] : mNotificationObservers)
        center.removeObserver(token);
    mNotificationObservers.clear();
}
