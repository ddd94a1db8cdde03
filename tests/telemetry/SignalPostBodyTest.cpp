#include "TelemetryTestSupport.h"

#include "telemetry/ReservedNames.h"
#include "telemetry/SignalManager.h"
#include "telemetry/TelemetryHashing.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

#include <gtest/gtest.h>

TEST(SignalPostBodyTest, EncodesExactKeysAndUtcSecondDates)
{
    SignalPostBody record = makeRecord(1);
    // 23:30:09 at UTC-05:00 is 04:30:09 UTC on the next day.
    record.receivedAt = QDateTime(QDate(2026, 1, 31), QTime(23, 30, 9), QTimeZone(-5 * 3600));
    QJsonObject json = record.toJson();
    EXPECT_EQ(json.value(QStringLiteral("receivedAt")).toString(),
              QStringLiteral("2026-02-01T04:30:09+0000"));
    EXPECT_EQ(QStringList(json.keys()), (textList({"appID", "clientUser", "isTestMode", "payload",
                                                   "receivedAt", "sessionID", "type"})));

    record.floatValue = 2.5;
    json = record.toJson();
    EXPECT_EQ(json.value(QStringLiteral("floatValue")).toDouble(), 2.5);
    EXPECT_EQ(json.value(QStringLiteral("isTestMode")).toString(), QStringLiteral("false"));
    EXPECT_EQ(json.value(QStringLiteral("payload")).toObject().value(QStringLiteral("number")),
              QStringLiteral("1"));
}

TEST(SignalPostBodyTest, DecodesWhatItEncodesAndRejectsDamagedLists)
{
    QList<SignalPostBody> records = makeRecords(0, 3);
    records[1].floatValue = -0.25;
    const std::optional<QList<SignalPostBody>> decoded =
        SignalPostBody::decodeList(SignalPostBody::encodeList(records));
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(*decoded, records);

    const QByteArray damaged[] = {
        "not json",
        "{\"an\":\"object\"}",
        "[{\"type\":\"Test\"}]",
        "[42]",
        R"([{"receivedAt":"2026-01-01T00:00:00+0000","appID":"a","clientUser":"u","sessionID":"s",
            "type":"t","payload":{"n":1},"isTestMode":"false"}])",
        R"([{"receivedAt":"yesterday","appID":"a","clientUser":"u","sessionID":"s",
            "type":"t","payload":{},"isTestMode":"false"}])",
    };
    for (const QByteArray& bytes : damaged) {
        EXPECT_FALSE(SignalPostBody::decodeList(bytes).has_value()) << bytes.constData();
    }
}

TEST(TelemetryHashingTest, SaltIsAppendedToTheIdentifierBeforeHashing)
{
    const QString abcDigest =
        QStringLiteral("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(qbtelemetryhash::sha256Hex(QStringLiteral("abc")), abcDigest);
    EXPECT_EQ(qbtelemetryhash::sha256Hex(QStringLiteral("abc"), QString()), abcDigest);
    EXPECT_EQ(qbtelemetryhash::sha256Hex(QStringLiteral("ab"), QStringLiteral("c")), abcDigest);
    EXPECT_NE(qbtelemetryhash::sha256Hex(QStringLiteral("user"), QStringLiteral("salt1")),
              qbtelemetryhash::sha256Hex(QStringLiteral("user"), QStringLiteral("salt2")));

    const QString appID = QStringLiteral("5D2A9F10-7B3C-4E81-9A6D-2C4F8B1E0A37");
    EXPECT_EQ(qbtelemetryhash::suiteNameForAppID(appID),
              QStringLiteral("com.tallyhub.") + qbtelemetryhash::sha256Hex(appID).right(12));
}

TEST(ReservedNamesTest, WarnsAboutReservedPrefixesAndNamesIgnoringCase)
{
    EXPECT_EQ(qbreservednames::reservedNames().size(), 25);
    const QString prefixWarning = QStringLiteral(
        "Sending signal with reserved prefix 'Tallyhub.' will cause unexpected behavior. "
        "Please use another prefix instead.");
    EXPECT_EQ(qbreservednames::warningForSignalName(QStringLiteral("TALLYHUB.Thing")),
              prefixWarning);
    EXPECT_EQ(qbreservednames::warningForSignalName(QStringLiteral("tallyhub.thing")),
              prefixWarning);
    EXPECT_EQ(qbreservednames::warningForSignalName(QStringLiteral("SessionId")),
              QStringLiteral("Sending signal with reserved name 'SessionId' will cause unexpected "
                             "behavior. Please use another name instead."));
    EXPECT_EQ(qbreservednames::warningForSignalName(QStringLiteral("Quote.Added")), QString());

    EXPECT_EQ(qbreservednames::warningForParameterKey(QStringLiteral("Platform")),
              QStringLiteral("Sending parameter with reserved key 'Platform' will cause unexpected "
                             "behavior. Please use another key instead."));
    EXPECT_EQ(qbreservednames::warningForParameterKey(QStringLiteral("TelemetryClientVersion")),
              QStringLiteral("Sending parameter with reserved key 'TelemetryClientVersion' will "
                             "cause unexpected behavior. Please use another key instead."));
    EXPECT_EQ(qbreservednames::warningForParameterKey(QStringLiteral("TallyHub.x")),
              QStringLiteral("Sending parameter with reserved key prefix 'Tallyhub.' will cause "
                             "unexpected behavior. Please use another prefix instead."));
    EXPECT_EQ(qbreservednames::warningForParameterKey(QStringLiteral("count")), QString());
    EXPECT_EQ(qbreservednames::warningForParameterKey(QStringLiteral("platformName")), QString());
}

TEST(SignalManagerUrlTest, AppendsTheVersionPathAndTheNamespaceWhenThereIsOne)
{
    const QUrl base(QStringLiteral("https://ingest.example.org"));
    EXPECT_EQ(SignalManager::ingestionURL(base, std::nullopt).toString(),
              QStringLiteral("https://ingest.example.org/v2/"));
    EXPECT_EQ(SignalManager::ingestionURL(base, QString()).toString(),
              QStringLiteral("https://ingest.example.org/v2/"));
    EXPECT_EQ(SignalManager::ingestionURL(base, QStringLiteral("team")).toString(),
              QStringLiteral("https://ingest.example.org/v2/namespace/team/"));
    EXPECT_EQ(
        SignalManager::ingestionURL(QUrl(QStringLiteral("https://h.example/api/")), std::nullopt)
            .toString(),
        QStringLiteral("https://h.example/api/v2/"));
}
