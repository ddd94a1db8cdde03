#pragma once

#include "TelemetryTypes.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

// One finished or running session as kept on disk.
struct StoredSession
{
    QDateTime startedAt;
    qint64 durationInSeconds = 0;

    bool operator==(const StoredSession& other) const = default;
};

// The device's recent session history and the acquisition and retention figures derived
// from it. Plain data and arithmetic; SessionManager decides when things happen.
struct SessionHistory
{
    static constexpr qint64 kMaximumSessionAgeSeconds = 90 * 24 * 60 * 60;
    static constexpr int kLastMonthDays = 30;

    QList<StoredSession> recentSessions; // oldest first
    qint64 deletedSessionsCount = 0;
    QString firstSessionDate; // empty until the first session
    QStringList distinctDaysUsed;

    // "yyyy-MM-dd" of |moment| in the local time zone.
    static QString dayText(const QDateTime& moment);

    // JSON array of {"startedAt": ISO 8601 UTC text with milliseconds, "durationInSeconds"};
    // undecodable data gives an empty list.
    static QByteArray encodeSessions(const QList<StoredSession>& sessions);
    static QList<StoredSession> decodeSessions(const QByteArray& json);

    // Drops sessions that began more than 90 days before |now| and counts them.
    void dropSessionsOlderThan(const QDateTime& now);
    // Appends |day| unless it is already the last day recorded; true when appended.
    bool recordDayOfUse(const QString& day);
    // Updates the entry that began at the same moment, or appends a new one.
    void recordSession(const StoredSession& session);

    // Total, average and previous session length, days used (all and last 30 days) and
    // the first session's day; |currentSessionStartedAt| tells the running session apart.
    TelemetryParameters retentionParameters(const QDateTime& now,
                                            const QDateTime& currentSessionStartedAt) const;
};
