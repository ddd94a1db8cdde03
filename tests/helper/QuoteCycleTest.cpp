#include "helper/QuoteCycle.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

namespace {

using State = QBQuoteCycle::State;
using Uids = std::vector<std::string_view>;
// A multiset, so a quote picked twice shows up as a difference.
using Picks = std::multiset<std::string>;

Picks advanceTimes(State& state, const Uids& uids, int times,
                   const QBQuoteCycle::Acceptance& accept = {})
{
    Picks picked;
    for (int i = 0; i < times; ++i) {
        picked.insert(QBQuoteCycle::advance(state, uids, accept));
    }
    return picked;
}

Picks picksOf(const Uids& uids)
{
    return Picks(uids.cbegin(), uids.cend());
}

TEST(QuoteCycleTest, EveryQuoteOnceARoundAndTheRoundFollowsTheCollection)
{
    const Uids all{"a", "b", "c", "d", "e"};
    State rounds;
    for (int round = 0; round < 20; ++round) {
        ASSERT_EQ(advanceTimes(rounds, all, 5), picksOf(all)) << "round " << round;
    }
    // Two quotes: a new round never opens with the quote that closed the last one.
    State pair;
    std::string last;
    for (int i = 0; i < 200; ++i) {
        const std::string picked = QBQuoteCycle::advance(pair, {"x", "y"});
        ASSERT_NE(picked, last) << "pick " << i;
        last = picked;
    }

    // One quote removed and three added after the first pick: the removed one never
    // comes again, the new ones come as often as the others.
    State changing;
    const std::string first = QBQuoteCycle::advance(changing, all);
    const std::string removed = first == "a" ? "b" : "a";
    Uids now{"new", "newer", "newest"};
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(now),
                 [&](std::string_view uid) { return uid != removed; });
    std::map<std::string, int> counts;
    for (int i = 0; i < 3 * 7; ++i) {
        ++counts[QBQuoteCycle::advance(changing, now)];
    }
    EXPECT_EQ(counts.count(removed), 0u);
    EXPECT_EQ(counts.size(), now.size());
    for (const auto& [uid, count] : counts) {
        EXPECT_TRUE(count >= 2 && count <= 4) << uid << " came " << count << " times";
    }

    // The same UID twice in the collection still comes once a round.
    State twice;
    EXPECT_EQ(advanceTimes(twice, {"p", "q", "p"}, 2), (Picks{"p", "q"}));

    State empty;
    EXPECT_EQ(QBQuoteCycle::advance(empty, Uids{}), std::string());
    EXPECT_EQ(advanceTimes(empty, {"only"}, 2), (Picks{"only", "only"}));
}

TEST(QuoteCycleTest, RefusedQuotesArePassedOverAndNoneTakenGivesNothing)
{
    const Uids all{"a", "fits", "c", "also fits", "e", "f"};
    const auto fitting = [&all](std::size_t index) {
        return all[index].find("fits") != all[index].npos;
    };
    State state;
    for (int round = 0; round < 30; ++round) {
        ASSERT_EQ(advanceTimes(state, all, 2, fitting), (Picks{"fits", "also fits"}))
            << "round " << round;
    }
    // Nothing fits: nothing is picked, and a later pick without limits still works.
    EXPECT_EQ(QBQuoteCycle::advance(state, all, [](std::size_t) { return false; }), "");
    EXPECT_EQ(advanceTimes(state, all, 6), picksOf(all));
}

TEST(QuoteCycleTest, TheStateStaysSmallRoundTripsAnyUidAndAForeignTextStartsANewRound)
{
    // The state of a round through 100,000 quotes is as small as that of three.
    std::vector<std::string> many;
    for (int i = 0; i < 100000; ++i) {
        many.push_back("00000000-0000-4000-8000-" + std::to_string(100000000000 + i));
    }
    State big;
    QBQuoteCycle::advance(big, Uids(many.cbegin(), many.cend()));
    QBQuoteCycle::advance(big, Uids(many.cbegin(), many.cend()));
    EXPECT_LT(QBQuoteCycle::serialize(big).size(), 150u);

    const State state{0x1234abcdULL, ~0ULL, "two\nlines \\ back\\slash", "\\n"};
    const std::string text = QBQuoteCycle::serialize(state);
    EXPECT_EQ(text, "quillbox2-cycle 2\n1234abcd\nffffffffffffffff\ntwo\\nlines \\\\ "
                    "back\\\\slash\n\\\\n\n");
    const State back = QBQuoteCycle::parse(text);
    EXPECT_EQ(std::tie(back.key, back.cursor, back.cursorUid, back.previousRoundLast),
              std::tie(state.key, state.cursor, state.cursorUid, state.previousRoundLast));

    // Damaged, empty, the earlier list of UIDs or its JSON: no state, so a new round.
    for (const char* foreign : {"", "{\"remaining\":[\"a\"],\"shown\":[]}", "a\nb\n\nc\n",
                                "quillbox2-cycle 2\nxyz\n0\n\n\n", "quillbox2-cycle 2\n1\n2\n"}) {
        EXPECT_EQ(QBQuoteCycle::parse(foreign).key, 0u) << foreign;
    }
}

} // namespace
