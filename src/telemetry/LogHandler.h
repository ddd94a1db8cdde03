#pragma once

#include <QString>

#include <functional>

// Where the analytics client's own messages go, and from which level on.
struct LogHandler
{
    enum class LogLevel : int
    {
        debug = 0,
        info = 1,
        error = 2
    };
    using Handler = std::function<void(LogLevel, const QString&)>;

    LogLevel logLevel = LogLevel::info;
    Handler handler;

    // Passes |message| on when |level| is at or above logLevel.
    void log(LogLevel level, const QString& message) const;

    // The default: syslog(3) with ident "Tallyhub", priority LOG_DEBUG, LOG_INFO or LOG_ERR.
    static LogHandler systemLog(LogLevel level = LogLevel::info);
    // "[Tallyhub: DEBUG] message" lines on standard output.
    static LogHandler standardOutput(LogLevel level = LogLevel::info);
    // "DEBUG", "INFO" or "ERROR".
    static QString levelName(LogLevel level);
};
