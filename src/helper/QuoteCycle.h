#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <string_view>
#include <vector>

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
    std::string next(const std::vector<std::string_view>& uids);

    // The same step on explicit state, without a file.
    struct State
    {
        std::vector<std::string> remaining;
        std::vector<std::string> shown;
    };
    static std::string advance(State& state, const std::vector<std::string_view>& uids);

    // The file's text: a UID a line (backslash and line break escaped), the quotes still
    // to come, an empty line, the quotes shown. A text without the empty line (a damaged
    // or foreign file) reads as an empty state, which starts a new round.
    static std::string serialize(const State& state);
    static State parse(std::string_view text);

private:
    State load() const;
    void save(const State& state) const;

    QString mStatePath;
    QByteArray mEncodedStatePath;
};
