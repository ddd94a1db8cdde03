#include "helper/QuoteSource.h"
#include "HelperWorld.h"
#include "TestHome.h"
#include "core/FileIdentity.h"
#include "core/QuotesDocument.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <future>
#include <set>
#include <thread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Access = QBHelperQuoteSource::Access;
constexpr Access kAccesses[] = {Access::Mapped, Access::Copied};

// The in-place read and the application's full reader pick alike and share one cycle.
TEST(QuoteSourceTest, BothReadersAndBothAccessesShareOneCycle)
{
    QBTestHome home;
    const QStringList texts{QStringLiteral("One"), QStringLiteral("Two — 2"),
                            QStringLiteral("Three\n3")};
    const QStringList uids = helperworld::writeQuotes(texts);
    const auto content = [](Access access) {
        const QBHelperQuoteSource::Pick pick = QBHelperQuoteSource::nextQuote(access);
        EXPECT_TRUE(pick.problem.isEmpty()) << pick.problem.toStdString();
        return QString::fromStdString(pick.content.value_or(std::string()));
    };
    std::multiset<QString> round{content(Access::Mapped), content(Access::Copied)};
    // The same quotes on one line, which only the full reader takes: the round goes on.
    QByteArray compact = "{\"Quotes\":[";
    for (qsizetype i = 0; i < texts.size(); ++i) {
        compact += (i ? ",{\"UID\":\"" : "{\"UID\":\"") + uids[i].toUtf8() + "\",\"Content\":\"" +
                   texts[i].toUtf8().replace('\n', "\\n") + "\"}";
    }
    ASSERT_TRUE(writeFileBytes(helperworld::quotesDbPath(), compact + "]}"));
    round.insert(content(Access::Mapped));
    EXPECT_EQ(round, std::multiset<QString>(texts.cbegin(), texts.cend()));

    // UIDs the full reader replaces or decodes: the pick follows its records.
    for (const auto& [uid, text] : std::vector<std::pair<std::string, std::string>>{
             {"", "made up UID"},
             {"a\\/b", "escaped UID"},
             {"caf\\u00e9", "\\u00e9 \\ud83d\\ude00"}}) {
        const std::string document =
            R"({"Quotes": [{"UID": ")" + uid + R"(", "Content": ")" + text + R"("}]})";
        std::vector<CQuoteRecord> expected;
        readQuotesDocument(document, "test", expected);
        ASSERT_EQ(expected.size(), 1u);
        ASSERT_TRUE(
            writeFileBytes(helperworld::quotesDbPath(), QByteArray::fromStdString(document)));
        for (const Access access : kAccesses) {
            EXPECT_EQ(QBHelperQuoteSource::nextQuote(access).content, expected[0].mContent)
                << document;
        }
    }
}

// --print keeps the round's order beside the cycle and reads it instead of the collection
// while the database file is the same; any other file makes a new one.
TEST(QuoteSourceTest, TheKeptOrderServesWholeRoundsAndFollowsANewDatabase)
{
    QBTestHome home;
    QStringList texts;
    for (int i = 0; i < 7; ++i) {
        texts.append(QStringLiteral("Quote %1 — %2").arg(i).arg(QString(i, u'x')));
    }
    helperworld::writeQuotes(texts);
    const QString orderPath = QBHelperQuoteSource::cycleStatePath() + u"-order"_s;
    const auto round = [](int picks) {
        std::multiset<QString> picked;
        for (int i = 0; i < picks; ++i) {
            const QBHelperQuoteSource::Pick pick = QBHelperQuoteSource::nextQuote(Access::Mapped);
            picked.insert(QString::fromStdString(pick.content.value_or("none")));
        }
        return picked;
    };
    const std::multiset<QString> all(texts.cbegin(), texts.cend());
    EXPECT_EQ(round(7), all);
    ASSERT_TRUE(QFileInfo::exists(orderPath));
    EXPECT_EQ(round(7), all); // a new round: a new key, a new kept order

    // Damaged or foreign bytes in the order file are not taken for an order.
    for (const QByteArray& damaged :
         {QByteArray("QB2ORDR1"), QByteArray(64 + 24, 'Q'), readFileBytes(orderPath).chopped(24)}) {
        ASSERT_TRUE(writeFileBytes(orderPath, damaged));
        EXPECT_EQ(round(7), all);
    }

    // The application replaced the database: the removed quote is gone, the new one comes.
    texts.removeFirst();
    texts.append(u"Newly added, ümlaut and all"_s);
    helperworld::writeQuotes(texts);
    // (The new quote may still come in the old round, so the rounds are not aligned.)
    const std::multiset<QString> picked = round(14);
    EXPECT_EQ(std::set<QString>(picked.cbegin(), picked.cend()),
              std::set<QString>(texts.cbegin(), texts.cend()));
    for (const QString& text : texts) {
        EXPECT_LE(picked.count(text), 3u) << text.toStdString();
    }
}

// An order of many quotes is written in blocks: the file holds every entry once, and the
// picks it serves are quotes of the collection, none twice in the round.
TEST(QuoteSourceTest, AnOrderOfManyBlocksIsKeptWholeAndServesTheRound)
{
    QBTestHome home;
    QStringList texts;
    for (int i = 0; i < 6000; ++i) { // 144 KB of entries: more than two blocks
        texts.append(QStringLiteral("Quote %1").arg(i));
    }
    helperworld::writeQuotes(texts);
    const QString orderPath = QBHelperQuoteSource::cycleStatePath() + u"-order"_s;
    const QSet<QString> collection(texts.cbegin(), texts.cend());
    QSet<QString> picked;
    std::optional<QBFileIdentity> kept;
    for (int i = 0; i < 40; ++i) {
        const QBHelperQuoteSource::Pick pick = QBHelperQuoteSource::nextQuote(Access::Mapped);
        const QString text = QString::fromStdString(pick.content.value_or("none"));
        EXPECT_TRUE(collection.contains(text)) << text.toStdString();
        picked.insert(text);
        if (i == 0) {
            kept = fileIdentityAt(orderPath.toStdString());
            ASSERT_TRUE(kept);
            ASSERT_EQ(kept->size, 64 + 24 * texts.size());
        }
    }
    EXPECT_EQ(picked.size(), 40);
    // Kept, not made again (a new order is a new file): it served every later pick.
    EXPECT_EQ(fileIdentityAt(orderPath.toStdString()), kept);
}

// quotes.db and a FIFO trade places as fast as the system lets them, so sooner or later one
// is swapped in between any look at the path and the open: no pick may wait on the FIFO
// for a writer (the helper would stop for good, a mail client running --print with it).
TEST(QuoteSourceTest, AFifoSwappedInAtAnyMomentNeverBlocksAPick)
{
    QBTestHome home;
    helperworld::writeQuotes({QStringLiteral("One"), QStringLiteral("Two")});
    const QByteArray db = QFile::encodeName(helperworld::quotesDbPath());
    const QByteArray fifo = db + ".fifo";
    ASSERT_EQ(::mkfifo(fifo.constData(), 0600), 0);
    ASSERT_EQ(::renameat2(AT_FDCWD, db.constData(), AT_FDCWD, fifo.constData(), RENAME_EXCHANGE), 0)
        << "the file system cannot exchange names";
    std::atomic<bool> swapping = true;
    std::thread swapper([&] {
        while (swapping) {
            ::renameat2(AT_FDCWD, db.constData(), AT_FDCWD, fifo.constData(), RENAME_EXCHANGE);
        }
    });
    const auto stopSwapping = [&] {
        swapping = false;
        swapper.join();
    };
    int picked = 0;
    int refused = 0;
    for (int i = 0; i < 500; ++i) {
        for (const Access access : kAccesses) {
            std::future<QBHelperQuoteSource::Pick> pick = std::async(
                std::launch::async, [access] { return QBHelperQuoteSource::nextQuote(access); });
            if (pick.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
                stopSwapping();
                // A writer lets the waiting open return, so the test can end.
                for (const QByteArray& name : {db, fifo}) {
                    const int writer = ::open(name.constData(), O_WRONLY | O_NONBLOCK);
                    if (writer >= 0) {
                        ::close(writer);
                    }
                }
                FAIL() << "pick " << i << " waited on the FIFO for a writer";
            }
            const QBHelperQuoteSource::Pick result = pick.get();
            if (result.content) {
                ++picked;
            } else {
                EXPECT_TRUE(result.problem.endsWith(QStringLiteral("is not a regular file")))
                    << result.problem.toStdString();
                ++refused;
            }
        }
    }
    stopSwapping();
    EXPECT_GT(picked, 0);
    EXPECT_GT(refused, 0);
}

} // namespace
