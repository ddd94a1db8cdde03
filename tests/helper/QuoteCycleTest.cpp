#include "helper/QuoteCycle.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

namespace {

using State = QBQuoteCycle::State;
using Uids = std::vector<std::string_view>;

std::set<std::string> setOf(const std::vector<std::string>& list)
{
    return std::set<std::string>(list.cbegin(), list.cend());
}

std::string serialized(const State& state)
{
    std::string text;
    QBQuoteCycle::serialize(state, [&text](std::string_view piece) {
        text.append(piece);
        return true;
    });
    return text;
}

std::vector<std::string> strings(const std::vector<std::string_view>& views)
{
    return std::vector<std::string>(views.cbegin(), views.cend());
}

std::set<std::string> setOf(const Uids& list)
{
    return std::set<std::string>(list.cbegin(), list.cend());
}

std::vector<std::string> advanceTimes(State& state, const Uids& uids, int times)
{
    std::vector<std::string> picked;
    for (int i = 0; i < times; ++i) {
        picked.push_back(QBQuoteCycle::advance(state, uids));
    }
    return picked;
}

TEST(QuoteCycleTest, EveryQuoteOnceARoundAndTheRoundFollowsTheCollection)
{
    const Uids all{"a", "b", "c", "d"};
    State state;
    for (int round = 0; round < 3; ++round) {
        const std::vector<std::string> picked = advanceTimes(state, all, 4);
        EXPECT_EQ(setOf(picked), setOf(all)) << "round " << round;
    }

    // Two quotes: a new round never opens with the quote that closed the last one.
    State pair;
    const std::vector<std::string> picked = advanceTimes(pair, {"x", "y"}, 200);
    for (std::size_t i = 1; i < picked.size(); ++i) {
        ASSERT_NE(picked[i], picked[i - 1]) << "pick " << i;
    }

    // Mid-round a quote still to come is removed and new ones added: the rest of the
    // round is exactly the quotes not yet shown, and those already due keep their order.
    State changing;
    const std::string first = QBQuoteCycle::advance(changing, all);
    const std::string removed(changing.remaining.front());
    Uids now;
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(now),
                 [&removed](std::string_view uid) { return uid != removed; });
    now.insert(now.end(), {"new", "newer", "newest"});
    const std::vector<std::string> dueBefore(changing.remaining.cbegin() + 1,
                                             changing.remaining.cend());
    std::set<std::string> rest = setOf(now);
    rest.erase(first);
    const std::vector<std::string> restOfRound = advanceTimes(changing, now, 5);
    EXPECT_EQ(setOf(restOfRound), rest);
    std::vector<std::string> dueAfter;
    std::copy_if(restOfRound.cbegin(), restOfRound.cend(), std::back_inserter(dueAfter),
                 [&dueBefore](const std::string& uid) {
                     return std::find(dueBefore.cbegin(), dueBefore.cend(), uid) !=
                            dueBefore.cend();
                 });
    EXPECT_EQ(dueAfter, dueBefore);
    EXPECT_EQ(setOf(advanceTimes(changing, now, 6)), setOf(now)); // then a full round

    // The same UID twice in the collection still comes once a round.
    State twice;
    EXPECT_EQ(setOf(advanceTimes(twice, {"p", "q", "p"}, 2)), setOf(Uids{"p", "q"}));

    State empty;
    EXPECT_EQ(QBQuoteCycle::advance(empty, {}), std::string());
    EXPECT_EQ(QBQuoteCycle::advance(empty, {"only"}), "only");
    EXPECT_EQ(QBQuoteCycle::advance(empty, {"only"}), "only");
}

TEST(QuoteCycleTest, TheStateTextRoundTripsAnyUidAndAForeignTextStartsANewRound)
{
    const State state{{"a", "back\\slash", "two\nlines", "\\n"}, {"shown", "x\\"}, {}};
    const std::string text = serialized(state);
    EXPECT_EQ(text, "a\nback\\\\slash\ntwo\\nlines\n\\\\n\n\nshown\nx\\\\\n");
    const State back = QBQuoteCycle::parse(text);
    EXPECT_EQ(back.remaining, state.remaining);
    EXPECT_EQ(back.shown, state.shown);

    const std::string allShownText =
        serialized({{}, {"a", "b"}, {}}); // the state's views point in here
    const State allShown = QBQuoteCycle::parse(allShownText);
    EXPECT_TRUE(allShown.remaining.empty());
    EXPECT_EQ(strings(allShown.shown), (std::vector<std::string>{"a", "b"}));

    // Written in pieces of 64 KiB: a large state comes back whole.
    std::vector<std::string> many;
    for (int i = 0; i < 5000; ++i) {
        many.push_back("uid-" + std::to_string(i) + std::string(30, 'x'));
    }
    const State large{
        {many.cbegin(), many.cbegin() + 3000}, {many.cbegin() + 3000, many.cend()}, {}};
    int pieces = 0;
    std::string largeText;
    EXPECT_TRUE(QBQuoteCycle::serialize(large, [&](std::string_view piece) {
        ++pieces;
        largeText.append(piece);
        return true;
    }));
    EXPECT_GT(pieces, 1);
    const State largeBack = QBQuoteCycle::parse(largeText);
    EXPECT_EQ(strings(largeBack.remaining),
              std::vector<std::string>(many.cbegin(), many.cbegin() + 3000));
    EXPECT_EQ(largeBack.shown.size(), 2000U);
    EXPECT_FALSE(QBQuoteCycle::serialize(large, [](std::string_view) { return false; }));

    for (const char* foreign : {"", "{\"remaining\":[\"a\"],\"shown\":[]}", "a\nb\n"}) {
        const State parsed = QBQuoteCycle::parse(foreign);
        EXPECT_TRUE(parsed.remaining.empty() && parsed.shown.empty()) << foreign;
    }
}

TEST(QuoteCycleTest, ARestartContinuesTheRoundFromTheFile)
{
    QBTestHome home;
    const QString path = home.filePath(QStringLiteral("cycle"));
    const Uids all{"a", "b", "c", "d"};
    std::vector<std::string> picked{QBQuoteCycle(path).next(all), QBQuoteCycle(path).next(all)};
    QBQuoteCycle again(path);
    picked.push_back(again.next(all));
    picked.push_back(again.next(all));
    EXPECT_EQ(setOf(picked), setOf(all));
    const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                            QFileDevice::ReadOther | QFileDevice::WriteOther;
    EXPECT_EQ(QFile::permissions(path) & others, QFileDevice::Permissions());
    EXPECT_EQ(QDir(home.path()).entryList(QDir::Files).size(), 2) << "cycle and its lock only";

    ASSERT_TRUE(writeFileBytes(path, "not a cycle")); // a damaged file starts a new round
    const std::string first = QBQuoteCycle(path).next(all);
    EXPECT_NE(std::find(all.cbegin(), all.cend(), first), all.cend());
    const std::string text = readFileBytes(path).toStdString();
    EXPECT_EQ(strings(QBQuoteCycle::parse(text).shown), std::vector<std::string>{first});
}

} // namespace
