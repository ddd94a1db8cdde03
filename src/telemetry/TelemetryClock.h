#pragma once

#include <QDateTime>

// Source of "now" for the analytics client, so tests can move time by hand.
class TelemetryClock
{
public:
    virtual ~TelemetryClock() = default;
    virtual QDateTime now() const = 0;

    // Stands for "never": earlier than any moment the clock can return.
    static QDateTime distantPast();
};

class SystemTelemetryClock : public TelemetryClock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
};
