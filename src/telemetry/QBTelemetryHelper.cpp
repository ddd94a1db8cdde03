#include "QBTelemetryHelper.h"

#include "TelemetryManager.h"
#include "TelemetryManagerConfiguration.h"
#include "logging/ULog.h"

QBTelemetryHelper& QBTelemetryHelper::shared()
{
    static QBTelemetryHelper helper;
    return helper;
}

void QBTelemetryHelper::configureWithAppID(const QString& appID)
{
    configureWithAppID(appID, TelemetryManagerConfiguration::defaultIngestionEndpoint());
}

void QBTelemetryHelper::configureWithAppID(const QString& appID, const QUrl& endpoint)
{
    TelemetryManagerConfiguration configuration(appID, std::nullopt, endpoint);
    if (configuration.apiBaseURL.isEmpty()) {
        // An open-source build must not post to an address that nobody runs.
        configuration.analyticsDisabled = true;
        logInfoMessage("Usage signals are off: this build has no telemetry endpoint.");
    }
    TelemetryManager::initialize(configuration);
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
