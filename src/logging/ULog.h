#pragma once

#include <QString>

// Qt-side facade of the log: finished texts are logged as they stand, so a "%" in a
// quote never turns into a format directive. Build texts with QString::arg().
void logDebugMessage(const QString& message);
void logInfoMessage(const QString& message);
void logWarningMessage(const QString& message);
void logErrorMessage(const QString& message);

// Same strings, disambiguating literals ("..." converts to both QString and string_view).
inline void logDebugMessage(const char* message)
{
    logDebugMessage(QString::fromUtf8(message));
}
inline void logInfoMessage(const char* message)
{
    logInfoMessage(QString::fromUtf8(message));
}
inline void logWarningMessage(const char* message)
{
    logWarningMessage(QString::fromUtf8(message));
}
inline void logErrorMessage(const char* message)
{
    logErrorMessage(QString::fromUtf8(message));
}
