#include "QBTelemetryHelper.h"

#include "TelemetryManager.h"
#include "TelemetryManagerConfiguration.h"
#include "logging/ULog.h"

QBTelemetryHelper& QBTelemetryHelper::shared()
{
    static QBTelemetryHelper helper;
    return helper;
}

void QBTelemetryHelper::configureWithAppID(const QString& appID, bool userAllowsSharing)
{
    configureWithAppID(appID, TelemetryManagerConfiguration::defaultIngestionEndpoint(),
                       userAllowsSharing);
}

void QBTelemetryHelper::configureWithAppID(const QString& appID, const QUrl& endpoint,
                                           bool userAllowsSharing)
{
    TelemetryManagerConfiguration configuration(appID, std::nullopt, endpoint);
    const bool hasEndpoint = !configuration.apiBaseURL.isEmpty();
    if (!hasEndpoint) {
        // An open-source build must not post to an address that nobody runs.
        configuration.analyticsDisabled = true;
        logInfoMessage("Usage signals are off: this build has no telemetry endpoint.");
    } else if (!userAllowsSharing) {
        configuration.analyticsDisabled = true;
        logInfoMessage("Usage signals are off: the user does not share usage statistics.");
    }
    TelemetryManager::initialize(configuration);
    if (hasEndpoint && !userAllowsSharing) {
        TelemetryManager::shared()->setEnabled(false); // deletes what an earlier run cached
    }
}

bool QBTelemetryHelper::canShare() const
{
    const TelemetryManager* manager = TelemetryManager::shared();
    return manager != nullptr && !manager->configuration().apiBaseURL.isEmpty();
}

void QBTelemetryHelper::setUserAllowsSharing(bool allowed)
{
    if (!canShare()) {
        return;
    }
    logInfoMessage(allowed ? "Usage signals turned on by the user."
                           : "Usage signals turned off by the user.");
    TelemetryManager::shared()->setEnabled(allowed);
}

void QBTelemetryHelper::trackEvent(const QString& signalName)
{
    trackEvent(signalName, {});
}

void QBTelemetryHelper::trackEvent(const QString& signalName, const TelemetryParameters& parameters)
{
    TelemetryManager::send(signalName, parameters);
}

void QBTelemetryHelper::trackAppLaunch()
{
    trackEvent(QStringLiteral("App.Launched"));
}

void QBTelemetryHelper::trackQuoteAdded()
{
    trackEvent(QStringLiteral("Quote.Added"));
}

void QBTelemetryHelper::trackQuoteRemoved()
{
    trackEvent(QStringLiteral("Quote.Removed"));
}

void QBTelemetryHelper::trackBatchImportWithCount(qint64 count)
{
    trackEvent(QStringLiteral("Quotes.BatchImported"),
               {{QStringLiteral("count"), QString::number(count)}});
}
