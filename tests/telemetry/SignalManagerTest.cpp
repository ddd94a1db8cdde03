#include "TelemetryTestSupport.h"

#include "telemetry/SignalManager.h"
#include "telemetry/TelemetryHashing.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

namespace {
using SignalManagerTest = TelemetryTest;

// Posts one batch; true once a reply has come and counted as success.
bool sendOneBatch(SignalManager& manager)
{
    QSignalSpy finished(&manager, &SignalManager::batchFinished);
    manager.attemptToSendNextBatchOfCachedSignals();
    return finished.wait(10000) && finished.first().first().toBool();
}
} // namespace

// One batch per tick of the send timer (shortened here); an empty cache posts nothing.
TEST_F(SignalManagerTest, TwoHundredFiftyCachedRecordsLeaveInPostsOfOneHundredOneHundredAndFifty)
{
    auto manager = makeManager();
    SignalManager& signals_ = *manager->signalManager();
    signals_.signalCache().push(makeRecords(0, 250));
    signals_.startSending(std::chrono::milliseconds(50));
    ASSERT_TRUE(QTest::qWaitFor([this] { return server.requests().size() == 3; }, 10000));
    QTest::qWait(200);
    ASSERT_EQ(server.requests().size(), 3);
    for (int tick = 0; tick < 3; ++tick) {
        EXPECT_EQ(SignalPostBody::decodeList(server.requests()[tick].body),
                  makeRecords(100 * tick, tick < 2 ? 100 : 50));
    }
    EXPECT_EQ(signals_.signalCache().count(), 0);
}

TEST_F(SignalManagerTest, RequestHasTheStatedMethodPathHeadersAndBody)
{
    configuration.namespace_ = QString(); // an empty namespace is no namespace
    auto manager = makeManager();
    manager->sendSignal(u"Quote.Added"_s, {{u"count"_s, u"3"_s}}, 1.5, u"someone"_s);
    const QList<QJsonObject> records = sentRecords(*manager);
    ASSERT_EQ(records.size(), 1);
    const QByteArray& head = server.requests().first().head;
    EXPECT_TRUE(head.startsWith("POST /v2/ HTTP/1.1\r\n")) << head.constData();
    // Header names are case-insensitive; newer Qt sends them in lower case.
    EXPECT_TRUE(head.toLower().contains("\r\ncontent-type: application/json\r\n"))
        << head.constData();
    QJsonObject record = records.first(); // its payload is checked apart
    EXPECT_EQ(record.take("payload"_L1).toObject().value("count"_L1), u"3"_s);
    const QJsonObject expected{
        {u"appID"_s, kAppID},
        {u"clientUser"_s, qbtelemetryhash::sha256Hex(u"someone"_s)},
        {u"floatValue"_s, 1.5},
        {u"isTestMode"_s, u"false"_s},
        {u"receivedAt"_s, u"2026-05-06T12:00:00+0000"_s},
        {u"sessionID"_s,
         manager->configuration().sessionID.toString(QUuid::WithoutBraces).toUpper()},
        {u"type"_s, u"Quote.Added"_s}};
    EXPECT_EQ(record, expected) << QJsonDocument(record).toJson().toStdString();
    EXPECT_TRUE(log.messages(LogHandler::LogLevel::debug)
                    .contains(u"Sending 1 signals leaving a cache of 0 signals"_s));

    manager->updateConfiguration(
        [](TelemetryManagerConfiguration& changed) { changed.namespace_ = u"team"_s; });
    manager->sendSignal(u"Quote.Added"_s);
    sentRecords(*manager);
    EXPECT_TRUE(server.requests().last().head.startsWith("POST /v2/namespace/team/ "));
}

TEST_F(SignalManagerTest, FailedPostsPutTheBatchBackAtTheEndAndLogTheError)
{
    const std::pair<int, QString> cases[] = {
        {401, u"Unauthorized (401)"_s},
        {403, u"Forbidden: the application identifier may not send signals (403)"_s},
        {413, u"Payload is too large (413)"_s},
        {500, u"Invalid status code"_s},
        {0, u"Connection refused"_s}}; // no server: the transport's own text
    for (const auto& [status, text] : cases) {
        log.clear();
        server.setStatus(status);
        configuration.apiBaseURL = status ? server.baseURL() : refusingURL();
        auto manager = makeManager();
        manager->signalManager()->signalCache().push(makeRecords(0, 150));
        EXPECT_FALSE(sendOneBatch(*manager->signalManager())) << status;
        EXPECT_EQ(manager->signalManager()->signalCache().allSignals(),
                  makeRecords(100, 50) + makeRecords(0, 100))
            << status;
        EXPECT_EQ(log.messages(LogHandler::LogLevel::error), QStringList{text}) << status;
    }
}

TEST_F(SignalManagerTest, RecordsSurviveARestartThroughTheCacheFileAndGoFirst)
{
    configuration.apiBaseURL = refusingURL();
    auto previousRun = makeManager();
    previousRun->signalManager()->signalCache().push(makeRecords(0, 103));
    previousRun->signalManager()->attemptToSendNextBatchOfCachedSignals();
    // The 100 in flight are saved too, without waiting, and only once.
    previousRun->appWillTerminate();
    previousRun->appWillTerminate();
    EXPECT_EQ(previousRun->signalManager()->signalCache().count(), 103);
    previousRun.reset();
    ASSERT_TRUE(QFileInfo::exists(cachePath));

    configuration.apiBaseURL = server.baseURL();
    auto manager = makeManager();
    manager->signalManager()->waitForPendingSignals(); // the file is read off the main thread
    EXPECT_FALSE(QFileInfo::exists(cachePath));
    manager->sendSignal(u"Fresh"_s);
    const QList<QJsonObject> records = sentRecords(*manager);
    ASSERT_EQ(records.size(), 104);
    EXPECT_EQ(SignalPostBody::decodeList(server.requests().first().body),
              makeRecords(100, 3) + makeRecords(0, 97));
    EXPECT_EQ(records.last().value("type"_L1), u"Fresh"_s);
}

// The start-up signal is requested while the previous run's cache is still being read;
// both leave together in one post at once, not at the first tick an hour later.
TEST_F(SignalManagerTest, StartUpSignalLeavesWithTheCachedRecordsWithoutWaitingForATick)
{
    ASSERT_TRUE(writeFileBytes(cachePath, SignalPostBody::encodeList(makeRecords(0, 5))));
    configuration.sendNewSessionBeganSignal = true;
    auto manager = makeManager();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !server.requests().isEmpty(); }, 10000));
    const std::optional<QList<SignalPostBody>> posted =
        SignalPostBody::decodeList(server.requests().first().body);
    ASSERT_TRUE(posted && posted->size() == 6);
    EXPECT_EQ(posted->first(5), makeRecords(0, 5));
    EXPECT_EQ(posted->last().type, u"Tallyhub.Session.started"_s);
}
