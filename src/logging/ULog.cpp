#include "logging/ULog.h"

#include "logging/Log.h"

namespace {
std::string_view utf8View(const QByteArray& bytes)
{
    return std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}
} // namespace

void logDebugMessage(const QString& message)
{
    logDebugMessage(utf8View(message.toUtf8()));
}

void logInfoMessage(const QString& message)
{
    logInfoMessage(utf8View(message.toUtf8()));
}

void logWarningMessage(const QString& message)
{
    logWarningMessage(utf8View(message.toUtf8()));
}

void logErrorMessage(const QString& message)
{
    logErrorMessage(utf8View(message.toUtf8()));
}
