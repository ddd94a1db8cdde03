#pragma once

#include "LogHandler.h"
#include "TelemetryTypes.h"

#include <QString>
#include <QUrl>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QNetworkAccessManager;

// Settings of the analytics client, made once at launch and read by every other piece.
// A plain value: the manager keeps the live copy behind a lock and hands out snapshots.
class TelemetryManagerConfiguration
{
public:
    // An empty |apiBaseURL| falls back to defaultIngestionEndpoint(); a missing salt is "".
    explicit TelemetryManagerConfiguration(const QString& appID,
                                           const std::optional<QString>& salt = std::nullopt,
                                           const QUrl& baseURL = QUrl(),
                                           const std::optional<QString>& ns = std::nullopt);

    // The build's ingestion service address (empty when the build has none).
    static QUrl defaultIngestionEndpoint();

    QString telemetryAppID;
    QUrl apiBaseURL;
    std::optional<QString> namespace_;
    QString salt;
    std::optional<QString> defaultUser;
    std::optional<QString> defaultSignalPrefix;
    std::optional<QString> defaultParameterPrefix;
    std::function<TelemetryParameters()> defaultParameters = [] { return TelemetryParameters(); };
    bool sendNewSessionBeganSignal = true;
    QUuid sessionID = QUuid::createUuid();
    // Used from the thread that owns it (the main thread); null means the signal manager's own.
    QNetworkAccessManager* urlSession = nullptr;
    // Kept for completeness; debug builds send like any other build.
    bool sendSignalsInDebugConfiguration = false;
    std::optional<bool> _testMode;
    std::optional<bool> _swiftUIPreviewMode;
    bool analyticsDisabled = false;
    bool reservedParameterWarningsEnabled = true;
    bool sessionStatsEnabled = true;
    // Passes the client's debug messages on whatever logHandler's level is.
    bool showDebugLogs = false;
    LogHandler logHandler = LogHandler::systemLog();
    std::vector<std::shared_ptr<SignalEnricher>> metadataEnrichers;

    // Logs through logHandler, honouring showDebugLogs.
    void log(LogHandler::LogLevel level, const QString& message) const;
    // True when the preview filter drops signals: an explicit _swiftUIPreviewMode wins,
    // else XCODE_RUNNING_FOR_PREVIEWS=1 in the environment.
    bool isInPreviewMode() const;
};
