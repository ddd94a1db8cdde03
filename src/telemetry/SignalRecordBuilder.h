#pragma once

#include "SignalPostBody.h"
#include "TelemetryManagerConfiguration.h"
#include "TelemetryTypes.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <optional>

// One request to send a signal, as the caller made it.
struct SignalRequest
{
    QString signalName;
    TelemetryParameters parameters;
    std::optional<double> floatValue;
    std::optional<QString> customUserID;
    QDateTime receivedAt;
    // The client's own signals use reserved names on purpose and are not warned about.
    bool checkReservedNames = true;
};

// Turns a request into the wire record: prefixes, reserved-name warnings, the hashed
// user, and the payload merged from (lowest precedence first) the default parameters,
// the session figures, the configuration's defaultParameters, the enrichers and the
// request's own parameters. Runs on the record-building thread.
class SignalRecordBuilder
{
public:
    struct Sources
    {
        std::function<TelemetryParameters(const QDateTime&)> defaultPayload;
        std::function<TelemetryParameters()> sessionParameters;
        // The identifier kept in the client's suite; empty when there is none, in which
        // case each record gets a random one.
        QString persistedUserIdentifier;
    };

    explicit SignalRecordBuilder(Sources sources);

    SignalPostBody build(const SignalRequest& request,
                         const TelemetryManagerConfiguration& configuration) const;

private:
    QString userIdentifier(const SignalRequest& request,
                           const TelemetryManagerConfiguration& configuration) const;
    static TelemetryParameters prefixedParameters(const TelemetryParameters& parameters,
                                                  const QString& prefix);
    static void logReservedNameWarnings(const QString& signalName,
                                        const TelemetryParameters& parameters,
                                        const TelemetryManagerConfiguration& configuration);

    const Sources mSources;
};
