#pragma once

#include "TestHome.h"

#include "telemetry/LogHandler.h"
#include "telemetry/SignalPostBody.h"
#include "telemetry/TelemetryClock.h"
#include "telemetry/TelemetryManager.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMutex>
#include <QTcpServer>
#include <QTimeZone>
#include <QUrl>

#include <gtest/gtest.h>

#include <atomic>

using namespace Qt::StringLiterals;

// A clock that stands still until the test moves it.
class ManualClock : public TelemetryClock
{
public:
    explicit ManualClock(const QDateTime& start) : mMSecs(start.toMSecsSinceEpoch()) {}
    QDateTime now() const override
    {
        return QDateTime::fromMSecsSinceEpoch(mMSecs, QTimeZone::utc());
    }
    void advance(double seconds) { mMSecs += qRound64(seconds * 1000); }

private:
    std::atomic<qint64> mMSecs;
};

// Collects what the client logs through its LogHandler, from any thread.
class LogRecorder
{
public:
    LogHandler handler()
    {
        return {LogHandler::LogLevel::debug,
                [this](LogHandler::LogLevel level, const QString& text) {
                    QMutexLocker locker(&mMutex);
                    mMessages[level].append(text);
                }};
    }
    QStringList messages(LogHandler::LogLevel level) const
    {
        QMutexLocker locker(&mMutex);
        return mMessages.value(level);
    }
    void clear()
    {
        QMutexLocker locker(&mMutex);
        mMessages.clear();
    }

private:
    mutable QMutex mMutex;
    QMap<LogHandler::LogLevel, QStringList> mMessages;
};

struct RecordedRequest
{
    QByteArray head; // request line and headers
    QByteArray body;
};

// An HTTP/1.1 server on 127.0.0.1 recording each request, answering with |status|.
class LocalHttpServer
{
public:
    LocalHttpServer();
    QUrl baseURL() const { return u"http://127.0.0.1:%1"_s.arg(mServer.serverPort()); }
    void setStatus(int status) { mStatus = status; }
    const QList<RecordedRequest>& requests() const { return mRequests; }

private:
    int mStatus = 200;
    QList<RecordedRequest> mRequests;
    QTcpServer mServer; // last, so its sockets go before the list they report to
};

// A base address where nothing listens, so connecting is refused.
QUrl refusingURL();

// Records whose types are "Test.<first>" onwards.
QList<SignalPostBody> makeRecords(int first, int count);

// Posts all |manager| holds; every record |server| has received, oldest first.
QList<QJsonObject> drainToServer(SignalManager& manager, const LocalHttpServer& server);

// The |field| of each record, as text.
QStringList valuesOf(const QList<QJsonObject>& records, const char* field = "type");

inline const QString kAppID = u"11111111-2222-3333-4444-555555555555"_s;

// A client on a manual clock posting to a local server; its session signals off.
class TelemetryTest : public ::testing::Test
{
protected:
    TelemetryTest()
    {
        qunsetenv("XCODE_RUNNING_FOR_PREVIEWS");
        configuration.logHandler = log.handler();
        configuration.sessionStatsEnabled = false;
        configuration.sendNewSessionBeganSignal = false;
    }
    ~TelemetryTest() override { qunsetenv("XCODE_RUNNING_FOR_PREVIEWS"); }

    std::unique_ptr<TelemetryManager> makeManager()
    {
        TelemetryEnvironment environment;
        environment.clock = clock;
        environment.cacheFilePath = cachePath;
        environment.sendInterval = std::chrono::hours(1);
        return std::make_unique<TelemetryManager>(configuration, environment);
    }
    QList<QJsonObject> sentRecords(TelemetryManager& manager)
    {
        return drainToServer(*manager.signalManager(), server);
    }

    QBTestHome home;
    LogRecorder log;
    LocalHttpServer server;
    std::shared_ptr<ManualClock> clock =
        std::make_shared<ManualClock>(QDateTime(QDate(2026, 5, 6), QTime(12, 0), QTimeZone::utc()));
    TelemetryManagerConfiguration configuration{kAppID, std::nullopt, server.baseURL()};
    const QString cachePath = home.filePath(u"cache/telemetrysignalcache"_s);
};
