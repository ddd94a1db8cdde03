#include "signature/SettingsViewController.h"

#include "HelperWorld.h"
#include "TelemetryTestSupport.h"
#include "TestHome.h"
#include "core/QuoteRecord.h"
#include "logging/Log.h"
#include "model/Notifications.h"
#include "model/QuoteValueObject.h"
#include "signature/LoginItemService.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"
#include "signature/SignatureSection.h"
#include "telemetry/QBTelemetryHelper.h"
#include "ui/Alert.h"
#include "util/NotificationCenter.h"
#include "util/UserDefaults.h"

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace helperworld;

// The page in a main window; the shared suite and the helpers use the process's test home.
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
        mWindow.resize(640, 1000); // the whole page in view
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
        mService.unregisterAndReturnError(&error);
    }
    template <typename T> T* child(const char* name)
    {
        return mController->findChild<T*>(QString::fromUtf8(name));
    }
    void click(const char* checkBox) { clickBox(child<QCheckBox>(checkBox)); }
    // On the box itself: a check box wider than its text does not take clicks beyond it.
    static void clickBox(QCheckBox* box)
    {
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(box->height() / 2, box->height() / 2));
    }
    // The open alerts as "title / text", closed. No translation is loaded: texts are ids.
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
    // The newest line at |level|, without its time stamp and level.
    static QString lastLine(qblog::Level level)
    {
        const std::vector<std::string> lines = qblog::recentLogLines(1, level);
        return lines.empty() ? QString()
                             : QString::fromStdString(lines.front()).section(u"] :  "_s, 1);
    }
    void selectInterval(const char* minutes)
    {
        auto* popup = child<QComboBox>("changeIntervalPopupButton");
        const QStringList tags = popup->property("minuteTags").toString().split(u',');
        const int index = static_cast<int>(tags.indexOf(QString::fromLatin1(minutes)));
        ASSERT_GE(index, 0) << minutes;
        popup->setCurrentIndex(index);
        emit popup->activated(index);
    }

    const QString mDefaultsPath = QDir::homePath() + QStringLiteral("/settings-test.conf");
    QBLoginItemService mService = QBLoginItemService::loginItemServiceWithIdentifier(
        QStringLiteral("org.quillbox2.Quillbox2-Helper"));
    std::unique_ptr<QBUserDefaults> mDefaults;
    QMainWindow mWindow;
    QBSettingsViewController* mController = nullptr;
    QBNotificationToken mObserver;
    QStringList mPosted;
};

TEST_F(SettingsViewControllerTest, AutoRandomizeRunsTheHelperAndAnIntervalChangeRestartsIt)
{
    click("autoRandomizeCheckBox");
    EXPECT_EQ(takeAlerts(),
              QStringList{QStringLiteral("NoOutputFileSpecified / PleaseSpecifyOutputFile")});
    EXPECT_TRUE(mController->isRandomizing());
    ASSERT_TRUE(
        QTest::qWaitFor([] { return QBLoginItemService::runningHelperProcessId() != 0; }, 5000));
    const qint64 firstPid = QBLoginItemService::runningHelperProcessId();
    const QString entry = mService.autostartEntryPath();
    EXPECT_EQ(desktopEntryProblems(entry), QString());
    EXPECT_TRUE(readFileBytes(entry).contains("\nExec=" QB_HELPER_PATH "\n"));

    QElapsedTimer clock;
    clock.start();
    selectInterval("5");
    EXPECT_EQ(lastLine(qblog::Level::Info),
              u"Auto-change interval changed to 300s (5min. / 0.08333333333333333h)"_s);
    EXPECT_EQ(mDefaults->integerForKey(QBDefaultsRandomizeInterval), 300);
    EXPECT_EQ(QBSharedUserDefaults::sharedInstance().integerForKey(QBDefaultsRandomizeInterval),
              300);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const qint64 pid = QBLoginItemService::runningHelperProcessId();
            return pid != 0 && pid != firstPid;
        },
        6000));
    EXPECT_GE(clock.elapsed(), 1900); // stop after 1.0 s, start 1.0 s later

    click("autoRandomizeCheckBox");
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
    EXPECT_EQ(child<QLineEdit>("outputPathField")->text(), chosen);
}

TEST_F(SettingsViewControllerTest, UsageStatisticsSwitchIsOffWithoutAServiceAndStopsTheClient)
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

    // With one it is on; turning it off stops the client, and on again starts it.
    LocalHttpServer server;
    telemetry.configureWithAppID(kAppID, server.baseURL());
    mController->viewWillAppear();
    EXPECT_TRUE(share->isEnabled() && share->isChecked());
    EXPECT_FALSE(unavailable->isVisible());
    clickBox(share);
    EXPECT_FALSE(sharesUsageStatistics(mDefaults->objectForKey(QBDefaultsShareUsageStatistics)));
    EXPECT_EQ(TelemetryManager::shared()->signalManager(), nullptr);
    clickBox(share);
    EXPECT_NE(TelemetryManager::shared()->signalManager(), nullptr);
    telemetry.configureWithAppID(kAppID, QUrl()); // the server goes with this test
}

TEST_F(SettingsViewControllerTest, SignatureSectionStoresUsableTemplatesAndPreviewsTheSelectedQuote)
{
    auto* editor = child<QPlainTextEdit>("signatureTemplateEdit");
    auto* problem = child<QLabel>("signatureTemplateProblemLabel");
    auto* wrap = child<QComboBox>("signatureWrapColumnBox");
    auto* maxLines = child<QSpinBox>("signatureMaxLinesBox");
    auto* preview = child<QBSignaturePreview>("signaturePreview");
    auto* fit = child<QLabel>("signatureFitLabel");
    ASSERT_TRUE(editor && problem && wrap && maxLines && preview && fit);
    EXPECT_EQ(editor->toPlainText(), u"{quote}"_s);
    EXPECT_EQ(preview->toPlainText(), u"SettingsSignaturePreviewExample"_s);

    // Typed over: without the placeholder nothing is stored and the section says why.
    editor->setFocus();
    editor->selectAll();
    QTest::keyClicks(editor, u"Jane Doe, example.org"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(problem->isVisible());
    EXPECT_FALSE(mDefaults->objectForKey(QBDefaultsSignatureTemplate).isValid());
    QTest::keyClicks(editor, u"{quote}"_s);
    EXPECT_FALSE(problem->isVisible());
    EXPECT_EQ(mDefaults->stringForKey(QBDefaultsSignatureTemplate),
              u"Jane Doe, example.org\n{quote}"_s);
    QBSharedUserDefaults::sharedInstance().suiteUserDefaults().synchronize();
    EXPECT_EQ(QBSharedUserDefaults::sharedInstance().stringForKey(QBDefaultsSignatureTemplate),
              u"Jane Doe, example.org\n{quote}"_s);

    // Wrap at 72 and at most two lines, by keys.
    wrap->setFocus();
    QTest::keyClick(wrap, Qt::Key_Down);
    EXPECT_EQ(mDefaults->integerForKey(QBDefaultsSignatureWrapColumn), 72);
    maxLines->setFocus();
    QTest::keyClick(maxLines, Qt::Key_Up);
    QTest::keyClick(maxLines, Qt::Key_Up);
    EXPECT_EQ(mDefaults->integerForKey(QBDefaultsSignatureMaxLines), 2);

    // The selected quote, exactly as it will be written, with the marker at column 72.
    const QString quote = u"word "_s.repeated(25).trimmed();
    auto object = std::make_shared<QBQuoteValueObject>(CQuoteRecord(quote.toStdString(), "uid"));
    QBNotificationCenter::defaultCenter().post(QBQuoteSelectedNotification, object.get());
    const QBComposedSignature composed =
        QBSignatureComposer::compose(quote, QBSignatureSettings::fromDefaults(*mDefaults));
    EXPECT_EQ(preview->toPlainText() + u'\n', QString::fromUtf8(composed.bytes));
    EXPECT_EQ(preview->toPlainText().count(u'\n'), 2); // the template's line and two of the quote
    EXPECT_EQ(preview->markerColumn(), 72);
    EXPECT_GT(preview->markerX(), preview->fontMetrics().horizontalAdvance(u"0"_s) * 70);
    EXPECT_FALSE(fit->isVisible());
    QTest::keyClick(maxLines, Qt::Key_Down);
    EXPECT_TRUE(fit->isVisible()); // two lines, more than one
}

} // namespace
