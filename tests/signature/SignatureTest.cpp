#include "signature/CurrentSignatureFileHelper.h"
#include "signature/FileBookmark.h"
#include "signature/FileReplacer.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include "core/QuotesDBHelper.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

using Helper = QBCurrentSignatureFileHelper;

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

    // No room for a temporary file (name too long): written in place, bookmark kept.
    const QString longName = path("Mail/") + QString(250, QLatin1Char('n'));
    ASSERT_TRUE(writeFileBytes(longName, "old"));
    Helper::createSecurityScopedBookmarkForPath(QUrl::fromLocalFile(longName));
    const QVariant bookmark = storedBookmark();
    EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("in place")));
    EXPECT_EQ(readFileBytes(longName), QByteArray("in place\n"));
    EXPECT_EQ(storedBookmark(), bookmark);
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
    EXPECT_EQ(result.error, QStringLiteral("No such device or address"));
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
    EXPECT_EQ(result.error, QStringLiteral("Too many levels of symbolic links"));
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
