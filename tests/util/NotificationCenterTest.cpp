#include "util/NotificationCenter.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString kPing = u"Ping"_s;
const QString kPong = u"Pong"_s;

class NotificationCenterTest : public ::testing::Test
{
protected:
    QBNotificationToken record(const QString& name, const char* label)
    {
        return center.addObserver(name, [this, label](const QBNotification& notification) {
            calls << QString::fromUtf8(label) + QLatin1Char(':') + notification.name;
        });
    }

    QBNotificationCenter center; // a centre of its own, not the default one
    QStringList calls;
};

TEST_F(NotificationCenterTest, DeliversByNameInRegistrationOrderUntilRemoved)
{
    const QBNotificationToken first = record(kPing, "a");
    const QBNotificationToken any = record(QString(), "any");
    record(kPong, "b");
    record(kPing, "c");
    QObject sender;
    center.addObserver(kPing, [&](const QBNotification& notification) {
        calls << notification.userInfo.value(u"key"_s).toString() +
                     (notification.object == &sender ? u"@sender"_s : u"@none"_s);
    });
    center.post(kPing, &sender, {{u"key"_s, 7}});
    EXPECT_EQ(calls, QStringList({u"a:Ping"_s, u"any:Ping"_s, u"c:Ping"_s, u"7@sender"_s}));

    calls.clear();
    center.removeObserver(first);
    center.removeObserver(any);
    center.removeObserver(first); // twice is harmless
    center.post(kPing);
    EXPECT_EQ(calls, QStringList({u"c:Ping"_s, u"@none"_s}));
    EXPECT_EQ(center.observerCount(kPing), 2u);
    EXPECT_EQ(center.observerCount(QString()), 0u);
}

TEST_F(NotificationCenterTest, HandlersThatChangeRegistrationsOrPostAgainKeepDeliveryCorrect)
{
    QBNotificationToken later;
    QBNotificationToken self;
    // Removes itself and an observer that has not run yet; adds one that must wait for
    // the next post; posts another notification, which is delivered depth-first.
    self = center.addObserver(kPing, [&](const QBNotification&) {
        calls << u"remover"_s;
        center.removeObserver(self);
        center.removeObserver(later);
        record(kPing, "added");
        center.post(kPong);
    });
    record(kPong, "pong");
    later = record(kPing, "later");
    record(kPing, "last");

    center.post(kPing);
    EXPECT_EQ(calls, QStringList({u"remover"_s, u"pong:Pong"_s, u"last:Ping"_s}));
    calls.clear();
    center.post(kPing);
    EXPECT_EQ(calls, QStringList({u"last:Ping"_s, u"added:Ping"_s}));
}

} // namespace
