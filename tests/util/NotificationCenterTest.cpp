#include "util/NotificationCenter.h"
#include "util/UserDefaults.h"

#include "TestHome.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace {

const QString kPing = QStringLiteral("TestPingNotification");
const QString kPong = QStringLiteral("TestPongNotification");

// Every test uses its own centre except where the default one is the subject.
class NotificationCenterTest : public ::testing::Test
{
protected:
    QBNotificationToken record(const QString& name, const QString& label)
    {
        return center.addObserver(name, [this, label](const QBNotification& notification) {
            calls << label + QLatin1Char(':') + notification.name;
        });
    }

    QBNotificationCenter center;
    QStringList calls;
};

TEST_F(NotificationCenterTest, DeliversByNameInRegistrationOrderWithCatchAllObservers)
{
    record(kPing, QStringLiteral("a"));
    record(QString(), QStringLiteral("any"));
    record(kPong, QStringLiteral("b"));
    record(kPing, QStringLiteral("c"));

    QObject sender;
    QVariantMap seenInfo;
    QObject* seenSender = nullptr;
    center.addObserver(kPing, [&](const QBNotification& notification) {
        seenSender = notification.object;
        seenInfo = notification.userInfo;
    });
    center.post(kPing, &sender, {{QStringLiteral("key"), 7}});

    EXPECT_EQ(calls, (QStringList{QStringLiteral("a:TestPingNotification"),
                                  QStringLiteral("any:TestPingNotification"),
                                  QStringLiteral("c:TestPingNotification")}));
    EXPECT_EQ(seenSender, &sender);
    EXPECT_EQ(seenInfo.value(QStringLiteral("key")).toInt(), 7);
}

TEST_F(NotificationCenterTest, RemovedTokensReceiveNothing)
{
    const QBNotificationToken first = record(kPing, QStringLiteral("first"));
    const QBNotificationToken any = record(QString(), QStringLiteral("any"));
    record(kPing, QStringLiteral("second"));
    center.removeObserver(first);
    center.removeObserver(any);
    center.removeObserver(first); // twice is harmless
    center.post(kPing);
    EXPECT_EQ(calls, QStringList{QStringLiteral("second:TestPingNotification")});
    EXPECT_EQ(center.observerCount(kPing), 1u);
    EXPECT_EQ(center.observerCount(QString()), 0u);
}

TEST_F(NotificationCenterTest, HandlersThatChangeRegistrationsOrPostAgainKeepDeliveryCorrect)
{
    QBNotificationToken later;
    QBNotificationToken self;
    // Removes itself and an observer that has not run yet; adds one that must wait for
    // the next post; posts another notification, which is delivered depth-first.
    self = center.addObserver(kPing, [&](const QBNotification&) {
        calls << QStringLiteral("remover");
        center.removeObserver(self);
        center.removeObserver(later);
        record(kPing, QStringLiteral("added"));
        center.post(kPong);
    });
    record(kPong, QStringLiteral("pong"));
    later = record(kPing, QStringLiteral("later"));
    record(kPing, QStringLiteral("last"));

    center.post(kPing);
    EXPECT_EQ(calls,
              (QStringList{QStringLiteral("remover"), QStringLiteral("pong:TestPongNotification"),
                           QStringLiteral("last:TestPingNotification")}));

    calls.clear();
    center.post(kPing);
    EXPECT_EQ(calls, (QStringList{QStringLiteral("last:TestPingNotification"),
                                  QStringLiteral("added:TestPingNotification")}));
}

TEST(UserDefaultsNotificationTest, EveryChangeIsPostedWithTheDefaultsAsSender)
{
    QBTestHome home;
    QBUserDefaults defaults(home.filePath(QStringLiteral("defaults.conf")));
    QList<QObject*> senders;
    auto& center = QBNotificationCenter::defaultCenter();
    const QBNotificationToken token = center.addObserver(
        QBUserDefaultsDidChangeNotification,
        [&](const QBNotification& notification) { senders << notification.object; });

    defaults.setObject(true, QStringLiteral("QBDefaultsAutoRandomize"));
    defaults.setInteger(60, QStringLiteral("QBDefaultsRandomizeInterval"));
    defaults.removeObjectForKey(QStringLiteral("QBDefaultsAutoRandomize"));
    center.removeObserver(token);

    EXPECT_EQ(senders, (QList<QObject*>{&defaults, &defaults, &defaults}));
}

} // namespace
