#include "signature/LoginItemService.h"
#include "HelperWorld.h"
#include "TestHome.h"
#include "core/AppIdentity.h"
#include "signature/HelperAppControl.h"
#include "signature/SettingsKeys.h"
#include "util/UserMessages.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

using namespace helperworld;

bool processExists(qint64 pid)
{
    return QFile::exists(QStringLiteral("/proc/%1/exe").arg(pid));
}

// On and off are checked through the settings page; here, what it must not start or stop.
TEST(LoginItemServiceTest, RegisterStartsOneHelperAndUnregisterStopsOnlyTheHelper)
{
    QBTestHome home;
    writeQuotes({QStringLiteral("One")});
    setSuiteValue(QBDefaultsAutoRandomize, true);
    QBLoginItemService service = QBLoginItemService::loginItemServiceWithIdentifier(
        QString::fromUtf8(qbidentity::kHelperBundleIdentifier));
    QBLoginItemService::setHelperExecutablePath(QStringLiteral(QB_HELPER_PATH));
    QString error;
    ASSERT_TRUE(service.registerAndReturnError(&error)) << error.toStdString();
    ASSERT_TRUE(
        QTest::qWaitFor([] { return QBLoginItemService::runningHelperProcessId() != 0; }, 5000));
    const qint64 pid = QBLoginItemService::runningHelperProcessId();
    for (int descriptor = 0; descriptor < 3; ++descriptor) { // none of our pipes kept open
        EXPECT_EQ(QFile::symLinkTarget(u"/proc/%1/fd/%2"_s.arg(pid).arg(descriptor)).toStdString(),
                  "/dev/null");
    }
    ASSERT_TRUE(service.unregisterAndReturnError(&error)) << error.toStdString();
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
}

TEST(LoginItemServiceTest, AHelperThatCannotStartOrStopsIsShownWithAStartButton)
{
    QBTestHome home;
    writeQuotes({QStringLiteral("One")});
    setSuiteValue(QBDefaultsAutoRandomize, true);
    QBUserMessages& messages = QBUserMessages::shared();
    const auto shownText = [&] { return messages.lastMessage().text; };
    QBHelperAppControl control;

    QBLoginItemService::setHelperExecutablePath(home.filePath(u"gone/quillbox2-helper"_s));
    EXPECT_FALSE(control.enable());
    // (No string table here: the texts are their ids.)
    EXPECT_EQ(shownText(), qtTrId("HelperStartFailed")
                               .arg(u"The helper program '%1' is missing or cannot be run"_s.arg(
                                   home.filePath(u"gone/quillbox2-helper"_s))));
    EXPECT_EQ(messages.lastMessage().actionText, qtTrId("HelperStartButton"));

    // The button starts it once the program is there; the message is taken back.
    QBLoginItemService::setHelperExecutablePath(QStringLiteral(QB_HELPER_PATH));
    QSignalSpy dismissed(&messages, &QBUserMessages::messageDismissed);
    messages.lastMessage().action();
    EXPECT_EQ(dismissed.value(0).value(0).toString(), QBHelperAppControl::kMessageTopic);
    ASSERT_TRUE(
        QTest::qWaitFor([] { return QBLoginItemService::runningHelperProcessId() != 0; }, 5000));

    // Killed from outside, once the watch has seen it run: said within a few seconds.
    QTest::qWait(QBHelperAppControl::kWatchIntervalMilliseconds + 500);
    const qint64 pid = QBLoginItemService::runningHelperProcessId();
    ASSERT_GT(pid, 0);
    ::kill(static_cast<pid_t>(pid), SIGKILL);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shownText() == qtTrId("HelperStopped"); },
                                3 * QBHelperAppControl::kWatchIntervalMilliseconds));
    EXPECT_FALSE(control.isWatching());
    EXPECT_TRUE(control.disable());
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
