#pragma once

#include <QMap>
#include <QString>

#include <optional>

// Parameters of one signal: text keys to text values.
using TelemetryParameters = QMap<QString, QString>;

// Adds parameters of its own to every signal. Called on the record-building thread,
// so an implementation must be safe to call from any thread.
class SignalEnricher
{
public:
    virtual ~SignalEnricher() = default;
    virtual TelemetryParameters enrich(const QString& signalType, const QString& clientUser,
                                       std::optional<double> floatValue) = 0;
};
