#include "SessionManager.h"

#include "util/UserDefaults.h"

#include <QMutexLocker>

namespace {
const QString kRecentSessions = QStringLiteral("recentSessions");
const QString kDeletedSessionsCount = QStringLiteral("deletedSessionsCount");
const QString kFirstSessionDate = QStringLiteral("firstSessionDate");
const QString kDistinctDaysUsed = QStringLiteral("distinctDaysUsed");
constexpr int kTickMilliseconds = 1000;
} // namespace

SessionManager::SessionManager(std::shared_ptr<QBUserDefaults> suite,
                               std::shared_ptr<const TelemetryClock> clock, SignalSender sendSignal,
                               QObject* parent)
    : QObject(parent), mSuite(std::move(suite)), mClock(std::move(clock)),
      mSendSignal(std::move(sendSignal))
{
    mPersistenceQueue.setMaxThreadCount(1);
    mPersistenceQueue.setObjectName(QStringLiteral("com.tallyhub.sessionmanager.persistence"));
    mTicker.setInterval(kTickMilliseconds);
    connect(&mTicker, &QTimer::timeout, this, &SessionManager::updateSessionDuration);

    const QDateTime now = mClock->now();
    mHistory.recentSessions =
        SessionHistory::decodeSessions(mSuite->objectForKey(kRecentSessions).toByteArray());
    mHistory.deletedSessionsCount = mSuite->integerForKey(kDeletedSessionsCount);
    mHistory.firstSessionDate = mSuite->stringForKey(kFirstSessionDate);
    mHistory.distinctDaysUsed = mSuite->objectForKey(kDistinctDaysUsed).toStringList();

    const qint64 deletedBefore = mHistory.deletedSessionsCount;
    mHistory.dropSessionsOlderThan(now);
    if (mHistory.deletedSessionsCount != deletedBefore) {
        persist(kDeletedSessionsCount, mHistory.deletedSessionsCount);
        persist(kRecentSessions, SessionHistory::encodeSessions(mHistory.recentSessions));
    }
    if (mHistory.recordDayOfUse(SessionHistory::dayText(now))) {
        persist(kDistinctDaysUsed, mHistory.distinctDaysUsed);
    }
}

SessionManager::~SessionManager()
{
    mPersistenceQueue.waitForDone();
}

void SessionManager::startNewSession()
{
    stopTicker();
    const QDateTime now = mClock->now();
    const QString today = SessionHistory::dayText(now);
    bool isNewInstallation = false;
    {
        QMutexLocker locker(&mMutex);
        isNewInstallation = mHistory.recentSessions.isEmpty();
        if (isNewInstallation) {
            mHistory.firstSessionDate = today;
            persist(kFirstSessionDate, today);
        }
        // A session that begins after midnight counts its day too.
        if (mHistory.recordDayOfUse(today)) {
            persist(kDistinctDaysUsed, mHistory.distinctDaysUsed);
        }
        mCurrentSessionStartedAt = now;
        mCurrentSessionDuration = 0.0;
    }
    if (isNewInstallation) {
        mSendSignal(QStringLiteral("Tallyhub.Acquisition.newInstallDetected"),
                    {{QStringLiteral("Tallyhub.Acquisition.firstSessionDate"), today}});
    }
    updateSessionDuration();
    saveSessions();
    startTicker();
}

void SessionManager::updateSessionDuration()
{
    const QDateTime now = mClock->now();
    QMutexLocker locker(&mMutex);
    if (mSessionDurationLastUpdatedAt) {
        mCurrentSessionDuration +=
            static_cast<double>(mSessionDurationLastUpdatedAt->msecsTo(now)) / 1000.0;
    }
    mSessionDurationLastUpdatedAt = now;
    if (mCurrentSessionDuration < 1.0) {
        return;
    }
    mHistory.recordSession(
        {mCurrentSessionStartedAt, static_cast<qint64>(mCurrentSessionDuration)});
    const bool saveIsDue =
        !mSessionsSavedAt.isValid() || mSessionsSavedAt.secsTo(now) >= kSessionsSaveIntervalSeconds;
    locker.unlock();
    if (saveIsDue) {
        saveSessions();
    }
}

void SessionManager::applicationDidEnterBackground()
{
    updateSessionDuration();
    stopTicker();
    saveSessions();
}

void SessionManager::applicationWillTerminate()
{
    if (mTicker.isActive()) {
        updateSessionDuration();
    }
    saveSessions();
    waitForPersistence();
}

void SessionManager::applicationWillEnterForeground()
{
    updateSessionDuration();
    startTicker();
}

TelemetryParameters SessionManager::retentionParameters() const
{
    const QDateTime now = mClock->now();
    QMutexLocker locker(&mMutex);
    return mHistory.retentionParameters(now, mCurrentSessionStartedAt);
}

SessionHistory SessionManager::history() const
{
    QMutexLocker locker(&mMutex);
    return mHistory;
}

void SessionManager::waitForPersistence()
{
    mPersistenceQueue.waitForDone();
}

void SessionManager::persist(const QString& key, const QVariant& value)
{
    mPersistenceQueue.start([suite = mSuite, key, value] { suite->setObject(value, key); });
}

void SessionManager::saveSessions()
{
    mSessionsSavedAt = mClock->now();
    QList<StoredSession> sessions;
    {
        QMutexLocker locker(&mMutex);
        sessions = mHistory.recentSessions; // shared: the list is copied only when next changed
    }
    mPersistenceQueue.start([suite = mSuite, sessions = std::move(sessions)] {
        suite->setObject(SessionHistory::encodeSessions(sessions), kRecentSessions);
    });
}

void SessionManager::startTicker()
{
    mTicker.start();
}

void SessionManager::stopTicker()
{
    mTicker.stop();
    QMutexLocker locker(&mMutex);
    mSessionDurationLastUpdatedAt.reset();
}
