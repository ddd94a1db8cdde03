#include "TelemetryTestSupport.h"

#include "telemetry/SignalCache.h"

#include <QFileInfo>

#include <filesystem>
#include <sys/stat.h>

using Cache = SignalCache<SignalPostBody>;

TEST(SignalCacheTest, DropsTheOldestRecordsBeyondTenThousand)
{
    LogRecorder log;
    Cache cache(QString{}, log.handler());
    cache.push(makeRecords(0, 9999));
    cache.push(makeRecords(9999, 3));
    EXPECT_EQ(cache.count(), 10000);
    EXPECT_EQ(cache.pop().first().type, u"Test.2"_s);
    EXPECT_TRUE(log.messages(LogHandler::LogLevel::debug)
                    .contains(u"Signal cache is full: dropped the 2 oldest signals"_s));
}

TEST(SignalCacheTest, RecordsDecodeAsEncodedAndADamagedFileIsDeleted)
{
    QBTestHome home;
    const QString path = home.filePath(u"cache/org.example/telemetrysignalcache"_s);
    QList<SignalPostBody> records = makeRecords(0, 3);
    records[1].floatValue = -0.25;
    // 23:30:09 at UTC-05:00 is 04:30:09 UTC on the next day.
    records[2].receivedAt = QDateTime(QDate(2026, 1, 31), QTime(23, 30, 9), QTimeZone(-5 * 3600));
    EXPECT_EQ(records[2].toJson().value("receivedAt"_L1).toString(), u"2026-02-01T04:30:09+0000"_s);
    EXPECT_EQ(SignalPostBody::decodeList(SignalPostBody::encodeList(records)), records);

    const QByteArray damaged[] = {
        "",
        "not json",
        "{}",
        "[42]",
        "[{\"type\":\"Test\"}]",
        R"([{"receivedAt":"2026-01-01T00:00:00+0000","appID":"a","clientUser":"u","sessionID":"s",
            "type":"t","payload":{"n":1},"isTestMode":"false"}])",
        R"([{"receivedAt":"yesterday","appID":"a","clientUser":"u","sessionID":"s",
            "type":"t","payload":{},"isTestMode":"false"}])"};
    // JSON has no infinity: such a value is left out, and the other records survive.
    records[0].floatValue = std::numeric_limits<double>::infinity();
    records[1].floatValue = std::numeric_limits<double>::quiet_NaN();
    const std::optional<QList<SignalPostBody>> decoded =
        SignalPostBody::decodeList(SignalPostBody::encodeList(records));
    ASSERT_TRUE(decoded && decoded->size() == 3);
    EXPECT_FALSE(decoded->at(0).floatValue || decoded->at(1).floatValue);
    EXPECT_EQ(decoded->at(2), records[2]);

    for (const QByteArray& bytes : damaged) {
        ASSERT_TRUE(writeFileBytes(path, bytes));
        Cache cache(path);
        cache.loadFromFile();
        EXPECT_EQ(cache.count(), 0) << bytes.constData();
        EXPECT_FALSE(QFileInfo::exists(path)) << bytes.constData();
    }
}

TEST(SignalCacheTest, OnlyARegularFileOfPlausibleSizeIsRead)
{
    QBTestHome home;
    LogRecorder log;
    const QString path = home.filePath(u"telemetrysignalcache"_s);
    const QByteArray nativePath = QFile::encodeName(path);
    ASSERT_EQ(::mkfifo(nativePath.constData(), 0600), 0);
    Cache fifo(path, log.handler());
    fifo.loadFromFile(); // returns at once instead of waiting for a writer
    EXPECT_EQ(fifo.count(), 0);
    fifo.push(makeRecords(0, 1));
    fifo.saveToFile();
    EXPECT_TRUE(std::filesystem::is_fifo(std::filesystem::symlink_status(nativePath.toStdString())))
        << "not ours to delete or replace";
    ASSERT_TRUE(QFile::remove(path));

    // A sparse file over the bound is discarded unread, however large.
    QFile huge(path);
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(Cache::maximumCacheFileBytes + 1));
    huge.close();
    Cache oversized(path, log.handler());
    oversized.loadFromFile();
    EXPECT_EQ(oversized.count(), 0);
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_EQ(log.messages(LogHandler::LogLevel::error),
              (QStringList{u"Ignored a Telemetry cache that is not a regular file"_s,
                           u"Error saving Telemetry cache"_s,
                           u"Discarded a Telemetry cache file of 64000001 bytes"_s}));
}
