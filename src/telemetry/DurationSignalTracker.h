#pragma once

#include "TelemetryClock.h"
#include "TelemetryTypes.h"

#include <QDateTime>
#include <QHash>
#include <QMutex>

#include <functional>
#include <memory>
#include <optional>

// Measures the time between the start and the end of a named signal and sends the
// signal at its end with "Tallyhub.Signal.durationInSeconds". Safe from any thread.
class DurationSignalTracker
{
public:
    using SignalSender = std::function<void(const QString&, const TelemetryParameters&)>;

    DurationSignalTracker(std::shared_ptr<const TelemetryClock> clock, SignalSender sendSignal);

    // Starting a name that is already running starts it afresh.
    void startTracking(const QString& signalName, const TelemetryParameters& parameters = {},
                       bool includeBackgroundTime = false);
    // Sends the signal with the start's parameters, |parameters| (which win on a clash)
    // and the elapsed seconds with millisecond precision; nothing when it never started.
    void stopTracking(const QString& signalName, const TelemetryParameters& parameters = {});

    void applicationDidEnterBackground();
    void applicationWillEnterForeground();

private:
    struct CachedData
    {
        QDateTime startTime;
        TelemetryParameters parameters;
        bool includeBackgroundTime = false;
    };

    const std::shared_ptr<const TelemetryClock> mClock;
    const SignalSender mSendSignal;
    QMutex mMutex;
    QHash<QString, CachedData> mStartedSignals;      // guarded by mMutex
    std::optional<QDateTime> mLastEnteredBackground; // guarded by mMutex
};
