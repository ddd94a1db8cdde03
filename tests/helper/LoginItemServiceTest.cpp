#include "signature/LoginItemService.h"
#include "HelperWorld.h"
#include "TestHome.h"
#include "core/AppIdentity.h"
#include "signature/SettingsKeys.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>

namespace {

using namespace helperworld;

bool processExists(qint64 pid)
{
    return QFile::exists(QStringLiteral("/proc/%1/exe").arg(pid));
}

// The entry's validity and the usual on and off are checked through the settings page;
// here, what the service must refuse or leave alone.
TEST(LoginItemServiceTest, RegisterStartsOneHelperAndUnregisterStopsOnlyTheHelper)
{
    QBTestHome home;
    writeQuotes({QStringLiteral("One")});
    setSuiteValue(QBDefaultsAutoRandomize, true);
    setSuiteValue(QBDefaultsRandomizeInterval, 60);
    QBLoginItemService service = QBLoginItemService::loginItemServiceWithIdentifier(
        QString::fromUtf8(qbidentity::kHelperBundleIdentifier));
    const QString entryPath = service.autostartEntryPath();
    EXPECT_EQ(entryPath, home.filePath(QStringLiteral(
                             "xdg_config_home/autostart/org.quillbox2.Quillbox2-Helper.desktop")));

    QString error;
    const QString missing = home.filePath(QStringLiteral("nowhere/quillbox2-helper"));
    QBLoginItemService::setHelperExecutablePath(missing);
    EXPECT_FALSE(service.registerAndReturnError(&error));
    EXPECT_EQ(error,
              QStringLiteral("The helper program '%1' is missing or cannot be run").arg(missing));
    EXPECT_FALSE(QFile::exists(entryPath));

    QBLoginItemService::setHelperExecutablePath(QStringLiteral(QB_HELPER_PATH));
    ASSERT_TRUE(service.registerAndReturnError(&error)) << error.toStdString();
    ASSERT_TRUE(
        QTest::qWaitFor([] { return QBLoginItemService::runningHelperProcessId() != 0; }, 5000));
    const qint64 pid = QBLoginItemService::runningHelperProcessId();
    ASSERT_TRUE(service.registerAndReturnError(&error)); // no second helper
    QTest::qWait(300);
    EXPECT_EQ(QBLoginItemService::runningHelperProcessId(), pid);

    ASSERT_TRUE(service.unregisterAndReturnError(&error)) << error.toStdString();
    EXPECT_FALSE(QFile::exists(entryPath));
    EXPECT_FALSE(processExists(pid));

    // A pid file that names another program (a reused process id): left alone.
    QProcess other;
    other.start(QStringLiteral("sleep"), {QStringLiteral("30")});
    ASSERT_TRUE(other.waitForStarted());
    ASSERT_TRUE(writeFileBytes(QBLoginItemService::pidFilePath(),
                               QByteArray::number(other.processId()) + "\nquillbox2-helper\n\n"));
    EXPECT_EQ(QBLoginItemService::runningHelperProcessId(), 0);
    EXPECT_TRUE(service.unregisterAndReturnError(&error));
    EXPECT_TRUE(processExists(other.processId()));
    other.kill();
    other.waitForFinished();

    // An entry that cannot be removed is an error with its reason.
    ASSERT_TRUE(QDir().mkpath(entryPath + QStringLiteral("/inside")));
    EXPECT_FALSE(service.unregisterAndReturnError(&error));
    EXPECT_TRUE(
        error.startsWith(QStringLiteral("Cannot remove the autostart entry '%1': ").arg(entryPath)))
        << error.toStdString();
}

TEST(LoginItemServiceTest, ExecQuotesAPathWithReservedCharacters)
{
    QBTestHome home;
    const QString entry = QBLoginItemService::loginItemServiceWithIdentifier(
                              QString::fromUtf8(qbidentity::kHelperBundleIdentifier))
                              .autostartEntry(QStringLiteral("/opt/My $Apps/100%/q\"b\\helper"));
    EXPECT_TRUE(entry.contains(
        QStringLiteral("\nExec=\"/opt/My \\\\$Apps/100%%/q\\\\\"b\\\\\\\\helper\"\n")))
        << entry.toStdString();
    const QString path = home.filePath(QStringLiteral("entry.desktop"));
    ASSERT_TRUE(writeFileBytes(path, entry.toUtf8()));
    EXPECT_EQ(desktopEntryProblems(path), QString());
}

} // namespace
