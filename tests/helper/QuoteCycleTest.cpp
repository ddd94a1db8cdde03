#include "helper/QuoteCycle.h"

#include <set>

#include <gtest/gtest.h>

namespace {

using State = QBQuoteCycle::State;
using Uids = std::vector<std::string_view>;
// A multiset, so a quote picked twice shows up as a difference.
using Picks = std::multiset<std::string>;

Picks advanceTimes(State& state, const Uids& uids, int times)
{
    Picks picked;
    for (int i = 0; i < times; ++i) {
        picked.insert(QBQuoteCycle::advance(state, uids));
    }
    return picked;
}

Picks picksOf(const Uids& uids)
{
    return Picks(uids.cbegin(), uids.cend());
}

TEST(QuoteCycleTest, EveryQuoteOnceARoundAndTheRoundFollowsTheCollection)
{
    const Uids all{"a", "b", "c", "d"};
    // Two quotes: a new round never opens with the quote that closed the last one.
    State pair;
    std::string last;
    for (int i = 0; i < 200; ++i) {
        const std::string picked = QBQuoteCycle::advance(pair, {"x", "y"});
        ASSERT_NE(picked, last) << "pick " << i;
        last = picked;
    }

    // One quote to come removed, three added: the round ends with the unshown ones.
    State changing;
    const std::string first = QBQuoteCycle::advance(changing, all);
    const std::string removed(changing.remaining.front());
    Uids now{"new", "newer", "newest"};
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(now),
                 [&](std::string_view uid) { return uid != removed; });
    Picks rest = picksOf(now);
    rest.erase(first);
    EXPECT_EQ(advanceTimes(changing, now, 5), rest);
    EXPECT_EQ(advanceTimes(changing, now, 6), picksOf(now));

    // The same UID twice in the collection still comes once a round.
    State twice;
    EXPECT_EQ(advanceTimes(twice, {"p", "q", "p"}, 2), (Picks{"p", "q"}));

    State empty;
    EXPECT_EQ(QBQuoteCycle::advance(empty, {}), std::string());
    EXPECT_EQ(advanceTimes(empty, {"only"}, 2), (Picks{"only", "only"}));
}

TEST(QuoteCycleTest, TheStateTextRoundTripsAnyUidAndAForeignTextStartsANewRound)
{
    const State state{{"a", "back\\slash", "two\nlines", "\\n"}, {"shown", "x\\"}, {}};
    std::string text;
    EXPECT_TRUE(QBQuoteCycle::serialize(state, [&](std::string_view piece) {
        text.append(piece);
        return true;
    }));
    EXPECT_EQ(text, "a\nback\\\\slash\ntwo\\nlines\n\\\\n\n\nshown\nx\\\\\n");
    const State back = QBQuoteCycle::parse(text);
    EXPECT_EQ(back.remaining, state.remaining);
    EXPECT_EQ(back.shown, state.shown);

    EXPECT_FALSE(QBQuoteCycle::serialize(state, [](std::string_view) { return false; }));

    // Damaged, empty or the first version's JSON: an empty state, so a new round.
    for (const char* foreign : {"", "{\"remaining\":[\"a\"],\"shown\":[]}", "a\nb\n"}) {
        const State parsed = QBQuoteCycle::parse(foreign);
        EXPECT_TRUE(parsed.remaining.empty() && parsed.shown.empty()) << foreign;
    }
}

} // namespace
