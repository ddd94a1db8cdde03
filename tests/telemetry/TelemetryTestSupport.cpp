#include "TelemetryTestSupport.h"

#include "telemetry/SignalManager.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMutexLocker>
#include <QTcpSocket>
#include <QTest>
#include <QTimeZone>

ManualClock::ManualClock(QDateTime start) : mNow(std::move(start)) {}

QDateTime ManualClock::now() const
{
    QMutexLocker locker(&mMutex);
    return mNow;
}

void ManualClock::advance(qint64 seconds)
{
    QMutexLocker locker(&mMutex);
    mNow = mNow.addSecs(seconds);
}

void ManualClock::advanceMilliseconds(qint64 milliseconds)
{
    QMutexLocker locker(&mMutex);
    mNow = mNow.addMSecs(milliseconds);
}

LogHandler LogRecorder::handler(LogHandler::LogLevel level)
{
    return {level, [this](LogHandler::LogLevel messageLevel, const QString& message) {
                QMutexLocker locker(&mMutex);
                mMessages.append({messageLevel, message});
            }};
}

QStringList LogRecorder::messages(LogHandler::LogLevel level) const
{
    QMutexLocker locker(&mMutex);
    QStringList result;
    for (const auto& [messageLevel, message] : mMessages) {
        if (messageLevel == level) {
            result.append(message);
        }
    }
    return result;
}

bool LogRecorder::contains(LogHandler::LogLevel level, const QString& message) const
{
    return messages(level).contains(message);
}

void LogRecorder::clear()
{
    QMutexLocker locker(&mMutex);
    mMessages.clear();
}

QJsonArray RecordedRequest::bodyArray() const
{
    return QJsonDocument::fromJson(body).array();
}

QStringList RecordedRequest::types() const
{
    QStringList result;
    for (const QJsonValue& record : bodyArray()) {
        result.append(record.toObject().value(QStringLiteral("type")).toString());
    }
    return result;
}

LocalHttpServer::LocalHttpServer()
{
    mServer.listen(QHostAddress::LocalHost, 0);
    connect(&mServer, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = mServer.nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readFrom(socket); });
            connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
                mBuffers.remove(socket);
                socket->deleteLater();
            });
        }
    });
}

QUrl LocalHttpServer::baseURL() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(mServer.serverPort()));
}

void LocalHttpServer::readFrom(QTcpSocket* socket)
{
    QByteArray& buffer = mBuffers[socket];
    buffer.append(socket->readAll());
    const qsizetype headerEnd = buffer.indexOf("\r\n\r\n");
    if (headerEnd < 0) {
        return;
    }
    RecordedRequest request;
    const QList<QByteArray> lines = buffer.left(headerEnd).split('\n');
    const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
    request.method = requestLine.value(0);
    request.path = requestLine.value(1);
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const qsizetype colon = lines[i].indexOf(':');
        if (colon > 0) {
            request.headers.insert(lines[i].left(colon).trimmed().toLower(),
                                   lines[i].mid(colon + 1).trimmed());
        }
    }
    const qsizetype length = request.headers.value("content-length").toLongLong();
    if (buffer.size() < headerEnd + 4 + length) {
        return;
    }
    request.body = buffer.mid(headerEnd + 4, length);
    buffer.clear();
    mRequests.append(request);

    const QByteArray answer = "{\"ok\":true}";
    socket->write("HTTP/1.1 " + QByteArray::number(mStatus) +
                  " Status\r\nContent-Type: application/json\r\nContent-Length: " +
                  QByteArray::number(answer.size()) + "\r\nConnection: close\r\n\r\n" + answer);
    socket->disconnectFromHost();
    emit requestReceived();
}

QUrl refusingURL()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost, 0);
    const quint16 port = server.serverPort();
    server.close();
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(port));
}

SignalPostBody makeRecord(int number)
{
    SignalPostBody record;
    record.receivedAt = QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7), QTimeZone::utc());
    record.appID = QStringLiteral("APP");
    record.clientUser = QString(64, QLatin1Char('a'));
    record.sessionID = QStringLiteral("6F1C1B8E-0000-4000-8000-000000000001");
    record.type = QStringLiteral("Test.%1").arg(number);
    record.payload = {{QStringLiteral("number"), QString::number(number)}};
    record.isTestMode = QStringLiteral("false");
    return record;
}

QList<SignalPostBody> makeRecords(int first, int count)
{
    QList<SignalPostBody> records;
    for (int number = first; number < first + count; ++number) {
        records.append(makeRecord(number));
    }
    return records;
}

QList<QJsonObject> drainToServer(SignalManager& manager, const LocalHttpServer& server)
{
    manager.waitForPendingSignals();
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (!QTest::qWaitFor([&manager] { return manager.batchesInFlight() == 0; }, 10000) ||
            manager.signalCache().count() == 0) {
            break;
        }
        manager.attemptToSendNextBatchOfCachedSignals();
    }
    QList<QJsonObject> records;
    for (const RecordedRequest& request : server.requests()) {
        for (const QJsonValue& record : request.bodyArray()) {
            records.append(record.toObject());
        }
    }
    return records;
}

QStringList typesOf(const QList<QJsonObject>& records)
{
    QStringList types;
    for (const QJsonObject& record : records) {
        types.append(record.value(QStringLiteral("type")).toString());
    }
    return types;
}

QStringList textList(std::initializer_list<const char*> texts)
{
    QStringList list;
    for (const char* text : texts) {
        list.append(QString::fromUtf8(text));
    }
    return list;
}
