#include "HelperWorld.h"
#include "TestHome.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/HelperSchedule.h"
#include "signature/LoginItemService.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"
#include "signature/SignatureComposer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace {

using namespace helperworld;

class HelperProcessTest : public ::testing::Test
{
protected:
    // The signatures of mTexts, sorted.
    QList<QByteArray> expectedSignatures() const
    {
        QList<QByteArray> expected;
        for (const QString& text : mTexts) {
            expected.append(signatureOf(text));
        }
        std::sort(expected.begin(), expected.end());
        return expected;
    }
    static int logCount(const char* needle)
    {
        return static_cast<int>(helperLogText().count(QString::fromUtf8(needle)));
    }
    static void turnOn(double intervalSeconds)
    {
        setSuiteValue(QBDefaultsAutoRandomize, true);
        setSuiteValue(QBDefaultsRandomizeInterval, intervalSeconds);
    }

    QBTestHome mHome;
    QStringList mTexts{QStringLiteral("First quote"), QStringLiteral("Second\nquote, two lines"),
                       QStringLiteral("Third — ☃ %s"), QStringLiteral("Fourth"),
                       QStringLiteral("Fifth, with its own newline\n")};
};

TEST_F(HelperProcessTest, CommandLineAndPrintGoingThroughEveryQuoteBeforeAnyRepeats)
{
    const std::tuple<QStringList, int, QByteArray, QByteArray> cases[] = {
        {{QStringLiteral("--version")}, 0, "quillbox2-helper 0.1.0\n", {}},
        {{QStringLiteral("--bogus")}, 1, {}, "Unknown option 'bogus'"},
        // No database: the log line goes to standard error, nothing to standard output.
        {{QStringLiteral("--print")}, 1, {}, "No quotes database at"}};
    for (const auto& [arguments, exitCode, out, err] : cases) {
        const HelperRun run = runHelper(arguments);
        EXPECT_EQ(run.exitCode, exitCode) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(out.isEmpty() ? run.out.isEmpty() : run.out.contains(out)) << run.out.data();
        EXPECT_TRUE(run.err.contains(err)) << run.err.data();
    }

    // Every --print is a new process: the round lives in the cycle file.
    writeQuotes(mTexts);
    for (int round = 0; round < 2; ++round) {
        QList<QByteArray> printed;
        for (int call = 0; call < mTexts.size(); ++call) {
            const HelperRun run = runHelper({QStringLiteral("--print")});
            EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
            printed.append(run.out);
        }
        std::sort(printed.begin(), printed.end());
        EXPECT_EQ(printed, expectedSignatures()) << "round " << round;
    }
}

TEST_F(HelperProcessTest, NextWritesAndPrintsTheCyclesQuoteAndTheHelperRecordsItsSchedule)
{
    writeQuotes(mTexts);
    const std::tuple<QStringList, QByteArray> refusals[] = {
        {{QStringLiteral("--next")}, "Failed to read security scoped bookmark"},
        {{QStringLiteral("--print"), QStringLiteral("--next")}, "cannot be used together"}};
    for (const auto& [arguments, err] : refusals) {
        const HelperRun run = runHelper(arguments);
        EXPECT_EQ(run.exitCode, 1) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(run.out.isEmpty()) << run.out.data();
        EXPECT_TRUE(run.err.contains(err)) << run.err.data();
    }

    // --next and --print take turns in one round: together they repeat nothing.
    const QString file = makeBookmarkedSignatureFile();
    QList<QByteArray> shown;
    for (int call = 0; call < mTexts.size(); ++call) {
        const bool next = call % 2 == 0;
        const HelperRun run =
            runHelper({next ? QStringLiteral("--next") : QStringLiteral("--print")});
        ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
        if (next) {
            QFile written(file);
            ASSERT_TRUE(written.open(QIODevice::ReadOnly));
            EXPECT_EQ(written.readAll(), run.out);
        }
        shown.append(run.out);
    }
    std::sort(shown.begin(), shown.end());
    EXPECT_EQ(shown, expectedSignatures());

    // The running helper tells when it changes the signature next.
    turnOn(30);
    RunningHelper helper;
    ASSERT_TRUE(QTest::qWaitFor([] { return QBHelperSchedule::readNextChange().isValid(); }, 5000));
    const qint64 ahead =
        QDateTime::currentDateTimeUtc().msecsTo(QBHelperSchedule::readNextChange());
    EXPECT_GT(ahead, 25000);
    EXPECT_LE(ahead, 30000);
    EXPECT_TRUE(helper.terminate());
}

TEST_F(HelperProcessTest, RotatesOnlyOnceAtATimeUntilTurnedOffOrTerminated)
{
    writeQuotes(mTexts);
    const QString signature = makeBookmarkedSignatureFile();
    turnOn(1);
    RunningHelper helper;

    // Written at start, then every second: another quote within 3 s, and only whole ones.
    QSet<QByteArray> seen;
    const auto collect = [&] {
        const QByteArray bytes = readFileBytes(signature);
        EXPECT_TRUE(bytes.isEmpty() || expectedSignatures().contains(bytes)) << bytes.toStdString();
        if (!bytes.isEmpty()) {
            seen.insert(bytes);
        }
        return seen.size() >= 2;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return collect(); }, 3000));
    EXPECT_EQ(QBLoginItemService::runningHelperProcessId(), helper.pid());

    const HelperRun second = runHelper({});
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_TRUE(second.out.contains(
        QStringLiteral("Another quillbox2-helper is already running (process %1); exiting")
            .arg(helper.pid())
            .toUtf8()))
        << second.out.toStdString();
    EXPECT_EQ(helper.process().state(), QProcess::Running);

    setSuiteValue(QBDefaultsAutoRandomize, false); // noticed without polling
    ASSERT_TRUE(helper.process().waitForFinished(5000));
    EXPECT_EQ(helper.process().exitCode(), 0);
    EXPECT_EQ(logCount("Auto-randomize is off: the helper is not needed and exits"), 1);
    EXPECT_EQ(QBLoginItemService::runningHelperProcessId(), 0);

    setSuiteValue(QBDefaultsAutoRandomize, true);
    RunningHelper again;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return QBLoginItemService::runningHelperProcessId() == again.pid(); }, 5000));
    EXPECT_TRUE(again.terminate());
    EXPECT_EQ(logCount("Stopping on signal 15"), 1);
    EXPECT_EQ(logCount("Helper stopped."), 2);
}

TEST_F(HelperProcessTest, AReaderInATightLoopNeverSeesAnEmptyOrPartialSignature)
{
    // Lengths far apart, so a partial or mixed read could not pass for a whole quote.
    mTexts = {QStringLiteral("short"), QString(20000, QLatin1Char('x')),
              QString(3000, QLatin1Char('y')), QStringLiteral("medium ").repeated(40)};
    writeQuotes(mTexts);
    const QString signature = makeBookmarkedSignatureFile();
    turnOn(0.1);
    RunningHelper helper;
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo(signature).size() > 0; }, 5000));

    const QList<QByteArray> expected = expectedSignatures();
    QSet<QByteArray> seen;
    int reads = 0;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 2000) {
        QFile file(signature);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        ASSERT_TRUE(expected.contains(bytes))
            << "read " << reads << ": " << bytes.size() << " bytes";
        seen.insert(bytes);
        ++reads;
    }
    EXPECT_GE(seen.size(), 3) << reads << " reads"; // it kept rewriting meanwhile
}

TEST_F(HelperProcessTest, MissingOrDamagedDataAndAStaleBookmarkAreLoggedOnceAndRetried)
{
    const QString signature = makeBookmarkedSignatureFile();
    turnOn(0.2);
    RunningHelper helper;
    ASSERT_TRUE(QTest::qWaitFor([&] { return logCount("No quotes database at") == 1; }, 5000));

    ASSERT_TRUE(writeFileBytes(quotesDbPath(), "{\"Quotes\": [ {\"UID\": "));
    ASSERT_TRUE(QTest::qWaitFor([&] { return logCount("cannot be read") == 1; }, 5000));
    writeQuotes({});
    ASSERT_TRUE(QTest::qWaitFor([&] { return logCount("holds no quotes") == 1; }, 5000));

    // Another program saved the signature file through a rename: the bookmark is stale.
    writeQuotes(mTexts);
    ASSERT_TRUE(writeFileBytes(signature + QStringLiteral(".new"), "someone else's"));
    ASSERT_TRUE(QFile::remove(signature) &&
                QFile::rename(signature + QStringLiteral(".new"), signature));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return logCount("Failed to resolve bookmark: Data is stale") == 1; }, 5000));
    QTest::qWait(1000); // five more intervals: retried, but not logged again
    EXPECT_EQ(logCount("No quotes database at"), 1);
    EXPECT_EQ(logCount("cannot be read"), 1);
    EXPECT_EQ(logCount("holds no quotes"), 1);
    EXPECT_EQ(logCount("Failed to resolve bookmark: Data is stale"), 1);
    EXPECT_EQ(readFileBytes(signature), QByteArray("someone else's"));
    EXPECT_EQ(helper.process().state(), QProcess::Running);

    makeBookmarkedSignatureFile(); // the user chose the file again
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return expectedSignatures().contains(readFileBytes(signature)); }, 5000));
}

TEST_F(HelperProcessTest, TheApplicationTheRotationAndPrintWriteTheSameComposedBytes)
{
    // Only the first quote fits in two lines of twenty cells.
    const QString fitting = QStringLiteral("Short & <sweet> 漢字");
    const QString tooLong =
        QStringLiteral("A quote that takes more than two lines once wrapped at twenty");
    writeQuotes({fitting, tooLong});
    const QString signature = makeBookmarkedSignatureFile();
    setSuiteValue(QBDefaultsSignatureTemplate, QStringLiteral("Jane Doe · +1 555 0100\n{quote}"));
    setSuiteValue(QBDefaultsSignatureWrapColumn, 20);
    setSuiteValue(QBDefaultsSignatureMaxLines, 2);
    // What Use as Signature writes, by the same settings.
    QString written = signature;
    const auto appWrites = [&written](const QString& quote, bool fits) {
        QBComposedSignature composed;
        EXPECT_TRUE(QBCurrentSignatureFileHelper::writeQuoteAsSignature(
            quote, QBSharedUserDefaults(QBSharedUserDefaults::suitePath()).suiteUserDefaults(),
            &composed));
        EXPECT_EQ(composed.fits, fits) << quote.toStdString();
        return readFileBytes(written);
    };
    const QByteArray plain = appWrites(fitting, true);
    EXPECT_EQ(plain, QByteArray("Jane Doe · +1 555 0100\nShort & <sweet> 漢字\n"));
    // The quote that does not fit is written when the user asks for it, never by the helper.
    EXPECT_EQ(appWrites(tooLong, false),
              QByteArray("Jane Doe · +1 555 0100\nA quote that takes\nmore than two lines\n"
                         "once wrapped at\ntwenty\n"));
    for (int call = 0; call < 3; ++call) {
        const HelperRun run = runHelper({QStringLiteral("--print")});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_EQ(run.out, plain) << "call " << call;
    }
    // --next composes and skips the same way, into the file and onto standard output.
    const HelperRun next = runHelper({QStringLiteral("--next")});
    EXPECT_EQ(next.exitCode, 0) << next.err.toStdString();
    EXPECT_EQ(next.out, plain);
    EXPECT_EQ(readFileBytes(signature), plain);
    turnOn(0.2);
    {
        RunningHelper helper;
        ASSERT_TRUE(QTest::qWaitFor([&] { return readFileBytes(signature) == plain; }, 5000));
    }

    // An .html file gets the fragment from the application and the helper alike; standard
    // output stays plain text.
    const QString html = QFileInfo(signature).absolutePath() + QStringLiteral("/sig.html");
    QBCurrentSignatureFileHelper::createSecurityScopedBookmarkForPath(QUrl::fromLocalFile(html));
    setSuiteValue(QBDefaultsSignatureOutputPath, html);
    written = html;
    const QByteArray fragment = appWrites(fitting, true);
    EXPECT_EQ(fragment, QByteArray("<div class=\"quillbox2-signature\">Jane Doe · +1 555 0100"
                                   "<div class=\"quillbox2-quote\">Short &amp; &lt;sweet&gt; 漢字"
                                   "</div></div>\n"));
    ASSERT_TRUE(writeFileBytes(html, "old"));
    {
        RunningHelper helper;
        ASSERT_TRUE(QTest::qWaitFor([&] { return readFileBytes(html) == fragment; }, 5000));
    }
    EXPECT_EQ(runHelper({QStringLiteral("--print")}).out, plain);

    // No quote fits: nothing is printed or written, and both say why.
    setSuiteValue(QBDefaultsSignatureWrapColumn, 10);
    const HelperRun none = runHelper({QStringLiteral("--print")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.out.isEmpty());
    EXPECT_TRUE(none.err.contains("None of the 2 quotes fits in the signature's 2 lines"))
        << none.err.toStdString();
    ASSERT_TRUE(writeFileBytes(html, "old"));
    const HelperRun noneNext = runHelper({QStringLiteral("--next")});
    EXPECT_EQ(noneNext.exitCode, 1);
    EXPECT_TRUE(noneNext.out.isEmpty());
    EXPECT_TRUE(noneNext.err.contains("None of the 2 quotes fits")) << noneNext.err.toStdString();
    EXPECT_EQ(readFileBytes(html), QByteArray("old"));
    RunningHelper helper;
    ASSERT_TRUE(QTest::qWaitFor([&] { return logCount("None of the 2 quotes fits") == 1; }, 5000));
    EXPECT_EQ(readFileBytes(html), QByteArray("old"));
}

} // namespace
