#pragma once

#include "TelemetryManagerConfiguration.h"

#include <QReadWriteLock>

#include <functional>

// The live configuration, shared by the manager and the signal manager: readers take a
// copy, writers change it in place, both under one lock so no reader sees half a change.
class SharedConfiguration
{
public:
    explicit SharedConfiguration(TelemetryManagerConfiguration configuration);

    TelemetryManagerConfiguration snapshot() const;
    void update(const std::function<void(TelemetryManagerConfiguration&)>& change);

private:
    mutable QReadWriteLock mLock;
    TelemetryManagerConfiguration mConfiguration;
};
