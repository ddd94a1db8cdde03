#include "signature/HelperAppControl.h"

#include "core/AppIdentity.h"
#include "logging/ULog.h"

#include <QTimer>

QBHelperAppControl::QBHelperAppControl(QObject* parent)
    : QObject(parent), mService(QBLoginItemService::loginItemServiceWithIdentifier(
                           QString::fromUtf8(qbidentity::kHelperBundleIdentifier)))
{}

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
    QString error;
    const bool ok = enabled ? mService.registerAndReturnError(&error)
                            : mService.unregisterAndReturnError(&error);
    if (!ok) {
        logWarningMessage(
            QStringLiteral("Failed to %1 helper app: %2")
                .arg(enabled ? QStringLiteral("register") : QStringLiteral("unregister"), error));
        QBLoginItemService::logFailureToSystemLog();
    }
    return ok;
}

void QBHelperAppControl::restart()
{
    QTimer::singleShot(kRestartPhaseDelayMilliseconds, this, &QBHelperAppControl::stopPhase);
}

void QBHelperAppControl::stopPhase()
{
    QString error;
    if (!mService.unregisterAndReturnError(&error)) {
        logWarningMessage(QStringLiteral("Failed to restart helper app (stop phase): ") + error);
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
    }
    emit restartFinished(started);
}
