#pragma once

#include "SessionHistory.h"
#include "TelemetryClock.h"
#include "TelemetryTypes.h"

#include <QDateTime>
#include <QMutex>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QBUserDefaults;

// Keeps the history of the application's sessions on this device in the client's
// settings suite: starts sessions, measures their length with a 1-second ticker that
// pauses in the background, and reports the acquisition and retention figures.
// The ticker updates the history in memory only; the list of sessions is written off
// the main thread when a session starts, when the application goes to the background,
// at exit and otherwise at most once a minute.
// Lives on the main thread; retentionParameters() may be called from any thread.
class SessionManager : public QObject
{
    Q_OBJECT
public:
    using SignalSender = std::function<void(const QString&, const TelemetryParameters&)>;

    // Loads the history from |suite|, drops sessions older than 90 days and records
    // today as a day of use. |sendSignal| sends the client's own signals.
    SessionManager(std::shared_ptr<QBUserDefaults> suite,
                   std::shared_ptr<const TelemetryClock> clock, SignalSender sendSignal,
                   QObject* parent = nullptr);
    ~SessionManager() override;

    // A new sessionID was assigned: the running session ends and a new one begins.
    void startNewSession();
    static constexpr qint64 kSessionsSaveIntervalSeconds = 60;

    // The ticker's action: adds the time since the last tick and records the session
    // once it has lasted a second; saves the sessions when the last save is a minute old.
    void updateSessionDuration();
    void applicationDidEnterBackground();
    void applicationWillEnterForeground();
    // Brings the running session up to date and saves the sessions; waits for the write.
    void applicationWillTerminate();

    TelemetryParameters retentionParameters() const;
    SessionHistory history() const;
    bool isTicking() const { return mTicker.isActive(); }
    // Blocks until every queued write to the suite is done.
    void waitForPersistence();

private:
    void persist(const QString& key, const QVariant& value);
    // Encodes and writes the list of sessions on the persistence queue.
    void saveSessions();
    void startTicker();
    void stopTicker();

    const std::shared_ptr<QBUserDefaults> mSuite;
    const std::shared_ptr<const TelemetryClock> mClock;
    const SignalSender mSendSignal;

    mutable QMutex mMutex;
    SessionHistory mHistory;            // guarded by mMutex
    QDateTime mCurrentSessionStartedAt; // guarded by mMutex
    double mCurrentSessionDuration = 0.0;
    std::optional<QDateTime> mSessionDurationLastUpdatedAt;
    QDateTime mSessionsSavedAt;

    QTimer mTicker;
    // Serial, so the suite sees the writes in the order they were made.
    QThreadPool mPersistenceQueue;
};
