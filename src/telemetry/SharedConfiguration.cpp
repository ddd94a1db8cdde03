#include "SharedConfiguration.h"

#include <utility>

SharedConfiguration::SharedConfiguration(TelemetryManagerConfiguration configuration)
    : mConfiguration(std::move(configuration))
{}

TelemetryManagerConfiguration SharedConfiguration::snapshot() const
{
    QReadLocker locker(&mLock);
    return mConfiguration;
}

void SharedConfiguration::update(const std::function<void(TelemetryManagerConfiguration&)>& change)
{
    QWriteLocker locker(&mLock);
    change(mConfiguration);
}
