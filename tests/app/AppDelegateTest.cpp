#include "app/AppDelegate.h"
#include "core/Bundle.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "logging/Log.h"
#include "signature/SettingsKeys.h"
#include "ui/AboutWindow.h"
#include "util/UserDefaults.h"

#include "AppTestSupport.h"
#include "TestHome.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace {

class AppDelegateTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QBBundle::setMainBundleResourcePath(QB_BUILD_SHARE_DIR);
        QBUserDefaults::resetStandardUserDefaults();
        CQuotesRepository& repository = CQuotesRepository::getInstance();
        repository.removeAllQuotes();
        repository.mFilePath.clear();
        qblog::clearLogHistory();
    }
    void TearDown() override
    {
        qblog::removeLogFileSink();
        QBUserDefaults::resetStandardUserDefaults();
        QBBundle::setMainBundleResourcePath(QBBundle::defaultResourcePath());
    }

    QString dbPath() const
    {
        return QString::fromStdString(QBQuotesDBHelper::getPathToQuotesDb().value_or(""));
    }
    QAction* action(const char* name) const
    {
        return mDelegate.window()->findChild<QAction*>(QString::fromUtf8(name));
    }
    // Oldest first, unlike the history query.
    static std::vector<std::string> logLines(qblog::Level level)
    {
        std::vector<std::string> lines = qblog::recentLogLines(200, level);
        std::reverse(lines.begin(), lines.end());
        return lines;
    }
    // Runs the event loop until the application quits; false if it did not within 10 s.
    static bool runUntilQuit()
    {
        bool timedOut = false;
        QTimer guard;
        guard.setSingleShot(true);
        QObject::connect(&guard, &QTimer::timeout, [&] {
            timedOut = true;
            QApplication::exit(1);
        });
        guard.start(10000);
        QApplication::exec();
        return !timedOut;
    }

    QBTestHome mHome;
    QBAppDelegate mDelegate;
};

TEST_F(AppDelegateTest, FirstLaunchSeedsLoadsAndOpensTheWindow)
{
    mDelegate.applicationDidFinishLaunching();

    const QByteArray seed = readFileBytes(QStringLiteral(QB_SEED_PATH));
    EXPECT_EQ(readFileBytes(dbPath()), seed);
    std::vector<CQuoteRecord> seedRecords;
    readQuotesFile(QB_SEED_PATH, seedRecords);
    EXPECT_EQ(CQuotesRepository::getInstance().mQuotes.size(), seedRecords.size());
    EXPECT_NE(mDelegate.autoSaver(), nullptr);

    ASSERT_NE(mDelegate.window(), nullptr);
    EXPECT_TRUE(mDelegate.window()->isVisible());
    ASSERT_NE(action("saveAction"), nullptr);
    EXPECT_EQ(action("saveAction")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
    ASSERT_NE(action("quitAction"), nullptr);
    EXPECT_EQ(action("quitAction")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    EXPECT_NE(action("aboutAction"), nullptr);

    // The interval is a registered default: read as 120, not written to the file.
    EXPECT_EQ(QBUserDefaults::standardUserDefaults().integerForKey(QBDefaultsRandomizeInterval),
              120);
    EXPECT_FALSE(QBUserDefaults(QBUserDefaults::standardUserDefaultsPath())
                     .objectForKey(QBDefaultsRandomizeInterval)
                     .isValid());

    const auto lines = logLines(qblog::Level::Info);
    const int established = findLine(lines, "Logging established (level: debug)");
    const int launched = findLine(lines, "Launch of quillbox2-tests ", established);
    const int loaded =
        findLine(lines,
                 std::to_string(seedRecords.size()) + " quotes read from database at '" +
                     dbPath().toStdString() + "'",
                 launched);
    EXPECT_GE(established, 0);
    EXPECT_GT(launched, established);
    EXPECT_GT(loaded, launched);
    EXPECT_TRUE(logLines(qblog::Level::Warning).empty());
}

TEST_F(AppDelegateTest, SaveCommandWritesTheQuotes)
{
    mDelegate.applicationDidFinishLaunching();
    ASSERT_TRUE(QFile::remove(dbPath()));
    action("saveAction")->trigger();
    std::vector<CQuoteRecord> saved;
    readQuotesFile(dbPath().toStdString(), saved);
    EXPECT_EQ(saved.size(), CQuotesRepository::getInstance().mQuotes.size());
    EXPECT_GE(saved.size(), 40u);
}

TEST_F(AppDelegateTest, AboutWindowIsMadeOnceAndNamesTheSeedCredits)
{
    QApplication::setApplicationVersion(QStringLiteral("9.8.7"));
    mDelegate.applicationDidFinishLaunching();
    EXPECT_EQ(mDelegate.aboutWindowController(), nullptr);
    action("aboutAction")->trigger();
    QBAboutWindow* about = mDelegate.aboutWindowController();
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    EXPECT_EQ(about->versionText(), QStringLiteral("Version 9.8.7"));
    EXPECT_TRUE(about->creditsText().contains(QStringLiteral("public domain")));
    EXPECT_TRUE(about->creditsText().contains(QStringLiteral("William Shakespeare")));
    about->close();
    action("aboutAction")->trigger();
    EXPECT_EQ(mDelegate.aboutWindowController(), about);
    EXPECT_TRUE(about->isVisible());
    QApplication::setApplicationVersion(QString());
}

TEST_F(AppDelegateTest, ClosingTheWindowQuitsEvenWithAboutOpen)
{
    mDelegate.applicationDidFinishLaunching();
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &mDelegate,
                     &QBAppDelegate::applicationWillTerminate);
    mDelegate.showAboutWindow();
    QTimer::singleShot(0, mDelegate.window(), &QWidget::close);
    EXPECT_TRUE(runUntilQuit());
    const auto lines = logLines(qblog::Level::Info);
    ASSERT_FALSE(lines.empty());
    EXPECT_NE(lines.back().find("Shutting down."), std::string::npos) << lines.back();
}

TEST_F(AppDelegateTest, QuitOnlyLogsAndSavesNothing)
{
    mDelegate.applicationDidFinishLaunching();
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &mDelegate,
                     &QBAppDelegate::applicationWillTerminate);
    // A change made without telling anyone: only an explicit save would write it.
    CQuotesRepository::getInstance().mQuotes.clear();
    qblog::clearLogHistory();
    QTimer::singleShot(0, action("quitAction"), &QAction::trigger);
    EXPECT_TRUE(runUntilQuit());
    EXPECT_EQ(readFileBytes(dbPath()), readFileBytes(QStringLiteral(QB_SEED_PATH)));
    const auto lines = logLines(qblog::Level::Info);
    ASSERT_FALSE(lines.empty());
    EXPECT_NE(lines.back().find("Shutting down."), std::string::npos);
    EXPECT_EQ(findLine(lines, "Saving quotes"), -1);
}

TEST_F(AppDelegateTest, WithoutADatabaseTheListStaysEmptyAndUnsaved)
{
    const QString blocker = mHome.filePath(QStringLiteral("blocker"));
    ASSERT_TRUE(writeFileBytes(blocker, "x"));
    ::setenv("XDG_DATA_HOME", blocker.toLocal8Bit().constData(), 1);
    const std::string path = dbPath().toStdString();

    mDelegate.initializeQuotesDB();
    EXPECT_EQ(mDelegate.autoSaver(), nullptr);
    EXPECT_TRUE(CQuotesRepository::getInstance().mQuotes.empty());
    EXPECT_TRUE(CQuotesRepository::getInstance().mFilePath.empty());
    const auto warnings = logLines(qblog::Level::Warning);
    ASSERT_EQ(warnings.size(), 3u);
    EXPECT_NE(warnings[0].find("Failed to create folder for application group: "),
              std::string::npos);
    EXPECT_NE(warnings[1].find("Failed to copy default quotes db to app support folder: "),
              std::string::npos);
    EXPECT_NE(warnings[2].find("(Still) no quotes DB after initialization found at " + path),
              std::string::npos);

    qblog::clearLogHistory();
    mDelegate.saveDocument();
    EXPECT_GE(findLine(logLines(qblog::Level::Info), "Saving quotes"), 0);
    EXPECT_FALSE(QFile::exists(dbPath()));
}

} // namespace
