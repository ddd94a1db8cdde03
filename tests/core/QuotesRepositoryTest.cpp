#include "core/QuotesRepository.h"
#include "core/UUIDGenerator.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <linux/fs.h>
#include <regex>
#include <set>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <tuple>
#include <unistd.h>

namespace {

using Strings = std::vector<std::string>;

bool isVersion4UUIDText(const std::string& text)
{
    static const std::regex pattern(
        "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    return std::regex_match(text, pattern);
}

std::vector<CQuoteRecord> makeRecords(int count, char fill)
{
    return std::vector<CQuoteRecord>(count, CQuoteRecord(std::string(250, fill), "id"));
}

// Makes |folder| refuse new files, or accept them again. Root ignores permission bits, so
// for root the folder is made immutable instead (most disk file systems allow it).
bool setUnwritable(const QString& folder, bool unwritable)
{
    const std::string path = folder.toStdString();
    if (::geteuid() != 0) {
        return ::chmod(path.c_str(), unwritable ? 0500 : 0700) == 0;
    }
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY);
    int flags = 0;
    bool done = ::ioctl(descriptor, FS_IOC_GETFLAGS, &flags) == 0;
    flags = unwritable ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
    done = done && ::ioctl(descriptor, FS_IOC_SETFLAGS, &flags) == 0;
    ::close(descriptor);
    return done;
}

// A repository of its own for each test; the process-wide one stays untouched.
struct TestRepository : CQuotesRepository
{
};

class QuotesRepositoryTest : public ::testing::Test
{
protected:
    QuotesRepositoryTest()
    {
        QDir().mkpath(mFolder);
        mRepository.mFilePath = inFolder(QStringLiteral("quotes.db")).toStdString();
        qblog::clearLogHistory();
    }

    QString inFolder(const QString& name) const { return mFolder + QLatin1Char('/') + name; }
    QByteArray fileBytes() const { return readFileBytes(inFolder(QStringLiteral("quotes.db"))); }
    QStringList files() const
    {
        return QDir(mFolder).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
    Strings contents() const
    {
        Strings result;
        for (const CQuoteRecord& record : mRepository.mQuotes) {
            result.push_back(record.mContent);
        }
        return result;
    }
    // Messages logged at |level| since the history was last cleared, oldest first.
    static Strings logged(qblog::Level level)
    {
        Strings messages;
        for (const std::string& line : qblog::recentLogLines(100, level)) {
            messages.insert(messages.begin(), line.substr(line.find("] :  ") + 5));
        }
        return messages;
    }

    QBTestHome mHome;
    const QString mFolder = mHome.filePath(QStringLiteral("db"));
    TestRepository mRepository;
};

} // namespace

TEST(QuoteRecordTest, DescriptionShowsAddressAndFieldsCutTo511Bytes)
{
    const CQuoteRecord record("Short 100% text", "id-1");
    EXPECT_EQ(QString::asprintf("<CQuoteRecord %p> { mUID = id-1, mContent = Short 100%% text",
                                static_cast<const void*>(&record)),
              QString::fromStdString(record.description()));
    const std::string cut = CQuoteRecord(std::string(1000, 'x'), "id").description();
    EXPECT_EQ(511u, cut.size());
    EXPECT_EQ(std::string(20, 'x'), cut.substr(491));
}

TEST(UUIDTest, WordsBecomeLittleEndianBytesWithVersionAndVariantBits)
{
    EXPECT_EQ("00010203-0405-4607-8809-0a0b0c0d0e0f",
              uuidTextFromWords({0x03020100, 0x07060504, 0x0b0a0908, 0x0f0e0d0c}));
    EXPECT_EQ("00000000-0000-4000-8000-000000000000", uuidTextFromWords({0, 0, 0, 0}));
    EXPECT_EQ("ffffffff-ffff-4fff-bfff-ffffffffffff",
              uuidTextFromWords({0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}));
}

TEST(UUIDTest, IdentifiersFromManyThreadsAreWellFormedAndUnique)
{
    Strings made(20000);
    {
        std::vector<std::jthread> threads;
        for (auto part = made.begin(); part != made.end(); part += 5000) {
            threads.emplace_back([part] { std::generate(part, part + 5000, generateUUIDString); });
        }
    }
    EXPECT_EQ(made.size(), std::set<std::string>(made.begin(), made.end()).size());
    for (const std::string& identifier : made) {
        ASSERT_TRUE(isVersion4UUIDText(identifier)) << identifier;
    }
}

TEST_F(QuotesRepositoryTest, InsertFindAndRemove)
{
    // The index is compared as unsigned: negative or past the end appends.
    mRepository.insertQuote(CQuoteRecord("b", "one"), 0);
    mRepository.insertQuote(CQuoteRecord("c", "two"), -1);
    mRepository.insertQuote(CQuoteRecord("d", "one"), 2);
    mRepository.insertQuote(CQuoteRecord("a", "ONE"), 0);
    mRepository.insertQuote(CQuoteRecord("x", ""), 1);
    mRepository.addNewQuote();
    EXPECT_EQ((Strings{"a", "x", "b", "c", "d", ""}), contents());
    for (const std::size_t fresh : {1, 5}) {
        EXPECT_TRUE(isVersion4UUIDText(mRepository.mQuotes[fresh].mUID));
    }
    // Identifiers match exactly, case included.
    EXPECT_EQ(&mRepository.mQuotes[2], mRepository.findQuote("one"));
    EXPECT_EQ(nullptr, mRepository.findQuote("on"));
    EXPECT_EQ(0u, mRepository.indexOfQuote("ONE"));
    EXPECT_EQ(6u, mRepository.indexOfQuote("unknown"));
    mRepository.removeQuote("one");
    EXPECT_EQ((Strings{"a", "x", "c", ""}), contents());
    mRepository.removeAllQuotes();
    EXPECT_TRUE(mRepository.mQuotes.empty());
}

TEST_F(QuotesRepositoryTest, LoadSaveRoundTripAndLog)
{
    mRepository.addNewQuote();
    mRepository.loadQuotes(); // no file yet: nothing read, and nothing to copy aside
    EXPECT_TRUE(mRepository.mQuotes.empty());
    mRepository.insertQuote(CQuoteRecord("first", "id-1"), -1);
    mRepository.insertQuote(CQuoteRecord("second", ""), -1);
    const std::string freshUID = mRepository.mQuotes[1].mUID;
    mRepository.saveQuotes();
    mRepository.addNewQuote();
    mRepository.loadQuotes();
    EXPECT_EQ((Strings{"first", "second"}), contents());
    EXPECT_EQ(freshUID, mRepository.mQuotes[1].mUID);

    const std::string read = " quotes read from database at '" + mRepository.mFilePath + "'";
    mRepository.mFilePath.clear();
    mRepository.saveQuotes();
    EXPECT_EQ((Strings{"0" + read, "Saving quotes", "2" + read, "Saving quotes"}),
              logged(qblog::Level::Info));
    EXPECT_EQ((Strings{"Failed to read quotes from disk",
                       "No file path for quotes specified - Cannot save quotes."}),
              logged(qblog::Level::Warning));
    EXPECT_EQ(QStringList{QStringLiteral("quotes.db")}, files());
}

TEST_F(QuotesRepositoryTest, DamagedFileIsReadUpToTheFaultAndCopiedAside)
{
    const QByteArray twoGood =
        R"({"Quotes": [{"UID": "a", "Content": "1"}, {"UID": "b", "Content": "2"},)";
    using Case = std::tuple<const char*, QByteArray, Strings>; // file name, bytes, records read
    for (const auto& [name, bytes, read] : std::initializer_list<Case>{
             {"not-json", "Quotes: none", {}},
             {"cut-short", twoGood, {}},
             {"empty", "", {}},
             {"no-quotes-member", R"({"Other": []})", {}},
             {"no-content", twoGood + R"({"UID": "c"}]})", {"1", "2"}},
             {"no-uid", twoGood + R"({"Content": "3"}]})", {"1", "2"}},
         }) {
        const QString path = inFolder(QString::fromLatin1(name));
        ASSERT_TRUE(writeFileBytes(path, bytes));
        mRepository.mFilePath = path.toStdString();
        mRepository.addNewQuote();
        qblog::clearLogHistory();
        for (int load = 0; load < 2; ++load) {
            mRepository.loadQuotes();
            EXPECT_EQ(read, contents()) << name;
        }
        EXPECT_EQ(bytes, readFileBytes(path)) << name;
        const QStringList copies =
            QDir(mFolder).entryList({QString::fromLatin1(name) + QStringLiteral(".damaged-*")});
        ASSERT_EQ(1, copies.size()) << name; // the same damage is copied once
        EXPECT_EQ(bytes, readFileBytes(inFolder(copies[0]))) << name;
        EXPECT_EQ((Strings{"Failed to read quotes from disk",
                           "Kept a copy of the damaged quotes database at '" +
                               inFolder(copies[0]).toStdString() + "'",
                           "Failed to read quotes from disk"}),
                  logged(qblog::Level::Warning))
            << name;
    }
}

TEST_F(QuotesRepositoryTest, FailedSaveLeavesTheOldFileAndNothingElse)
{
    mRepository.mQuotes = makeRecords(2, 'a');
    mRepository.saveQuotes();
    const QByteArray old = fileBytes();
    mRepository.mQuotes = makeRecords(100, 'b');
    const auto expectFailedSave = [&] {
        qblog::clearLogHistory();
        mRepository.saveQuotes();
        const Strings warnings = logged(qblog::Level::Warning);
        ASSERT_EQ(2u, warnings.size());
        EXPECT_EQ("Failed to write quotes to disk", warnings[0]);
        EXPECT_EQ(0u, warnings[1].rfind("Writing the quotes database failed: ", 0)) << warnings[1];
        EXPECT_EQ(old, fileBytes());
        EXPECT_EQ(QStringList{QStringLiteral("quotes.db")}, files());
    };
    // A file size limit makes write() fail part-way, as a full disk would.
    rlimit previous{};
    ::getrlimit(RLIMIT_FSIZE, &previous);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = previous;
    small.rlim_cur = 4096;
    ::setrlimit(RLIMIT_FSIZE, &small);
    expectFailedSave();
    ::setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);

    if (!setUnwritable(mFolder, true)) {
        GTEST_SKIP() << "cannot make a folder unwritable here";
    }
    expectFailedSave();
    setUnwritable(mFolder, false);
}

TEST_F(QuotesRepositoryTest, SymbolicLinkIsKeptAndItsTargetReplacedWithItsPermissions)
{
    namespace fs = std::filesystem;
    const std::string target = mHome.stdPath(QStringLiteral("elsewhere/target.db"));
    ASSERT_TRUE(QDir().mkpath(mHome.filePath(QStringLiteral("elsewhere"))));
    writeQuotesFile(target, makeRecords(1, 'a'));
    fs::permissions(target, fs::perms(0640));
    fs::create_symlink("../elsewhere/target.db", mRepository.mFilePath);
    mRepository.loadQuotes();
    mRepository.insertQuote(CQuoteRecord("new", "id"), 0);
    mRepository.saveQuotes();

    EXPECT_TRUE(fs::is_symlink(mRepository.mFilePath));
    EXPECT_EQ(fs::perms(0640), fs::status(target).permissions());
    std::vector<CQuoteRecord> read;
    readQuotesFile(target, read);
    EXPECT_EQ("new", read.at(0).mContent);
    EXPECT_EQ(1, QDir(mHome.filePath(QStringLiteral("elsewhere"))).entryList(QDir::Files).size());
}

// Another process (the helper) may read the file at any moment, and the saving one may
// be killed at any moment: either way only a whole old or whole new file may be seen.
TEST_F(QuotesRepositoryTest, ReadersAndKillsNeverSeeAHalfWrittenFile)
{
    const std::vector<CQuoteRecord> versions[] = {makeRecords(2, 'a'), makeRecords(4000, 'c')};
    std::set<QByteArray> whole;
    for (const auto& records : versions) {
        writeQuotesFile(mRepository.mFilePath, records);
        whole.insert(fileBytes());
    }
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        for (int round = 0; round < 100000; ++round) {
            writeQuotesFile(mRepository.mFilePath, versions[round % 2]);
        }
        ::_exit(0);
    }
    int torn = 0;
    for (const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(400);
         std::chrono::steady_clock::now() < end;) {
        torn += whole.contains(fileBytes()) ? 0 : 1;
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(0, torn);
    EXPECT_TRUE(whole.contains(fileBytes()));
}
