#pragma once

#include <QByteArray>
#include <QString>

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// A shuffled order of quote UIDs in which every quote comes once before any comes
// again. The state (the UIDs still to come and those already shown in this round) is
// kept in a file so a restart continues the round, and it follows the collection: a
// removed quote drops out, a new one joins the rest of the round at a random place.
// Several processes (the running helper, --print) share the file under a lock.
//
// UIDs are handled as views into the texts they come from (the collection, the state
// file), so a step over ten thousand quotes copies none of them.
class QBQuoteCycle
{
public:
    explicit QBQuoteCycle(const QString& statePath);

    // The next UID among |uids| (the collection as it is now, order and repeats do not
    // matter), or an empty text when |uids| is empty. Reads the state first and writes
    // it back after.
    std::string next(const std::vector<std::string_view>& uids);

    // The same step on explicit state, without a file. The state's views may point into
    // |uids| afterwards.
    struct State
    {
        std::vector<std::string_view> remaining;
        std::vector<std::string_view> shown;
        std::deque<std::string> storage; // texts of UIDs that had to be unescaped
    };
    static std::string advance(State& state, const std::vector<std::string_view>& uids);

    // The file's text: a UID a line (backslash and line break escaped), the quotes still
    // to come, an empty line, the quotes shown. It is handed to |write| in pieces; false
    // from |write| stops. A text without the empty line (a damaged or foreign file)
    // reads as an empty state, which starts a new round; the state may point into |text|.
    static bool serialize(const State& state, const std::function<bool(std::string_view)>& write);
    static State parse(std::string_view text);

private:
    void save(const State& state) const;

    QString mStatePath;
    QByteArray mEncodedStatePath;
};
