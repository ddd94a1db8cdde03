#include "TelemetryTestSupport.h"

#include "telemetry/TelemetryHashing.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

#include <gtest/gtest.h>

TEST(SignalPostBodyTest, DecodesWhatItEncodesAndRejectsDamagedLists)
{
    QList<SignalPostBody> records = makeRecords(0, 3);
    records[1].floatValue = -0.25;
    // 23:30:09 at UTC-05:00 is 04:30:09 UTC on the next day.
    records[2].receivedAt = QDateTime(QDate(2026, 1, 31), QTime(23, 30, 9), QTimeZone(-5 * 3600));
    EXPECT_EQ(records[2].toJson().value(QStringLiteral("receivedAt")).toString(),
              QStringLiteral("2026-02-01T04:30:09+0000"));
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
