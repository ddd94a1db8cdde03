#include "helper/QuoteCycle.h"

#include "TestHome.h"

#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

namespace {

using State = QBQuoteCycle::State;

QSet<QString> setOf(const QStringList& list)
{
    return QSet<QString>(list.cbegin(), list.cend());
}

QStringList advanceTimes(State& state, const QStringList& uids, int times)
{
    QStringList picked;
    for (int i = 0; i < times; ++i) {
        picked.append(QBQuoteCycle::advance(state, uids));
    }
    return picked;
}

TEST(QuoteCycleTest, EveryQuoteOnceARoundAndTheRoundFollowsTheCollection)
{
    const QStringList all{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                          QStringLiteral("d")};
    State state;
    for (int round = 0; round < 3; ++round) {
        const QStringList picked = advanceTimes(state, all, 4);
        EXPECT_EQ(setOf(picked), setOf(all)) << "round " << round;
    }

    // Two quotes: a new round never opens with the quote that closed the last one.
    const QStringList two{QStringLiteral("x"), QStringLiteral("y")};
    State pair;
    const QStringList picked = advanceTimes(pair, two, 200);
    for (qsizetype i = 1; i < picked.size(); ++i) {
        ASSERT_NE(picked[i], picked[i - 1]) << "pick " << i;
    }

    // Mid-round a quote still to come is removed and a new one added: the rest of the
    // round is exactly the quotes not yet shown.
    State changing;
    const QString first = QBQuoteCycle::advance(changing, all);
    const QString removed = changing.remaining.first();
    QStringList now = all;
    now.removeOne(removed);
    now.append(QStringLiteral("new"));
    QSet<QString> rest = setOf(now);
    rest.remove(first);
    EXPECT_EQ(setOf(advanceTimes(changing, now, 3)), rest);
    EXPECT_EQ(setOf(advanceTimes(changing, now, 4)), setOf(now)); // then a full round

    State empty;
    EXPECT_EQ(QBQuoteCycle::advance(empty, {}), QString());
    EXPECT_EQ(QBQuoteCycle::advance(empty, {QStringLiteral("only")}), QStringLiteral("only"));
    EXPECT_EQ(QBQuoteCycle::advance(empty, {QStringLiteral("only")}), QStringLiteral("only"));
}

TEST(QuoteCycleTest, ARestartContinuesTheRoundFromTheFile)
{
    QBTestHome home;
    const QString path = home.filePath(QStringLiteral("cycle.json"));
    const QStringList all{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                          QStringLiteral("d")};
    QStringList picked{QBQuoteCycle(path).next(all), QBQuoteCycle(path).next(all)};
    QBQuoteCycle again(path);
    picked << again.next(all) << again.next(all);
    EXPECT_EQ(setOf(picked), setOf(all));
    const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                            QFileDevice::ReadOther | QFileDevice::WriteOther;
    EXPECT_EQ(QFile::permissions(path) & others, QFileDevice::Permissions());

    ASSERT_TRUE(writeFileBytes(path, "not json")); // a damaged file starts a new round
    EXPECT_TRUE(all.contains(QBQuoteCycle(path).next(all)));
}

} // namespace
