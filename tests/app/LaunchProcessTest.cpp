// The built quillbox2 in a temporary home, started and ended as sessions and hostile shells do.
#include "core/QuotesRepository.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString kApp = QStringLiteral(QB_APP_PATH);
const QString kShutdown = u"Shutting down.\n"_s;
const QString kFolder =
    u"xdg_data_home/group.Q8B2X4K7LM.org.quillbox2/Library/Application Support"_s;
const QString kDb = kFolder + u"/quotes.db"_s;
const QString kLog = u"xdg_state_home/Logs/quillbox2.log"_s;

// Whether |fragments| occur in |text| in this order.
bool inOrder(const QString& text, const QStringList& fragments)
{
    qsizetype from = 0;
    for (const QString& fragment : fragments) {
        from = text.indexOf(fragment, from);
        if (from < 0)
            return false;
    }
    return true;
}

// Reads |process|'s output until it contains |text| (30 s at most).
bool waitForOutput(QProcess& process, QByteArray& output, const QByteArray& text)
{
    while (!output.contains(text) && process.waitForReadyRead(30000))
        output += process.readAllStandardOutput();
    return output.contains(text);
}

// Starts |program| with |arguments| and waits until logging is up; returns what it printed.
QByteArray startUntilLogging(QProcess& process, const QString& program,
                             const QStringList& arguments = {})
{
    process.start(program, arguments);
    QByteArray bytes;
    waitForOutput(process, bytes, "Logging established");
    return bytes;
}

// Signals |program| once logging is up; expects exit 0 and |fragments|, then the shutdown line.
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

unsigned permissionsOf(const QString& path)
{
    return static_cast<unsigned>(std::filesystem::status(path.toStdString()).permissions());
}

// Runs the program with |prepare| in the child until the quotes are read; returns the log.
QString runUntilLoaded(const QBTestHome& home, std::function<void()> prepare,
                       std::function<void(pid_t)> whileRunning = {})
{
    QProcess process;
    process.setChildProcessModifier(std::move(prepare));
    process.start(kApp, {});
    EXPECT_TRUE(process.waitForStarted(30000));
    const QString logPath = home.filePath(kLog);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return readFileBytes(logPath).contains("quotes read from database"); }, 30000));
    const auto pid = static_cast<pid_t>(process.processId());
    if (whileRunning)
        whileRunning(pid);
    ::kill(pid, SIGTERM);
    EXPECT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(QProcess::NormalExit, process.exitStatus());
    EXPECT_EQ(0, process.exitCode());
    return QString::fromUtf8(readFileBytes(logPath));
}

TEST(LaunchProcessTest, FirstLaunchCopiesTheSeedAndSecondCopiesNothing)
{
    QBTestHome home;
    const QString db = home.filePath(kDb);
    const QByteArray seedBytes = readFileBytes(QStringLiteral(QB_SEED_PATH));
    std::vector<CQuoteRecord> seed;
    readQuotesFile(QB_SEED_PATH, seed);
    const QStringList expected = {
        u"Logging established (level: debug)"_s, u"Launch of quillbox2 "_s,
        u"%1 quotes read from database at '%2'"_s.arg(seed.size()).arg(db)};
    const QString first = runApp(kApp, expected);
    EXPECT_TRUE(first.endsWith(kShutdown));
    EXPECT_FALSE(first.contains(u"[warning]"_s));
    EXPECT_TRUE(inOrder(QString::fromUtf8(readFileBytes(home.filePath(kLog))), expected));
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
    runApp(kApp, {u"1 quotes read from database at '%1'"_s.arg(db)}, SIGINT);
    EXPECT_EQ(readFileBytes(db), mine);
}

TEST(LaunchProcessTest, DatabaseFailuresOnlyWarnAndNothingIsOverwritten)
{
    const QString noDb = u"(Still) no quotes DB after initialization found at "_s;
    // Empty, cut short, nested past the reader's limit, and a FIFO (which never blocks).
    const QByteArray deep = "{\"Quotes\": " + QByteArray(100000, '[');
    for (const QByteArray& bytes :
         {QByteArray(""), QByteArray("{\"Quotes\": [ {\"UID\": "), deep, QByteArray("FIFO")}) {
        QBTestHome home;
        const QString db = home.filePath(kDb);
        ASSERT_TRUE(writeFileBytes(db, bytes));
        if (bytes == "FIFO") {
            ASSERT_TRUE(QFile::remove(db) &&
                        ::mkfifo(QFile::encodeName(db).constData(), 0600) == 0);
        }
        runApp(kApp, {u"Failed to read quotes from disk"_s, u"0 quotes read from database"_s});
        if (bytes == "FIFO") {
            EXPECT_TRUE(
                std::filesystem::is_fifo(std::filesystem::symlink_status(db.toStdString())));
        } else {
            EXPECT_TRUE(QFile::exists(db));
            EXPECT_EQ(readFileBytes(db), bytes);
        }
    }
    { // The same program in a tree without share/quillbox2.
        QBTestHome home;
        const QString bare = home.filePath(u"bare/bin/quillbox2"_s);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(bare).path()) && QFile::copy(kApp, bare));
        runApp(bare, {u"Failed to locate sample quotes db in app bundle: (null)"_s, noDb});
        EXPECT_FALSE(QFile::exists(home.filePath(kDb)));
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
    const QString version = QStringLiteral("quillbox2 " QB_VERSION "\n");
    const Case cases[] = {
        {{u"--help"_s}, 0, u"--export <FILE>     Write the collection to FILE"_s, {}},
        {{u"--version"_s}, 0, version, {}},
        {{u"-style"_s, u"fusion"_s, u"-v"_s}, 0, version, {}},
        {{u"--bogus"_s},
         1,
         {},
         u"Unknown option 'bogus'.\nTry 'quillbox2 --help' for more information.\n"_s},
        {{u"--dry-run"_s, u"quotes.txt"_s},
         1,
         {},
         u"--separator and --dry-run go with --import, --format with --export."_s},
    };
    QBTestHome home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"DISPLAY"_s); // a window would abort the program here
    environment.remove(u"WAYLAND_DISPLAY"_s);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
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
    EXPECT_FALSE(QFile::exists(home.filePath(kLog)));
}

// Runs quillbox2 with |arguments| to its end; exit code, standard output and error.
std::tuple<int, QString, QString> runToEnd(const QStringList& arguments)
{
    QProcess process;
    process.start(kApp, arguments);
    EXPECT_TRUE(process.waitForFinished(30000)) << arguments.join(u' ').toStdString();
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
}

TEST(LaunchProcessTest, ScriptsImportAndExportWithoutAWindowAndFailuresChangeNothing)
{
    QBTestHome home;
    const QString quotes = home.filePath(u"my quotes.txt"_s);
    ASSERT_TRUE(writeFileBytes(quotes, "One\r\n%\r\nTwo, up 100%\r\nand on\r\n%\r\n"));
    const auto [dryCode, dryOut, dryErr] = runToEnd({u"--import"_s, quotes, u"--dry-run"_s});
    EXPECT_EQ(dryCode, 0) << dryErr.toStdString();
    EXPECT_EQ(dryOut, quotes + u": 2 quotes, separator “%”\n"_s);
    EXPECT_FALSE(QFile::exists(home.filePath(kDb)));

    // The first import makes the collection (the seed and the two quotes), the second
    // finds both quotes there already.
    const auto [code, out, err] = runToEnd({u"--import"_s, quotes});
    EXPECT_EQ(code, 0) << err.toStdString();
    EXPECT_EQ(out, u"Imported 2 quotes from “my quotes.txt”.\n"_s);
    std::vector<CQuoteRecord> records;
    readQuotesFile(home.filePath(kDb).toStdString(), records);
    ASSERT_GE(records.size(), 3u);
    EXPECT_EQ(records.back().mContent, "Two, up 100%\nand on");
    const auto [againCode, againOut, againErr] =
        runToEnd({u"--import"_s, quotes, u"--separator"_s, u"%"_s});
    EXPECT_EQ(againOut, u"Imported 2 quotes from “my quotes.txt”. 2 of them were already in the "
                        u"collection.\n"_s);

    // Exports in every format read back as the whole collection.
    const QString count = QString::number(records.size() + 2);
    for (const QString& name : {u"all.fortune"_s, u"all.txt"_s, u"all.json"_s}) {
        const QString path = home.filePath(name);
        const auto [exportCode, exportOut, exportErr] = runToEnd({u"--export"_s, path});
        EXPECT_EQ(exportCode, 0) << exportErr.toStdString();
        EXPECT_EQ(exportOut, u"Exported %1 quotes to “%2”.\n"_s.arg(count, path));
        const auto [readCode, readOut, readErr] = runToEnd({u"--import"_s, path, u"--dry-run"_s});
        EXPECT_TRUE(readOut.startsWith(path + u": "_s + count + u" quotes"_s))
            << readOut.toStdString();
    }
    // A quote with a blank line inside cannot come back from plain text; stderr says so.
    const QString poem = home.filePath(u"poem.txt"_s);
    ASSERT_TRUE(writeFileBytes(poem, "Verse one\n\nVerse two\n"));
    EXPECT_EQ(std::get<0>(runToEnd({u"--import"_s, poem, u"--separator"_s, u"whole"_s})), 0);
    const QString poemText = home.filePath(u"poem-export.txt"_s);
    const auto [poemCode, poemOut, poemErr] = runToEnd({u"--export"_s, poemText});
    EXPECT_EQ(poemCode, 0);
    EXPECT_EQ(poemErr, u"quillbox2: %1: 1 quote will not read back as it is from this format; "
                       u"--format json keeps every quote.\n"_s.arg(poemText));

    const QString empty = home.filePath(u"empty.txt"_s);
    const QString binary = home.filePath(u"binary.txt"_s);
    ASSERT_TRUE(writeFileBytes(empty, {}) && writeFileBytes(binary, QByteArray("a\0b\0\0\1", 6)));
    const QByteArray before = readFileBytes(home.filePath(kDb));
    const struct
    {
        QStringList arguments;
        QString error;
    } failures[] = {
        {{u"--import"_s, quotes, u"--import"_s, empty},
         u"quillbox2: %1: cannot import: the file is empty\n"_s.arg(empty)},
        {{u"--import"_s, binary},
         u"quillbox2: %1: cannot import: the file holds binary data (zero bytes)\n"_s.arg(binary)},
        {{u"--import"_s, home.filePath(u"missing"_s)}, u"cannot import: cannot open"_s},
        {{u"--export"_s, home.filePath(u"x"_s), u"--format"_s, u"pdf"_s},
         u"quillbox2: Unknown format 'pdf'; use fortune, text or json.\n"_s},
        {{u"--export"_s, home.filePath(u"no such folder/x"_s)}, u"cannot export"_s},
    };
    for (const auto& failure : failures) {
        const auto [failCode, failOut, failErr] = runToEnd(failure.arguments);
        EXPECT_EQ(failCode, 1);
        EXPECT_TRUE(failOut.isEmpty()) << failOut.toStdString();
        EXPECT_TRUE(failErr.contains(failure.error)) << failErr.toStdString();
    }
    EXPECT_EQ(readFileBytes(home.filePath(kDb)), before);
}

TEST(LaunchProcessTest, ASecondLaunchRaisesTheRunningWindowAndEnds)
{
    QBTestHome home;
    const QString runtime = home.filePath(u"xdg_runtime_dir/"_s);
    const QString lockPath = runtime + u"org.quillbox2.Quillbox2.lock"_s;
    const QString socketPath = runtime + u"org.quillbox2.Quillbox2.socket"_s;
    { // What a killed first launch leaves behind: a lock naming a process that has ended,
      // and its socket file.
        QProcess ended;
        ended.start(u"true"_s);
        ASSERT_TRUE(ended.waitForStarted());
        const qint64 endedPid = ended.processId();
        ASSERT_TRUE(ended.waitForFinished());
        ASSERT_TRUE(writeFileBytes(lockPath, QByteArray::number(endedPid) + "\nquillbox2\n\n"));
        ASSERT_TRUE(writeFileBytes(socketPath, ""));
    }
    QProcess first;
    QByteArray firstOutput = startUntilLogging(first, kApp, {u"-style"_s, u"fusion"_s});
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

    // Files named on a later launch are imported by the running one.
    const QString file = home.filePath(u"handed over.txt"_s);
    ASSERT_TRUE(writeFileBytes(file, "Handed\n%\nOver\n"));
    QProcess handing;
    handing.start(kApp, {file});
    ASSERT_TRUE(handing.waitForFinished(30000));
    EXPECT_EQ(handing.readAllStandardOutput(),
              "Quillbox2 is already running; it imports the files.\n");
    EXPECT_TRUE(waitForOutput(first, firstOutput, "Importing 2 quotes from input file"))
        << firstOutput.toStdString();

    // A first launch that hangs: the second one gives up, says so and fails.
    ::kill(static_cast<pid_t>(first.processId()), SIGSTOP);
    const auto [hungExitCode, hungOutput] = launchSecond();
    ::kill(static_cast<pid_t>(first.processId()), SIGCONT);
    EXPECT_EQ(hungExitCode, 1);
    EXPECT_EQ(hungOutput, u"Quillbox2 is already running but does not answer.\n"_s);

    ::kill(static_cast<pid_t>(first.processId()), SIGTERM);
    EXPECT_TRUE(first.waitForFinished(30000));
    firstOutput += first.readAllStandardOutput();
    EXPECT_EQ(first.exitCode(), 0);
    EXPECT_TRUE(inOrder(QString::fromUtf8(firstOutput), {QString::fromUtf8(raised), kShutdown}));
    const QString log = QString::fromUtf8(readFileBytes(home.filePath(kLog)));
    EXPECT_EQ(log.count(u"Launch of quillbox2"_s), 1) << log.toStdString();
    EXPECT_FALSE(QFile::exists(lockPath));
    EXPECT_FALSE(QFile::exists(socketPath));
}

// An X server of its own for typing into the real program; empty when none can start.
class VirtualDisplay
{
public:
    VirtualDisplay()
    {
        if (QStandardPaths::findExecutable(u"Xvfb"_s).isEmpty() ||
            QStandardPaths::findExecutable(u"xdotool"_s).isEmpty())
            return;
        mServer.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, u"-screen"_s,
                                  u"0"_s, u"1280x900x24"_s});
        QByteArray number;
        while (!number.contains('\n') && mServer.waitForReadyRead(10000))
            number += mServer.readAllStandardOutput();
        if (!number.trimmed().isEmpty())
            mName = u":"_s + QString::fromLatin1(number.trimmed());
    }
    ~VirtualDisplay()
    {
        mServer.terminate();
        mServer.waitForFinished(10000);
    }
    QString name() const { return mName; }
    // Runs xdotool with |arguments| on this display; its standard output.
    QString xdotool(const QStringList& arguments) const
    {
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, mName);
        tool.setProcessEnvironment(environment);
        tool.start(u"xdotool"_s, arguments);
        tool.waitForFinished(30000);
        return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
    }

private:
    QProcess mServer;
    QString mName;
};

TEST(LaunchProcessTest, TextTypedIntoTheEditorIsSavedByCtrlQAndBySigterm)
{
    const VirtualDisplay display;
    if (display.name().isEmpty())
        GTEST_SKIP() << "needs Xvfb and xdotool";
    for (const bool bySignal : {true, false}) {
        QBTestHome home;
        QProcess app;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, display.name());
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        app.setProcessEnvironment(environment);
        QByteArray output = startUntilLogging(app, kApp);
        const QString window =
            display.xdotool({u"search"_s, u"--sync"_s, u"--name"_s, u"^quillbox2"_s});
        ASSERT_FALSE(window.isEmpty());
        display.xdotool({u"windowfocus"_s, u"--sync"_s, window.section(u'\n', 0, 0)});
        // Filter field, down into the list (the first quote), Return to edit it, type.
        display.xdotool({u"key"_s, u"--delay"_s, u"100"_s, u"ctrl+f"_s, u"Down"_s, u"Return"_s});
        display.xdotool({u"type"_s, u"Typed, never confirmed. "_s});
        ASSERT_TRUE(waitForOutput(app, output, "Begin editing")) << output.toStdString();
        if (bySignal) {
            QTest::qWait(1500); // the last keys reach the program before the signal does
            ::kill(static_cast<pid_t>(app.processId()), SIGTERM);
        } else {
            display.xdotool({u"key"_s, u"ctrl+q"_s}); // after the typed keys, in order
        }
        ASSERT_TRUE(app.waitForFinished(30000));
        EXPECT_EQ(app.exitCode(), 0);
        std::vector<CQuoteRecord> quotes;
        readQuotesFile(home.stdPath(kDb), quotes);
        ASSERT_FALSE(quotes.empty());
        EXPECT_TRUE(QString::fromStdString(quotes.front().mContent)
                        .startsWith(u"Typed, never confirmed. "_s))
            << bySignal << quotes.front().mContent;
    }
}

TEST(HostileLaunchTest, ClosedOrDeadOutputNeitherHangsNorKillsAndFilesArePrivate)
{
    {
        // Standard input and output closed: they are reopened on /dev/null before
        // anything else can take their numbers.
        QBTestHome home;
        QString standardOutput;
        const QString log = runUntilLoaded(
            home, [] { ::close(STDIN_FILENO), ::close(STDOUT_FILENO); },
            [&](pid_t pid) { standardOutput = QFile::symLinkTarget(u"/proc/%1/fd/1"_s.arg(pid)); });
        EXPECT_EQ(u"/dev/null"_s, standardOutput);
        EXPECT_EQ(1, log.count(u"Logging established"_s)) << log.toStdString();
        EXPECT_TRUE(log.contains(u"Shutting down."_s));
        // What holds the user's quotes and habits is theirs alone.
        EXPECT_EQ(0600u, permissionsOf(home.filePath(kDb)));
        EXPECT_EQ(0600u, permissionsOf(home.filePath(kLog)));
        EXPECT_EQ(0700u, permissionsOf(home.filePath(kFolder)));
        EXPECT_EQ(0700u, permissionsOf(home.filePath(u"xdg_state_home/Logs"_s)));
    }
    {
        // Standard output is a pipe whose reader has gone: writes fail, the program lives.
        QBTestHome home;
        int pipeEnds[2];
        ASSERT_EQ(0, ::pipe(pipeEnds));
        ::close(pipeEnds[0]);
        const int writeEnd = pipeEnds[1];
        const QString log = runUntilLoaded(home, [writeEnd] { ::dup2(writeEnd, STDOUT_FILENO); });
        ::close(writeEnd);
        EXPECT_TRUE(log.contains(u"Shutting down."_s)) << log.toStdString();
    }
}

} // namespace
