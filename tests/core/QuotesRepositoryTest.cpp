// The repository and its file, also with other writers, odd files, missing permissions,
// full disks and kills in the middle of a save.
#include "core/QuotesRepository.h"
#include "StoreToolCollections.h"
#include "core/QuotesDocument.h"
#include "core/UUIDGenerator.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <grp.h>
#include <linux/fs.h>
#include <pwd.h>
#include <regex>
#include <set>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;
const QString kTool = QStringLiteral(QB_STORE_TOOL);

bool isVersion4UUIDText(const std::string& text)
{
    static const std::regex pattern(
        "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    return std::regex_match(text, pattern);
}

// Makes |folder| refuse new files, or accept them again. Root ignores permission bits, so
// for root the folder is made immutable instead (most disk file systems allow it).
bool setUnwritable(const std::string& folder, bool unwritable)
{
    if (::geteuid() != 0) {
        return ::chmod(folder.c_str(), unwritable ? 0500 : 0700) == 0;
    }
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    int flags = 0;
    bool done = ::ioctl(descriptor, FS_IOC_GETFLAGS, &flags) == 0;
    flags = unwritable ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
    done = done && ::ioctl(descriptor, FS_IOC_SETFLAGS, &flags) == 0;
    ::close(descriptor);
    return done;
}

// Runs the store tool (or |tool|) and returns its standard output; |asUser| drops root first.
QString runTool(const QStringList& arguments, const passwd* asUser = nullptr,
                const QString& tool = kTool)
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
    process.start(tool, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(0, process.exitCode()) << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

// A folder in /tmp that another user can reach: the build folder and the test homes may
// lie in a home only its owner may enter. Removed with everything in it.
struct FolderForAnotherUser
{
    FolderForAnotherUser()
    {
        char name[] = "/tmp/quillbox2-other-user.XXXXXX";
        if (::mkdtemp(name) && ::chmod(name, 0755) == 0) {
            path = name;
        }
    }
    ~FolderForAnotherUser()
    {
        if (!path.empty()) {
            removeTree(QString::fromStdString(path));
        }
    }
    std::string path;
};

class QuotesRepositoryTest : public ::testing::Test
{
protected:
    QuotesRepositoryTest()
    {
        QDir().mkpath(QString::fromStdString(mFolder));
        mRepository.mFilePath = mPath;
        qblog::clearLogHistory();
    }

    // Messages logged at |level| since the history was last cleared, oldest first.
    static Strings logged(qblog::Level level)
    {
        Strings lines;
        for (const std::string& line : qblog::recentLogLines(1000, level)) {
            lines.insert(lines.begin(), line.substr(line.find("] :  ") + 5));
        }
        return lines;
    }
    QStringList filesLike(const QString& pattern = QStringLiteral("*")) const
    {
        return QDir(QString::fromStdString(mFolder))
            .entryList({pattern}, QDir::Files | QDir::Hidden | QDir::System);
    }
    std::string bytes(const std::string& path) const
    {
        return readFileBytes(QString::fromStdString(path)).toStdString();
    }
    std::string bytes() const { return bytes(mPath); }
    Strings contents() const
    {
        Strings result;
        for (const CQuoteRecord& record : mRepository.mQuotes) {
            result.push_back(record.mContent);
        }
        return result;
    }

    QBTestHome mHome;
    std::string mFolder = mHome.stdPath(QStringLiteral("db"));
    std::string mPath = mFolder + "/quotes.db";
    StandaloneRepository mRepository; // the process-wide one stays untouched
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

TEST(UUIDTest, IdentifiersAreLittleEndianVersion4TextsUniqueAcrossThreads)
{
    EXPECT_EQ("00010203-0405-4607-8809-0a0b0c0d0e0f",
              uuidTextFromWords({0x03020100, 0x07060504, 0x0b0a0908, 0x0f0e0d0c}));
    EXPECT_EQ("ffffffff-ffff-4fff-bfff-ffffffffffff",
              uuidTextFromWords({0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}));
    Strings made(20000);
    {
        std::vector<std::jthread> threads;
        for (auto part = made.begin(); part != made.end(); part += 5000) {
            threads.emplace_back([part] { std::generate(part, part + 5000, generateUUIDString); });
        }
    }
    EXPECT_EQ(made.size(), std::set<std::string>(made.begin(), made.end()).size());
    EXPECT_TRUE(std::all_of(made.begin(), made.end(), isVersion4UUIDText));
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

    const std::string read = " quotes read from database at '" + mPath + "'";
    mRepository.mFilePath.clear();
    mRepository.saveQuotes();
    EXPECT_EQ((Strings{"0" + read, "Saving quotes", "2" + read, "Saving quotes"}),
              logged(qblog::Level::Info));
    EXPECT_EQ((Strings{"Failed to read quotes from disk",
                       "No file path for quotes specified - Cannot save quotes."}),
              logged(qblog::Level::Warning));
    EXPECT_EQ(QStringList{QStringLiteral("quotes.db")}, filesLike());

    // Without a path, no file of the working folder is taken for a killed save's.
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(QString::fromStdString(mFolder)));
    ASSERT_TRUE(writeFileBytes(QStringLiteral(".saving-0123abcd"), "not ours"));
    mRepository.loadQuotes();
    QDir::setCurrent(previous);
    EXPECT_EQ(2, filesLike().size());
}

TEST_F(QuotesRepositoryTest, DamagedFileIsReadUpToTheFaultAndCopiedAsideOnce)
{
    const std::string twoGood =
        R"({"Quotes": [{"UID": "a", "Content": "1"}, {"UID": "b", "Content": "2"},)";
    using Case = std::tuple<const char*, std::string, Strings>; // file name, bytes, records read
    for (const auto& [name, damage, read] : std::initializer_list<Case>{
             {"not-json", "Quotes: none", {}},
             {"cut-short", twoGood, {}},
             {"empty", "", {}},
             {"no-quotes-member", R"({"Other": []})", {}},
             {"no-content", twoGood + R"({"UID": "c"}]})", {"1", "2"}},
             {"no-uid", twoGood + R"({"Content": "3"}]})", {"1", "2"}},
             {"deep", "{\"Quotes\": " + std::string(100000, '['), {}}, // never the stack's end
         }) {
        const std::string path = mFolder + "/" + name;
        ASSERT_TRUE(
            writeFileBytes(QString::fromStdString(path), QByteArray::fromStdString(damage)));
        mRepository.mFilePath = path;
        mRepository.addNewQuote();
        qblog::clearLogHistory();
        for (int load = 0; load < 2; ++load) {
            mRepository.loadQuotes();
            EXPECT_EQ(read, contents()) << name;
        }
        EXPECT_FALSE(mRepository.isSavingRefused()) << name;
        EXPECT_EQ(damage, bytes(path)) << name;
        const QStringList copies =
            filesLike(QString::fromLatin1(name) + QStringLiteral(".damaged-*"));
        ASSERT_EQ(1, copies.size()) << name; // the same damage is copied once
        const std::string copy = mFolder + "/" + copies[0].toStdString();
        EXPECT_EQ(damage, bytes(copy)) << name;
        EXPECT_EQ((Strings{"Failed to read quotes from disk",
                           "Kept a copy of the damaged quotes database at '" + copy + "'",
                           "Failed to read quotes from disk"}),
                  logged(qblog::Level::Warning))
            << name;
    }
    // A document nested deeply, but within the reader's limit, reads.
    std::vector<CQuoteRecord> records;
    readQuotesDocument(R"({"Quotes": [{"UID": "x", "Content": "c", "More": )" +
                           std::string(500, '[') + std::string(500, ']') + "}]}",
                       "nested", records);
    EXPECT_EQ(1u, records.size());
}

TEST_F(QuotesRepositoryTest, DamagedCopiesAreMadeOnlyForNewDamageAndAtMostThreeStay)
{
    for (int round = 0; round < 5; ++round) {
        const QByteArray damage = "damage " + QByteArray::number(round);
        ASSERT_TRUE(writeFileBytes(QString::fromStdString(mPath), damage));
        mRepository.loadQuotes();
        mRepository.loadQuotes(); // the same damage again: no second copy
        const QStringList copies = filesLike(QStringLiteral("quotes.db.damaged-*"));
        EXPECT_EQ(std::min(round + 1, 3), copies.size());
        EXPECT_EQ(damage.toStdString(), bytes(mFolder + "/" + copies.last().toStdString()))
            << "the newest copy sorts last";
    }
    EXPECT_TRUE(filesLike(QStringLiteral("*.saving-*")).isEmpty());
}

TEST_F(QuotesRepositoryTest, FailedSaveLeavesTheOldFileAndNothingElse)
{
    mRepository.mQuotes = generatedCollection(2, 'a');
    mRepository.saveQuotes();
    const std::string old = bytes();
    mRepository.mQuotes = generatedCollection(100, 'b');
    const auto expectFailedSave = [&](const std::string& reason) {
        qblog::clearLogHistory();
        mRepository.saveQuotes();
        const Strings warnings = logged(qblog::Level::Warning);
        ASSERT_EQ(2u, warnings.size());
        EXPECT_EQ("Failed to write quotes to disk", warnings[0]);
        EXPECT_EQ(0u, warnings[1].rfind("Writing the quotes database failed: " + reason, 0))
            << warnings[1];
        EXPECT_EQ(old, bytes());
        EXPECT_EQ(QStringList{QStringLiteral("quotes.db")}, filesLike());
    };
    // A file size limit makes write() fail part-way, as a full disk would.
    rlimit previous{};
    ::getrlimit(RLIMIT_FSIZE, &previous);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = previous;
    small.rlim_cur = 4096;
    ::setrlimit(RLIMIT_FSIZE, &small);
    expectFailedSave("cannot write " + mPath + ".saving-");
    ::setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);

    // A file the user made read-only stays as it is, even for root.
    ::chmod(mPath.c_str(), 0444);
    expectFailedSave(mPath + " is read-only: " + std::strerror(EACCES));
    EXPECT_EQ(fs::perms(0444), fs::status(mPath).permissions());
    ::chmod(mPath.c_str(), 0600);

    if (!setUnwritable(mFolder, true)) {
        GTEST_SKIP() << "cannot make a folder unwritable here";
    }
    expectFailedSave("cannot create temporary file " + mPath + ".saving-");
    setUnwritable(mFolder, false);
}

TEST_F(QuotesRepositoryTest, SymbolicLinkIsKeptAndItsTargetReplacedWithItsPermissions)
{
    const std::string target = mHome.stdPath(QStringLiteral("elsewhere/target.db"));
    ASSERT_TRUE(QDir().mkpath(mHome.filePath(QStringLiteral("elsewhere"))));
    writeQuotesFile(target, generatedCollection(1, 'a'));
    fs::permissions(target, fs::perms(0640));
    fs::create_symlink("../elsewhere/target.db", mPath);
    mRepository.loadQuotes();
    mRepository.insertQuote(CQuoteRecord("new", "id"), 0);
    mRepository.saveQuotes();

    EXPECT_TRUE(fs::is_symlink(mPath));
    EXPECT_EQ(fs::perms(0640), fs::status(target).permissions());
    std::vector<CQuoteRecord> read;
    readQuotesFile(target, read);
    EXPECT_EQ("new", read.at(0).mContent);
    EXPECT_EQ(1, QDir(mHome.filePath(QStringLiteral("elsewhere"))).entryList(QDir::Files).size());
}

TEST_F(QuotesRepositoryTest, AnotherProcesssSaveIsKeptAsACopyBeforeOursReplacesIt)
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
    EXPECT_EQ(theirs, bytes(copy));
    EXPECT_EQ((Strings{"Another program changed the quotes database since it was read; kept its "
                       "version at '" +
                       copy + "'"}),
              logged(qblog::Level::Warning));
    EXPECT_NE(bytes().find("ours"), std::string::npos);

    mRepository.saveQuotes(); // our own last save is no other writer's
    EXPECT_EQ(1, filesLike(QStringLiteral("quotes.db.conflict-*")).size());
}

TEST_F(QuotesRepositoryTest, RepeatedIdentifiersGetFreshOnesAtLoadAndTheNextSaveKeepsThem)
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
    mRepository.removeQuote(mRepository.mQuotes[1].mUID); // removes that one record only
    EXPECT_EQ((Strings{"1", "3", "4"}), contents());
    mRepository.saveQuotes();
    std::vector<CQuoteRecord> saved;
    readQuotesFile(mPath, saved);
    EXPECT_EQ(mRepository.mQuotes[2].mUID, saved.at(2).mUID);
}

TEST_F(QuotesRepositoryTest, FilesThatCannotBeReadAreNeverReplacedUnlessCopied)
{
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
    EXPECT_TRUE(fs::is_fifo(fs::symlink_status(mPath)));
    EXPECT_EQ(1, told);
    EXPECT_EQ(mPath + " is not a regular file: " + std::strerror(EINVAL), toldReason);
    const std::string refusal = "Not saving over '" + mPath +
                                "' until it is fixed: it could not be read (" + toldReason +
                                ") and no copy of it could be kept";
    EXPECT_EQ((Strings{"Failed to write quotes to disk", refusal, "Failed to write quotes to disk",
                       refusal}),
              logged(qblog::Level::Warning));

    // Without read permission (as an unprivileged user, since root reads anything).
    const passwd* nobody = ::getpwnam("nobody");
    if (!nobody || ::geteuid() != 0) {
        GTEST_SKIP() << "needs root and a 'nobody' user to test missing read permission";
    }
    const FolderForAnotherUser shared;
    ASSERT_FALSE(shared.path.empty());
    const QString tool = QString::fromStdString(shared.path + "/quotes_store_tool");
    ASSERT_TRUE(QFile::copy(kTool, tool));
    const std::string folder = shared.path + "/db";
    const std::string path = folder + "/quotes.db";
    ASSERT_EQ(0, ::mkdir(folder.c_str(), 0700));
    writeQuotesFile(path, generatedCollection(2, 'u'));
    const std::string unreadable = bytes(path);
    ::chmod(path.c_str(), 0200);
    ASSERT_EQ(0, ::chown(folder.c_str(), nobody->pw_uid, nobody->pw_gid));
    ASSERT_EQ(0, ::chown(path.c_str(), nobody->pw_uid, nobody->pw_gid));
    const QString output =
        runTool({QStringLiteral("load-add-save"), QString::fromStdString(path)}, nobody, tool);
    EXPECT_TRUE(output.contains(QStringLiteral("Failed to keep a copy of the damaged quotes")))
        << output.toStdString();
    EXPECT_TRUE(
        output.contains(QStringLiteral("Not saving over '%1'").arg(QString::fromStdString(path))))
        << output.toStdString();
    EXPECT_EQ(unreadable, bytes(path));
    EXPECT_TRUE(QDir(QString::fromStdString(folder))
                    .entryList({QStringLiteral("quotes.db.*")}, QDir::Files | QDir::Hidden)
                    .isEmpty());
}

TEST_F(QuotesRepositoryTest, DatabaseNamesAtTheSystemLimitsStillSave)
{
    // A file name of NAME_MAX bytes, and a whole path of PATH_MAX - 1 bytes.
    const std::string longName = mFolder + "/" + std::string(NAME_MAX, 'q');
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

// A killed save leaves the old or the new file, never a mix, readers always see one of
// them whole, and the next load removes the killed saves' leftovers.
TEST_F(QuotesRepositoryTest, KilledSavesOfALargeCollectionLeaveAWholeFileAndNoLeftovers)
{
    constexpr int kQuotes = 100000;
    writeQuotesFile(mPath, generatedCollection(kQuotes, 'o'));
    const std::set<std::string> whole = {documentOf(generatedCollection(kQuotes, 'o')),
                                         documentOf(generatedCollection(kQuotes, 'n'))};
    int leftovers = 0;
    int reads = 0;
    for (int kill = 0; kill < 8; ++kill) {
        QProcess saver;
        saver.start(kTool, {QStringLiteral("save-loop"), QString::fromStdString(mPath),
                            QString::number(kQuotes)});
        ASSERT_TRUE(saver.waitForReadyRead(30000));
        const auto end = std::chrono::steady_clock::now() +
                         std::chrono::milliseconds(QRandomGenerator::global()->bounded(50, 900));
        while (std::chrono::steady_clock::now() < end) {
            EXPECT_TRUE(whole.contains(bytes())) << "read " << ++reads;
        }
        ::kill(static_cast<pid_t>(saver.processId()), SIGKILL);
        saver.waitForFinished(30000);
        EXPECT_TRUE(whole.contains(bytes())) << "after kill " << kill;
        leftovers += filesLike(QStringLiteral("quotes.db.saving-*")).size();
    }
    EXPECT_GT(leftovers, 0) << "no kill hit a save in progress";
    runTool({QStringLiteral("load"), QString::fromStdString(mPath)});
    EXPECT_EQ(QStringList{QStringLiteral("quotes.db")}, filesLike());
}
