#pragma once

#include "TelemetryTypes.h"

#include <QDateTime>
#include <QMutex>
#include <QString>

#include <optional>

// What only the GUI side of the program can know (screen, colour scheme, accessibility).
// The application hands it over, since the analytics client links no GUI module.
struct DisplayEnvironment
{
    int screenWidth = 0;
    int screenHeight = 0;
    double screenScaleFactor = 1.0;
    QString colorScheme = QStringLiteral("Unknown"); // "Light", "Dark" or "Unknown"
    bool reduceMotionEnabled = false;
    bool invertColorsEnabled = false;
};

// The parameters attached to every signal: application, device, run context, client,
// user preferences, accessibility and the calendar facts of the signal's moment.
// Facts that cannot change while the program runs are read once, on first use.
class DefaultSignalPayload
{
public:
    // |modelNamePath| is read for the device model (the DMI product name by default).
    explicit DefaultSignalPayload(
        QString modelNamePath = QStringLiteral("/sys/class/dmi/id/product_name"));

    // Thread-safe; |moment| gives the calendar parameters in the local time zone.
    TelemetryParameters parameters(const QDateTime& moment);
    void setDisplayEnvironment(const DisplayEnvironment& environment);

    static TelemetryParameters calendarParameters(const QDateTime& moment);
    static TelemetryParameters displayParameters(const DisplayEnvironment& environment);

private:
    TelemetryParameters fixedParameters();

    const QString mModelNamePath;
    QMutex mMutex;
    std::optional<TelemetryParameters> mFixedParameters; // guarded by mMutex
    DisplayEnvironment mDisplayEnvironment;              // guarded by mMutex
};
