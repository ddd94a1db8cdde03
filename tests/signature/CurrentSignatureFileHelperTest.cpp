#include "signature/CurrentSignatureFileHelper.h"

#include "core/QuotesDBHelper.h"
#include "logging/Log.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

std::vector<std::string> recentLines(qblog::Level level)
{
    return qblog::recentLogLines(20, level);
}

bool endsWith(const std::string& line, const std::string& tail)
{
    return line.size() >= tail.size() &&
           line.compare(line.size() - tail.size(), tail.size(), tail) == 0;
}

class CurrentSignatureFileHelperTest : public ::testing::Test
{
protected:
    // The suite opens once per process: open it in the process-wide test home, before
    // any fixture points XDG_DATA_HOME at its own folder.
    static void SetUpTestSuite() { shared(); }
    void SetUp() override
    {
        shared().setObject(QVariant(), QBPrivateDefaultsOutputFileSSB);
        QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
        qblog::clearLogHistory();
    }

    static QBSharedUserDefaults& shared() { return QBSharedUserDefaults::sharedInstance(); }
    QString signaturePath() const { return mHome.filePath(QStringLiteral("Mail/sig.txt")); }
    QByteArray storedBookmark() const
    {
        return shared().objectForKey(QBPrivateDefaultsOutputFileSSB).toByteArray();
    }
    void chooseSignatureFile()
    {
        QDir().mkpath(QFileInfo(signaturePath()).absolutePath());
        QBCurrentSignatureFileHelper::createSecurityScopedBookmarkForPath(
            QUrl::fromLocalFile(signaturePath()));
        ASSERT_FALSE(storedBookmark().isEmpty());
    }
    void expectFailureLines(const std::string& warning, const std::string& info)
    {
        const auto warnings = recentLines(qblog::Level::Warning);
        const auto infos = recentLines(qblog::Level::Info);
        ASSERT_EQ(warnings.size(), 1u);
        ASSERT_EQ(infos.size(), 1u);
        EXPECT_NE(warnings[0].find(warning), std::string::npos) << warnings[0];
        EXPECT_TRUE(endsWith(infos[0], info)) << infos[0];
    }

    QBTestHome mHome;
};

TEST_F(CurrentSignatureFileHelperTest, WritesExactlyTheTextAsUtf8InPlace)
{
    chooseSignatureFile();
    const QString contents[] = {
        QStringLiteral("A longer first text that the next ones must fully replace."),
        QStringLiteral("Short"),
        QStringLiteral("Trailing blank lines stay\n\n\n"),
        QStringLiteral("Größe — ☃ 100% %s"),
        QStringLiteral("  leading and trailing spaces  "),
        QString(),
    };
    for (const QString& content : contents) {
        EXPECT_TRUE(QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(content));
        EXPECT_EQ(readFileBytes(signaturePath()), content.toUtf8()) << content.toStdString();
    }
    EXPECT_EQ(QFileInfo(signaturePath()).size(), 0); // the empty text writes zero bytes
    // Written in place, so the bookmark still names the same file.
    EXPECT_TRUE(
        QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(QStringLiteral("again")));
    EXPECT_TRUE(recentLines(qblog::Level::Warning).empty());
}

TEST_F(CurrentSignatureFileHelperTest, MissingOrWrongBookmarkIsNotWritten)
{
    EXPECT_FALSE(
        QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(QStringLiteral("text")));
    shared().setObject(QStringLiteral("a string, not data"), QBPrivateDefaultsOutputFileSSB);
    EXPECT_FALSE(
        QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(QStringLiteral("text")));
    const auto warnings = recentLines(qblog::Level::Warning);
    ASSERT_EQ(warnings.size(), 2u);
    for (const std::string& line : warnings) {
        EXPECT_TRUE(endsWith(line, "Failed to read security scoped bookmark")) << line;
    }
}

TEST_F(CurrentSignatureFileHelperTest, StaleBookmarkLeavesTheFileAndTheBookmark)
{
    chooseSignatureFile();
    const QByteArray bookmark = storedBookmark();
    const QString aside = signaturePath() + QStringLiteral(".new");
    ASSERT_TRUE(writeFileBytes(aside, "someone else's file"));
    ASSERT_TRUE(QFile::remove(signaturePath()));
    ASSERT_TRUE(QFile::rename(aside, signaturePath()));
    qblog::clearLogHistory();

    EXPECT_FALSE(
        QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(QStringLiteral("quote")));
    EXPECT_EQ(readFileBytes(signaturePath()), QByteArray("someone else's file"));
    EXPECT_EQ(storedBookmark(), bookmark);
    expectFailureLines("Failed to resolve bookmark: Data is stale",
                       "Helper app detected stale bookmark but not deleting (main app "
                       "responsibility)");
}

TEST_F(CurrentSignatureFileHelperTest, DeletedTargetIsAFailureAndNotRecreated)
{
    chooseSignatureFile();
    ASSERT_TRUE(QFile::remove(signaturePath()));
    qblog::clearLogHistory();

    EXPECT_FALSE(
        QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(QStringLiteral("quote")));
    EXPECT_FALSE(QFileInfo::exists(signaturePath()));
    expectFailureLines("Failed to access security scoped bookmark or write file: The bookmarked "
                       "file '" +
                           signaturePath().toStdString() + "' does not exist",
                       "Helper app detected bookmark failure but not deleting (main app "
                       "responsibility)");
}

TEST_F(CurrentSignatureFileHelperTest, UnwritableFileIsAFailure)
{
    chooseSignatureFile();
    QFile::setPermissions(signaturePath(), QFileDevice::ReadOwner);
    if (QFileInfo(signaturePath()).isWritable()) {
        GTEST_SKIP() << "running with privileges that ignore file permissions";
    }
    qblog::clearLogHistory();
    EXPECT_FALSE(
        QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(QStringLiteral("quote")));
    expectFailureLines("Failed to access security scoped bookmark or write file: Cannot write '" +
                           signaturePath().toStdString() + "'",
                       "Helper app detected bookmark failure but not deleting (main app "
                       "responsibility)");
}

TEST_F(CurrentSignatureFileHelperTest, FailedBookmarkCreationKeepsTheEarlierOne)
{
    chooseSignatureFile();
    const QByteArray bookmark = storedBookmark();
    qblog::clearLogHistory();
    QBCurrentSignatureFileHelper::createSecurityScopedBookmarkForPath(
        QUrl::fromLocalFile(mHome.filePath(QStringLiteral("no/such/folder/sig.txt"))));
    EXPECT_EQ(storedBookmark(), bookmark);
    const auto warnings = recentLines(qblog::Level::Warning);
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_NE(warnings[0].find("Failed to create a security scoped bookmark: The folder '"),
              std::string::npos);

    // Choosing another file replaces the bookmark.
    QBCurrentSignatureFileHelper::createSecurityScopedBookmarkForPath(
        QUrl::fromLocalFile(mHome.filePath(QStringLiteral("other.txt"))));
    EXPECT_NE(storedBookmark(), bookmark);
    EXPECT_TRUE(
        QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(QStringLiteral("x")));
    EXPECT_EQ(readFileBytes(mHome.filePath(QStringLiteral("other.txt"))), QByteArray("x"));
}

TEST_F(CurrentSignatureFileHelperTest, CloudDrivePathsAreRecognisedCaseSensitively)
{
    struct Case
    {
        const char* path;
        bool onCloudDrive;
    };
    const Case cases[] = {
        {"/home/u/Library/Mobile Documents/com~apple~CloudDocs/sig.txt", true},
        {"/com~apple~CloudDocs", true},
        {"/home/u/com~apple~CloudDocsX/a/sig.txt", true},
        {"/home/u/COM~APPLE~CLOUDDOCS/sig.txt", false},
        {"/home/u/com~apple~clouddocs/sig.txt", false},
        {"/home/u/Documents/sig.txt", false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(QBCurrentSignatureFileHelper::isPathOnICloudDrive(
                      QUrl::fromLocalFile(QString::fromUtf8(c.path))),
                  c.onCloudDrive)
            << c.path;
    }
}

} // namespace
