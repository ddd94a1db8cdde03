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
#include <cerrno>
#include <cstring>
#include <functional>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <tuple>
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

TEST_F(LogTest, EveryLevelGoesToFileAndStdoutAlikeAndCallsBelowTheLevelLeaveNoTrace)
{
    CapturedStdout captured;
    qblog::setupLogging(logPath().toStdString()); // creates the missing Logs folder
    logDebug("d %d", 1);
    logInfo("i %s", "two");
    logWarning("w");
    logError("e");
    qblog::setLogLevel(qblog::Level::Info);
    EXPECT_EQ(qblog::logLevelName(), "info");
    logDebug("hidden %d", 42);
    logDebugMessage(std::string_view("hidden too"));

    const auto fileLines = lines(readFileBytes(logPath()));
    const std::regex fileLine(R"(\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}: \[[a-z]+\]   .*)");
    const char* endings[] = {": [info]   Logging established (level: debug)", ": [debug]   d 1",
                             ": [info]   i two", ": [warning]   w", ": [error]   e"};
    ASSERT_EQ(fileLines.size(), std::size(endings));
    for (std::size_t index = 0; index < fileLines.size(); ++index) {
        EXPECT_TRUE(fileLines[index].ends_with(endings[index])) << fileLines[index];
        EXPECT_TRUE(std::regex_match(fileLines[index], fileLine)) << fileLines[index];
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
    EXPECT_EQ(qblog::recentLogLines(1, qblog::Level::Info).size(), 1u);
}

// A log that cannot be opened says so once on standard error, and nothing waits.
TEST_F(LogTest, SetupDeletesOnlyARegularFileLargerThan256000Bytes)
{
    const QByteArray path = QFile::encodeName(logPath());
    QDir().mkpath(QFileInfo(logPath()).absolutePath());
    QTemporaryFile captured;
    ASSERT_TRUE(captured.open());
    const int savedError = ::dup(STDERR_FILENO);
    ::dup2(captured.handle(), STDERR_FILENO);
    const QByteArray full(256000, 'x');
    const std::tuple<const char*, std::function<void()>, bool> cases[] = {
        {"256000 bytes", [&] { writeFileBytes(logPath(), full); }, true},
        {"256001 bytes", [&] { writeFileBytes(logPath(), full + 'x'); }, false},
        {"FIFO", [&] { ::mkfifo(path.constData(), 0600); }, true},
        {"link to /dev/null", [&] { ::symlink("/dev/null", path.constData()); }, true},
    };
    for (const auto& [what, make, kept] : cases) {
        make();
        struct stat before
        {
        };
        ::lstat(path.constData(), &before);
        qblog::setupLogging(logPath().toStdString());
        qblog::removeLogFileSink();
        struct stat after
        {
        };
        ::lstat(path.constData(), &after);
        EXPECT_EQ(after.st_mode & S_IFMT, before.st_mode & S_IFMT) << what;
        if (S_ISREG(after.st_mode)) {
            const QByteArray content = readFileBytes(logPath());
            EXPECT_EQ(content.startsWith(full), kept) << what;
            EXPECT_TRUE(content.endsWith("Logging established (level: debug)\n")) << what;
        }
        ::unlink(path.constData());
    }
    ASSERT_TRUE(writeFileBytes(logPath(), {}));
    qblog::setupLogging(logPath().toStdString() + "/inside-a-file");
    ::dup2(savedError, STDERR_FILENO);
    ::close(savedError);
    EXPECT_EQ(lines(readFileBytes(captured.fileName())),
              (std::vector<std::string>{"Cannot open the log file " + path.toStdString() + ": " +
                                            std::strerror(ENXIO),
                                        "Cannot open the log file " + path.toStdString() +
                                            "/inside-a-file: " + std::strerror(ENOTDIR)}));
}

TEST_F(LogTest, MessagesAreCutKeepTheirPercentSignsAndTheHistoryIsBounded)
{
    logInfoMessage(std::string(5000, 'a'));
    logInfoMessage(QStringLiteral("100% sure, %s %d %n"));
    const auto info = qblog::recentLogLines(2, qblog::Level::Info);
    ASSERT_EQ(info.size(), 2u);
    EXPECT_TRUE(info[0].ends_with("] :  100% sure, %s %d %n"));
    EXPECT_EQ(info[1].substr(info[1].find("] :  ") + 5), std::string(4095, 'a'));

    for (int i = 0; i < 4100; ++i) {
        logInfo("line %d", i);
    }
    const auto all = qblog::recentLogLines(10000, qblog::Level::Info);
    ASSERT_EQ(all.size(), 4096u);
    EXPECT_TRUE(all.front().ends_with("line 4099"));
    EXPECT_TRUE(all.back().ends_with("line 4"));

    for (int i = 0; i < 3; ++i) {
        logWarningMessage("50%");
    }
    EXPECT_EQ(qblog::numberOfWarnings(), 3u);
    EXPECT_TRUE(qblog::recentLogLines(1, qblog::Level::Warning)[0].ends_with("] :  50%"));
    for (int i = 0; i < 147; ++i) {
        logWarning("warning %d", i);
    }
    EXPECT_EQ(qblog::numberOfWarnings(), 101u);
}

} // namespace
