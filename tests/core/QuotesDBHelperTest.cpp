#include "core/QuotesDBHelper.h"
#include "core/AppIdentity.h"
#include "core/Bundle.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

bool containsLineWith(const std::vector<std::string>& lines, const std::string& text)
{
    for (const std::string& line : lines) {
        if (line.find(text) != std::string::npos) {
            return true;
        }
    }
    return false;
}

class QuotesDBHelperTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        qblog::clearLogHistory();
        QBBundle::setMainBundleResourcePath(mHome.stdPath(QStringLiteral("bundle")));
    }
    void TearDown() override
    {
        QBBundle::setMainBundleResourcePath(QBBundle::defaultResourcePath());
    }

    QString containerPath() const
    {
        return mHome.filePath(QStringLiteral("xdg_data_home/") +
                              QString::fromUtf8(qbidentity::kApplicationGroupIdentifier));
    }
    QString dbPath() const
    {
        return containerPath() + QStringLiteral("/Library/Application Support/quotes.db");
    }
    void putSeed(const QByteArray& bytes)
    {
        ASSERT_TRUE(
            writeFileBytes(mHome.filePath(QStringLiteral("bundle/signatures.json")), bytes));
    }
    std::vector<std::string> warnings() const
    {
        return qblog::recentLogLines(100, qblog::Level::Warning);
    }

    QBTestHome mHome;
};

TEST_F(QuotesDBHelperTest, PathsLieInTheContainerUnderXdgDataHome)
{
    EXPECT_EQ(QBQuotesDBHelper::getApplicationGroupContainer(), containerPath().toStdString());
    EXPECT_EQ(
        QBQuotesDBHelper::getApplicationGroupFolder(),
        QString(containerPath() + QStringLiteral("/Library/Application Support")).toStdString());
    EXPECT_EQ(QBQuotesDBHelper::getPathToQuotesDb(), dbPath().toStdString());

    // Without XDG_DATA_HOME the XDG default under HOME applies.
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(QBQuotesDBHelper::getPathToQuotesDb(),
              mHome.stdPath(QStringLiteral("home/.local/share/group.Q8B2X4K7LM.org.quillbox2/"
                                           "Library/Application Support/quotes.db")));
    // With neither there is no container, and nothing built on it.
    ::unsetenv("HOME");
    EXPECT_FALSE(QBQuotesDBHelper::getApplicationGroupContainer());
    EXPECT_FALSE(QBQuotesDBHelper::getApplicationGroupFolder());
    EXPECT_FALSE(QBQuotesDBHelper::getPathToQuotesDb());
}

TEST_F(QuotesDBHelperTest, CreatesTheFolderOnceAndReportsFailure)
{
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
    EXPECT_TRUE(QFileInfo(QFileInfo(dbPath()).absolutePath()).isDir());
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder(); // exists: silently kept
    EXPECT_TRUE(warnings().empty());

    // A data home that is a file cannot hold the container.
    const QString blocker = mHome.filePath(QStringLiteral("blocker"));
    ASSERT_TRUE(writeFileBytes(blocker, "x"));
    ::setenv("XDG_DATA_HOME", blocker.toLocal8Bit().constData(), 1);
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
    ASSERT_EQ(warnings().size(), 1u);
    EXPECT_TRUE(containsLineWith(warnings(), "Failed to create folder for application group: "
                                             "Cannot create folder '" +
                                                 blocker.toStdString()));
}

TEST_F(QuotesDBHelperTest, SeedCopyIsExactAndNeverOverwrites)
{
    const QByteArray seed = "{\n    \"Quotes\": []\n}\n\xc3\xa9";
    putSeed(seed);
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
    QBQuotesDBHelper::copyDefaultQuotesToQuotesDb(dbPath().toStdString());
    EXPECT_EQ(readFileBytes(dbPath()), seed);
    EXPECT_TRUE(warnings().empty());

    ASSERT_TRUE(writeFileBytes(dbPath(), "mine"));
    QBQuotesDBHelper::copyDefaultQuotesToQuotesDb(dbPath().toStdString());
    EXPECT_EQ(readFileBytes(dbPath()), QByteArray("mine"));
    EXPECT_TRUE(
        containsLineWith(warnings(), "Failed to copy default quotes db to app support folder: "));
}

TEST_F(QuotesDBHelperTest, MissingSeedOrTargetOnlyWarns)
{
    struct Case
    {
        const char* name;
        bool seedPresent;
        std::optional<std::string> target;
        const char* expectedWarning;
    };
    const Case cases[] = {
        {"no seed", false, dbPath().toStdString(),
         "Failed to locate sample quotes db in app bundle: (null)"},
        {"no target", true, std::nullopt,
         "Failed to copy default quotes db to app support folder: "},
        {"target folder missing", true, mHome.stdPath(QStringLiteral("nowhere/quotes.db")),
         "Failed to copy default quotes db to app support folder: "},
    };
    for (const Case& c : cases) {
        qblog::clearLogHistory();
        QFile::remove(mHome.filePath(QStringLiteral("bundle/signatures.json")));
        if (c.seedPresent) {
            putSeed("{}");
        }
        QBQuotesDBHelper::copyDefaultQuotesToQuotesDb(c.target);
        const auto lines = warnings();
        ASSERT_EQ(lines.size(), 1u) << c.name;
        EXPECT_TRUE(containsLineWith(lines, c.expectedWarning)) << c.name << ": " << lines[0];
        EXPECT_FALSE(QFileInfo::exists(dbPath())) << c.name;
    }
}

TEST_F(QuotesDBHelperTest, BundleFindsOnlyRegularResourceFiles)
{
    const QBBundle bundle(mHome.stdPath(QStringLiteral("res")));
    ASSERT_TRUE(writeFileBytes(mHome.filePath(QStringLiteral("res/signatures.json")), "{}"));
    QDir().mkpath(mHome.filePath(QStringLiteral("res/folder.json")));
    EXPECT_EQ(bundle.pathForResource("signatures", "json"),
              mHome.stdPath(QStringLiteral("res/signatures.json")));
    EXPECT_FALSE(bundle.pathForResource("signatures", "txt"));
    EXPECT_FALSE(bundle.pathForResource("folder", "json"));
    EXPECT_FALSE(QBBundle(boost::filesystem::path()).pathForResource("signatures", "json"));

    // The main bundle sits beside the executable's folder, as in the install tree.
    const boost::filesystem::path resources = QBBundle::defaultResourcePath();
    EXPECT_EQ(resources.filename(), "quillbox2");
    EXPECT_EQ(resources.parent_path().filename(), "share");
}

} // namespace
