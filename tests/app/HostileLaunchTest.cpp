// The real executable started the way a careless or hostile environment starts it:
// standard output closed or a pipe nobody reads, odd files where the database belongs.
#include "TestHome.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString kApp = QStringLiteral(QB_APP_PATH);
const QString kFolder =
    u"xdg_data_home/group.Q8B2X4K7LM.org.quillbox2/Library/Application Support"_s;
const QString kLog = u"xdg_state_home/Logs/quillbox2.log"_s;

unsigned permissionsOf(const QString& path)
{
    return static_cast<unsigned>(std::filesystem::status(path.toStdString()).permissions());
}

// Starts the program with |prepare| run in the child, waits until the log file shows
// the quotes were read, stops it with SIGTERM and returns the log file.
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
    if (whileRunning) {
        whileRunning(pid);
    }
    ::kill(pid, SIGTERM);
    EXPECT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(QProcess::NormalExit, process.exitStatus());
    EXPECT_EQ(0, process.exitCode());
    return QString::fromUtf8(readFileBytes(logPath));
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
        EXPECT_EQ(0600u, permissionsOf(home.filePath(kFolder + u"/quotes.db"_s)));
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

TEST(HostileLaunchTest, AFifoOrADeeplyNestedDatabaseFailsTheLoadAndTheProgramRuns)
{
    for (const bool fifo : {true, false}) {
        QBTestHome home;
        const QString db = home.filePath(kFolder + u"/quotes.db"_s);
        ASSERT_TRUE(writeFileBytes(db, "{\"Quotes\": " + QByteArray(100000, '[')));
        if (fifo) {
            ASSERT_TRUE(QFile::remove(db));
            ASSERT_EQ(0, ::mkfifo(QFile::encodeName(db).constData(), 0600));
        }
        const QString log = runUntilLoaded(home, [] {});
        EXPECT_TRUE(log.contains(u"Failed to read quotes from disk"_s)) << fifo;
        EXPECT_TRUE(log.contains(u"0 quotes read from database"_s)) << fifo;
    }
}

} // namespace
