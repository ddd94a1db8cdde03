#include "TelemetryTestSupport.h"
#include "TestHome.h"

#include "telemetry/SignalCache.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {
using Cache = SignalCache<SignalPostBody>;

class SignalCacheTest : public ::testing::Test
{
protected:
    QBTestHome home;
    LogRecorder log;
    const QString cachePath =
        home.filePath(QStringLiteral("cache/org.example/telemetrysignalcache"));
};
} // namespace

TEST_F(SignalCacheTest, DropsTheOldestRecordsBeyondTenThousand)
{
    Cache cache(QString{}, log.handler());
    cache.push(makeRecords(0, 9999));
    cache.push(makeRecords(9999, 3));
    EXPECT_EQ(cache.count(), 10000);
    EXPECT_EQ(cache.pop().first().type, QStringLiteral("Test.2"));
    EXPECT_TRUE(log.contains(LogHandler::LogLevel::debug,
                             QStringLiteral("Signal cache is full: dropped the 2 oldest signals")));
}

TEST_F(SignalCacheTest, DamagedOrMissingFileLeavesAnEmptyCache)
{
    const QByteArray contents[] = {"", "garbage", "[{\"type\":1}]", "{}"};
    for (const QByteArray& bytes : contents) {
        ASSERT_TRUE(writeFileBytes(cachePath, bytes));
        Cache cache(cachePath, log.handler());
        EXPECT_EQ(cache.count(), 0) << bytes.constData();
        EXPECT_FALSE(QFileInfo::exists(cachePath)) << bytes.constData();
    }
    Cache missing(cachePath);
    EXPECT_EQ(missing.count(), 0);
}

TEST_F(SignalCacheTest, FailedSaveLogsAnErrorAndLeavesNoPartialFile)
{
    // A file where the folder should be makes the folder impossible to create.
    const QString blocker = home.filePath(QStringLiteral("blocked"));
    ASSERT_TRUE(writeFileBytes(blocker, "x"));
    Cache cache(blocker + QStringLiteral("/telemetrysignalcache"), log.handler());
    cache.push(makeRecord(1));
    cache.saveToFile();
    EXPECT_TRUE(
        log.contains(LogHandler::LogLevel::error, QStringLiteral("Error saving Telemetry cache")));
    EXPECT_EQ(readFileBytes(blocker), QByteArray("x"));
}
