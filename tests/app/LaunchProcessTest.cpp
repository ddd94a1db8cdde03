// Runs the built quillbox2 the way a desktop session does, with HOME and XDG_* in a
// temporary folder, and ends it with the signals that sessions and terminals send.
#include "core/QuotesRepository.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <set>

namespace {

const QString kApp = QStringLiteral(QB_APP_PATH);
const QString kShutdown = QStringLiteral("Shutting down.\n");
const QString kDb = QStringLiteral(
    "xdg_data_home/group.Q8B2X4K7LM.org.quillbox2/Library/Application Support/quotes.db");

// Whether |fragments| occur in |text| in this order.
bool inOrder(const QString& text, const QStringList& fragments)
{
    qsizetype from = 0;
    for (const QString& fragment : fragments) {
        from = text.indexOf(fragment, from);
        if (from < 0) {
            return false;
        }
    }
    return true;
}

// Runs |program|, sends it |signalNumber| once logging is up (the signal watcher is
// installed by then, and the signal is handled once the event loop runs), and expects a
// normal exit with status 0 and |fragments|, then the shutdown line, in its output.
QString runApp(const QString& program, QStringList fragments, int signalNumber = SIGTERM)
{
    QProcess process;
    process.start(program, {});
    QByteArray bytes;
    while (!bytes.contains("Logging established") && process.waitForReadyRead(30000)) {
        bytes += process.readAllStandardOutput();
    }
    if (process.processId() > 0) { // 0 once it has ended: kill(0) would hit this test too
        ::kill(static_cast<pid_t>(process.processId()), signalNumber);
    }
    EXPECT_TRUE(process.waitForFinished(30000));
    const QString output = QString::fromUtf8(bytes + process.readAllStandardOutput());
    EXPECT_TRUE(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0);
    EXPECT_TRUE(inOrder(output, fragments << kShutdown)) << output.toStdString();
    return output;
}

TEST(LaunchProcessTest, FirstLaunchCopiesTheSeedAndSecondCopiesNothing)
{
    QBTestHome home;
    const QString db = home.filePath(kDb);
    const QByteArray seedBytes = readFileBytes(QStringLiteral(QB_SEED_PATH));
    std::vector<CQuoteRecord> seed;
    readQuotesFile(QB_SEED_PATH, seed);
    const QStringList expected = {
        QStringLiteral("Logging established (level: debug)"),
        QStringLiteral("Launch of quillbox2 "),
        QStringLiteral("%1 quotes read from database at '%2'").arg(seed.size()).arg(db)};
    const QString first = runApp(kApp, expected);
    EXPECT_TRUE(first.endsWith(kShutdown));
    EXPECT_FALSE(first.contains(QStringLiteral("[warning]")));
    EXPECT_TRUE(inOrder(QString::fromUtf8(readFileBytes(
                            home.filePath(QStringLiteral("xdg_state_home/Logs/quillbox2.log")))),
                        expected));
    EXPECT_EQ(readFileBytes(db), seedBytes);
    writeQuotesFile(db.toStdString(), seed); // the seed is in the store's own format
    EXPECT_EQ(readFileBytes(db), seedBytes);
    std::set<std::string> uids;
    for (const CQuoteRecord& record : seed) { // unique ids, every quote attributed
        EXPECT_TRUE(uids.insert(record.mUID).second) << record.mUID;
        EXPECT_NE(record.mContent.find("\n-- "), std::string::npos) << record.mContent;
    }

    writeQuotesFile(db.toStdString(), {CQuoteRecord("Mine.", "")});
    const QByteArray mine = readFileBytes(db);
    runApp(kApp, {QStringLiteral("1 quotes read from database at '%1'").arg(db)}, SIGINT);
    EXPECT_EQ(readFileBytes(db), mine);
}

TEST(LaunchProcessTest, DatabaseFailuresOnlyWarnAndNothingIsOverwritten)
{
    const QString noDb = QStringLiteral("(Still) no quotes DB after initialization found at ");
    for (const QByteArray& bytes : {QByteArray(""), QByteArray("{\"Quotes\": [ {\"UID\": ")}) {
        QBTestHome home;
        ASSERT_TRUE(writeFileBytes(home.filePath(kDb), bytes));
        runApp(kApp, {QStringLiteral("Failed to read quotes from disk")});
        EXPECT_TRUE(QFile::exists(home.filePath(kDb)));
        EXPECT_EQ(readFileBytes(home.filePath(kDb)), bytes);
    }
    { // The same program in a tree without share/quillbox2.
        QBTestHome home;
        const QString bare = home.filePath(QStringLiteral("bare/bin/quillbox2"));
        ASSERT_TRUE(QDir().mkpath(QFileInfo(bare).path()) && QFile::copy(kApp, bare));
        runApp(bare,
               {QStringLiteral("Failed to locate sample quotes db in app bundle: (null)"), noDb});
        EXPECT_FALSE(QFile::exists(home.filePath(kDb)));
    }
    { // The container cannot be created: XDG_DATA_HOME is a file.
        QBTestHome home;
        const QString file = home.filePath(QStringLiteral("file"));
        ASSERT_TRUE(writeFileBytes(file, "x"));
        ::setenv("XDG_DATA_HOME", file.toUtf8().constData(), 1);
        runApp(kApp,
               {QStringLiteral("Failed to create folder for application group: "),
                QStringLiteral("Failed to copy default quotes db to app support folder: "), noDb});
        EXPECT_EQ(readFileBytes(file), QByteArray("x"));
    }
}

} // namespace
