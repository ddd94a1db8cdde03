#include "signature/CurrentSignatureFileHelper.h"

#include "core/QuotesDBHelper.h"
#include "logging/Log.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <functional>

namespace {

using Helper = QBCurrentSignatureFileHelper;

class CurrentSignatureFileHelperTest : public ::testing::Test
{
protected:
    // The suite opens once per process: open it in the process-wide test home, before
    // any fixture points XDG_DATA_HOME at its own folder.
    static void SetUpTestSuite() { QBSharedUserDefaults::sharedInstance(); }

    void SetUp() override
    {
        QDir().mkpath(QFileInfo(mSignature).absolutePath());
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
        return joined;
    }

    QBTestHome mHome;
    const QString mSignature = mHome.filePath(QStringLiteral("Mail/sig.txt"));
};

TEST_F(CurrentSignatureFileHelperTest, WritesExactlyTheTextAsUtf8InPlace)
{
    const QString contents[] = {
        QStringLiteral("A longer first text that the next ones must fully replace."),
        QStringLiteral("Trailing blank lines stay\n\n\n"),
        QStringLiteral("  Größe — ☃ 100% %s  "),
        QString(),
    };
    for (const QString& content : contents) {
        EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(content));
        EXPECT_EQ(readFileBytes(mSignature), content.toUtf8()) << content.toStdString();
    }
    EXPECT_EQ(QFileInfo(mSignature).size(), 0);
    EXPECT_EQ(recentLines(), "");
}

TEST_F(CurrentSignatureFileHelperTest, FailuresLeaveTheFileAndTheBookmark)
{
    const std::string failure = "Helper app detected bookmark failure but not deleting (main app "
                                "responsibility)\n";
    struct Case
    {
        const char* name;
        std::function<void(const QString& signature)> breakIt;
        std::string expectedLines;
    };
    const Case cases[] = {
        {"no bookmark",
         [](const QString&) {
             QBSharedUserDefaults::sharedInstance().setObject({}, QBPrivateDefaultsOutputFileSSB);
         },
         "Failed to read security scoped bookmark\n"},
        {"not data",
         [](const QString&) {
             QBSharedUserDefaults::sharedInstance().setObject(QStringLiteral("text"),
                                                              QBPrivateDefaultsOutputFileSSB);
         },
         "Failed to read security scoped bookmark\n"},
        {"replaced file",
         [](const QString& signature) {
             writeFileBytes(signature + QStringLiteral(".new"), "someone else's");
             QFile::remove(signature);
             QFile::rename(signature + QStringLiteral(".new"), signature);
         },
         "Helper app detected stale bookmark but not deleting (main app responsibility)\n"
         "Failed to resolve bookmark: Data is stale\n"},
        {"deleted file", [](const QString& signature) { QFile::remove(signature); },
         failure +
             "Failed to access security scoped bookmark or write file: The "
             "bookmarked file '" +
             mSignature.toStdString() + "' does not exist\n"},
    };
    for (const Case& c : cases) {
        SetUp();
        c.breakIt(mSignature);
        const QVariant bookmark = storedBookmark();
        const QByteArray before = readFileBytes(mSignature);
        qblog::clearLogHistory();
        EXPECT_FALSE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("quote"))) << c.name;
        EXPECT_EQ(recentLines(), c.expectedLines) << c.name;
        EXPECT_EQ(readFileBytes(mSignature), before) << c.name;
        EXPECT_EQ(storedBookmark(), bookmark) << c.name;
    }
    EXPECT_FALSE(QFile::exists(mSignature)); // a deleted file is not recreated
}

TEST_F(CurrentSignatureFileHelperTest, FailedBookmarkCreationKeepsTheEarlierOne)
{
    const QVariant bookmark = storedBookmark();
    Helper::createSecurityScopedBookmarkForPath(
        QUrl::fromLocalFile(mHome.filePath(QStringLiteral("no/sig.txt"))));
    EXPECT_EQ(storedBookmark(), bookmark);
    EXPECT_EQ(recentLines(), "Failed to create a security scoped bookmark: The folder '" +
                                 mHome.stdPath(QStringLiteral("no")) + "' does not exist\n");
    EXPECT_TRUE(Helper::writeToCurrentSignatureFileContent(QStringLiteral("x")));
    EXPECT_EQ(readFileBytes(mSignature), QByteArray("x"));
}

TEST_F(CurrentSignatureFileHelperTest, CloudDriveIsACaseSensitiveSubstring)
{
    const std::pair<const char*, bool> cases[] = {
        {"/home/u/Library/Mobile Documents/com~apple~CloudDocs/sig.txt", true},
        {"/home/u/com~apple~CloudDocsX/sig.txt", true},
        {"/home/u/com~apple~clouddocs/sig.txt", false},
        {"/home/u/Documents/sig.txt", false},
    };
    for (const auto& [path, expected] : cases) {
        EXPECT_EQ(Helper::isPathOnICloudDrive(QUrl::fromLocalFile(QString::fromUtf8(path))),
                  expected)
            << path;
    }
}

} // namespace
