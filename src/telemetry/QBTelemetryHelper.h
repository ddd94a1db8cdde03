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
    // |userAllowsSharing| is the user's switch: false keeps the client off and deletes
    // records cached by an earlier run.
    void configureWithAppID(const QString& appID, bool userAllowsSharing = true);
    // Same with an explicit endpoint; an empty one turns usage signals off (and says so
    // once in the log), so the client sends, caches and writes nothing.
    void configureWithAppID(const QString& appID, const QUrl& endpoint,
                            bool userAllowsSharing = true);
    // False when the configured client has nowhere to send to, whatever the user says.
    bool canShare() const;
    // The user turned the switch; without an endpoint the client stays off.
    void setUserAllowsSharing(bool allowed);

    void trackEvent(const QString& signalName);
    void trackEvent(const QString& signalName, const TelemetryParameters& parameters);
    void trackAppLaunch();
    void trackQuoteAdded();
    void trackQuoteRemoved();
    void trackBatchImportWithCount(qint64 count);

private:
    QBTelemetryHelper() = default;
};
