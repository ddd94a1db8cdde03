#include "util/NotificationCenter.h"

QBNotificationCenter& QBNotificationCenter::defaultCenter()
{
    // Never destroyed: trackers of objects that live until exit still unregister late.
    static QBNotificationCenter* const center = new QBNotificationCenter;
    return *center;
}

QBNotificationToken QBNotificationCenter::addObserver(const QString& name,
                                                      QBNotificationHandler handler)
{
    const std::uint64_t serial = ++mLastSerial;
    mObservers[name].emplace(serial, std::move(handler));
    return QBNotificationToken{name, serial};
}

void QBNotificationCenter::removeObserver(const QBNotificationToken& token)
{
    const auto found = mObservers.find(token.name);
    if (found == mObservers.end())
        return;
    found->second.erase(token.serial);
    if (found->second.empty())
        mObservers.erase(found);
}

std::size_t QBNotificationCenter::observerCount(const QString& name) const
{
    const auto found = mObservers.find(name);
    return found == mObservers.end() ? 0 : found->second.size();
}

QBNotificationCenter::ObserverList::const_iterator
QBNotificationCenter::nextObserver(const ObserverList* list, std::uint64_t after,
                                   std::uint64_t limit)
{
    static const ObserverList kEmpty;
    if (list == nullptr)
        return kEmpty.end();
    auto next = list->upper_bound(after);
    if (next != list->end() && next->first > limit)
        return list->end();
    return next;
}

void QBNotificationCenter::post(const QBNotification& notification)
{
    // Handlers may add or remove observers, even erase a whole list, so nothing is held
    // across a call: each step looks the lists up again and resumes after the serial
    // delivered last. The limit keeps observers added during this post out of it.
    const std::uint64_t limit = mLastSerial;
    std::uint64_t delivered = 0;
    for (;;) {
        const auto namedList =
            notification.name.isEmpty() ? mObservers.end() : mObservers.find(notification.name);
        const auto anyList = mObservers.find(QString());
        const ObserverList* named = namedList == mObservers.end() ? nullptr : &namedList->second;
        const ObserverList* any = anyList == mObservers.end() ? nullptr : &anyList->second;

        const auto nextNamed = nextObserver(named, delivered, limit);
        const auto nextAny = nextObserver(any, delivered, limit);
        const bool hasNamed = named != nullptr && nextNamed != named->end();
        const bool hasAny = any != nullptr && nextAny != any->end();
        if (!hasNamed && !hasAny)
            return;

        const auto chosen =
            (hasNamed && (!hasAny || nextNamed->first < nextAny->first)) ? nextNamed : nextAny;
        delivered = chosen->first;
        // A copy, so the handler survives its own removal while it runs.
        const QBNotificationHandler handler = chosen->second;
        handler(notification);
    }
}

void QBNotificationCenter::post(const QString& name, QObject* object, const QVariantMap& userInfo)
{
    post(QBNotification{name, object, userInfo});
}
