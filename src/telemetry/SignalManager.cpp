#include "SignalManager.h"

#include "SharedConfiguration.h"
#include "TelemetryError.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QThread>

namespace {
using Level = LogHandler::LogLevel;
} // namespace

SignalManager::SignalManager(std::shared_ptr<SharedConfiguration> configuration,
                             SignalRecordBuilder builder, const QString& cacheFilePath,
                             QObject* parent)
    : QObject(parent), mConfiguration(std::move(configuration)), mBuilder(std::move(builder)),
      mSignalCache(cacheFilePath, mConfiguration->snapshot().logHandler)
{
    mBuildQueue.setMaxThreadCount(1);
    mBuildQueue.setObjectName(QStringLiteral("com.tallyhub.SignalManager.build"));
    // Read first on the serial queue: the window does not wait for a large file, and
    // records built afterwards still come after the cached ones.
    mBuildQueue.start([this] {
        mSignalCache.loadFromFile();
        // Signals requested while the file was read are queued before this; they leave
        // with the file's records at once instead of waiting for the first tick.
        sendWhenBuilt();
    });
    connect(&mSendTimer, &QTimer::timeout, this,
            &SignalManager::attemptToSendNextBatchOfCachedSignals);
}

SignalManager::~SignalManager()
{
    mBuildQueue.waitForDone();
    mTerminated = true;
    // Replies are children of the network access manager; abort them before it goes.
    for (QNetworkReply* reply : mBatchesInFlight.keys()) {
        reply->abort();
    }
}

void SignalManager::startSending(std::chrono::milliseconds interval)
{
    mSendTimer.start(interval);
    // The first attempt waits for the cache file and for the records requested so far
    // (the start-up signal), which the build queue still holds.
    sendWhenBuilt();
}

void SignalManager::sendWhenBuilt()
{
    mBuildQueue.start([this] {
        QMetaObject::invokeMethod(this, &SignalManager::sendIfStarted, Qt::QueuedConnection);
    });
}

void SignalManager::sendIfStarted()
{
    // One batch at a time here, so the backlog reaches the server in its order.
    if (mSendTimer.isActive() && mBatchesInFlight.isEmpty()) {
        attemptToSendNextBatchOfCachedSignals();
    }
}

void SignalManager::processSignal(const SignalRequest& request)
{
    TelemetryManagerConfiguration configuration = mConfiguration->snapshot();
    mBuildQueue.start([this, request, configuration = std::move(configuration)] {
        const SignalPostBody record = mBuilder.build(request, configuration);
        mSignalCache.push(record);
        configuration.log(Level::debug, QStringLiteral("Process signal: ") + record.description());
    });
}

void SignalManager::attemptToSendNextBatchOfCachedSignals()
{
    // The network client and the in-flight list belong to this object's thread.
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(this, &SignalManager::attemptToSendNextBatchOfCachedSignals,
                                  Qt::QueuedConnection);
        return;
    }
    const TelemetryManagerConfiguration configuration = mConfiguration->snapshot();
    configuration.log(Level::debug,
                      QStringLiteral("Current signal cache count: %1").arg(mSignalCache.count()));
    if (mTerminated) {
        return;
    }
    const QList<SignalPostBody> batch = mSignalCache.pop();
    if (batch.isEmpty()) {
        return;
    }
    configuration.log(Level::debug,
                      QStringLiteral("Sending %1 signals leaving a cache of %2 signals")
                          .arg(batch.size())
                          .arg(mSignalCache.count()));

    QNetworkRequest request(ingestionURL(configuration.apiBaseURL, configuration.namespace_));
    request.setTransferTimeout(kRequestTimeoutMilliseconds);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    const QByteArray body = SignalPostBody::encodeList(batch);
    configuration.log(Level::debug, QString::fromUtf8(body));

    QNetworkReply* reply = networkAccessManager(configuration)->post(request, body);
    mBatchesInFlight.insert(reply, batch);
    connect(reply, &QNetworkReply::finished, this, [this, reply] { handleReply(reply); });
}

void SignalManager::appWillTerminate()
{
    mConfiguration->snapshot().log(Level::debug, QStringLiteral("appWillTerminate()"));
    mTerminated = true;
    mSendTimer.stop();
    // The outcome of a post still on its way is unknown; keeping its batch may send it
    // twice, dropping it may lose it. Twice is the lesser harm.
    if (!mBatchesInFlightCached) {
        mBatchesInFlightCached = true;
        for (const QList<SignalPostBody>& batch : std::as_const(mBatchesInFlight)) {
            mSignalCache.push(batch);
        }
    }
    mSignalCache.saveToFile();
}

void SignalManager::waitForPendingSignals()
{
    mBuildQueue.waitForDone();
}

QUrl SignalManager::ingestionURL(const QUrl& baseURL, const std::optional<QString>& ns)
{
    QUrl url = baseURL;
    QString path = url.path();
    while (path.endsWith(QLatin1Char('/'))) {
        path.chop(1);
    }
    const bool hasNamespace = ns && !ns->isEmpty();
    url.setPath(path + (hasNamespace ? QStringLiteral("/v2/namespace/") + *ns + QLatin1Char('/')
                                     : QStringLiteral("/v2/")));
    return url;
}

void SignalManager::handleReply(QNetworkReply* reply)
{
    reply->deleteLater();
    const QList<SignalPostBody> batch = mBatchesInFlight.take(reply);
    if (mTerminated) {
        return;
    }
    const TelemetryManagerConfiguration configuration = mConfiguration->snapshot();
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    const int statusCode = status.isValid() ? status.toInt() : 0;
    const bool succeeded = status.isValid() && statusCode >= 200 && statusCode <= 299;
    if (succeeded) {
        const QByteArray responseBody = reply->readAll();
        if (!responseBody.isEmpty()) {
            configuration.log(Level::debug, QString::fromUtf8(responseBody));
        }
    } else {
        // Without an HTTP response the transport's own text says more than "status 0".
        const QString description = status.isValid()
                                        ? TelemetryError::fromStatusCode(statusCode).description()
                                        : reply->errorString();
        configuration.log(Level::error, description);
        mSignalCache.push(batch);
    }
    emit batchFinished(succeeded);
}

QNetworkAccessManager*
SignalManager::networkAccessManager(const TelemetryManagerConfiguration& configuration)
{
    if (configuration.urlSession) {
        return configuration.urlSession;
    }
    if (!mOwnNetworkAccessManager) {
        mOwnNetworkAccessManager = std::make_unique<QNetworkAccessManager>();
    }
    return mOwnNetworkAccessManager.get();
}
