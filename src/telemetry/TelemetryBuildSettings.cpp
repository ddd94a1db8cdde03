#include "TelemetryBuildSettings.h"

namespace qbtelemetrybuild {

QString ingestionEndpoint()
{
    return QStringLiteral(QB_TELEMETRY_ENDPOINT);
}

QString applicationID()
{
    return QStringLiteral(QB_TELEMETRY_APP_ID);
}

QString clientVersion()
{
    return QStringLiteral(QB_TELEMETRY_CLIENT_VERSION);
}

} // namespace qbtelemetrybuild
