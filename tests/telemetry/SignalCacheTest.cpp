#include "TelemetryTestSupport.h"
#include "TestHome.h"

#include "telemetry/SignalCache.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <gtest/gtest.h>

#include <vector>

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

TEST_F(SignalCacheTest, PopsBatchesOfAtMostOneHundredFromTheFront)
{
    Cache cache(QString{});
    cache.push(makeRecords(0, 250));
    std::vector<qsizetype> sizes;
    QString firstTypes;
    for (QList<SignalPostBody> batch = cache.pop(); !batch.isEmpty(); batch = cache.pop()) {
        sizes.push_back(batch.size());
        firstTypes += batch.first().type + QLatin1Char(' ');
    }
    EXPECT_EQ(sizes, (std::vector<qsizetype>{100, 100, 50}));
    EXPECT_EQ(firstTypes, QStringLiteral("Test.0 Test.100 Test.200 "));
}

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

TEST_F(SignalCacheTest, PushesFromManyThreadsAreAllKeptInEachThreadsOrder)
{
    Cache cache(QString{});
    QList<QThread*> threads;
    for (int t = 0; t < 4; ++t) {
        threads.append(QThread::create([&cache, t] {
            for (int i = 0; i < 200; ++i) {
                cache.push(makeRecord(t * 1000 + i));
            }
        }));
        threads.last()->start();
    }
    for (QThread* thread : threads) {
        thread->wait();
        delete thread;
    }
    const QList<SignalPostBody> all = cache.allSignals();
    ASSERT_EQ(all.size(), 800);
    int lastSeen[4] = {-1, -1, -1, -1};
    for (const SignalPostBody& record : all) {
        const int number = record.type.mid(5).toInt();
        EXPECT_LT(lastSeen[number / 1000], number % 1000);
        lastSeen[number / 1000] = number % 1000;
    }
}

TEST_F(SignalCacheTest, SavedRecordsComeBackOnceAndTheFileIsDeletedOnLoad)
{
    {
        Cache cache(cachePath, log.handler());
        cache.push(makeRecords(0, 3));
        cache.saveToFile();
    }
    ASSERT_TRUE(QFileInfo::exists(cachePath));
    EXPECT_TRUE(log.contains(LogHandler::LogLevel::debug,
                             QStringLiteral("Loading Telemetry cache from: ") + cachePath));

    Cache reloaded(cachePath, log.handler());
    EXPECT_FALSE(QFileInfo::exists(cachePath));
    EXPECT_EQ(reloaded.allSignals(), makeRecords(0, 3));
    EXPECT_TRUE(log.contains(LogHandler::LogLevel::debug, QStringLiteral("Loaded 3 signals")));

    Cache third(cachePath);
    EXPECT_EQ(third.count(), 0);
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
