#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A shuffled order of quote UIDs in which every quote comes once before any comes
// again. A round's order is that of a keyed hash of the UIDs (a random key per round),
// so the state is only the key and how far the round has gone: its size and the cost
// of saving it do not grow with the collection. It follows the collection by itself: a
// removed quote drops out, a new one takes a random place in the round (still this round
// when that place lies ahead, otherwise in the next). The state is kept in a file so a
// restart continues the round; several processes (the running helper, --print) share
// it under a lock.
class QBQuoteCycle
{
public:
    explicit QBQuoteCycle(const QString& statePath);

    // Whether the quote at an index of the collection may be shown now (for example, it
    // fits the signature's line limit); one refused is passed over for this round.
    using Acceptance = std::function<bool(std::size_t index)>;

    // A round's order: the collection's quotes sorted by their place (orderHash, then
    // UID) for one key. Random access, so a step is a binary search, and an order kept
    // in a file need not be read whole.
    class Order
    {
    public:
        virtual ~Order() = default;
        virtual std::size_t size() const = 0;
        virtual std::uint64_t hashAt(std::size_t position) const = 0;
        virtual std::string_view uidAt(std::size_t position) const = 0;
        virtual std::size_t indexAt(std::size_t position) const = 0; // into the collection
    };
    // The collection's order for a key; called again only for another key.
    using OrderForKey = std::function<const Order&(std::uint64_t key)>;
    // |uids| sorted for |key|.
    static std::unique_ptr<Order> sortedOrder(std::uint64_t key,
                                              const std::vector<std::string_view>& uids);
    // Orders of |uids| made as asked for; |uids| must outlive the result.
    static OrderForKey sortedOrders(const std::vector<std::string_view>& uids);

    // The next UID among |uids| (the collection as it is now, order and repeats do not
    // matter) that |accept| takes, or an empty text when there is none. Reads the state
    // first and writes it back after. |chosenIndex| receives the quote's index.
    std::string next(const std::vector<std::string_view>& uids, const Acceptance& accept = {},
                     std::size_t* chosenIndex = nullptr);
    // The same with the collection given as its order for a key.
    std::string next(const OrderForKey& orderFor, const Acceptance& accept = {},
                     std::size_t* chosenIndex = nullptr);

    // The same step on explicit state, without a file.
    struct State
    {
        std::uint64_t key = 0;         // the round's hash key; 0 before the first round
        std::uint64_t cursor = 0;      // the hash of the quote last shown in this round
        std::string cursorUid;         // that quote; empty when the round has just begun
        std::string previousRoundLast; // the quote that closed the round before
    };
    static std::string advance(State& state, const std::vector<std::string_view>& uids,
                               const Acceptance& accept = {});
    static std::string advance(State& state, const OrderForKey& orderFor,
                               const Acceptance& accept = {}, std::size_t* chosenIndex = nullptr);

    // The state as a few short lines, and back; a text of another form (damaged, or a
    // file of an earlier version) reads as no state, which starts a new round.
    static std::string serialize(const State& state);
    static State parse(std::string_view text);

    // A UID's place in the round of |key|.
    static std::uint64_t orderHash(std::uint64_t key, std::string_view uid);

private:
    void save(const State& state) const;

    QString mStatePath;
    QByteArray mEncodedStatePath;
};
