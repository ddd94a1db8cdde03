#include "TelemetryManagerConfiguration.h"

#include "TelemetryBuildSettings.h"

TelemetryManagerConfiguration::TelemetryManagerConfiguration(const QString& appID,
                                                             const std::optional<QString>& salt,
                                                             const QUrl& baseURL,
                                                             const std::optional<QString>& ns)
    : telemetryAppID(appID), apiBaseURL(baseURL.isEmpty() ? defaultIngestionEndpoint() : baseURL),
      namespace_(ns), salt(salt.value_or(QString()))
{}

QUrl TelemetryManagerConfiguration::defaultIngestionEndpoint()
{
    return QUrl(qbtelemetrybuild::ingestionEndpoint());
}

void TelemetryManagerConfiguration::log(LogHandler::LogLevel level, const QString& message) const
{
    if (showDebugLogs && level == LogHandler::LogLevel::debug && logHandler.handler) {
        logHandler.handler(level, message);
        return;
    }
    logHandler.log(level, message);
}

bool TelemetryManagerConfiguration::isInPreviewMode() const
{
    if (_swiftUIPreviewMode) {
        return *_swiftUIPreviewMode;
    }
    return qEnvironmentVariable("XCODE_RUNNING_FOR_PREVIEWS") == QStringLiteral("1");
}
