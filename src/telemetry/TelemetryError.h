#pragma once

#include <QString>

// Why a post of signals failed at the HTTP level.
class TelemetryError
{
public:
    enum class Kind
    {
        invalidStatusCode,
        unauthorised,
        forbidden,
        payloadTooLarge
    };

    // The error a response status stands for (0 when there was no HTTP response).
    static TelemetryError fromStatusCode(int statusCode);

    Kind kind() const { return mKind; }
    // Meaningful for invalidStatusCode only.
    int statusCode() const { return mStatusCode; }
    QString description() const;

private:
    TelemetryError(Kind kind, int statusCode) : mKind(kind), mStatusCode(statusCode) {}

    Kind mKind;
    int mStatusCode;
};
