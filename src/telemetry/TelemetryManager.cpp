#include "TelemetryManager.h"

#include "SessionManager.h"
#include "SharedConfiguration.h"
#include "SignalCacheFile.h"
#include "SignalManager.h"
#include "TelemetryHashing.h"
#include "util/UserDefaults.h"

#include <QCoreApplication>
#include <QMutex>
#include <QMutexLocker>
#include <QPointer>
#include <QStandardPaths>

namespace {
const QString kDefaultUserIdentifier = QStringLiteral("defaultUserIdentifier");

QMutex gSharedMutex;
QPointer<TelemetryManager> gSharedManager; // guarded by gSharedMutex
} // namespace

TelemetryManager::TelemetryManager(const TelemetryManagerConfiguration& configuration,
                                   TelemetryEnvironment environment, QObject* parent)
    : QObject(parent), mConfiguration(std::make_shared<SharedConfiguration>(configuration)),
      mClock(environment.clock), mEnvironment(std::move(environment)),
      mDurationSignalTracker(mEnvironment.clock,
                             [this](const QString& name, const TelemetryParameters& parameters) {
                                 sendInternalSignal(name, parameters);
                             }),
      mLastTimeImmediateSyncRequested(TelemetryClock::distantPast()),
      mLastDateAppEnteredBackground(TelemetryClock::distantPast())
{
    if (!configuration.analyticsDisabled) {
        startClient();
    }
}

void TelemetryManager::startClient()
{
    const TelemetryManagerConfiguration configuration = mConfiguration->snapshot();
    if (!mSuite) {
        mSuite = std::make_shared<QBUserDefaults>(
            suiteFilePath(configuration.telemetryAppID, mEnvironment.suiteFolder));
    }
    mSessionManager = std::make_unique<SessionManager>(
        mSuite, mClock, [this](const QString& name, const TelemetryParameters& parameters) {
            sendInternalSignal(name, parameters);
        });

    SignalRecordBuilder::Sources sources{
        [this](const QDateTime& moment) { return mDefaultPayload.parameters(moment); },
        [this] { return mSessionManager->retentionParameters(); }, loadOrCreateUserIdentifier()};
    mSignalManager = std::make_unique<SignalManager>(
        mConfiguration, SignalRecordBuilder(std::move(sources)), cacheFilePath());

    beginSession();
    mSignalManager->startSending(mEnvironment.sendInterval);
}

void TelemetryManager::stopClient()
{
    if (mSignalManager) {
        // Records being built read the session manager; the cache is dropped unsaved.
        mSignalManager->waitForPendingSignals();
        mSignalManager.reset();
    }
    mSessionManager.reset();
    qbsignalcachefile::remove(cacheFilePath());
}

QString TelemetryManager::cacheFilePath() const
{
    // Resolved only when needed: a client that is off never asks where caches go.
    return mEnvironment.cacheFilePath.isEmpty() ? qbsignalcachefile::defaultLocation()
                                                : mEnvironment.cacheFilePath;
}

void TelemetryManager::setEnabled(bool enabled)
{
    const bool wasEnabled = !mConfiguration->snapshot().analyticsDisabled;
    mConfiguration->update([enabled](TelemetryManagerConfiguration& configuration) {
        configuration.analyticsDisabled = !enabled;
    });
    if (!enabled) {
        stopClient();
    } else if (!wasEnabled) {
        startClient();
    }
}

TelemetryManager::~TelemetryManager()
{
    // Records still being built read the session manager; let them finish first.
    if (mSignalManager) {
        mSignalManager->waitForPendingSignals();
    }
    mSignalManager.reset();
    mSessionManager.reset();
}

void TelemetryManager::initialize(const TelemetryManagerConfiguration& configuration,
                                  TelemetryEnvironment environment)
{
    QMutexLocker locker(&gSharedMutex);
    delete gSharedManager.data();
    QCoreApplication* application = QCoreApplication::instance();
    gSharedManager = new TelemetryManager(configuration, std::move(environment), application);
    if (application) {
        gSharedManager->connectToApplication(application);
    }
}

TelemetryManager* TelemetryManager::shared()
{
    QMutexLocker locker(&gSharedMutex);
    return gSharedManager.data();
}

void TelemetryManager::send(const QString& signalName, const TelemetryParameters& parameters,
                            std::optional<double> floatValue,
                            const std::optional<QString>& customUserID)
{
    QMutexLocker locker(&gSharedMutex);
    if (gSharedManager) {
        gSharedManager->sendSignal(signalName, parameters, floatValue, customUserID);
    }
}

void TelemetryManager::sendSignal(const QString& signalName, const TelemetryParameters& parameters,
                                  std::optional<double> floatValue,
                                  const std::optional<QString>& customUserID)
{
    processRequest({signalName, parameters, floatValue, customUserID, mClock->now(), true});
}

void TelemetryManager::sendInternalSignal(const QString& signalName,
                                          const TelemetryParameters& parameters)
{
    processRequest({signalName, parameters, std::nullopt, std::nullopt, mClock->now(), false});
}

void TelemetryManager::processRequest(SignalRequest request)
{
    const TelemetryManagerConfiguration configuration = mConfiguration->snapshot();
    if (configuration.isInPreviewMode() || configuration.analyticsDisabled || !mSignalManager) {
        return;
    }
    mSignalManager->processSignal(request);
}

void TelemetryManager::requestImmediateSync()
{
    const QDateTime now = mClock->now();
    {
        QMutexLocker locker(&mImmediateSyncMutex);
        if (!mSignalManager ||
            mLastTimeImmediateSyncRequested.msecsTo(now) <= kImmediateSyncThrottleSeconds * 1000) {
            return;
        }
        mLastTimeImmediateSyncRequested = now;
    }
    mSignalManager->attemptToSendNextBatchOfCachedSignals();
}

void TelemetryManager::applicationDidEnterBackground()
{
    mLastDateAppEnteredBackground = mClock->now();
    mDurationSignalTracker.applicationDidEnterBackground();
    if (mSessionManager) {
        mSessionManager->applicationDidEnterBackground();
    }
}

void TelemetryManager::applicationWillEnterForeground()
{
    mDurationSignalTracker.applicationWillEnterForeground();
    if (mSessionManager) {
        mSessionManager->applicationWillEnterForeground();
    }
    if (mLastDateAppEnteredBackground.addSecs(kNewSessionAfterBackgroundSeconds) < mClock->now()) {
        setSessionID(QUuid::createUuid());
    }
}

void TelemetryManager::appWillTerminate()
{
    if (mSessionManager) {
        mSessionManager->applicationWillTerminate();
    }
    if (mSignalManager) {
        mSignalManager->waitForPendingSignals();
        mSignalManager->appWillTerminate();
    }
}

void TelemetryManager::connectToApplication(QObject* application)
{
    // By name, so the client needs no GUI module: only a QGuiApplication has this signal.
    if (application->metaObject()->indexOfSignal("applicationStateChanged(Qt::ApplicationState)") >=
        0) {
        connect(application, SIGNAL(applicationStateChanged(Qt::ApplicationState)), this,
                SLOT(onApplicationStateChanged(Qt::ApplicationState)));
    }
    connect(application, SIGNAL(aboutToQuit()), this, SLOT(appWillTerminate()));
}

void TelemetryManager::onApplicationStateChanged(Qt::ApplicationState state)
{
    const bool active = state == Qt::ApplicationActive;
    if (active == mApplicationActive) {
        return;
    }
    // The first activation at start-up is not a return from the background.
    const bool wasEverActive = mLastDateAppEnteredBackground != TelemetryClock::distantPast();
    mApplicationActive = active;
    if (!active) {
        applicationDidEnterBackground();
    } else if (wasEverActive) {
        applicationWillEnterForeground();
    }
}

TelemetryManagerConfiguration TelemetryManager::configuration() const
{
    return mConfiguration->snapshot();
}

void TelemetryManager::updateConfiguration(
    const std::function<void(TelemetryManagerConfiguration&)>& change)
{
    mConfiguration->update(change);
}

void TelemetryManager::setSessionID(const QUuid& sessionID)
{
    mConfiguration->update([&sessionID](TelemetryManagerConfiguration& configuration) {
        configuration.sessionID = sessionID;
    });
    beginSession();
}

void TelemetryManager::setDisplayEnvironment(const DisplayEnvironment& environment)
{
    mDefaultPayload.setDisplayEnvironment(environment);
}

QString TelemetryManager::suiteFilePath(const QString& appID, const QString& folder)
{
    const QString base =
        folder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                         : folder;
    return base + QLatin1Char('/') + qbtelemetryhash::suiteNameForAppID(appID) +
           QStringLiteral(".conf");
}

void TelemetryManager::beginSession()
{
    const TelemetryManagerConfiguration configuration = mConfiguration->snapshot();
    if (mSessionManager && configuration.sessionStatsEnabled) {
        mSessionManager->startNewSession();
    }
    if (configuration.sendNewSessionBeganSignal) {
        sendInternalSignal(QStringLiteral("Tallyhub.Session.started"), {});
    }
}

QString TelemetryManager::loadOrCreateUserIdentifier()
{
    QString identifier = mSuite->stringForKey(kDefaultUserIdentifier);
    if (identifier.isEmpty()) {
        identifier = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
        mSuite->setObject(identifier, kDefaultUserIdentifier);
    }
    return identifier;
}
