#include "DurationSignalTracker.h"

#include <QMutexLocker>

#include <algorithm>

DurationSignalTracker::DurationSignalTracker(std::shared_ptr<const TelemetryClock> clock,
                                             SignalSender sendSignal)
    : mClock(std::move(clock)), mSendSignal(std::move(sendSignal))
{}

void DurationSignalTracker::startTracking(const QString& signalName,
                                          const TelemetryParameters& parameters,
                                          bool includeBackgroundTime)
{
    QMutexLocker locker(&mMutex);
    mStartedSignals.insert(signalName, {mClock->now(), parameters, includeBackgroundTime});
}

void DurationSignalTracker::stopTracking(const QString& signalName,
                                         const TelemetryParameters& parameters)
{
    TelemetryParameters merged;
    {
        QMutexLocker locker(&mMutex);
        const auto entry = mStartedSignals.constFind(signalName);
        if (entry == mStartedSignals.constEnd()) {
            return;
        }
        const double seconds =
            static_cast<double>(entry->startTime.msecsTo(mClock->now())) / 1000.0;
        merged = entry->parameters;
        merged.insert(parameters);
        merged.insert(QStringLiteral("Tallyhub.Signal.durationInSeconds"),
                      QString::number(seconds, 'f', 3));
        mStartedSignals.erase(entry);
    }
    mSendSignal(signalName, merged);
}

void DurationSignalTracker::applicationDidEnterBackground()
{
    QMutexLocker locker(&mMutex);
    mLastEnteredBackground = mClock->now();
}

void DurationSignalTracker::applicationWillEnterForeground()
{
    QMutexLocker locker(&mMutex);
    if (!mLastEnteredBackground) {
        return;
    }
    // Moving the start forward by the time away leaves only foreground time counted; a
    // signal started while away only skips the part after its start.
    const QDateTime now = mClock->now();
    for (CachedData& data : mStartedSignals) {
        if (!data.includeBackgroundTime) {
            const QDateTime awaySince = std::max(data.startTime, *mLastEnteredBackground);
            data.startTime = data.startTime.addMSecs(awaySince.msecsTo(now));
        }
    }
    mLastEnteredBackground.reset();
}
