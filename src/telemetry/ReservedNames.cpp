#include "ReservedNames.h"

#include <QSet>

namespace qbreservednames {

namespace {
const QString kReservedPrefix = QStringLiteral("tallyhub.");

const QSet<QString>& lowerCasedReservedNames()
{
    static const QSet<QString> names = [] {
        QSet<QString> lowered;
        for (const QString& name : reservedNames()) {
            lowered.insert(name.toLower());
        }
        return lowered;
    }();
    return names;
}

enum class Verdict
{
    free,
    reservedPrefix,
    reservedName
};

Verdict verdictFor(const QString& text)
{
    const QString lowered = text.toLower();
    if (lowered.startsWith(kReservedPrefix)) {
        return Verdict::reservedPrefix;
    }
    return lowerCasedReservedNames().contains(lowered) ? Verdict::reservedName : Verdict::free;
}
} // namespace

const QStringList& reservedNames()
{
    static const QStringList names{QStringLiteral("type"),
                                   QStringLiteral("clientUser"),
                                   QStringLiteral("appID"),
                                   QStringLiteral("sessionID"),
                                   QStringLiteral("floatValue"),
                                   QStringLiteral("newSessionBegan"),
                                   QStringLiteral("platform"),
                                   QStringLiteral("systemVersion"),
                                   QStringLiteral("majorSystemVersion"),
                                   QStringLiteral("majorMinorSystemVersion"),
                                   QStringLiteral("appVersion"),
                                   QStringLiteral("buildNumber"),
                                   QStringLiteral("isSimulator"),
                                   QStringLiteral("isDebug"),
                                   QStringLiteral("isTestFlight"),
                                   QStringLiteral("isAppStore"),
                                   QStringLiteral("modelName"),
                                   QStringLiteral("architecture"),
                                   QStringLiteral("operatingSystem"),
                                   QStringLiteral("targetEnvironment"),
                                   QStringLiteral("locale"),
                                   QStringLiteral("region"),
                                   QStringLiteral("appLanguage"),
                                   QStringLiteral("preferredLanguage"),
                                   QStringLiteral("telemetryClientVersion")};
    return names;
}

QString warningForSignalName(const QString& name)
{
    switch (verdictFor(name)) {
    case Verdict::reservedPrefix:
        return QStringLiteral("Sending signal with reserved prefix 'Tallyhub.' will cause "
                              "unexpected behavior. Please use another prefix instead.");
    case Verdict::reservedName:
        return QStringLiteral("Sending signal with reserved name '") + name +
               QStringLiteral("' will cause unexpected behavior. Please use another name instead.");
    case Verdict::free:
        break;
    }
    return {};
}

QString warningForParameterKey(const QString& key)
{
    switch (verdictFor(key)) {
    case Verdict::reservedPrefix:
        return QStringLiteral("Sending parameter with reserved key prefix 'Tallyhub.' will cause "
                              "unexpected behavior. Please use another prefix instead.");
    case Verdict::reservedName:
        return QStringLiteral("Sending parameter with reserved key '") + key +
               QStringLiteral("' will cause unexpected behavior. Please use another key instead.");
    case Verdict::free:
        break;
    }
    return {};
}

} // namespace qbreservednames
