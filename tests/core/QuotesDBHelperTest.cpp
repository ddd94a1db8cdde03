#include "core/QuotesDBHelper.h"
#include "core/FolderHelper.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QFileInfo>

#include <gmock/gmock.h>

#include <cerrno>
#include <cstring>

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::HasSubstr;

namespace {

// Paths come from HOME and XDG_* on every call; the launch tests prove seeding.
class QuotesDBHelperTest : public ::testing::Test
{
protected:
    void SetUp() override { qblog::clearLogHistory(); }
    // Warning messages since the history was last cleared, oldest first, one a line.
    static std::string warnings()
    {
        std::string joined;
        for (const std::string& line : qblog::recentLogLines(20, qblog::Level::Warning)) {
            joined = line.substr(line.find("] :  ") + 5) + "\n" + joined;
        }
        return joined;
    }

    QBTestHome mHome;
};

TEST_F(QuotesDBHelperTest, FoldersFollowTheXdgVariablesAndFailuresOnlyWarn)
{
    EXPECT_EQ(QBQuotesDBHelper::getPathToQuotesDb(),
              mHome.stdPath(QStringLiteral("xdg_data_home/group.Q8B2X4K7LM.org.quillbox2/"
                                           "Library/Application Support/quotes.db")));
    EXPECT_EQ(QBFolderHelper::getPathToLogsFolder(),
              mHome.stdPath(QStringLiteral("xdg_state_home/Logs")));
    EXPECT_EQ(QBFolderHelper::getCreatePathToAppSupportFolder(),
              mHome.stdPath(QStringLiteral("xdg_data_home/Quillbox2")));
    EXPECT_TRUE(QFileInfo(mHome.filePath(QStringLiteral("xdg_data_home/Quillbox2"))).isDir());

    ::unsetenv("XDG_DATA_HOME"); // the XDG default under HOME
    ::setenv("XDG_STATE_HOME", "relative/is/ignored", 1);
    EXPECT_EQ(QBQuotesDBHelper::getApplicationGroupContainer(),
              mHome.stdPath(QStringLiteral("home/.local/share/group.Q8B2X4K7LM.org.quillbox2")));
    EXPECT_EQ(QBFolderHelper::getPathToLogsFolder(),
              mHome.stdPath(QStringLiteral("home/.local/state/Logs")));
    EXPECT_EQ(warnings(), "");

    const std::string blocker = mHome.stdPath(QStringLiteral("blocker"));
    ASSERT_TRUE(writeFileBytes(QString::fromStdString(blocker), "x"));
    ::setenv("XDG_DATA_HOME", blocker.c_str(), 1);
    ::setenv("XDG_STATE_HOME", (blocker + "/state").c_str(), 1);
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
    EXPECT_FALSE(QBFolderHelper::getCreatePathToAppSupportFolder());
    EXPECT_FALSE(QBFolderHelper::getPathToLogsFolder());
    // A file in the way is "not a directory" to GCC 12's library, "exists" to GCC 14's.
    const std::string cannotCreate = "Failed to create folder for application group: Cannot "
                                     "create folder '" +
                                     blocker +
                                     "/group.Q8B2X4K7LM.org.quillbox2/Library/Application "
                                     "Support': ";
    EXPECT_THAT(warnings(),
                AllOf(AnyOf(HasSubstr(cannotCreate + std::strerror(ENOTDIR)),
                            HasSubstr(cannotCreate + std::strerror(EEXIST))),
                      HasSubstr("Failed to locate or create app support directory: Cannot create"),
                      HasSubstr("Failed to locate library directory for current user: Cannot")));

    for (const char* variable : {"HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
        ::unsetenv(variable); // no container, and nothing built on it
    }
    EXPECT_FALSE(QBQuotesDBHelper::getPathToQuotesDb());
    EXPECT_FALSE(QBFolderHelper::getPathToLogsFolder());
    EXPECT_THAT(warnings(), HasSubstr("Failed to locate library directory for current user: "
                                      "neither $XDG_STATE_HOME nor $HOME"));
}

} // namespace
