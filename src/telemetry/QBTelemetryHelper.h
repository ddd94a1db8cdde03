#pragma once

#include "TelemetryTypes.h"

#include <QString>
#include <QUrl>

// The application's one gateway to the analytics client: configures it once at launch
// and sends one signal per application event. Keeps no state of its own.
class QBTelemetryHelper
{
public:
    static QBTelemetryHelper& shared();

    // Configures the client for |appID| with the build's ingestion endpoint.
    void configureWithAppID(const QString& appID);
    // Same with an explicit endpoint; an empty one turns usage signals off (and says so
    // once in the log), so the client sends, caches and writes nothing.
    void configureWithAppID(const QString& appID, const QUrl& endpoint);

    void trackEvent(const QString& signalName);
    void trackEvent(const QString& signalName, const TelemetryParameters& parameters);
    void trackAppLaunch();
    void trackQuoteAdded();
    void trackQuoteRemoved();
    void trackBatchImportWithCount(qint64 count);

private:
    QBTelemetryHelper() = default;
};
