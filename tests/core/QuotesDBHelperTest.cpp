#include "core/QuotesDBHelper.h"
#include "core/FolderHelper.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

// Paths are derived afresh from HOME and XDG_* on every call. Seeding itself is
// checked end to end by tests/app/LaunchProcessTest.
class QuotesDBHelperTest : public ::testing::Test
{
protected:
    void SetUp() override { qblog::clearLogHistory(); }
    void setEnv(const char* variable, const QString& value)
    {
        ::setenv(variable, value.toLocal8Bit().constData(), 1);
    }
    std::string warnings() const
    {
        std::string joined;
        for (const std::string& line : qblog::recentLogLines(20, qblog::Level::Warning)) {
            joined = line + "\n" + joined;
        }
        return joined;
    }

    QBTestHome mHome;
};

TEST_F(QuotesDBHelperTest, FoldersFollowTheXdgVariables)
{
    const std::string db = mHome.stdPath(QStringLiteral(
        "xdg_data_home/group.Q8B2X4K7LM.org.quillbox2/Library/Application Support/quotes.db"));
    EXPECT_EQ(QBQuotesDBHelper::getPathToQuotesDb(), db);
    EXPECT_EQ(QBFolderHelper::getPathToLogsFolder(),
              mHome.stdPath(QStringLiteral("xdg_state_home/Logs")));
    EXPECT_EQ(QBFolderHelper::getCreatePathToAppSupportFolder(),
              mHome.stdPath(QStringLiteral("xdg_data_home/Quillbox2")));
    EXPECT_TRUE(QFileInfo(mHome.filePath(QStringLiteral("xdg_data_home/Quillbox2"))).isDir());

    ::unsetenv("XDG_DATA_HOME"); // the XDG default under HOME
    setEnv("XDG_STATE_HOME", QStringLiteral("relative/is/ignored"));
    EXPECT_EQ(QBQuotesDBHelper::getApplicationGroupContainer(),
              mHome.stdPath(QStringLiteral("home/.local/share/group.Q8B2X4K7LM.org.quillbox2")));
    EXPECT_EQ(QBFolderHelper::getPathToLogsFolder(),
              mHome.stdPath(QStringLiteral("home/.local/state/Logs")));
    EXPECT_EQ(warnings(), "");

    ::unsetenv("HOME"); // no container, and nothing built on it
    EXPECT_FALSE(QBQuotesDBHelper::getApplicationGroupFolder());
    EXPECT_FALSE(QBQuotesDBHelper::getPathToQuotesDb());
    EXPECT_FALSE(QBFolderHelper::getPathToLogsFolder());
    EXPECT_NE(warnings().find("Failed to locate library directory for current user: neither "
                              "$XDG_STATE_HOME nor $HOME"),
              std::string::npos);
}

TEST_F(QuotesDBHelperTest, UncreatableFoldersOnlyWarn)
{
    const QString blocker = mHome.filePath(QStringLiteral("blocker"));
    ASSERT_TRUE(writeFileBytes(blocker, "x"));
    setEnv("XDG_DATA_HOME", blocker);
    setEnv("XDG_STATE_HOME", blocker + QStringLiteral("/state"));
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
    EXPECT_FALSE(QBFolderHelper::getCreatePathToAppSupportFolder());
    EXPECT_FALSE(QBFolderHelper::getPathToLogsFolder());
    const std::string lines = warnings();
    EXPECT_NE(lines.find("Failed to create folder for application group: Cannot create folder '" +
                         blocker.toStdString() +
                         "/group.Q8B2X4K7LM.org.quillbox2/Library/"
                         "Application Support': Not a directory"),
              std::string::npos)
        << lines;
    EXPECT_NE(lines.find("Failed to locate or create app support directory: Cannot create"),
              std::string::npos);
    EXPECT_NE(lines.find("Failed to locate library directory for current user: Cannot create"),
              std::string::npos);
}

} // namespace
