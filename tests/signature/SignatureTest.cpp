#include "signature/CurrentSignatureFileHelper.h"
#include "signature/FileBookmark.h"
#include "signature/FileReplacer.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include "core/QuotesDBHelper.h"
#include "logging/Log.h"
#include "util/UserMessages.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

namespace {

using Helper = QBCurrentSignatureFileHelper;

// The system's wording of an error, which differs between C library releases.
QString systemText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

class CurrentSignatureFileHelperTest : public ::testing::Test
{
protected:
    // The suite opens once per process: in the process-wide home, before any fixture's.
    static void SetUpTestSuite() { QBSharedUserDefaults::sharedInstance(); }

    void SetUp() override
    {
        QDir().mkpath(QFileInfo(mSignature).absolutePath());
        // Creates the missing file; the bookmark is relative to the quotes database.
        Helper::createSecurityScopedBookmarkForPath(QUrl::fromLocalFile(mSignature));
        qblog::clearLogHistory();
    }
    static QVariant storedBookmark()
    {
        return QBSharedUserDefaults::sharedInstance().objectForKey(QBPrivateDefaultsOutputFileSSB);
    }
    // The information lines, then the warnings, each newest first, without time stamps.
    static std::string recentLines()
    {
        std::string joined;
        for (qblog::Level level : {qblog::Level::Info, qblog::Level::Warning}) {
            for (const std::string& line : qblog::recentLogLines(20, level)) {
                const std::string message = line.substr(line.find(']') + 1);
                joined += message.substr(message.find_first_not_of(": ")) + "\n";
            }
        }
        qblog::clearLogHistory();
        return joined;
    }
    QString path(const char* relative) const { return mHome.filePath(QString::fromUtf8(relative)); }

    QBTestHome mHome;
    const QString mSignature = path("Mail/sig.txt");
};

const std::string kWriteFailure =
    "Helper app detected bookmark failure but not deleting (main app responsibility)\n"
    "Failed to access security scoped bookmark or write file: ";

TEST_F(CurrentSignatureFileHelperTest, ReplacesTheFileWithTheTextAndOneFinalNewline)
{
    ASSERT_TRUE(QFile::setPermissions(mSignature, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                      QFileDevice::ReadGroup));
    const std::pair<QString, QByteArray> cases[] = {
        {QStringLiteral("A longer first text that the next must replace."),
         "A longer first text that the next must replace.\n"},
        {QStringLiteral("Trailing blank lines stay\n\n\n"), "Trailing blank lines stay\n\n\n"},
        {QStringLiteral("  Größe — ☃ 100% %s  "), "  Gr\xc3\xb6\xc3\x9f"
                                                  "e \xe2\x80\x94 \xe2\x98\x83 100% %s  \n"},
        {QString(), QByteArray()}};
    for (const auto& [content, bytes] : cases) {
        const QVariant bookmarkBefore = storedBookmark();
        EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(content));
        EXPECT_EQ(readFileBytes(mSignature), bytes) << content.toStdString();
        // A new file took the old one's place, and the bookmark now names it.
        EXPECT_NE(storedBookmark(), bookmarkBefore) << content.toStdString();
        EXPECT_FALSE(QBFileBookmark::resolve(
                         storedBookmark().toByteArray(),
                         QString::fromStdString(QBQuotesDBHelper::getPathToQuotesDb().value()))
                         .isStale);
    }
    EXPECT_EQ(QFile::permissions(mSignature) & 0x7077,
              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup);
    EXPECT_EQ(QDir(QFileInfo(mSignature).absolutePath()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("sig.txt")}); // no temporary file left
    EXPECT_EQ(recentLines(), "");

    // A name too long to take ".NAME.XXXXXX" around it is replaced through a shorter one.
    const QString longName = path("Mail/") + QString(250, QLatin1Char('n'));
    ASSERT_TRUE(writeFileBytes(longName, "old"));
    Helper::createSecurityScopedBookmarkForPath(QUrl::fromLocalFile(longName));
    const QVariant bookmark = storedBookmark();
    EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("long")));
    EXPECT_EQ(readFileBytes(longName), QByteArray("long\n"));
    EXPECT_NE(storedBookmark(), bookmark);
}

// A write killed after its new file took the old one's place, but before it recorded
// that, leaves the bookmark as it was just before the rename; the next write must still
// take the file as its own. Another program's file really is stale, and the user is told.
TEST_F(CurrentSignatureFileHelperTest, OwnRenamedFileIsStillTheChosenOneAnotherProgramsIsNot)
{
    QBUserDefaults& suite = QBSharedUserDefaults::sharedInstance().suiteUserDefaults();
    QByteArray leftByKill;
    QByteArray contentWhenRecorded;
    const QMetaObject::Connection watch =
        QObject::connect(&suite, &QBUserDefaults::didChange, [&](const QString& key) {
            if (key == QBPrivateDefaultsOutputFileSSB && leftByKill.isEmpty()) {
                leftByKill = storedBookmark().toByteArray();
                contentWhenRecorded = readFileBytes(mSignature);
            }
        });
    ASSERT_TRUE(writeFileBytes(mSignature, "old\n"));
    EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("new")));
    QObject::disconnect(watch);
    EXPECT_EQ(contentWhenRecorded, QByteArray("old\n")) << "recorded only after the rename";
    const QString base = QString::fromStdString(QBQuotesDBHelper::getPathToQuotesDb().value());
    EXPECT_FALSE(QBFileBookmark::resolve(leftByKill, base).isStale);

    QBSharedUserDefaults::sharedInstance().setObject(leftByKill, QBPrivateDefaultsOutputFileSSB);
    EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("after the kill")));
    EXPECT_EQ(readFileBytes(mSignature), QByteArray("after the kill\n"));

    // Another program's replacement.
    ASSERT_TRUE(writeFileBytes(path("Mail/theirs"), "theirs\n"));
    ASSERT_EQ(::rename(QFile::encodeName(path("Mail/theirs")).constData(),
                       QFile::encodeName(mSignature).constData()),
              0);
    EXPECT_FALSE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("ours")));
    EXPECT_EQ(readFileBytes(mSignature), QByteArray("theirs\n"));
    const QBUserMessage& message = QBUserMessages::shared().lastMessage();
    EXPECT_EQ(message.topic, Helper::kUserMessageTopic);
    EXPECT_EQ(message.kind, QBUserMessage::Kind::Warning);
    EXPECT_FALSE(message.text.isEmpty());
}

// Temporary files of writes killed before their rename go at the next write; one that a
// running write holds stays.
TEST_F(CurrentSignatureFileHelperTest, LeftoversOfKilledWritesAreRemovedAtTheNextWrite)
{
    for (const char* name : {"Mail/.sig.txt.a1B2c3", "Mail/.sig.txt.Zz9Yy8", "Mail/.sig.txt.held00",
                             "Mail/.sig.txt.backup1", "Mail/.other.txt.a1B2c3"}) {
        ASSERT_TRUE(writeFileBytes(path(name), "leftover"));
    }
    const int held = ::open(QFile::encodeName(path("Mail/.sig.txt.held00")).constData(), O_RDONLY);
    ASSERT_GE(held, 0);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("quote")));
    ::close(held);
    QStringList left = QDir(path("Mail")).entryList(QDir::Files | QDir::Hidden);
    left.sort();
    EXPECT_EQ(left,
              (QStringList{QStringLiteral(".other.txt.a1B2c3"), QStringLiteral(".sig.txt.backup1"),
                           QStringLiteral(".sig.txt.held00"), QStringLiteral("sig.txt")}));
}

// A folder that takes no new file: the old signature stays whole (never rewritten in
// place), and the user reads why; a folder that may not be entered is named as such.
TEST_F(CurrentSignatureFileHelperTest, ReadOnlyFolderKeepsTheOldSignatureAndSaysWhy)
{
    if (::geteuid() == 0) {
        GTEST_SKIP() << "root writes into read-only folders, so there is no refusal to see";
    }
    ASSERT_TRUE(writeFileBytes(mSignature, "old signature\n"));
    ASSERT_TRUE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("first")));
    const QString folder = path("Mail");
    QSignalSpy shown(&QBUserMessages::shared(), &QBUserMessages::messageShown);
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0555), 0);
    recentLines();
    EXPECT_FALSE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("second")));
    EXPECT_EQ(readFileBytes(mSignature), QByteArray("first\n"));
    EXPECT_NE(
        recentLines().find(QStringLiteral("no new file can be created in the folder '%1' (%2)")
                               .arg(folder, systemText(EACCES))
                               .toStdString()),
        std::string::npos);

    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0), 0);
    EXPECT_FALSE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("third")));
    EXPECT_NE(recentLines().find(QStringLiteral("The bookmarked file '%1' cannot be reached: %2")
                                     .arg(mSignature, systemText(EACCES))
                                     .toStdString()),
              std::string::npos);
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(QBUserMessages::shared().lastMessage().topic, Helper::kUserMessageTopic);

    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0700), 0);
    QSignalSpy dismissed(&QBUserMessages::shared(), &QBUserMessages::messageDismissed);
    EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("fourth")));
    EXPECT_EQ(dismissed.size(), 1);
}

TEST_F(CurrentSignatureFileHelperTest,
       ReplacerNeitherWaitsOnAFifoNorFollowsALinkNorWritesAnotherFile)
{
    const auto any = [](quint64, quint64) { return true; };
    using Status = QBFileReplacer::Result::Status;
    // A FIFO swapped in after the path was checked: refused at once, nobody reads it.
    const QString fifo = path("Mail/fifo");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    QBFileReplacer::Result result = QBFileReplacer::replaceContent(fifo, "x", any);
    EXPECT_EQ(result.status, Status::Failed);
    EXPECT_EQ(result.error, systemText(ENXIO));
    // Same with a reader on the other end: opened, seen not to be a regular file.
    const int reader = ::open(QFile::encodeName(fifo).constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    result = QBFileReplacer::replaceContent(fifo, "x", any);
    EXPECT_EQ(result.status, Status::Failed);
    EXPECT_EQ(result.error, QStringLiteral("not a regular file"));
    ::close(reader);

    // A link swapped in is not followed, and its target stays as it was.
    ASSERT_TRUE(writeFileBytes(path("Mail/elsewhere"), "untouched"));
    ASSERT_TRUE(QFile::link(path("Mail/elsewhere"), path("Mail/link")));
    result = QBFileReplacer::replaceContent(path("Mail/link"), "x", any);
    EXPECT_EQ(result.status, Status::Failed);
    EXPECT_EQ(result.error, systemText(ELOOP));
    EXPECT_EQ(readFileBytes(path("Mail/elsewhere")), QByteArray("untouched"));

    // Another regular file than the caller expected: nothing written.
    result = QBFileReplacer::replaceContent(path("Mail/elsewhere"), "x",
                                            [](quint64, quint64) { return false; });
    EXPECT_EQ(result.status, Status::NotTheExpectedFile);
    EXPECT_EQ(readFileBytes(path("Mail/elsewhere")), QByteArray("untouched"));
}

TEST_F(CurrentSignatureFileHelperTest, FailuresWriteNothingAndKeepTheBookmark)
{
    const QVariant bookmark = storedBookmark();
    ASSERT_TRUE(QDir().mkpath(path("folder.txt")));
    for (const char* target : {"no/sig.txt", "folder.txt"}) {
        Helper::createSecurityScopedBookmarkForPath(QUrl::fromLocalFile(path(target)));
    }
    EXPECT_EQ(recentLines(), "Failed to create a security scoped bookmark: '" +
                                 mHome.stdPath(QStringLiteral("folder.txt")) +
                                 "' is not a regular file\n"
                                 "Failed to create a security scoped bookmark: The folder '" +
                                 mHome.stdPath(QStringLiteral("no")) + "' does not exist\n");
    EXPECT_FALSE(QFile::exists(path("no")));

    ASSERT_TRUE(QFile::remove(mSignature));
    EXPECT_FALSE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("quote")));
    EXPECT_EQ(recentLines(), kWriteFailure + "The bookmarked file '" + mSignature.toStdString() +
                                 "' does not exist\n");
    EXPECT_FALSE(QFile::exists(mSignature));
    EXPECT_EQ(storedBookmark(), bookmark);

    const std::string unreadable = "Failed to read security scoped bookmark\n";
    const std::string undecodable = kWriteFailure + "The bookmark data cannot be decoded\n";
    const std::pair<QVariant, std::string> cases[] = {{QVariant(), unreadable},
                                                      {QStringLiteral("text"), unreadable},
                                                      {QByteArray("[1]"), undecodable},
                                                      {QByteArray("{\"version\":2}"), undecodable}};
    for (const auto& [stored, lines] : cases) {
        QBSharedUserDefaults::sharedInstance().setObject(stored, QBPrivateDefaultsOutputFileSSB);
        EXPECT_FALSE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("quote")));
        EXPECT_EQ(recentLines(), lines) << lines;
        EXPECT_EQ(storedBookmark(), stored) << lines;
    }
    EXPECT_FALSE(QFile::exists(mSignature));
}

TEST_F(CurrentSignatureFileHelperTest, BookmarkFollowsAMovedTreeAndFallsBackToTheAbsolutePath)
{
    ASSERT_TRUE(QDir().mkpath(path("root/mail")));
    const QByteArray data =
        QBFileBookmark::create(path("root/mail/sig.txt"), path("root/container/quotes.db")).data;
    // The whole tree moved: only the relative path still leads to the file.
    ASSERT_TRUE(QDir().rename(path("root"), path("moved")));
    const QBFileBookmark::Resolution moved =
        QBFileBookmark::resolve(data, path("moved/container/quotes.db"));
    EXPECT_EQ(moved.path, path("moved/mail/sig.txt"));
    EXPECT_FALSE(moved.isStale);
    ASSERT_TRUE(QDir().rename(path("moved"), path("root")));
    EXPECT_EQ(QBFileBookmark::resolve(data, path("x/y/quotes.db")).path, path("root/mail/sig.txt"));
}

} // namespace
