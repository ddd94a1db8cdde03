#pragma once

#include "telemetry/LogHandler.h"
#include "telemetry/SignalPostBody.h"
#include "telemetry/TelemetryClock.h"

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QStringList>
#include <QTcpServer>
#include <QUrl>

class QTcpSocket;
class SignalManager;

// A clock that stands still until the test moves it.
class ManualClock : public TelemetryClock
{
public:
    explicit ManualClock(QDateTime start);
    QDateTime now() const override;
    void advance(qint64 seconds);
    void advanceMilliseconds(qint64 milliseconds);

private:
    mutable QMutex mMutex;
    QDateTime mNow;
};

// Collects what the client logs through its LogHandler, from any thread.
class LogRecorder
{
public:
    LogHandler handler(LogHandler::LogLevel level = LogHandler::LogLevel::debug);
    QStringList messages(LogHandler::LogLevel level) const;
    bool contains(LogHandler::LogLevel level, const QString& message) const;
    void clear();

private:
    mutable QMutex mMutex;
    QList<std::pair<LogHandler::LogLevel, QString>> mMessages;
};

struct RecordedRequest
{
    QByteArray method;
    QByteArray path;
    QMap<QByteArray, QByteArray> headers; // names in lower case
    QByteArray body;

    QJsonArray bodyArray() const;
    // The "type" of each record in the body, in order.
    QStringList types() const;
};

// A tiny HTTP/1.1 server on 127.0.0.1 that records every request and answers each with
// the configured status.
class LocalHttpServer : public QObject
{
    Q_OBJECT
public:
    LocalHttpServer();
    QUrl baseURL() const;
    void setStatus(int status) { mStatus = status; }
    const QList<RecordedRequest>& requests() const { return mRequests; }

signals:
    void requestReceived();

private:
    void readFrom(QTcpSocket* socket);

    int mStatus = 200;
    QHash<QTcpSocket*, QByteArray> mBuffers;
    QList<RecordedRequest> mRequests;
    // Last, so the sockets it owns go while the buffers they report to still exist.
    QTcpServer mServer;
};

// A base address where nothing listens, so connecting is refused.
QUrl refusingURL();

// A record whose type is "Test.<number>".
SignalPostBody makeRecord(int number);
QList<SignalPostBody> makeRecords(int first, int count);

// Posts everything |manager| has built or cached to |server| and returns every record
// the server has received so far, oldest first.
QList<QJsonObject> drainToServer(SignalManager& manager, const LocalHttpServer& server);
// The "type" of each record.
QStringList typesOf(const QList<QJsonObject>& records);

// A list of texts written as plain literals.
QStringList textList(std::initializer_list<const char*> texts);
