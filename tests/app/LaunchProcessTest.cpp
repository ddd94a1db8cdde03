// Runs the built quillbox2 the way a desktop session does, with HOME and XDG_* in a
// temporary folder, and ends it with the signals that sessions and terminals send.
#include "core/QuotesRepository.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>

namespace {

const QString kApp = QStringLiteral(QB_APP_PATH);

// Standard output of one run: started, left until it has dealt with the database, then
// sent |signalNumber|, which is handled once the event loop (and so the window) runs.
// Empty unless the program then exited normally with status 0.
QString runApp(const QString& program, int signalNumber = SIGTERM)
{
    QProcess process;
    process.start(program, {});
    QByteArray output;
    for (int waited = 0; waited < 600 && !output.contains("quotes read from database") &&
                         !output.contains("no quotes DB after initialization");
         ++waited) {
        process.waitForReadyRead(100);
        output += process.readAllStandardOutput();
    }
    ::kill(static_cast<pid_t>(process.processId()), signalNumber);
    process.waitForFinished(30000);
    output += process.readAllStandardOutput();
    const bool clean = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return clean ? QString::fromUtf8(output) : QString();
}

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

QString dbPathIn(const QBTestHome& home)
{
    return home.filePath(QStringLiteral("xdg_data_home/group.Q8B2X4K7LM.org.quillbox2/Library/"
                                        "Application Support/quotes.db"));
}

TEST(LaunchProcessTest, FirstLaunchSeedsAndSecondCopiesNothing)
{
    QBTestHome home;
    const QString db = dbPathIn(home);
    std::vector<CQuoteRecord> seed;
    readQuotesFile(QB_SEED_PATH, seed);

    const QString first = runApp(kApp);
    const QStringList expected = {
        QStringLiteral("Logging established (level: debug)"),
        QStringLiteral("Launch of quillbox2 "),
        QStringLiteral("%1 quotes read from database at '%2'").arg(seed.size()).arg(db),
        QStringLiteral("Shutting down.\n")};
    EXPECT_TRUE(inOrder(first, expected)) << first.toStdString();
    EXPECT_TRUE(first.endsWith(QStringLiteral("Shutting down.\n")));
    EXPECT_FALSE(first.contains(QStringLiteral("[warning]")));
    EXPECT_TRUE(inOrder(QString::fromUtf8(readFileBytes(
                            home.filePath(QStringLiteral("xdg_state_home/Logs/quillbox2.log")))),
                        expected));
    EXPECT_EQ(readFileBytes(db), readFileBytes(QStringLiteral(QB_SEED_PATH)));

    writeQuotesFile(db.toStdString(), {CQuoteRecord("Mine.", "")});
    const QByteArray mine = readFileBytes(db);
    const QString second = runApp(kApp, SIGINT);
    EXPECT_TRUE(inOrder(second, {QStringLiteral("1 quotes read from database at '%1'").arg(db),
                                 QStringLiteral("Shutting down.\n")}))
        << second.toStdString();
    EXPECT_EQ(readFileBytes(db), mine);
}

TEST(LaunchProcessTest, DatabaseFailuresOnlyWarnAndNothingIsOverwritten)
{
    const QString noDb = QStringLiteral("(Still) no quotes DB after initialization found at ");
    const QString unreadable = QStringLiteral("Failed to read quotes from disk");
    struct Case
    {
        const char* name;
        QStringList expectedLines;
        QByteArray dbBytes; // written before the run when |hasDb|, expected after it
        bool hasDb;
    };
    const Case cases[] = {
        {"bundle without the seed",
         {QStringLiteral("Failed to locate sample quotes db in app bundle: (null)"), noDb},
         {},
         false},
        {"container cannot be created",
         {QStringLiteral("Failed to create folder for application group: "),
          QStringLiteral("Failed to copy default quotes db to app support folder: "), noDb},
         {},
         false},
        {"empty quotes.db", {unreadable}, QByteArray(""), true},
        {"damaged quotes.db", {unreadable}, QByteArray("{\"Quotes\": [ {\"UID\": "), true},
    };
    for (const Case& c : cases) {
        QBTestHome home;
        QString program = kApp;
        if (c.hasDb) {
            ASSERT_TRUE(writeFileBytes(dbPathIn(home), c.dbBytes));
        } else if (c.expectedLines.size() == 2) {
            // The same program in a tree without share/quillbox2.
            program = home.filePath(QStringLiteral("bare/bin/quillbox2"));
            ASSERT_TRUE(QDir().mkpath(home.filePath(QStringLiteral("bare/bin"))));
            ASSERT_TRUE(QFile::copy(kApp, program));
        } else {
            ASSERT_TRUE(writeFileBytes(home.filePath(QStringLiteral("file")), "x"));
            ::setenv("XDG_DATA_HOME", home.filePath(QStringLiteral("file")).toUtf8().constData(),
                     1);
        }
        const QString output = runApp(program);
        EXPECT_TRUE(
            inOrder(output, c.expectedLines + QStringList{QStringLiteral("Shutting down.\n")}))
            << c.name << "\n"
            << output.toStdString();
        EXPECT_EQ(QFile::exists(dbPathIn(home)), c.hasDb) << c.name;
        EXPECT_EQ(readFileBytes(dbPathIn(home)), c.dbBytes) << c.name;
    }
}

} // namespace
