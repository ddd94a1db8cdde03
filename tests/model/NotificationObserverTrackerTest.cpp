#include "model/NotificationObserverTracker.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

const QString kName = QStringLiteral("TrackerTestNotification");

// Counts deliveries; shared so that registrations outliving a test stay harmless.
std::shared_ptr<int> counting(QBNotificationObserverTracker& tracker, const QString& name)
{
    auto count = std::make_shared<int>(0);
    tracker.observeNotification(name, [count](const QBNotification&) { ++*count; });
    return count;
}

TEST(NotificationObserverTrackerTest, DroppingTheTrackerUnsubscribesEverything)
{
    auto& center = QBNotificationCenter::defaultCenter();
    const std::size_t before = center.observerCount(kName);
    std::shared_ptr<int> named;
    std::shared_ptr<int> everything;
    {
        QBNotificationObserverTracker tracker;
        named = counting(tracker, kName);
        everything = counting(tracker, QString());
        tracker.observeNotifications({}, [](const QBNotification&) { FAIL(); });
        EXPECT_EQ(tracker.notificationObservers().size(), 2u);
        center.post(kName);
        EXPECT_EQ(*named, 1);
        EXPECT_EQ(*everything, 1);
    }
    center.post(kName);
    EXPECT_EQ(*named, 1);
    EXPECT_EQ(*everything, 1);
    EXPECT_EQ(center.observerCount(kName), before);
}

TEST(NotificationObserverTrackerTest, ASecondRegistrationOfANameReplacesTheTokenButNotTheFirst)
{
    QBNotificationObserverTracker tracker;
    const auto first = counting(tracker, kName);
    const auto second = counting(tracker, kName);
    EXPECT_EQ(tracker.notificationObservers().size(), 1u);
    QBNotificationCenter::defaultCenter().post(kName);
    EXPECT_EQ(*first, 1);
    EXPECT_EQ(*second, 1);

    tracker.removeObservers();
    EXPECT_TRUE(tracker.notificationObservers().empty());
    QBNotificationCenter::defaultCenter().post(kName);
    EXPECT_EQ(*first, 2); // the first registration stays for the rest of the process
    EXPECT_EQ(*second, 1);
}

} // namespace
