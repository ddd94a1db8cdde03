#pragma once

#include "SignalCache.h"
#include "SignalPostBody.h"
#include "SignalRecordBuilder.h"

#include <QHash>
#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class SharedConfiguration;

// Builds records off the caller's thread, keeps them in the cache and posts them to the
// ingestion service: at most one batch of up to 100 per tick of the send timer. A failed
// post puts its batch back. Lives on the main thread, where the timer and HTTP run.
class SignalManager : public QObject
{
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds kDefaultSendInterval{10000};
    static constexpr int kRequestTimeoutMilliseconds = 60000;

    // Loads (and deletes) the cache file at |cacheFilePath| on the record-building thread.
    SignalManager(std::shared_ptr<SharedConfiguration> configuration, SignalRecordBuilder builder,
                  const QString& cacheFilePath, QObject* parent = nullptr);
    ~SignalManager() override;

    // One attempt as soon as the cache file and the records requested so far are in the
    // cache, then one per tick of the send timer.
    void startSending(std::chrono::milliseconds interval = kDefaultSendInterval);
    // Returns at once; the record is built and cached on a background thread.
    void processSignal(const SignalRequest& request);
    // The timer's action: posts the next batch, if any. From another thread the attempt
    // is handed to this object's thread.
    void attemptToSendNextBatchOfCachedSignals();
    // Saves the cache, with any batch still on its way, to the cache file; later
    // replies are ignored. Never waits for the network.
    void appWillTerminate();

    SignalCache<SignalPostBody>& signalCache() { return mSignalCache; }
    // Posts whose reply has not been handled yet.
    qsizetype batchesInFlight() const { return mBatchesInFlight.size(); }
    // Blocks until every record requested so far is in the cache.
    void waitForPendingSignals();
    // apiBaseURL with "/v2/" or "/v2/namespace/<ns>/" appended.
    static QUrl ingestionURL(const QUrl& baseURL, const std::optional<QString>& ns);

signals:
    // After each post's reply has been handled.
    void batchFinished(bool succeeded);

private:
    void handleReply(QNetworkReply* reply);
    // Queues an attempt behind the records being built.
    void sendWhenBuilt();
    // Posts the next batch once sending has started and no batch is on its way.
    void sendIfStarted();
    QNetworkAccessManager* networkAccessManager(const TelemetryManagerConfiguration& configuration);

    const std::shared_ptr<SharedConfiguration> mConfiguration;
    const SignalRecordBuilder mBuilder;
    SignalCache<SignalPostBody> mSignalCache;
    QTimer mSendTimer;
    std::unique_ptr<QNetworkAccessManager> mOwnNetworkAccessManager;
    QHash<QNetworkReply*, QList<SignalPostBody>> mBatchesInFlight;
    bool mTerminated = false;
    // Batches on their way are added to the cache once, however often termination comes.
    bool mBatchesInFlightCached = false;
    // Serial, so records reach the cache in the order they were requested.
    QThreadPool mBuildQueue;
};
