#include "SignalRecordBuilder.h"

#include "ReservedNames.h"
#include "TelemetryHashing.h"

#include <QUuid>

namespace {
const QString kReservedPrefix = QStringLiteral("Tallyhub.");

QString uuidText(const QUuid& uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}
} // namespace

SignalRecordBuilder::SignalRecordBuilder(Sources sources) : mSources(std::move(sources)) {}

SignalPostBody SignalRecordBuilder::build(const SignalRequest& request,
                                          const TelemetryManagerConfiguration& configuration) const
{
    const QString type = configuration.defaultSignalPrefix.value_or(QString()) + request.signalName;
    const TelemetryParameters parameters = prefixedParameters(
        request.parameters, configuration.defaultParameterPrefix.value_or(QString()));
    if (request.checkReservedNames && configuration.reservedParameterWarningsEnabled) {
        logReservedNameWarnings(request.signalName, parameters, configuration);
    }

    SignalPostBody record;
    // Whole seconds: the wire format has no more, and a cached record must equal its sent form.
    record.receivedAt = request.receivedAt.toUTC().addMSecs(-request.receivedAt.time().msec());
    record.appID = configuration.telemetryAppID;
    record.clientUser =
        qbtelemetryhash::sha256Hex(userIdentifier(request, configuration), configuration.salt);
    record.sessionID = uuidText(configuration.sessionID);
    record.type = type;
    record.floatValue = request.floatValue;
    record.isTestMode =
        configuration._testMode.value_or(false) ? QStringLiteral("true") : QStringLiteral("false");

    TelemetryParameters payload = mSources.defaultPayload(request.receivedAt);
    payload.insert(mSources.sessionParameters());
    payload.insert(configuration.defaultParameters());
    for (const auto& enricher : configuration.metadataEnrichers) {
        payload.insert(enricher->enrich(type, record.clientUser, request.floatValue));
    }
    payload.insert(parameters);
    record.payload = payload;
    return record;
}

QString
SignalRecordBuilder::userIdentifier(const SignalRequest& request,
                                    const TelemetryManagerConfiguration& configuration) const
{
    if (request.customUserID) {
        return *request.customUserID;
    }
    if (configuration.defaultUser) {
        return *configuration.defaultUser;
    }
    if (!mSources.persistedUserIdentifier.isEmpty()) {
        return mSources.persistedUserIdentifier;
    }
    return uuidText(QUuid::createUuid());
}

TelemetryParameters SignalRecordBuilder::prefixedParameters(const TelemetryParameters& parameters,
                                                            const QString& prefix)
{
    TelemetryParameters result;
    for (auto it = parameters.begin(); it != parameters.end(); ++it) {
        result.insert(it.key().startsWith(kReservedPrefix) ? it.key() : prefix + it.key(),
                      it.value());
    }
    return result;
}

void SignalRecordBuilder::logReservedNameWarnings(
    const QString& signalName, const TelemetryParameters& parameters,
    const TelemetryManagerConfiguration& configuration)
{
    // The name as the caller chose it: a prefix the configuration adds is not their doing.
    QStringList warnings{qbreservednames::warningForSignalName(signalName)};
    for (auto it = parameters.keyBegin(); it != parameters.keyEnd(); ++it) {
        warnings.append(qbreservednames::warningForParameterKey(*it));
    }
    for (const QString& warning : warnings) {
        if (!warning.isEmpty()) {
            configuration.log(LogHandler::LogLevel::error, warning);
        }
    }
}
