#include "TelemetryError.h"

TelemetryError TelemetryError::fromStatusCode(int statusCode)
{
    switch (statusCode) {
    case 401:
        return {Kind::unauthorised, statusCode};
    case 403:
        return {Kind::forbidden, statusCode};
    case 413:
        return {Kind::payloadTooLarge, statusCode};
    default:
        return {Kind::invalidStatusCode, statusCode};
    }
}

QString TelemetryError::description() const
{
    switch (mKind) {
    case Kind::unauthorised:
        return QStringLiteral("Unauthorized (401)");
    case Kind::forbidden:
        return QStringLiteral("Forbidden: the application identifier may not send signals (403)");
    case Kind::payloadTooLarge:
        return QStringLiteral("Payload is too large (413)");
    case Kind::invalidStatusCode:
        break;
    }
    return QStringLiteral("Invalid status code");
}
