#include "SignalPostBody.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTimeZone>

#include <cmath>

namespace {
const QString kReceivedAt = QStringLiteral("receivedAt");
const QString kAppID = QStringLiteral("appID");
const QString kClientUser = QStringLiteral("clientUser");
const QString kSessionID = QStringLiteral("sessionID");
const QString kType = QStringLiteral("type");
const QString kFloatValue = QStringLiteral("floatValue");
const QString kPayload = QStringLiteral("payload");
const QString kIsTestMode = QStringLiteral("isTestMode");
const QString kUtcSuffix = QStringLiteral("+0000");

std::optional<TelemetryParameters> payloadFromJson(const QJsonValue& value)
{
    if (!value.isObject()) {
        return std::nullopt;
    }
    TelemetryParameters payload;
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (!it.value().isString()) {
            return std::nullopt;
        }
        payload.insert(it.key(), it.value().toString());
    }
    return payload;
}
} // namespace

QJsonObject SignalPostBody::toJson() const
{
    QJsonObject payloadObject;
    for (auto it = payload.begin(); it != payload.end(); ++it) {
        payloadObject.insert(it.key(), it.value());
    }
    QJsonObject object{{kReceivedAt, formatDate(receivedAt)},
                       {kAppID, appID},
                       {kClientUser, clientUser},
                       {kSessionID, sessionID},
                       {kType, type},
                       {kPayload, payloadObject},
                       {kIsTestMode, isTestMode}};
    // JSON has no infinity or NaN; such a value is left out rather than written as null.
    if (floatValue && std::isfinite(*floatValue)) {
        object.insert(kFloatValue, *floatValue);
    }
    return object;
}

std::optional<SignalPostBody> SignalPostBody::fromJson(const QJsonObject& object)
{
    for (const QString& key : {kReceivedAt, kAppID, kClientUser, kSessionID, kType, kIsTestMode}) {
        if (!object.value(key).isString()) {
            return std::nullopt;
        }
    }
    const QDateTime receivedAt = parseDate(object.value(kReceivedAt).toString());
    const std::optional<TelemetryParameters> payload = payloadFromJson(object.value(kPayload));
    const QJsonValue floatValue = object.value(kFloatValue);
    if (!receivedAt.isValid() || !payload ||
        !(floatValue.isUndefined() || floatValue.isNull() || floatValue.isDouble())) {
        return std::nullopt;
    }
    SignalPostBody record;
    record.receivedAt = receivedAt;
    record.appID = object.value(kAppID).toString();
    record.clientUser = object.value(kClientUser).toString();
    record.sessionID = object.value(kSessionID).toString();
    record.type = object.value(kType).toString();
    if (floatValue.isDouble()) {
        record.floatValue = floatValue.toDouble();
    }
    record.payload = *payload;
    record.isTestMode = object.value(kIsTestMode).toString();
    return record;
}

QString SignalPostBody::description() const
{
    return QString::fromUtf8(QJsonDocument(toJson()).toJson(QJsonDocument::Compact));
}

QByteArray SignalPostBody::encodeList(const QList<SignalPostBody>& records)
{
    QJsonArray array;
    for (const SignalPostBody& record : records) {
        array.append(record.toJson());
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<SignalPostBody>> SignalPostBody::decodeList(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isArray()) {
        return std::nullopt;
    }
    QList<SignalPostBody> records;
    for (const QJsonValue& value : document.array()) {
        std::optional<SignalPostBody> record = fromJson(value.toObject());
        if (!value.isObject() || !record) {
            return std::nullopt;
        }
        records.append(*record);
    }
    return records;
}

QString SignalPostBody::formatDate(const QDateTime& moment)
{
    // Qt's own formatting is locale-independent, which is what a fixed "en_US" gives.
    return moment.toUTC().toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss")) + kUtcSuffix;
}

QDateTime SignalPostBody::parseDate(const QString& text)
{
    if (!text.endsWith(kUtcSuffix)) {
        return {};
    }
    QDateTime moment = QDateTime::fromString(text.chopped(kUtcSuffix.size()),
                                             QStringLiteral("yyyy-MM-dd'T'HH:mm:ss"));
    moment.setTimeZone(QTimeZone::utc());
    return moment;
}
