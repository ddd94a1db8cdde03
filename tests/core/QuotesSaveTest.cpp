#include "core/QuotesRepository.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

class TestRepository : public CQuotesRepository
{
public:
    TestRepository() = default;
};

std::vector<CQuoteRecord> makeRecords(int count, char fill)
{
    std::vector<CQuoteRecord> records;
    for (int index = 0; index < count; ++index) {
        records.emplace_back(std::string(250, fill), "");
    }
    return records;
}

// Makes a folder refuse new files. Root ignores permission bits, so for root the
// folder is made immutable instead (ext4 and most other disk file systems allow it).
class UnwritableFolder
{
public:
    explicit UnwritableFolder(const QString& path) : mPath(path.toStdString())
    {
        if (::geteuid() != 0) {
            mApplied = ::chmod(mPath.c_str(), 0500) == 0;
            return;
        }
        mDescriptor = ::open(mPath.c_str(), O_RDONLY | O_DIRECTORY);
        int flags = 0;
        mApplied = mDescriptor >= 0 && ::ioctl(mDescriptor, FS_IOC_GETFLAGS, &flags) == 0;
        flags |= FS_IMMUTABLE_FL;
        mApplied = mApplied && ::ioctl(mDescriptor, FS_IOC_SETFLAGS, &flags) == 0;
    }
    ~UnwritableFolder()
    {
        if (mDescriptor < 0) {
            ::chmod(mPath.c_str(), 0700);
            return;
        }
        int flags = 0;
        ::ioctl(mDescriptor, FS_IOC_GETFLAGS, &flags);
        flags &= ~FS_IMMUTABLE_FL;
        ::ioctl(mDescriptor, FS_IOC_SETFLAGS, &flags);
        ::close(mDescriptor);
    }
    bool applied() const { return mApplied; }

private:
    std::string mPath;
    int mDescriptor = -1;
    bool mApplied = false;
};

class QuotesSaveTest : public ::testing::Test
{
protected:
    QuotesSaveTest()
    {
        QDir().mkpath(mFolder);
        mRepository.mFilePath = databasePath().toStdString();
        mRepository.mQuotes = makeRecords(2, 'a');
        mRepository.saveQuotes();
        mOldBytes = readFileBytes(databasePath());
        mRepository.mQuotes = makeRecords(100, 'b');
        qblog::clearLogHistory();
    }

    QString databasePath() const { return mFolder + QStringLiteral("/quotes.db"); }

    void expectFailedSaveLeftOldFileAlone()
    {
        EXPECT_TRUE(mRepository.saveQuotes());
        const auto warnings = qblog::recentLogLines(10, qblog::Level::Warning);
        ASSERT_EQ(1u, warnings.size());
        EXPECT_TRUE(warnings[0].ends_with("Failed to write quotes to disk")) << warnings[0];
        EXPECT_EQ(mOldBytes, readFileBytes(databasePath()));
        EXPECT_EQ(QStringList{QStringLiteral("quotes.db")},
                  QDir(mFolder).entryList(QDir::Files | QDir::Hidden | QDir::System));
    }

    QBTestHome mHome;
    const QString mFolder = mHome.filePath(QStringLiteral("db"));
    TestRepository mRepository;
    QByteArray mOldBytes;
};

} // namespace

TEST_F(QuotesSaveTest, UnwritableFolderLeavesTheOldFile)
{
    UnwritableFolder unwritable(mFolder);
    if (!unwritable.applied()) {
        GTEST_SKIP() << "cannot make a folder unwritable here";
    }
    expectFailedSaveLeftOldFileAlone();
}

TEST_F(QuotesSaveTest, WriteFailingHalfWayLeavesTheOldFile)
{
    // A file size limit makes write() fail part-way, as a full disk would.
    rlimit previous{};
    ::getrlimit(RLIMIT_FSIZE, &previous);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = previous;
    small.rlim_cur = 4096;
    ::setrlimit(RLIMIT_FSIZE, &small);
    expectFailedSaveLeftOldFileAlone();
    ::setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);
}

TEST_F(QuotesSaveTest, SymbolicLinkIsKeptAndItsTargetReplacedWithItsPermissions)
{
    const QString target = mHome.filePath(QStringLiteral("elsewhere/target.db"));
    ASSERT_TRUE(writeFileBytes(target, mOldBytes));
    ::chmod(target.toLocal8Bit().constData(), 0640);
    QFile::remove(databasePath());
    ASSERT_EQ(0, ::symlink("../elsewhere/target.db", databasePath().toLocal8Bit().constData()));

    mRepository.saveQuotes();
    EXPECT_TRUE(QFileInfo(databasePath()).isSymLink());
    struct stat status
    {
    };
    ASSERT_EQ(0, ::stat(target.toLocal8Bit().constData(), &status));
    EXPECT_EQ(0640u, status.st_mode & 07777);
    TestRepository reader;
    reader.mFilePath = mRepository.mFilePath;
    reader.loadQuotes();
    EXPECT_EQ(100u, reader.mQuotes.size());
    EXPECT_EQ(1, QDir(mHome.filePath(QStringLiteral("elsewhere"))).entryList(QDir::Files).size());
}

// Another process (the helper) may read the file at any moment, and the saving one may
// be killed at any moment: either way only a whole old or whole new file may be seen.
TEST_F(QuotesSaveTest, ReadersAndKillsNeverSeeAHalfWrittenFile)
{
    const std::vector<CQuoteRecord> small = makeRecords(2, 'a');
    const std::vector<CQuoteRecord> large = makeRecords(4000, 'c');
    writeQuotesFile(mRepository.mFilePath, large);
    const QByteArray largeBytes = readFileBytes(databasePath());
    writeQuotesFile(mRepository.mFilePath, small);
    const QByteArray smallBytes = readFileBytes(databasePath());

    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        for (int round = 0; round < 100000; ++round) {
            writeQuotesFile(mRepository.mFilePath, round % 2 ? small : large);
        }
        ::_exit(0);
    }
    int reads = 0;
    int tornReads = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(400);
    while (std::chrono::steady_clock::now() < end) {
        const QByteArray bytes = readFileBytes(databasePath());
        tornReads += bytes == smallBytes || bytes == largeBytes ? 0 : 1;
        ++reads;
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(0, tornReads) << "of " << reads << " reads";
    const QByteArray bytes = readFileBytes(databasePath());
    EXPECT_TRUE(bytes == smallBytes || bytes == largeBytes) << bytes.size() << " bytes";
}
