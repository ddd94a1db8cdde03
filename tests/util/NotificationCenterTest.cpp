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

TEST_F(NotificationCenterTest, HandlersThatChangeRegistrationsOrPostAgainKeepDeliveryCorrect)
{
    QBNotificationToken later;
    QBNotificationToken self;
    // Removes itself and a later observer, adds one for the next post, posts depth-first.
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
