#include "LogHandler.h"

#include <syslog.h>

#include <cstdio>

namespace {
int syslogPriority(LogHandler::LogLevel level)
{
    switch (level) {
    case LogHandler::LogLevel::debug:
        return LOG_DEBUG;
    case LogHandler::LogLevel::info:
        return LOG_INFO;
    case LogHandler::LogLevel::error:
        break;
    }
    return LOG_ERR;
}
} // namespace

void LogHandler::log(LogLevel level, const QString& message) const
{
    if (handler && static_cast<int>(level) >= static_cast<int>(logLevel)) {
        handler(level, message);
    }
}

LogHandler LogHandler::systemLog(LogLevel level)
{
    return {level, [](LogLevel messageLevel, const QString& message) {
                // The ident is kept by pointer, so it must outlive the process' use of it.
                static const char* const ident = "Tallyhub";
                ::openlog(ident, LOG_PID, LOG_USER);
                ::syslog(syslogPriority(messageLevel), "[LogHandler] %s",
                         message.toUtf8().constData());
            }};
}

LogHandler LogHandler::standardOutput(LogLevel level)
{
    return {level, [](LogLevel messageLevel, const QString& message) {
                const QByteArray line = QStringLiteral("[Tallyhub: %1] %2\n")
                                            .arg(levelName(messageLevel), message)
                                            .toUtf8();
                std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
                std::fflush(stdout);
            }};
}

QString LogHandler::levelName(LogLevel level)
{
    switch (level) {
    case LogLevel::debug:
        return QStringLiteral("DEBUG");
    case LogLevel::info:
        return QStringLiteral("INFO");
    case LogLevel::error:
        break;
    }
    return QStringLiteral("ERROR");
}
