#include "TelemetryTestSupport.h"

#include "telemetry/SessionManager.h"
#include "util/UserDefaults.h"

namespace {
using Sent = std::vector<std::pair<QString, TelemetryParameters>>;

class SessionManagerTest : public ::testing::Test
{
protected:
    std::unique_ptr<SessionManager> makeSessionManager()
    {
        return std::make_unique<SessionManager>(
            suite, clock, [this](const QString& name, const TelemetryParameters& parameters) {
                sent.emplace_back(name, parameters);
            });
    }

    // What a fresh reader of the suite file sees under |key|.
    QVariant stored(const QString& key) const
    {
        return QBUserDefaults(suite->filePath()).objectForKey(key);
    }

    QBTestHome home;
    std::shared_ptr<QBUserDefaults> suite =
        std::make_shared<QBUserDefaults>(home.filePath(u"config/com.tallyhub.test.conf"_s));
    // Midday local time, so whole days later stay on the same local date.
    std::shared_ptr<ManualClock> clock =
        std::make_shared<ManualClock>(QDateTime(QDate(2026, 5, 6), QTime(12, 0)).toUTC());
    Sent sent;
    const QString today = u"2026-05-06"_s;
};
} // namespace

TEST_F(SessionManagerTest, ASessionIsStoredOnceItHasLastedOneSecondAndBackgroundTimeIsNotCounted)
{
    auto sessions = makeSessionManager();
    sessions->startNewSession();
    const QDateTime start = clock->now();
    clock->advance(0.9);
    sessions->updateSessionDuration();
    EXPECT_TRUE(sessions->history().recentSessions.isEmpty());

    const auto storedSessions = [&] {
        sessions->waitForPersistence();
        return SessionHistory::decodeSessions(stored(u"recentSessions"_s).toByteArray());
    };
    clock->advance(1.3);
    sessions->updateSessionDuration();
    EXPECT_EQ(sessions->history().recentSessions, (QList<StoredSession>{{start, 2}}));
    // Every tick updates the history in memory; the file at most once a minute.
    EXPECT_EQ(storedSessions(), QList<StoredSession>());
    for (int tick = 0; tick < 58; ++tick) {
        clock->advance(1);
        sessions->updateSessionDuration();
    }
    EXPECT_EQ(storedSessions(), (QList<StoredSession>{{start, 60}}));

    sessions->applicationDidEnterBackground(); // written when going away
    clock->advance(100);
    sessions->applicationWillEnterForeground();
    clock->advance(5);
    sessions->updateSessionDuration();
    EXPECT_EQ(sessions->history().recentSessions, (QList<StoredSession>{{start, 65}}));
    EXPECT_EQ(storedSessions(), (QList<StoredSession>{{start, 60}}));
    clock->advance(2);
    sessions->applicationWillTerminate(); // and at exit
    EXPECT_EQ(storedSessions(), (QList<StoredSession>{{start, 67}}));
}

TEST_F(SessionManagerTest, AFirstLaunchSendsTheNewInstallSignalOnceAndSessionsCountDistinctDays)
{
    const Sent newInstall{{u"Tallyhub.Acquisition.newInstallDetected"_s,
                           {{u"Tallyhub.Acquisition.firstSessionDate"_s, today}}}};
    {
        auto sessions = makeSessionManager();
        for (int session = 0; session < 2; ++session) {
            sessions->startNewSession();
            clock->advance(5);
            sessions->updateSessionDuration();
        }
        EXPECT_EQ(sent, newInstall);
        EXPECT_EQ(sessions->history().distinctDaysUsed, QStringList{today});
        EXPECT_EQ(sessions->history().recentSessions.size(), 2);
    }
    EXPECT_EQ(stored(u"firstSessionDate"_s).toString(), today);

    clock->advance(24 * 3600);
    auto nextDay = makeSessionManager();
    nextDay->startNewSession();
    nextDay->waitForPersistence();
    EXPECT_EQ(sent, newInstall);
    EXPECT_EQ(nextDay->history().firstSessionDate, today);
    const QStringList days{today, u"2026-05-07"_s};
    EXPECT_EQ(nextDay->history().distinctDaysUsed, days);
    EXPECT_EQ(stored(u"distinctDaysUsed"_s).toStringList(), days);
}
