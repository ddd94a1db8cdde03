#include "SessionHistory.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {
const QString kStartedAt = QStringLiteral("startedAt");
const QString kDurationInSeconds = QStringLiteral("durationInSeconds");
} // namespace

QString SessionHistory::dayText(const QDateTime& moment)
{
    return moment.toLocalTime().date().toString(Qt::ISODate);
}

QByteArray SessionHistory::encodeSessions(const QList<StoredSession>& sessions)
{
    QJsonArray array;
    for (const StoredSession& session : sessions) {
        array.append(
            QJsonObject{{kStartedAt, session.startedAt.toUTC().toString(Qt::ISODateWithMs)},
                        {kDurationInSeconds, session.durationInSeconds}});
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QList<StoredSession> SessionHistory::decodeSessions(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    QList<StoredSession> sessions;
    for (const QJsonValue& value : document.array()) {
        const QJsonObject object = value.toObject();
        const QDateTime startedAt =
            QDateTime::fromString(object.value(kStartedAt).toString(), Qt::ISODateWithMs);
        if (!startedAt.isValid() || !object.value(kDurationInSeconds).isDouble()) {
            return {};
        }
        sessions.append({startedAt, object.value(kDurationInSeconds).toInteger()});
    }
    return sessions;
}

void SessionHistory::dropSessionsOlderThan(const QDateTime& now)
{
    const QDateTime limit = now.addSecs(-kMaximumSessionAgeSeconds);
    const qsizetype dropped = recentSessions.removeIf(
        [&limit](const StoredSession& session) { return session.startedAt < limit; });
    deletedSessionsCount += dropped;
}

bool SessionHistory::recordDayOfUse(const QString& day)
{
    if (!distinctDaysUsed.isEmpty() && distinctDaysUsed.last() == day) {
        return false;
    }
    distinctDaysUsed.append(day);
    return true;
}

void SessionHistory::recordSession(const StoredSession& session)
{
    // From the newest: the running session is the last entry, updated every second.
    for (auto stored = recentSessions.rbegin(); stored != recentSessions.rend(); ++stored) {
        if (stored->startedAt == session.startedAt) {
            stored->durationInSeconds = session.durationInSeconds;
            return;
        }
    }
    recentSessions.append(session);
}

TelemetryParameters
SessionHistory::retentionParameters(const QDateTime& now,
                                    const QDateTime& currentSessionStartedAt) const
{
    qint64 totalSeconds = 0;
    for (const StoredSession& session : recentSessions) {
        totalSeconds += session.durationInSeconds;
    }
    const qint64 averageSeconds =
        recentSessions.isEmpty() ? 0 : totalSeconds / recentSessions.size();

    const QString monthAgo = dayText(now.addDays(-kLastMonthDays));
    const auto daysLastMonth =
        std::count_if(distinctDaysUsed.begin(), distinctDaysUsed.end(),
                      [&monthAgo](const QString& day) { return day > monthAgo; });

    TelemetryParameters parameters{
        {QStringLiteral("Tallyhub.Retention.totalSessionsCount"),
         QString::number(recentSessions.size() + deletedSessionsCount)},
        {QStringLiteral("Tallyhub.Retention.averageSessionSeconds"),
         QString::number(averageSeconds)},
        {QStringLiteral("Tallyhub.Retention.distinctDaysUsed"),
         QString::number(distinctDaysUsed.size())},
        {QStringLiteral("Tallyhub.Retention.distinctDaysUsedLastMonth"),
         QString::number(daysLastMonth)},
    };
    // The newest stored session that is not the running one.
    for (auto it = recentSessions.rbegin(); it != recentSessions.rend(); ++it) {
        if (it->startedAt != currentSessionStartedAt) {
            parameters.insert(QStringLiteral("Tallyhub.Retention.previousSessionSeconds"),
                              QString::number(it->durationInSeconds));
            break;
        }
    }
    if (!firstSessionDate.isEmpty()) {
        parameters.insert(QStringLiteral("Tallyhub.Acquisition.firstSessionDate"),
                          firstSessionDate);
    }
    return parameters;
}
