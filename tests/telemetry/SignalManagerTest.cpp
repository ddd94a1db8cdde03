#include "TelemetryTestSupport.h"
#include "TestHome.h"

#include "telemetry/SharedConfiguration.h"
#include "telemetry/SignalManager.h"
#include "telemetry/TelemetryHashing.h"

#include <QFileInfo>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {
constexpr int kWaitMilliseconds = 10000;

class SignalManagerTest : public ::testing::Test
{
protected:
    std::unique_ptr<SignalManager> makeManager(const QUrl& baseURL,
                                               const std::optional<QString>& ns = std::nullopt)
    {
        TelemetryManagerConfiguration configuration(QStringLiteral("APP-ID"), std::nullopt, baseURL,
                                                    ns);
        configuration.logHandler = log.handler();
        configuration.sessionID = sessionID;
        SignalRecordBuilder builder(
            {[](const QDateTime&) {
                 return TelemetryParameters{
                     {QStringLiteral("Tallyhub.Device.platform"), QStringLiteral("Linux")}};
             },
             [] { return TelemetryParameters(); }, QStringLiteral("persisted-user")});
        return std::make_unique<SignalManager>(std::make_shared<SharedConfiguration>(configuration),
                                               builder, cachePath);
    }

    // Posts one batch and waits for its reply; nothing when no reply came.
    std::optional<bool> sendOneBatch(SignalManager& manager)
    {
        QSignalSpy finished(&manager, &SignalManager::batchFinished);
        manager.attemptToSendNextBatchOfCachedSignals();
        if (!finished.wait(kWaitMilliseconds)) {
            return std::nullopt;
        }
        return finished.first().first().toBool();
    }

    static SignalRequest requestNamed(const QString& name)
    {
        return {name,
                {{QStringLiteral("count"), QStringLiteral("3")}},
                1.5,
                std::nullopt,
                QDateTime::currentDateTimeUtc(),
                true};
    }

    QBTestHome home;
    LogRecorder log;
    LocalHttpServer server;
    const QUuid sessionID = QUuid::createUuid();
    const QString cachePath = home.filePath(QStringLiteral("cache/app/telemetrysignalcache"));
};
} // namespace

TEST_F(SignalManagerTest, TwoHundredFiftyCachedRecordsLeaveInPostsOfOneHundredOneHundredAndFifty)
{
    auto manager = makeManager(server.baseURL());
    manager->signalCache().push(makeRecords(0, 250));
    for (int tick = 0; tick < 3; ++tick) {
        ASSERT_EQ(sendOneBatch(*manager), std::optional<bool>(true)) << "tick " << tick;
    }
    ASSERT_EQ(server.requests().size(), 3);
    QStringList expectedTypes;
    for (const SignalPostBody& record : makeRecords(0, 250)) {
        expectedTypes.append(record.type);
    }
    EXPECT_EQ(server.requests()[0].types(), expectedTypes.mid(0, 100));
    EXPECT_EQ(server.requests()[1].types(), expectedTypes.mid(100, 100));
    EXPECT_EQ(server.requests()[2].types(), expectedTypes.mid(200, 50));
    EXPECT_EQ(manager->signalCache().count(), 0);

    // An empty cache posts nothing.
    manager->attemptToSendNextBatchOfCachedSignals();
    QTest::qWait(100);
    EXPECT_EQ(server.requests().size(), 3);
}

TEST_F(SignalManagerTest, RequestHasTheStatedMethodHeadersAndBody)
{
    auto manager = makeManager(server.baseURL());
    manager->processSignal(requestNamed(QStringLiteral("Quote.Added")));
    manager->waitForPendingSignals();
    ASSERT_EQ(sendOneBatch(*manager), std::optional<bool>(true));

    ASSERT_EQ(server.requests().size(), 1);
    const RecordedRequest& request = server.requests().first();
    EXPECT_EQ(request.method, QByteArray("POST"));
    EXPECT_EQ(request.path, QByteArray("/v2/"));
    EXPECT_EQ(request.headers.value("content-type"), QByteArray("application/json"));
    ASSERT_EQ(request.bodyArray().size(), 1);
    const QJsonObject record = request.bodyArray().first().toObject();
    EXPECT_EQ(QStringList(record.keys()),
              (textList({"appID", "clientUser", "floatValue", "isTestMode", "payload", "receivedAt",
                         "sessionID", "type"})));
    EXPECT_EQ(record.value(QStringLiteral("appID")).toString(), QStringLiteral("APP-ID"));
    EXPECT_EQ(record.value(QStringLiteral("type")).toString(), QStringLiteral("Quote.Added"));
    EXPECT_EQ(record.value(QStringLiteral("clientUser")).toString(),
              qbtelemetryhash::sha256Hex(QStringLiteral("persisted-user")));
    EXPECT_EQ(record.value(QStringLiteral("sessionID")).toString(),
              sessionID.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(record.value(QStringLiteral("floatValue")).toDouble(), 1.5);
    EXPECT_EQ(record.value(QStringLiteral("isTestMode")).toString(), QStringLiteral("false"));
    EXPECT_TRUE(QRegularExpression(QStringLiteral(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\+0000$)"))
                    .match(record.value(QStringLiteral("receivedAt")).toString())
                    .hasMatch());
    const QJsonObject payload = record.value(QStringLiteral("payload")).toObject();
    EXPECT_EQ(payload.value(QStringLiteral("count")).toString(), QStringLiteral("3"));
    EXPECT_EQ(payload.value(QStringLiteral("Tallyhub.Device.platform")).toString(),
              QStringLiteral("Linux"));
    EXPECT_TRUE(log.messages(LogHandler::LogLevel::debug)
                    .contains(QStringLiteral("Sending 1 signals leaving a cache of 0 signals")));
}

TEST_F(SignalManagerTest, NamespaceChoosesThePath)
{
    const std::pair<std::optional<QString>, QByteArray> cases[] = {
        {std::nullopt, "/v2/"},
        {QString(), "/v2/"},
        {QStringLiteral("team"), "/v2/namespace/team/"},
    };
    for (const auto& [ns, path] : cases) {
        auto manager = makeManager(server.baseURL(), ns);
        manager->signalCache().push(makeRecord(1));
        ASSERT_EQ(sendOneBatch(*manager), std::optional<bool>(true));
        EXPECT_EQ(server.requests().last().path, path);
    }
}

TEST_F(SignalManagerTest, FailedPostsPutTheBatchBackAtTheEndAndLogTheError)
{
    const std::pair<int, QString> statuses[] = {
        {401, QStringLiteral("Unauthorized (401)")},
        {403, QStringLiteral("Forbidden: the application identifier may not send signals (403)")},
        {413, QStringLiteral("Payload is too large (413)")},
        {500, QStringLiteral("Invalid status code")},
    };
    for (const auto& [status, text] : statuses) {
        log.clear();
        server.setStatus(status);
        auto manager = makeManager(server.baseURL());
        manager->signalCache().push(makeRecords(0, 150));
        ASSERT_EQ(sendOneBatch(*manager), std::optional<bool>(false)) << status;
        const QList<SignalPostBody> cached = manager->signalCache().allSignals();
        ASSERT_EQ(cached.size(), 150) << status;
        EXPECT_EQ(cached.first().type, QStringLiteral("Test.100")) << status;
        EXPECT_EQ(cached.mid(50), makeRecords(0, 100)) << status;
        EXPECT_EQ(log.messages(LogHandler::LogLevel::error), QStringList{text}) << status;
    }

    log.clear();
    auto refused = makeManager(refusingURL());
    refused->signalCache().push(makeRecords(0, 3));
    ASSERT_EQ(sendOneBatch(*refused), std::optional<bool>(false));
    EXPECT_EQ(refused->signalCache().allSignals(), makeRecords(0, 3));
    ASSERT_EQ(log.messages(LogHandler::LogLevel::error).size(), 1);
    EXPECT_TRUE(
        log.messages(LogHandler::LogLevel::error).first().contains(QStringLiteral("refused")))
        << log.messages(LogHandler::LogLevel::error).first().toStdString();
}

TEST_F(SignalManagerTest, RecordsSurviveARestartThroughTheCacheFileAndGoFirst)
{
    {
        auto previousRun = makeManager(refusingURL());
        previousRun->signalCache().push(makeRecords(0, 3));
        previousRun->appWillTerminate();
    }
    ASSERT_TRUE(QFileInfo::exists(cachePath));

    auto manager = makeManager(server.baseURL());
    EXPECT_FALSE(QFileInfo::exists(cachePath));
    manager->processSignal(requestNamed(QStringLiteral("Fresh")));
    manager->waitForPendingSignals();
    ASSERT_EQ(sendOneBatch(*manager), std::optional<bool>(true));
    EXPECT_EQ(server.requests().first().types(),
              (textList({"Test.0", "Test.1", "Test.2", "Fresh"})));
}

TEST_F(SignalManagerTest, ABatchStillOnItsWayAtExitIsSavedWithoutWaitingForTheReply)
{
    {
        auto previousRun = makeManager(server.baseURL());
        previousRun->signalCache().push(makeRecords(0, 120));
        previousRun->attemptToSendNextBatchOfCachedSignals();
        previousRun->appWillTerminate();
        QTest::qWait(100); // A reply arriving now must not change the saved file.
    }
    auto manager = makeManager(server.baseURL());
    const QList<SignalPostBody> loaded = manager->signalCache().allSignals();
    ASSERT_EQ(loaded.size(), 120);
    EXPECT_EQ(loaded.first().type, QStringLiteral("Test.100"));
}

TEST_F(SignalManagerTest, TheSendTimerPostsOneBatchPerTick)
{
    auto manager = makeManager(server.baseURL());
    manager->signalCache().push(makeRecords(0, 150));
    manager->startSending(std::chrono::milliseconds(50));
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return server.requests().size() >= 2; }, kWaitMilliseconds));
    EXPECT_EQ(server.requests()[0].bodyArray().size(), 100);
    EXPECT_EQ(server.requests()[1].bodyArray().size(), 50);
}
