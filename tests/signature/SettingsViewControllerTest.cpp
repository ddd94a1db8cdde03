#include "signature/SettingsViewController.h"

#include "HelperWorld.h"
#include "TelemetryTestSupport.h"
#include "TestHome.h"
#include "logging/Log.h"
#include "model/Notifications.h"
#include "signature/LoginItemService.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"
#include "telemetry/QBTelemetryHelper.h"
#include "telemetry/SignalCacheFile.h"
#include "telemetry/SignalManager.h"
#include "ui/Alert.h"
#include "util/NotificationCenter.h"
#include "util/UserDefaults.h"

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace helperworld;

// The page inside a plain main window, on defaults in the process's test home (the
// shared suite opens once per process there; the helpers it starts inherit it).
class SettingsViewControllerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QFile::remove(mDefaultsPath);
        mDefaults = std::make_unique<QBUserDefaults>(mDefaultsPath);
        mDefaults->registerDefaults(registeredDefaultSettings());
        mController =
            new QBSettingsViewController(*mDefaults, QBSharedUserDefaults::sharedInstance());
        mWindow.setCentralWidget(mController);
        QBAlert::shared().setParentWindow(&mWindow);
        mWindow.show();
        QBLoginItemService::setHelperExecutablePath(QStringLiteral(QB_HELPER_PATH));
        writeQuotes({QStringLiteral("One"), QStringLiteral("Two")});
        qblog::clearLogHistory();
        mObserver = QBNotificationCenter::defaultCenter().addObserver(
            QString(), [this](const QBNotification& notification) {
                if (notification.object == mController) {
                    mPosted.append(notification.name);
                }
            });
    }
    void TearDown() override
    {
        QBNotificationCenter::defaultCenter().removeObserver(mObserver);
        QString error;
        QBLoginItemService::loginItemServiceWithIdentifier(
            QStringLiteral("org.quillbox2.Quillbox2-Helper"))
            .unregisterAndReturnError(&error);
    }
    template <typename T> T* child(const char* name)
    {
        return mController->findChild<T*>(QString::fromUtf8(name));
    }
    // Texts of the open alerts, each "title / text", and closes them. No translation is
    // loaded here, so the texts are their ids.
    QStringList takeAlerts()
    {
        QStringList texts;
        for (QMessageBox* box : mWindow.findChildren<QMessageBox*>()) {
            if (box->isVisible()) {
                texts.append(box->windowTitle() + QStringLiteral(" / ") + box->text());
                box->done(0);
            }
        }
        return texts;
    }
    static QString lastInfoLine()
    {
        const std::vector<std::string> lines = qblog::recentLogLines(1, qblog::Level::Info);
        return lines.empty() ? QString()
                             : QString::fromStdString(lines.front())
                                   .section(QStringLiteral("] :  "), 1)

                                   .trimmed();
    }

    const QString mDefaultsPath = QDir::homePath() + QStringLiteral("/settings-test.conf");
    std::unique_ptr<QBUserDefaults> mDefaults;
    QMainWindow mWindow;
    QBSettingsViewController* mController = nullptr;
    QBNotificationToken mObserver;
    QStringList mPosted;
};

TEST_F(SettingsViewControllerTest, CheckBoxesFollowTheDefaultsBothWaysAndReachTheSuite)
{
    auto* clearLines = child<QCheckBox>("clearTrailingEmptyLinesCheckBox");
    auto* warn = child<QCheckBox>("warnForDuplicatesCheckBox");
    ASSERT_TRUE(clearLines && warn);
    QTest::mouseClick(clearLines, Qt::LeftButton);
    EXPECT_TRUE(mDefaults->boolForKey(QBDefaultsClearTrailingEmptyLines));
    EXPECT_TRUE(QBSharedUserDefaults::sharedInstance().suiteUserDefaults().boolForKey(
        QBDefaultsClearTrailingEmptyLines));
    EXPECT_EQ(QBSharedUserDefaults::sharedInstance().integerForKey(QBDefaultsRandomizeInterval),
              120);
    mDefaults->setObject(false, QBDefaultsClearTrailingEmptyLines);
    EXPECT_FALSE(clearLines->isChecked());

    // Duplicate warnings: only NO to YES asks for a check.
    QTest::mouseClick(warn, Qt::LeftButton);
    EXPECT_EQ(mPosted, QStringList{QBCheckForDuplicateQuotesNotification});
    mDefaults->setObject(QStringLiteral("x"), QStringLiteral("QBDefaultsOther")); // still YES
    QTest::mouseClick(warn, Qt::LeftButton);
    EXPECT_FALSE(mDefaults->boolForKey(QBDefaultsWarnForDuplicates));
    mDefaults->setObject(true, QBDefaultsWarnForDuplicates);
    EXPECT_TRUE(warn->isChecked());
    EXPECT_EQ(mPosted.size(), 2);
    EXPECT_TRUE(takeAlerts().isEmpty());
}

TEST_F(SettingsViewControllerTest, AutoRandomizeRunsTheHelperAndAnIntervalChangeRestartsIt)
{
    QSignalSpy randomizing(mController, &QBSettingsViewController::isRandomizingChanged);
    QTest::mouseClick(child<QCheckBox>("autoRandomizeCheckBox"), Qt::LeftButton);
    EXPECT_EQ(takeAlerts(),
              QStringList{QStringLiteral("NoOutputFileSpecified / PleaseSpecifyOutputFile")});
    EXPECT_TRUE(mController->isRandomizing());
    EXPECT_EQ(randomizing.size(), 1);
    ASSERT_TRUE(
        QTest::qWaitFor([] { return QBLoginItemService::runningHelperProcessId() != 0; }, 5000));
    const qint64 firstPid = QBLoginItemService::runningHelperProcessId();
    const QString entry = QBLoginItemService::loginItemServiceWithIdentifier(
                              QStringLiteral("org.quillbox2.Quillbox2-Helper"))
                              .autostartEntryPath();
    EXPECT_TRUE(QFile::exists(entry));

    auto* popup = child<QComboBox>("changeIntervalPopupButton");
    const QStringList tags = popup->property("minuteTags").toString().split(QLatin1Char(','));
    const int fiveMinutes = static_cast<int>(tags.indexOf(QStringLiteral("5")));
    ASSERT_GE(fiveMinutes, 0);
    QElapsedTimer clock;
    clock.start();
    popup->setCurrentIndex(fiveMinutes);
    emit popup->activated(fiveMinutes);
    EXPECT_EQ(
        lastInfoLine(),
        QStringLiteral("Auto-change interval changed to 300s (5min. / 0.08333333333333333h)"));
    EXPECT_EQ(mDefaults->integerForKey(QBDefaultsRandomizeInterval), 300);
    EXPECT_EQ(QBSharedUserDefaults::sharedInstance().integerForKey(QBDefaultsRandomizeInterval),
              300);
    qint64 newPid = 0;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            newPid = QBLoginItemService::runningHelperProcessId();
            return newPid != 0 && newPid != firstPid;
        },
        6000));
    EXPECT_GE(clock.elapsed(), 1900); // stop after 1.0 s, start 1.0 s later

    popup->setCurrentIndex(static_cast<int>(tags.indexOf(QStringLiteral("1440"))));
    emit popup->activated(popup->currentIndex());
    EXPECT_EQ(lastInfoLine(),
              QStringLiteral("Auto-change interval changed to 86400s (1440min. / 24.0h)"));

    QTest::mouseClick(child<QCheckBox>("autoRandomizeCheckBox"), Qt::LeftButton);
    EXPECT_FALSE(mController->isRandomizing());
    EXPECT_FALSE(QFile::exists(entry));
    EXPECT_EQ(QBLoginItemService::runningHelperProcessId(), 0);
    EXPECT_TRUE(takeAlerts().isEmpty());
}

TEST_F(SettingsViewControllerTest, OutputPathIsStoredAndBookmarkedUnlessUnusable)
{
    const QString cloud = QDir::homePath() + QStringLiteral("/com~apple~CloudDocs/sig.txt");
    mController->updateOutputFilePath(QUrl::fromLocalFile(cloud));
    EXPECT_EQ(takeAlerts(), QStringList{QStringLiteral(
                                "PleaseChooseDifferentLocation / ICloudDriveNotYetSupported")});
    EXPECT_EQ(mDefaults->stringForKey(QBDefaultsSignatureOutputPath), QString());

    mController->updateOutputFilePath(QUrl());
    EXPECT_EQ(mPosted, QStringList());

    const QString chosen = QDir::homePath() + QStringLiteral("/chosen.txt");
    mController->updateOutputFilePath(QUrl::fromLocalFile(chosen));
    EXPECT_EQ(mDefaults->stringForKey(QBDefaultsSignatureOutputPath), chosen);
    EXPECT_TRUE(QFile::exists(chosen)); // the bookmark made it
    EXPECT_EQ(QBSharedUserDefaults::sharedInstance()
                  .objectForKey(QBPrivateDefaultsOutputFileSSB)
                  .typeId(),
              QMetaType::QByteArray);
    EXPECT_EQ(mPosted, QStringList{QBWriteCurrentQuoteNotification});
    EXPECT_EQ(child<QLabel>("clickablePathField")->text(), chosen);

    std::string warnings;
    for (const std::string& line : qblog::recentLogLines(5, qblog::Level::Warning)) {
        warnings += line.substr(line.find("] ") + 2) + "\n";
    }
    EXPECT_NE(warnings.find("Empty path received in updateOutputFilePath(_:)"), std::string::npos);

    // A stored interval that no item shows.
    mDefaults->setInteger(7, QBDefaultsRandomizeInterval);
    mController->viewWillAppear();
    const std::vector<std::string> last = qblog::recentLogLines(1, qblog::Level::Warning);
    ASSERT_EQ(last.size(), 1u);
    EXPECT_NE(last.front().find("Failed to select popup menu item for change interval <7>"),
              std::string::npos);
}

} // namespace

TEST_F(SettingsViewControllerTest, UsageStatisticsSwitchStopsPostsAndDeletesCachedRecords)
{
    auto* share = child<QCheckBox>("shareUsageStatisticsCheckBox");
    auto* unavailable = child<QLabel>("usageStatisticsUnavailableLabel");
    ASSERT_TRUE(share && unavailable);
    QBTelemetryHelper& telemetry = QBTelemetryHelper::shared();

    // A build without a statistics service: off, disabled, and a line says why.
    telemetry.configureWithAppID(kAppID, QUrl());
    mController->viewWillAppear();
    EXPECT_FALSE(share->isEnabled() || share->isChecked());
    EXPECT_TRUE(unavailable->isVisible());

    // With a service the switch is on by default; an earlier run's records are loaded.
    LocalHttpServer server;
    const QString cacheFile = qbsignalcachefile::defaultLocation();
    const QByteArray cached = SignalPostBody::encodeList(makeRecords(0, 2));
    ASSERT_TRUE(qbsignalcachefile::writeAtomically(cacheFile, cached));
    telemetry.configureWithAppID(kAppID, server.baseURL());
    mController->viewWillAppear();
    EXPECT_TRUE(share->isEnabled() && share->isChecked());
    EXPECT_FALSE(unavailable->isVisible());
    SignalManager* client = TelemetryManager::shared()->signalManager();
    client->waitForPendingSignals();
    ASSERT_GT(client->signalCache().count() + client->batchesInFlight(), 0);

    // Off: the waiting records are dropped, new signals go nowhere, the exit caches nothing.
    QTest::mouseClick(share, Qt::LeftButton);
    EXPECT_FALSE(sharesUsageStatistics(mDefaults->objectForKey(QBDefaultsShareUsageStatistics)));
    EXPECT_TRUE(TelemetryManager::shared()->configuration().analyticsDisabled);
    telemetry.trackQuoteAdded();
    TelemetryManager::shared()->appWillTerminate();
    QCoreApplication::processEvents();
    EXPECT_FALSE(QFile::exists(cacheFile));
    const auto received = [&server] {
        QStringList types;
        for (const RecordedRequest& request : server.requests())
            for (const QJsonValue& record : QJsonDocument::fromJson(request.body).array())
                types << record.toObject().value("type"_L1).toString();
        return types;
    };
    EXPECT_FALSE(received().contains(u"Quote.Added"_s));

    // A launch with the switch off deletes what an earlier run cached, unread.
    ASSERT_TRUE(qbsignalcachefile::writeAtomically(cacheFile, cached));
    telemetry.configureWithAppID(
        kAppID, server.baseURL(),
        sharesUsageStatistics(mDefaults->objectForKey(QBDefaultsShareUsageStatistics)));
    EXPECT_FALSE(QFile::exists(cacheFile));
    EXPECT_EQ(TelemetryManager::shared()->signalManager(), nullptr);

    // On again: signals are posted once more.
    QTest::mouseClick(share, Qt::LeftButton);
    ASSERT_NE(TelemetryManager::shared()->signalManager(), nullptr);
    telemetry.trackQuoteAdded();
    drainToServer(*TelemetryManager::shared()->signalManager(), server);
    EXPECT_TRUE(received().contains(u"Quote.Added"_s));
    telemetry.configureWithAppID(kAppID, QUrl()); // the server goes with this test
}
