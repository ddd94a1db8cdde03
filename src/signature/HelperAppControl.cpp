#include "signature/HelperAppControl.h"

#include "core/AppIdentity.h"
#include "logging/ULog.h"
#include "util/UserMessages.h"

#include <QDateTime>
#include <QPointer>

const QString QBHelperAppControl::kMessageTopic = QStringLiteral("helper");

QBHelperAppControl::QBHelperAppControl(QObject* parent)
    : QObject(parent), mService(QBLoginItemService::loginItemServiceWithIdentifier(
                           QString::fromUtf8(qbidentity::kHelperBundleIdentifier)))
{
    mWatchTimer.setInterval(kWatchIntervalMilliseconds);
    connect(&mWatchTimer, &QTimer::timeout, this, &QBHelperAppControl::checkHelper);
}

bool QBHelperAppControl::enable()
{
    return setEnabled(true);
}

bool QBHelperAppControl::disable()
{
    return setEnabled(false);
}

bool QBHelperAppControl::setEnabled(bool enabled)
{
    if (!enabled)
        stopWatching();
    QString error;
    const bool ok = enabled ? mService.registerAndReturnError(&error)
                            : mService.unregisterAndReturnError(&error);
    if (!ok) {
        logWarningMessage(
            QStringLiteral("Failed to %1 helper app: %2")
                .arg(enabled ? QStringLiteral("register") : QStringLiteral("unregister"), error));
        QBLoginItemService::logFailureToSystemLog();
        if (enabled)
            //% "The quote helper could not be started: %1"
            reportFailure(qtTrId("HelperStartFailed").arg(error), true);
        else
            //% "The quote helper could not be stopped: %1"
            reportFailure(qtTrId("HelperStopFailed").arg(error), false);
        return false;
    }
    QBUserMessages::shared().dismiss(kMessageTopic);
    if (enabled)
        startWatching();
    return true;
}

void QBHelperAppControl::restart()
{
    QTimer::singleShot(kRestartPhaseDelayMilliseconds, this, &QBHelperAppControl::stopPhase);
}

void QBHelperAppControl::stopPhase()
{
    stopWatching();
    QString error;
    if (!mService.unregisterAndReturnError(&error)) {
        logWarningMessage(QStringLiteral("Failed to restart helper app (stop phase): ") + error);
        reportFailure(qtTrId("HelperStopFailed").arg(error), false);
        return;
    }
    QTimer::singleShot(kRestartPhaseDelayMilliseconds, this, &QBHelperAppControl::startPhase);
}

void QBHelperAppControl::startPhase()
{
    QString error;
    const bool started = mService.registerAndReturnError(&error);
    if (!started) {
        logWarningMessage(QStringLiteral("Failed to restart helper app (start phase): ") + error);
        reportFailure(qtTrId("HelperStartFailed").arg(error), true);
    } else {
        QBUserMessages::shared().dismiss(kMessageTopic);
        startWatching();
    }
    emit restartFinished(started);
}

void QBHelperAppControl::watchRunningHelper()
{
    startWatching();
}

void QBHelperAppControl::startWatching()
{
    mSeenRunning = false;
    mStartDeadline = QDateTime::currentMSecsSinceEpoch() + kStartGraceMilliseconds;
    mWatchTimer.start();
    checkHelper();
}

void QBHelperAppControl::stopWatching()
{
    mWatchTimer.stop();
    mStartDeadline = 0;
}

void QBHelperAppControl::checkHelper()
{
    if (QBLoginItemService::runningHelperProcessId() != 0) {
        mSeenRunning = true;
        mStartDeadline = 0;
        return;
    }
    if (mStartDeadline != 0 && QDateTime::currentMSecsSinceEpoch() < mStartDeadline)
        return; // still coming up
    const bool stopped = mSeenRunning;
    stopWatching();
    logWarningMessage(stopped ? QStringLiteral("The helper app stopped")
                              : QStringLiteral("The helper app is not running"));
    //% "The quote helper stopped, so the signature no longer changes by itself."
    const QString stoppedText = qtTrId("HelperStopped");
    //% "The signature is set to change by itself, but the quote helper is not running."
    const QString notRunningText = qtTrId("HelperNotRunning");
    reportFailure(stopped ? stoppedText : notRunningText, true);
}

void QBHelperAppControl::reportFailure(const QString& text, bool offerStart)
{
    QBUserMessage message{QBUserMessage::Kind::Warning, text, {}, {}, {}, {}, kMessageTopic};
    if (offerStart) {
        //% "Start Helper"
        message.actionText = qtTrId("HelperStartButton");
        message.action = [control = QPointer<QBHelperAppControl>(this)] {
            if (control)
                control->enable();
        };
    }
    QBUserMessages::shared().show(message);
}
