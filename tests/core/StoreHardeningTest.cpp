// The store under a careless or hostile environment: other writers, odd files where a
// database is expected, missing permissions, kills in the middle of a save.
#include "StoreToolCollections.h"
#include "core/QuotesDocument.h"
#include "core/QuotesRepository.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>
#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <grp.h>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Strings = std::vector<std::string>;
const QString kTool = QStringLiteral(QB_STORE_TOOL);

struct TestRepository : CQuotesRepository
{
};

std::string documentOf(const std::vector<CQuoteRecord>& records)
{
    std::ostringstream stream;
    writeQuotesDocument(stream, records);
    return stream.str();
}

bool contains(const Strings& lines, const std::string& fragment)
{
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
        return line.find(fragment) != std::string::npos;
    });
}

mode_t modeOf(const std::string& path)
{
    struct stat status
    {
    };
    ::lstat(path.c_str(), &status);
    return status.st_mode;
}

// Runs the store tool and returns its standard output; |asUser| drops root first.
QString runTool(const QStringList& arguments, const passwd* asUser = nullptr)
{
    QProcess process;
    if (asUser) {
        const uid_t uid = asUser->pw_uid;
        const gid_t gid = asUser->pw_gid;
        process.setChildProcessModifier([uid, gid] {
            if (::setgroups(0, nullptr) != 0 || ::setgid(gid) != 0 || ::setuid(uid) != 0) {
                ::_exit(99);
            }
        });
    }
    process.start(kTool, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(0, process.exitCode()) << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

class StoreHardeningTest : public ::testing::Test
{
protected:
    StoreHardeningTest()
    {
        QDir().mkpath(QString::fromStdString(mFolder));
        mRepository.mFilePath = mPath;
        qblog::clearLogHistory();
    }

    Strings logged(qblog::Level level) const
    {
        Strings lines;
        for (const std::string& line : qblog::recentLogLines(1000, level)) {
            lines.insert(lines.begin(), line.substr(line.find("] :  ") + 5));
        }
        return lines;
    }
    QStringList filesLike(const QString& pattern) const
    {
        return QDir(QString::fromStdString(mFolder))
            .entryList({pattern}, QDir::Files | QDir::System);
    }
    std::string bytes() const { return readFileBytes(QString::fromStdString(mPath)).toStdString(); }

    QBTestHome mHome;
    std::string mFolder = mHome.stdPath(QStringLiteral("db"));
    std::string mPath = mFolder + "/quotes.db";
    TestRepository mRepository;
};

TEST_F(StoreHardeningTest, AnotherProcesssSaveIsKeptAsACopyBeforeOursReplacesIt)
{
    writeQuotesFile(mPath, generatedCollection(3, 'a'));
    mRepository.loadQuotes();
    runTool({QStringLiteral("load-add-save"), QString::fromStdString(mPath)});
    const std::string theirs = bytes();
    ASSERT_NE(theirs.find("added by another process"), std::string::npos);

    mRepository.addNewQuote()->mContent = "ours";
    mRepository.saveQuotes();
    const QStringList copies = filesLike(QStringLiteral("quotes.db.conflict-*"));
    ASSERT_EQ(1, copies.size());
    const std::string copy = mFolder + "/" + copies[0].toStdString();
    EXPECT_EQ(theirs, readFileBytes(QString::fromStdString(copy)).toStdString());
    EXPECT_TRUE(contains(logged(qblog::Level::Warning), "kept its version at '" + copy + "'"));
    EXPECT_NE(bytes().find("ours"), std::string::npos);

    mRepository.saveQuotes(); // our own last save is no other writer's
    EXPECT_EQ(1, filesLike(QStringLiteral("quotes.db.conflict-*")).size());
}

TEST_F(StoreHardeningTest, RepeatedIdentifiersGetFreshOnesAtLoadAndTheNextSaveKeepsThem)
{
    writeQuotesFile(mPath, {CQuoteRecord("1", "a"), CQuoteRecord("2", "a"), CQuoteRecord("3", "b"),
                            CQuoteRecord("4", "a")});
    mRepository.loadQuotes();
    ASSERT_EQ(4u, mRepository.mQuotes.size());
    EXPECT_EQ("a", mRepository.mQuotes[0].mUID);
    EXPECT_EQ("b", mRepository.mQuotes[2].mUID);
    std::set<std::string> uids;
    for (const CQuoteRecord& record : mRepository.mQuotes) {
        uids.insert(record.mUID);
    }
    EXPECT_EQ(4u, uids.size());
    const Strings info = logged(qblog::Level::Info);
    EXPECT_EQ(2, std::count_if(info.begin(), info.end(), [](const std::string& line) {
                  return line.find("repeated the identifier 'a'") != line.npos;
              }));
    const std::string second = mRepository.mQuotes[1].mUID;
    mRepository.removeQuote(second); // removes that one record only
    EXPECT_EQ(3u, mRepository.mQuotes.size());
    mRepository.saveQuotes();
    std::vector<CQuoteRecord> saved;
    readQuotesFile(mPath, saved);
    EXPECT_EQ(mRepository.mQuotes[2].mUID, saved.at(2).mUID);
}

TEST_F(StoreHardeningTest, FilesThatCannotBeReadOrWrittenAreNeverReplaced)
{
    // A read-only file stays as it is, even for root.
    writeQuotesFile(mPath, generatedCollection(2, 'r'));
    const std::string original = bytes();
    mRepository.loadQuotes();
    ::chmod(mPath.c_str(), 0444);
    mRepository.addNewQuote();
    qblog::clearLogHistory();
    mRepository.saveQuotes();
    EXPECT_EQ(
        (Strings{"Failed to write quotes to disk", "Writing the quotes database failed: " + mPath +
                                                       " is read-only: Permission denied"}),
        logged(qblog::Level::Warning));
    EXPECT_EQ(original, bytes());
    EXPECT_EQ(0444u, modeOf(mPath) & 07777);
    ::unlink(mPath.c_str());

    // A FIFO fails the load at once; with nothing copied, no save may replace it.
    ASSERT_EQ(0, ::mkfifo(mPath.c_str(), 0600));
    int told = 0;
    std::string toldReason;
    mRepository.setSaveRefusedObserver([&](const std::string& path, const std::string& reason) {
        ++told;
        toldReason = reason;
        EXPECT_EQ(mPath, path);
    });
    mRepository.loadQuotes();
    EXPECT_TRUE(mRepository.isSavingRefused());
    qblog::clearLogHistory();
    mRepository.saveQuotes();
    mRepository.saveQuotes();
    EXPECT_TRUE(S_ISFIFO(modeOf(mPath)));
    EXPECT_EQ(1, told);
    EXPECT_EQ(mPath + " is not a regular file: Invalid argument", toldReason);
    const Strings warnings = logged(qblog::Level::Warning);
    EXPECT_EQ(2, std::count(warnings.begin(), warnings.end(),
                            "Not saving over '" + mPath +
                                "' until it is fixed: it could not be read (" + toldReason +
                                ") and no copy of it could be kept"));

    // Without read permission (as an unprivileged user, since root reads anything).
    const passwd* nobody = ::getpwnam("nobody");
    if (!nobody || ::geteuid() != 0) {
        GTEST_SKIP() << "needs root and a 'nobody' user to test missing read permission";
    }
    ::unlink(mPath.c_str());
    writeQuotesFile(mPath, generatedCollection(2, 'u'));
    const std::string unreadable = bytes();
    ::chmod(mPath.c_str(), 0200);
    ::chmod(mHome.stdPath(QString()).c_str(), 0755);
    ASSERT_EQ(0, ::chown(mFolder.c_str(), nobody->pw_uid, nobody->pw_gid));
    ASSERT_EQ(0, ::chown(mPath.c_str(), nobody->pw_uid, nobody->pw_gid));
    const QString output =
        runTool({QStringLiteral("load-add-save"), QString::fromStdString(mPath)}, nobody);
    EXPECT_TRUE(output.contains(QStringLiteral("Failed to keep a copy of the damaged quotes")));
    EXPECT_TRUE(
        output.contains(QStringLiteral("Not saving over '%1'").arg(QString::fromStdString(mPath))))
        << output.toStdString();
    EXPECT_EQ(unreadable, bytes());
    EXPECT_TRUE(filesLike(QStringLiteral("quotes.db.*")).isEmpty());
}

TEST_F(StoreHardeningTest, DeepNestingAndOddFilesFailTheLoadWithoutCrashOrHang)
{
    std::vector<CQuoteRecord> records;
    EXPECT_THROW(readQuotesDocument("{\"Quotes\": " + std::string(100000, '['), "deep", records),
                 std::runtime_error);
    const std::string nested = R"({"Quotes": [{"UID": "x", "Content": "c", "More": )" +
                               std::string(500, '[') + std::string(500, ']') + "}]}";
    readQuotesDocument(nested, "nested", records); // deep, but within the limit
    EXPECT_EQ(1u, records.size());

    ASSERT_TRUE(
        writeFileBytes(QString::fromStdString(mPath), "{\"Quotes\": " + QByteArray(100000, '[')));
    mRepository.loadQuotes();
    EXPECT_TRUE(mRepository.mQuotes.empty());
    EXPECT_FALSE(mRepository.isSavingRefused()); // the damaged file was copied
    EXPECT_EQ(1, filesLike(QStringLiteral("quotes.db.damaged-*")).size());
}

TEST_F(StoreHardeningTest, DamagedCopiesAreMadeOnlyForNewDamageAndAtMostThreeStay)
{
    for (int round = 0; round < 5; ++round) {
        const QByteArray damage = "damage " + QByteArray::number(round);
        ASSERT_TRUE(writeFileBytes(QString::fromStdString(mPath), damage));
        mRepository.loadQuotes();
        mRepository.loadQuotes(); // the same damage again: no second copy
        const QStringList copies = filesLike(QStringLiteral("quotes.db.damaged-*"));
        EXPECT_EQ(std::min(round + 1, 3), copies.size());
        EXPECT_EQ(damage,
                  readFileBytes(QString::fromStdString(mFolder) + QLatin1Char('/') + copies.last()))
            << "the newest copy sorts last";
    }
    EXPECT_TRUE(filesLike(QStringLiteral("*.saving-*")).isEmpty());
}

TEST_F(StoreHardeningTest, DatabaseNamesAtTheSystemLimitsStillSave)
{
    // A file name of NAME_MAX bytes, and a whole path of PATH_MAX - 1 bytes.
    std::string longName = mFolder + "/" + std::string(NAME_MAX, 'q');
    std::string deep = mFolder;
    while (deep.size() + 1 + NAME_MAX + 1 + 16 < PATH_MAX) {
        deep += "/" + std::string(NAME_MAX, 'd');
    }
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(deep)));
    const std::string longPath = deep + "/" + std::string(PATH_MAX - 1 - deep.size() - 1, 'p');
    ASSERT_EQ(static_cast<std::size_t>(PATH_MAX - 1), longPath.size());
    for (const std::string& path : {longName, longPath}) {
        mRepository.mFilePath = path;
        mRepository.mQuotes = generatedCollection(5, 'l');
        qblog::clearLogHistory();
        mRepository.saveQuotes();
        mRepository.loadQuotes();
        EXPECT_EQ(5u, mRepository.mQuotes.size()) << path.size();
        EXPECT_TRUE(logged(qblog::Level::Warning).empty()) << path.size();
    }
    // Copies of a damaged file there have longer paths than the limit, yet are compared
    // and kept once.
    ASSERT_TRUE(writeFileBytes(QString::fromStdString(longPath), "damage"));
    mRepository.loadQuotes();
    mRepository.loadQuotes();
    EXPECT_FALSE(mRepository.isSavingRefused());
    EXPECT_EQ(1,
              QDir(QString::fromStdString(deep)).entryList({QStringLiteral("*.damaged-*")}).size());
}

// A save killed at a random moment leaves the old or the new file, never a mix, and the
// next load removes what the killed saves left behind.
TEST_F(StoreHardeningTest, KilledSavesOfALargeCollectionLeaveAWholeFileAndNoLeftovers)
{
    constexpr int kQuotes = 100000;
    writeQuotesFile(mPath, generatedCollection(kQuotes, 'o'));
    const std::set<std::string> whole = {documentOf(generatedCollection(kQuotes, 'o')),
                                         documentOf(generatedCollection(kQuotes, 'n'))};
    int leftovers = 0;
    for (int kill = 0; kill < 8; ++kill) {
        QProcess saver;
        saver.start(kTool, {QStringLiteral("save-loop"), QString::fromStdString(mPath),
                            QString::number(kQuotes)});
        ASSERT_TRUE(saver.waitForReadyRead(30000));
        QThread::msleep(QRandomGenerator::global()->bounded(50, 900));
        ::kill(static_cast<pid_t>(saver.processId()), SIGKILL);
        saver.waitForFinished(30000);
        EXPECT_TRUE(whole.contains(bytes())) << "after kill " << kill;
        leftovers += filesLike(QStringLiteral("quotes.db.saving-*")).size();
    }
    EXPECT_GT(leftovers, 0) << "no kill hit a save in progress";
    runTool({QStringLiteral("load"), QString::fromStdString(mPath)});
    EXPECT_TRUE(filesLike(QStringLiteral("quotes.db.*")).isEmpty());
}

} // namespace
