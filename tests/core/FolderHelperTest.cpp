#include "core/FolderHelper.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class FolderHelperTest : public ::testing::Test
{
protected:
    void SetUp() override { qblog::clearLogHistory(); }

    std::vector<std::string> warnings() const
    {
        return qblog::recentLogLines(100, qblog::Level::Warning);
    }

    QBTestHome mHome;
};

TEST_F(FolderHelperTest, LogsFolderIsUnderXdgStateHomeAndNotCreated)
{
    const QString state = mHome.filePath(QStringLiteral("fresh/state"));
    ::setenv("XDG_STATE_HOME", state.toLocal8Bit().constData(), 1);
    EXPECT_EQ(QBFolderHelper::getPathToLogsFolder(),
              QString(state + QStringLiteral("/Logs")).toStdString());
    EXPECT_TRUE(QFileInfo(state).isDir()); // the library folder is made on request
    EXPECT_FALSE(QFileInfo::exists(state + QStringLiteral("/Logs")));
    EXPECT_TRUE(warnings().empty());
}

TEST_F(FolderHelperTest, AppSupportFolderIsCreatedUnderXdgDataHome)
{
    const QString expected = mHome.filePath(QStringLiteral("xdg_data_home/Quillbox2"));
    EXPECT_EQ(QBFolderHelper::getCreatePathToAppSupportFolder(), expected.toStdString());
    EXPECT_TRUE(QFileInfo(expected).isDir());
    EXPECT_EQ(QBFolderHelper::getCreatePathToAppSupportFolder(), expected.toStdString());
    EXPECT_TRUE(warnings().empty());
}

TEST_F(FolderHelperTest, UnusableFoldersGiveNothingAndWarn)
{
    const QString blocker = mHome.filePath(QStringLiteral("blocker"));
    ASSERT_TRUE(writeFileBytes(blocker, "x"));
    const QString underFile = blocker + QStringLiteral("/sub");

    ::setenv("XDG_STATE_HOME", underFile.toLocal8Bit().constData(), 1);
    EXPECT_FALSE(QBFolderHelper::getPathToLogsFolder());
    ::setenv("XDG_DATA_HOME", underFile.toLocal8Bit().constData(), 1);
    EXPECT_FALSE(QBFolderHelper::getCreatePathToAppSupportFolder());
    // A file where the app folder goes is returned as it is, like an existing folder.
    ASSERT_TRUE(writeFileBytes(mHome.filePath(QStringLiteral("data2/Quillbox2")), "file"));
    ::setenv("XDG_DATA_HOME", mHome.filePath(QStringLiteral("data2")).toLocal8Bit().constData(), 1);
    EXPECT_EQ(QBFolderHelper::getCreatePathToAppSupportFolder(),
              mHome.stdPath(QStringLiteral("data2/Quillbox2")));

    // Relative XDG values are ignored; without HOME nothing can be found.
    ::setenv("XDG_STATE_HOME", "relative", 1);
    ::unsetenv("HOME");
    EXPECT_FALSE(QBFolderHelper::getPathToLogsFolder());

    const auto lines = warnings();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_NE(lines[2].find("Failed to locate library directory for current user: Cannot create "
                            "folder"),
              std::string::npos);
    EXPECT_NE(lines[1].find("Failed to locate or create app support directory: "),
              std::string::npos);
    EXPECT_NE(lines[0].find("Failed to locate library directory for current user: neither "
                            "$XDG_STATE_HOME nor $HOME"),
              std::string::npos);
}

} // namespace
