#pragma once

#include <QString>
#include <QStringList>

// A shuffled order of quote UIDs in which every quote comes once before any comes
// again. The state (the UIDs still to come and those already shown in this round) is
// kept in a file so a restart continues the round, and it follows the collection: a
// removed quote drops out, a new one joins the rest of the round at a random place.
// Several processes (the running helper, --print) share the file under a lock.
class QBQuoteCycle
{
public:
    explicit QBQuoteCycle(const QString& statePath);

    // The next UID among |uids| (the collection as it is now), or an empty text when
    // |uids| is empty. Reads the state first and writes it back after.
    QString next(const QStringList& uids);

    // The same step on explicit state, without a file.
    struct State
    {
        QStringList remaining;
        QStringList shown;
    };
    static QString advance(State& state, const QStringList& uids);

private:
    State load() const;
    void save(const State& state) const;

    QString mStatePath;
};
