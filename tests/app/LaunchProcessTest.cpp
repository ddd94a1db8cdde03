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

// Starts |program| with |arguments| and waits until logging is up; returns what it printed.
QByteArray startUntilLogging(QProcess& process, const QString& program,
                             const QStringList& arguments = {})
{
    process.start(program, arguments);
    QByteArray bytes;
    while (!bytes.contains("Logging established") && process.waitForReadyRead(30000)) {
        bytes += process.readAllStandardOutput();
    }
    return bytes;
}

// Reads |process|'s output until it contains |text| (30 s at most).
bool waitForOutput(QProcess& process, QByteArray& output, const QByteArray& text)
{
    while (!output.contains(text) && process.waitForReadyRead(30000)) {
        output += process.readAllStandardOutput();
    }
    return output.contains(text);
}

// Runs |program|, sends it |signalNumber| once logging is up (the signal watcher is
// installed by then, and the signal is handled once the event loop runs), and expects a
// normal exit with status 0 and |fragments|, then the shutdown line, in its output.
QString runApp(const QString& program, QStringList fragments, int signalNumber = SIGTERM)
{
    QProcess process;
    const QByteArray bytes = startUntilLogging(process, program);
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

TEST(LaunchProcessTest, CommandLineIsAnsweredOnTheTerminalWithoutADisplay)
{
    struct Case
    {
        QStringList arguments;
        int exitCode;
        QString stdoutPart, stderrPart;
    };
    const QString tryHelp = QStringLiteral("Try 'quillbox2 --help' for more information.\n");
    const Case cases[] = {
        {{QStringLiteral("--help")}, 0, QStringLiteral("-v, --version  Show the version"), {}},
        {{QStringLiteral("-h")},
         0,
         QStringLiteral("turns one of them into an e-mail signature"),
         {}},
        {{QStringLiteral("--version")}, 0, QStringLiteral("quillbox2 " QB_VERSION "\n"), {}},
        {{QStringLiteral("-style"), QStringLiteral("fusion"), QStringLiteral("-v")},
         0,
         QStringLiteral("quillbox2 " QB_VERSION "\n"),
         {}},
        {{QStringLiteral("--bogus")}, 1, {}, QStringLiteral("Unknown option 'bogus'.\n") + tryHelp},
        {{QStringLiteral("-x"), QStringLiteral("-h")}, 1, {}, QStringLiteral("Unknown option 'x'")},
        {{QStringLiteral("quotes.txt")}, 1, {}, QStringLiteral("Unexpected argument 'quotes.txt'")},
    };
    QBTestHome home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY")); // a window would abort the program here
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    for (const Case& c : cases) {
        const QString line = c.arguments.join(u' ');
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(kApp, c.arguments);
        ASSERT_TRUE(process.waitForFinished(30000)) << line.toStdString();
        const QString out = QString::fromLocal8Bit(process.readAllStandardOutput());
        const QString err = QString::fromLocal8Bit(process.readAllStandardError());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << line.toStdString();
        EXPECT_EQ(process.exitCode(), c.exitCode) << line.toStdString() << err.toStdString();
        EXPECT_TRUE(out.contains(c.stdoutPart)) << line.toStdString() << out.toStdString();
        EXPECT_TRUE(err.contains(c.stderrPart)) << line.toStdString() << err.toStdString();
        EXPECT_EQ(out.isEmpty(), c.exitCode != 0) << line.toStdString();
    }
    EXPECT_FALSE(QFile::exists(home.filePath(QStringLiteral("xdg_state_home/Logs/quillbox2.log"))));
}

TEST(LaunchProcessTest, ASecondLaunchRaisesTheRunningWindowAndEnds)
{
    QBTestHome home;
    const QString runtime = home.filePath(QStringLiteral("xdg_runtime_dir/"));
    const QString lockPath = runtime + QStringLiteral("org.quillbox2.Quillbox2.lock");
    const QString socketPath = runtime + QStringLiteral("org.quillbox2.Quillbox2.socket");
    { // What a killed first launch leaves behind: a lock naming a process that has ended,
      // and its socket file.
        QProcess ended;
        ended.start(QStringLiteral("true"));
        ASSERT_TRUE(ended.waitForStarted());
        const qint64 endedPid = ended.processId();
        ASSERT_TRUE(ended.waitForFinished());
        ASSERT_TRUE(writeFileBytes(lockPath, QByteArray::number(endedPid) + "\nquillbox2\n\n"));
        ASSERT_TRUE(writeFileBytes(socketPath, ""));
    }
    QProcess first;
    QByteArray firstOutput =
        startUntilLogging(first, kApp, {QStringLiteral("-style"), QStringLiteral("fusion")});
    ASSERT_TRUE(firstOutput.contains("Logging established")) << firstOutput.toStdString();

    const auto launchSecond = [] {
        QProcess second;
        second.start(kApp, {});
        EXPECT_TRUE(second.waitForFinished(30000));
        return std::make_pair(
            second.exitCode(),
            QString::fromLocal8Bit(second.readAllStandardOutput() + second.readAllStandardError()));
    };
    const auto [exitCode, secondOutput] = launchSecond();
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(secondOutput,
              QStringLiteral(
                  "Quillbox2 is already running; its window has been brought to the front.\n"));
    const QByteArray raised = "Another launch asked for the window; bringing it to the front.";
    EXPECT_TRUE(waitForOutput(first, firstOutput, raised)) << firstOutput.toStdString();

    // A first launch that hangs: the second one gives up, says so and fails.
    ::kill(static_cast<pid_t>(first.processId()), SIGSTOP);
    const auto [hungExitCode, hungOutput] = launchSecond();
    ::kill(static_cast<pid_t>(first.processId()), SIGCONT);
    EXPECT_EQ(hungExitCode, 1);
    EXPECT_EQ(hungOutput, QStringLiteral("Quillbox2 is already running but does not answer.\n"));

    ::kill(static_cast<pid_t>(first.processId()), SIGTERM);
    EXPECT_TRUE(first.waitForFinished(30000));
    firstOutput += first.readAllStandardOutput();
    EXPECT_EQ(first.exitCode(), 0);
    EXPECT_TRUE(inOrder(QString::fromUtf8(firstOutput), {QString::fromUtf8(raised), kShutdown}));
    const QString log = QString::fromUtf8(
        readFileBytes(home.filePath(QStringLiteral("xdg_state_home/Logs/quillbox2.log"))));
    EXPECT_EQ(log.count(QStringLiteral("Launch of quillbox2")), 1) << log.toStdString();
    EXPECT_FALSE(QFile::exists(lockPath));
    EXPECT_FALSE(QFile::exists(socketPath));
}

} // namespace
