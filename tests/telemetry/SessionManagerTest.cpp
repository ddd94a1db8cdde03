#include "TelemetryTestSupport.h"
#include "TestHome.h"

#include "telemetry/DurationSignalTracker.h"
#include "telemetry/SessionManager.h"
#include "util/UserDefaults.h"

#include <QTimeZone>

#include <gtest/gtest.h>

namespace {
struct SentSignal
{
    QString name;
    TelemetryParameters parameters;
};

class SessionManagerTest : public ::testing::Test
{
protected:
    std::unique_ptr<SessionManager> makeSessionManager()
    {
        return std::make_unique<SessionManager>(
            suite, clock, [this](const QString& name, const TelemetryParameters& parameters) {
                sent.push_back({name, parameters});
            });
    }

    QStringList sentNames() const
    {
        QStringList names;
        for (const SentSignal& signal : sent) {
            names.append(signal.name);
        }
        return names;
    }

    QList<StoredSession> storedSessions()
    {
        return SessionHistory::decodeSessions(QBUserDefaults(suite->filePath())
                                                  .objectForKey(QStringLiteral("recentSessions"))
                                                  .toByteArray());
    }

    QBTestHome home;
    std::shared_ptr<QBUserDefaults> suite = std::make_shared<QBUserDefaults>(
        home.filePath(QStringLiteral("config/com.tallyhub.test.conf")));
    // Midday local time, so whole days later stay on the same local date.
    std::shared_ptr<ManualClock> clock =
        std::make_shared<ManualClock>(QDateTime(QDate(2026, 5, 6), QTime(12, 0)).toUTC());
    std::vector<SentSignal> sent;
    const QString today = QStringLiteral("2026-05-06");
};
} // namespace

TEST_F(SessionManagerTest, ASessionIsStoredOnlyOnceItHasLastedOneSecond)
{
    auto sessions = makeSessionManager();
    sessions->startNewSession();
    EXPECT_TRUE(sessions->isTicking());
    clock->advanceMilliseconds(900);
    sessions->updateSessionDuration();
    EXPECT_TRUE(sessions->history().recentSessions.isEmpty());

    clock->advanceMilliseconds(1300);
    sessions->updateSessionDuration();
    sessions->waitForPersistence();
    const QList<StoredSession> expected{{clock->now().addMSecs(-2200), 2}};
    EXPECT_EQ(sessions->history().recentSessions, expected);
    EXPECT_EQ(storedSessions(), expected);
}

TEST_F(SessionManagerTest, TimeInTheBackgroundIsNotCounted)
{
    auto sessions = makeSessionManager();
    sessions->startNewSession();
    clock->advance(10);
    sessions->updateSessionDuration();
    sessions->applicationDidEnterBackground();
    EXPECT_FALSE(sessions->isTicking());
    clock->advance(100);
    sessions->applicationWillEnterForeground();
    EXPECT_TRUE(sessions->isTicking());
    clock->advance(5);
    sessions->updateSessionDuration();
    ASSERT_EQ(sessions->history().recentSessions.size(), 1);
    EXPECT_EQ(sessions->history().recentSessions.first().durationInSeconds, 15);
}

TEST_F(SessionManagerTest, SessionsOlderThanNinetyDaysAreDroppedAndCounted)
{
    const QDateTime now = clock->now();
    suite->setObject(
        SessionHistory::encodeSessions({{now.addDays(-91), 30}, {now.addDays(-89), 40}}),
        QStringLiteral("recentSessions"));
    suite->setInteger(2, QStringLiteral("deletedSessionsCount"));

    auto sessions = makeSessionManager();
    sessions->waitForPersistence();
    const QList<StoredSession> kept{{now.addDays(-89), 40}};
    EXPECT_EQ(sessions->history().recentSessions, kept);
    EXPECT_EQ(sessions->history().deletedSessionsCount, 3);
    EXPECT_EQ(storedSessions(), kept);
    EXPECT_EQ(
        QBUserDefaults(suite->filePath()).integerForKey(QStringLiteral("deletedSessionsCount")), 3);
}

TEST_F(SessionManagerTest, AFirstLaunchSendsTheNewInstallSignalOnce)
{
    {
        auto sessions = makeSessionManager();
        sessions->startNewSession();
        clock->advance(5);
        sessions->updateSessionDuration();
    }
    ASSERT_EQ(sentNames(), QStringList{QStringLiteral("Tallyhub.Acquisition.newInstallDetected")});
    EXPECT_EQ(
        sent.front().parameters,
        (TelemetryParameters{{QStringLiteral("Tallyhub.Acquisition.firstSessionDate"), today}}));
    EXPECT_EQ(QBUserDefaults(suite->filePath()).stringForKey(QStringLiteral("firstSessionDate")),
              today);

    clock->advance(3600);
    auto nextLaunch = makeSessionManager();
    nextLaunch->startNewSession();
    EXPECT_EQ(sent.size(), 1u);
    EXPECT_EQ(nextLaunch->history().firstSessionDate, today);
}

TEST_F(SessionManagerTest, TwoSessionsOnOneDayCountOneDay)
{
    {
        auto sessions = makeSessionManager();
        for (int session = 0; session < 2; ++session) {
            sessions->startNewSession();
            clock->advance(5);
            sessions->updateSessionDuration();
        }
        EXPECT_EQ(sessions->history().distinctDaysUsed, QStringList{today});
        EXPECT_EQ(sessions->history().recentSessions.size(), 2);
    }
    clock->advance(24 * 3600);
    auto nextDay = makeSessionManager();
    nextDay->waitForPersistence();
    EXPECT_EQ(nextDay->history().distinctDaysUsed,
              (QStringList{today, QStringLiteral("2026-05-07")}));
    EXPECT_EQ(QBUserDefaults(suite->filePath())
                  .objectForKey(QStringLiteral("distinctDaysUsed"))
                  .toStringList(),
              (QStringList{today, QStringLiteral("2026-05-07")}));
}

TEST(SessionHistoryTest, RetentionFiguresFollowTheChosenFormulas)
{
    const QDateTime now = QDateTime(QDate(2026, 5, 6), QTime(12, 0)).toUTC();
    SessionHistory history;
    history.recentSessions = {{now.addDays(-3), 10}, {now.addDays(-1), 21}, {now, 60}};
    history.deletedSessionsCount = 2;
    history.firstSessionDate = QStringLiteral("2026-01-02");
    history.distinctDaysUsed = {QStringLiteral("2026-03-01"), QStringLiteral("2026-04-06"),
                                QStringLiteral("2026-04-07"), QStringLiteral("2026-05-06")};

    const TelemetryParameters expected{
        {QStringLiteral("Tallyhub.Retention.totalSessionsCount"), QStringLiteral("5")},
        {QStringLiteral("Tallyhub.Retention.averageSessionSeconds"), QStringLiteral("30")},
        {QStringLiteral("Tallyhub.Retention.previousSessionSeconds"), QStringLiteral("21")},
        {QStringLiteral("Tallyhub.Retention.distinctDaysUsed"), QStringLiteral("4")},
        {QStringLiteral("Tallyhub.Retention.distinctDaysUsedLastMonth"), QStringLiteral("2")},
        {QStringLiteral("Tallyhub.Acquisition.firstSessionDate"), QStringLiteral("2026-01-02")},
    };
    EXPECT_EQ(history.retentionParameters(now, now), expected);
}

TEST(DurationSignalTrackerTest, SendsTheElapsedForegroundTimeWithTheMergedParameters)
{
    auto clock = std::make_shared<ManualClock>(QDateTime::currentDateTimeUtc());
    std::vector<SentSignal> sent;
    DurationSignalTracker tracker(clock,
                                  [&sent](const QString& name, const TelemetryParameters& p) {
                                      sent.push_back({name, p});
                                  });
    const QString durationKey = QStringLiteral("Tallyhub.Signal.durationInSeconds");

    tracker.startTracking(QStringLiteral("Export"), {{QStringLiteral("a"), QStringLiteral("1")}});
    tracker.startTracking(QStringLiteral("Upload"), {}, true);
    clock->advanceMilliseconds(5250);
    tracker.applicationDidEnterBackground();
    clock->advance(100);
    tracker.applicationWillEnterForeground();
    clock->advance(2);
    tracker.stopTracking(QStringLiteral("Export"), {{QStringLiteral("b"), QStringLiteral("2")}});
    tracker.stopTracking(QStringLiteral("Upload"));
    tracker.stopTracking(QStringLiteral("Never started"));

    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[0].name, QStringLiteral("Export"));
    EXPECT_EQ(sent[0].parameters, (TelemetryParameters{{QStringLiteral("a"), QStringLiteral("1")},
                                                       {QStringLiteral("b"), QStringLiteral("2")},
                                                       {durationKey, QStringLiteral("7.250")}}));
    EXPECT_EQ(sent[1].parameters.value(durationKey), QStringLiteral("107.250"));
}
