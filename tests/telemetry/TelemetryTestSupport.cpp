#include "TelemetryTestSupport.h"

#include "telemetry/SignalManager.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTest>

LocalHttpServer::LocalHttpServer()
{
    mServer.listen(QHostAddress::LocalHost, 0);
    QObject::connect(&mServer, &QTcpServer::newConnection, &mServer, [this] {
        while (QTcpSocket* socket = mServer.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            auto buffer = std::make_shared<QByteArray>();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, buffer] {
                buffer->append(socket->readAll());
                const qsizetype headEnd = buffer->indexOf("\r\n\r\n");
                const QByteArray head = buffer->left(headEnd);
                const qsizetype length =
                    QRegularExpression(u"\r\ncontent-length: *(\\d+)"_s,
                                       QRegularExpression::CaseInsensitiveOption)
                        .match(QString::fromLatin1(head))
                        .captured(1)
                        .toLongLong();
                if (headEnd < 0 || buffer->size() < headEnd + 4 + length) {
                    return;
                }
                mRequests.append({head, buffer->mid(headEnd + 4)});
                socket->write("HTTP/1.1 " + QByteArray::number(mStatus) +
                              " Status\r\nContent-Length: 2\r\nConnection: close\r\n\r\n{}");
                socket->disconnectFromHost();
            });
        }
    });
}

QUrl refusingURL()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost, 0);
    return u"http://127.0.0.1:%1"_s.arg(server.serverPort()); // closed on return
}

QList<SignalPostBody> makeRecords(int first, int count)
{
    QList<SignalPostBody> records;
    for (int number = first; number < first + count; ++number) {
        records.append({QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7), QTimeZone::utc()),
                        u"APP"_s,
                        QString(64, u'a'),
                        u"6F1C1B8E-0000-4000-8000-000000000001"_s,
                        u"Test.%1"_s.arg(number),
                        std::nullopt,
                        {{u"number"_s, QString::number(number)}},
                        u"false"_s});
    }
    return records;
}

QList<QJsonObject> drainToServer(SignalManager& manager, const LocalHttpServer& server)
{
    manager.waitForPendingSignals();
    for (int attempt = 0;
         attempt < 100 &&
         QTest::qWaitFor([&manager] { return manager.batchesInFlight() == 0; }, 10000) &&
         manager.signalCache().count() > 0;
         ++attempt) {
        manager.attemptToSendNextBatchOfCachedSignals();
    }
    QList<QJsonObject> records;
    for (const RecordedRequest& request : server.requests()) {
        for (const QJsonValue& record : QJsonDocument::fromJson(request.body).array()) {
            records.append(record.toObject());
        }
    }
    return records;
}

QStringList valuesOf(const QList<QJsonObject>& records, const char* field)
{
    QStringList values;
    for (const QJsonObject& record : records) {
        values.append(record.value(QLatin1StringView(field)).toString());
    }
    return values;
}
