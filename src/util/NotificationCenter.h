#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <functional>
#include <map>
#include <unordered_map>

// Posted by QBUserDefaults after every change; the sender is the defaults object.
inline const QString QBUserDefaultsDidChangeNotification =
    QStringLiteral("QBUserDefaultsDidChangeNotification");

// One posted notification: a name, the object that sent it (may be null) and extra data.
struct QBNotification
{
    QString name;
    QObject* object = nullptr;
    QVariantMap userInfo;
};

using QBNotificationHandler = std::function<void(const QBNotification&)>;

// Identifies one registration; handed back to removeObserver(). Plain data, so dropping
// a token does not unregister anything.
struct QBNotificationToken
{
    QString name;
    std::uint64_t serial = 0;
    bool isValid() const { return serial != 0; }
};

// In-process publish/subscribe by name. Handlers run synchronously on the posting
// thread, in registration order; an observer registered with an empty name receives
// every notification. A handler may post again (delivered depth-first) or add and
// remove observers: removed ones are not called any more, and ones added during a post
// only see later posts. Used from the main thread only.
class QBNotificationCenter
{
public:
    static QBNotificationCenter& defaultCenter();

    QBNotificationToken addObserver(const QString& name, QBNotificationHandler handler);
    void removeObserver(const QBNotificationToken& token);

    void post(const QBNotification& notification);
    void post(const QString& name, QObject* object = nullptr, const QVariantMap& userInfo = {});

    // Registrations currently held for |name| (an empty name counts the catch-all ones).
    std::size_t observerCount(const QString& name) const;

private:
    using ObserverList = std::map<std::uint64_t, QBNotificationHandler>;

    // First entry of |list| with a serial above |after| and at most |limit|, or end().
    static ObserverList::const_iterator nextObserver(const ObserverList* list, std::uint64_t after,
                                                     std::uint64_t limit);

    std::unordered_map<QString, ObserverList> mObservers;
    std::uint64_t mLastSerial = 0;
};
