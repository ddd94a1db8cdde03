#include "TestHome.h"

#include "logging/Log.h"
#include "logging/ULog.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

// Redirects std::cout (where the console sink writes) for the lifetime of the object.
class CapturedStdout
{
public:
    CapturedStdout() : mPrevious(std::cout.rdbuf(mBuffer.rdbuf())) {}
    ~CapturedStdout() { std::cout.rdbuf(mPrevious); }
    std::string text() const { return mBuffer.str(); }

private:
    std::ostringstream mBuffer;
    std::streambuf* mPrevious;
};

std::vector<std::string> lines(const QByteArray& bytes)
{
    std::vector<std::string> result;
    std::istringstream stream(bytes.toStdString());
    for (std::string line; std::getline(stream, line);) {
        result.push_back(line);
    }
    return result;
}

class LogTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        qblog::setLogLevel(qblog::Level::Debug);
        qblog::clearLogHistory();
    }
    void TearDown() override { qblog::removeLogFileSink(); }

    QString logPath() const { return mHome.filePath(QStringLiteral("state/Logs/quillbox2.log")); }

    QBTestHome mHome;
};

const std::regex
    kFileLine(R"(\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}: \[(debug|info|warning|error)\]   .*)");

TEST_F(LogTest, SetupCreatesTheFileAndEveryLevelIsWrittenInTheSameFormatToFileAndStdout)
{
    CapturedStdout captured;
    qblog::setupLogging(logPath().toStdString());
    logDebug("d %d", 1);
    logInfo("i %s", "two");
    logWarning("w");
    logError("e");

    const auto fileLines = lines(readFileBytes(logPath()));
    ASSERT_EQ(fileLines.size(), 5u);
    EXPECT_TRUE(fileLines[0].ends_with(": [info]   Logging established (level: debug)"));
    EXPECT_TRUE(fileLines[1].ends_with(": [debug]   d 1"));
    EXPECT_TRUE(fileLines[2].ends_with(": [info]   i two"));
    EXPECT_TRUE(fileLines[3].ends_with(": [warning]   w"));
    EXPECT_TRUE(fileLines[4].ends_with(": [error]   e"));
    for (const auto& line : fileLines) {
        EXPECT_TRUE(std::regex_match(line, kFileLine)) << line;
    }
    EXPECT_EQ(lines(QByteArray::fromStdString(captured.text())), fileLines);

    // The history has its own format and is searched by level, newest first.
    const std::regex historyLine(R"(\d{2}-\d{2}-\d{4} \d{2}:\d{2}:\d{2} \[[A-Z ]{8}\] :  .*)");
    const auto info = qblog::recentLogLines(10, qblog::Level::Info);
    ASSERT_EQ(info.size(), 2u);
    EXPECT_TRUE(info[0].ends_with("[INFO    ] :  i two"));
    EXPECT_TRUE(info[1].ends_with("[INFO    ] :  Logging established (level: debug)"));
    EXPECT_TRUE(std::regex_match(info[0], historyLine)) << info[0];
    EXPECT_TRUE(qblog::recentLogLines(9, qblog::Level::Warning)[0].ends_with("[WARN    ] :  w"));
    EXPECT_TRUE(qblog::recentLogLines(9, qblog::Level::Error)[0].ends_with("[ERROR   ] :  e"));
    EXPECT_TRUE(qblog::recentLogLines(9, qblog::Level::Debug)[0].ends_with("[DEBUG   ] :  d 1"));
    EXPECT_EQ(qblog::recentLogLines(1, qblog::Level::Info).size(), 1u);
}

TEST_F(LogTest, SetupDeletesOnlyAFileLargerThan256000Bytes)
{
    struct Case
    {
        qsizetype size;
        bool kept;
    };
    for (const Case& c : {Case{256000, true}, Case{256001, false}}) {
        SCOPED_TRACE(c.size);
        ASSERT_TRUE(writeFileBytes(logPath(), QByteArray(c.size, 'x')));
        qblog::setupLogging(logPath().toStdString());
        const QByteArray content = readFileBytes(logPath());
        EXPECT_EQ(content.startsWith(QByteArray(c.size, 'x')), c.kept);
        EXPECT_TRUE(content.contains("Logging established (level: debug)"));
        EXPECT_EQ(content.size() > c.size, c.kept);
        qblog::removeLogFileSink();
        QFile::remove(logPath());
    }
}

TEST_F(LogTest, OnlyARegularFileIsEverDeletedAndAnUnopenableLogIsReportedOnce)
{
    const QByteArray path = QFile::encodeName(logPath());
    QDir().mkpath(QFileInfo(logPath()).absolutePath());
    // A FIFO without a reader: neither deleted nor waited for.
    ASSERT_EQ(::mkfifo(path.constData(), 0600), 0);
    qblog::setupLogging(logPath().toStdString(), 0);
    struct stat status
    {
    };
    EXPECT_TRUE(::lstat(path.constData(), &status) == 0 && S_ISFIFO(status.st_mode));
    qblog::removeLogFileSink();
    ASSERT_EQ(::unlink(path.constData()), 0);
    // A link to /dev/null, whose size cannot be read, stays a link.
    ASSERT_EQ(::symlink("/dev/null", path.constData()), 0);
    qblog::setupLogging(logPath().toStdString(), 0);
    EXPECT_TRUE(QFileInfo(logPath()).isSymLink());
    qblog::removeLogFileSink();
    ASSERT_EQ(::unlink(path.constData()), 0);

    // A log that cannot be opened says so once on standard error.
    QTemporaryFile captured;
    ASSERT_TRUE(captured.open());
    ASSERT_TRUE(writeFileBytes(logPath(), {})); // a file where the path needs a folder
    const int savedError = ::dup(STDERR_FILENO);
    ::dup2(captured.handle(), STDERR_FILENO);
    qblog::setupLogging(logPath().toStdString() + "/inside-a-file");
    ::dup2(savedError, STDERR_FILENO);
    ::close(savedError);
    qblog::removeLogFileSink();
    const QByteArray reported = readFileBytes(captured.fileName());
    EXPECT_EQ(reported.count('\n'), 1) << reported.constData();
    EXPECT_TRUE(reported.startsWith("Cannot open the log file ")) << reported.constData();
}

TEST_F(LogTest, CallsBelowTheLevelLeaveNoTraceAnywhere)
{
    qblog::setupLogging(logPath().toStdString());
    qblog::setLogLevel(qblog::Level::Info);
    EXPECT_EQ(qblog::logLevelName(), "info");
    CapturedStdout captured;
    logDebug("hidden %d", 42);
    logDebugMessage(std::string_view("hidden too"));
    logInfo("shown");

    EXPECT_EQ(captured.text().find("hidden"), std::string::npos);
    EXPECT_FALSE(readFileBytes(logPath()).contains("hidden"));
    EXPECT_TRUE(qblog::recentLogLines(10, qblog::Level::Debug).empty());
    const auto info = qblog::recentLogLines(10, qblog::Level::Info);
    ASSERT_EQ(info.size(), 2u); // "Logging established" and "shown"
    EXPECT_TRUE(info[0].ends_with("] :  shown"));
}

TEST_F(LogTest, MessagesAreCutTo4095BytesAndMessageFormsKeepPercentSigns)
{
    logInfoMessage(std::string(5000, 'a'));
    logInfoMessage(QStringLiteral("100% sure, %s %d %n"));
    logWarningMessage("50%");

    const auto info = qblog::recentLogLines(2, qblog::Level::Info);
    ASSERT_EQ(info.size(), 2u);
    EXPECT_TRUE(info[0].ends_with("] :  100% sure, %s %d %n"));
    const std::string cut = info[1].substr(info[1].find("] :  ") + 5);
    EXPECT_EQ(cut, std::string(4095, 'a'));
    EXPECT_TRUE(qblog::recentLogLines(1, qblog::Level::Warning)[0].ends_with("] :  50%"));
}

TEST_F(LogTest, HistoryKeepsTheNewest4096LinesAndWarningsAreCountedUpTo101)
{
    for (int i = 0; i < 4100; ++i) {
        logInfo("line %d", i);
    }
    const auto all = qblog::recentLogLines(10000, qblog::Level::Info);
    ASSERT_EQ(all.size(), 4096u);
    EXPECT_TRUE(all.front().ends_with("line 4099"));
    EXPECT_TRUE(all.back().ends_with("line 4"));

    for (int i = 0; i < 3; ++i) {
        logWarning("warning %d", i);
    }
    EXPECT_EQ(qblog::numberOfWarnings(), 3u);
    for (int i = 0; i < 147; ++i) {
        logWarning("warning %d", i);
    }
    EXPECT_EQ(qblog::numberOfWarnings(), 101u);
}

TEST_F(LogTest, LinesFromManyThreadsAllReachTheHistoryWhole)
{
    constexpr int kThreads = 4;
    constexpr int kLinesEach = 250;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < kLinesEach; ++i) {
                logWarning("thread %d line %d", t, i);
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    const auto warnings = qblog::recentLogLines(10000, qblog::Level::Warning);
    ASSERT_EQ(warnings.size(), static_cast<std::size_t>(kThreads * kLinesEach));
    for (int t = 0; t < kThreads; ++t) {
        const std::string last =
            "thread " + std::to_string(t) + " line " + std::to_string(kLinesEach - 1);
        EXPECT_EQ(std::count_if(warnings.begin(), warnings.end(),
                                [&](const std::string& line) { return line.ends_with(last); }),
                  1);
    }
}

} // namespace
