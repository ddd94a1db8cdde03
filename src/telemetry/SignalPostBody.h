#pragma once

#include "TelemetryTypes.h"

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

// One signal as it travels to the ingestion service and sits in the cache file. The
// same encoding serves both, so a cached record is posted exactly as it was built.
struct SignalPostBody
{
    QDateTime receivedAt;
    QString appID;
    QString clientUser;
    QString sessionID;
    QString type;
    std::optional<double> floatValue;
    TelemetryParameters payload;
    QString isTestMode;

    QJsonObject toJson() const;
    // Nothing when a key is missing or has the wrong JSON type.
    static std::optional<SignalPostBody> fromJson(const QJsonObject& object);

    // Compact JSON text of the record, for the log.
    QString description() const;

    // A JSON array of the records; decodeList gives nothing unless every element decodes.
    static QByteArray encodeList(const QList<SignalPostBody>& records);
    static std::optional<QList<SignalPostBody>> decodeList(const QByteArray& json);

    // "yyyy-MM-dd'T'HH:mm:ssZ" in UTC, so the zone is always "+0000".
    static QString formatDate(const QDateTime& moment);
    static QDateTime parseDate(const QString& text);

    bool operator==(const SignalPostBody& other) const = default;
};
