#pragma once

#include "DefaultSignalPayload.h"
#include "DurationSignalTracker.h"
#include "SignalRecordBuilder.h"
#include "TelemetryClock.h"
#include "TelemetryManagerConfiguration.h"
#include "TelemetryTypes.h"

#include <QDateTime>
#include <QMutex>
#include <QObject>
#include <QPointer>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QBUserDefaults;
class SessionManager;
class SharedConfiguration;
class SignalManager;

// Where the manager keeps its state and reads the time; the defaults are the real ones.
struct TelemetryEnvironment
{
    std::shared_ptr<const TelemetryClock> clock = std::make_shared<SystemTelemetryClock>();
    // Empty: $XDG_CACHE_HOME/<bundle id>/telemetrysignalcache.
    QString cacheFilePath;
    // Empty: $XDG_CONFIG_HOME.
    QString suiteFolder;
    std::chrono::milliseconds sendInterval{10000};
};

// The analytics client's entry point: filters each request, hands it to the signal
// manager and keeps the session machinery running. With analyticsDisabled set at
// creation it touches no file and sends nothing.
class TelemetryManager : public QObject
{
    Q_OBJECT
public:
    static constexpr qint64 kImmediateSyncThrottleSeconds = 10;
    static constexpr qint64 kNewSessionAfterBackgroundSeconds = 300;

    explicit TelemetryManager(const TelemetryManagerConfiguration& configuration,
                              TelemetryEnvironment environment = {}, QObject* parent = nullptr);
    ~TelemetryManager() override;

    // Makes the process-wide manager (replacing an earlier one), owned by the application
    // object and wired to its state changes and to aboutToQuit.
    static void initialize(const TelemetryManagerConfiguration& configuration,
                           TelemetryEnvironment environment = {});
    // The process-wide manager, or null before initialize().
    static TelemetryManager* shared();
    // Sends through the process-wide manager; dropped before initialize().
    static void send(const QString& signalName, const TelemetryParameters& parameters = {},
                     std::optional<double> floatValue = std::nullopt,
                     const std::optional<QString>& customUserID = std::nullopt);

    // Returns at once: no file or network work happens on the calling thread.
    void sendSignal(const QString& signalName, const TelemetryParameters& parameters = {},
                    std::optional<double> floatValue = std::nullopt,
                    const std::optional<QString>& customUserID = std::nullopt);
    // Posts a batch now unless the last immediate post was at most 10 seconds ago.
    void requestImmediateSync();

    // The user's switch, on the manager's thread. Off: records waiting to be sent are
    // dropped, the cache file is deleted (also when the client was already off), posts on
    // their way are abandoned, and nothing is built, cached or sent any more. On again
    // starts the client as at creation, with a new session.
    void setEnabled(bool enabled);

    void applicationDidEnterBackground();
    void applicationWillEnterForeground();
    // Connects |application|'s applicationStateChanged (when it has one) and aboutToQuit.
    void connectToApplication(QObject* application);

    TelemetryManagerConfiguration configuration() const;
    void updateConfiguration(const std::function<void(TelemetryManagerConfiguration&)>& change);
    // Assigning a session identifier begins a new session.
    void setSessionID(const QUuid& sessionID);
    void setDisplayEnvironment(const DisplayEnvironment& environment);

    // Null when analytics were disabled at creation.
    SignalManager* signalManager() const { return mSignalManager.get(); }
    SessionManager* sessionManager() const { return mSessionManager.get(); }
    DurationSignalTracker& durationSignalTracker() { return mDurationSignalTracker; }

    // $folder/<suite name>.conf, the client's own settings suite for |appID|.
    static QString suiteFilePath(const QString& appID, const QString& folder = QString());

public slots:
    // Saves unsent records to the cache file; waits for records being built, never for
    // the network.
    void appWillTerminate();

private slots:
    void onApplicationStateChanged(Qt::ApplicationState state);

private:
    void startClient();
    void stopClient();
    QString cacheFilePath() const;
    void sendInternalSignal(const QString& signalName, const TelemetryParameters& parameters);
    void processRequest(SignalRequest request);
    void beginSession();
    QString loadOrCreateUserIdentifier();

    const std::shared_ptr<SharedConfiguration> mConfiguration;
    const std::shared_ptr<const TelemetryClock> mClock;
    const TelemetryEnvironment mEnvironment;
    std::shared_ptr<QBUserDefaults> mSuite;
    DefaultSignalPayload mDefaultPayload;
    DurationSignalTracker mDurationSignalTracker;
    // Declared before the signal manager, whose record builder reads it.
    std::unique_ptr<SessionManager> mSessionManager;
    std::unique_ptr<SignalManager> mSignalManager;
    QMutex mImmediateSyncMutex;                // requests may come from any thread
    QDateTime mLastTimeImmediateSyncRequested; // guarded by mImmediateSyncMutex
    QDateTime mLastDateAppEnteredBackground;
    bool mApplicationActive = false;
};
