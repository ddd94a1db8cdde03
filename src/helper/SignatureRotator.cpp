#include "helper/SignatureRotator.h"

#include "helper/QuoteSource.h"
#include "logging/ULog.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/HelperSchedule.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

QBSignatureRotator::QBSignatureRotator(QObject* parent) : QObject(parent)
{
    // A few milliseconds of slack let the system batch wake-ups; 100 ms intervals still work.
    mTimer.setTimerType(Qt::CoarseTimer);
    connect(&mTimer, &QTimer::timeout, this, [this] {
        rotate();
        recordNextChange();
    });
    connect(&mSettingsWatcher, &QFileSystemWatcher::directoryChanged, this,
            &QBSignatureRotator::settingsFolderChanged);
}

void QBSignatureRotator::start()
{
    // The suite is saved through a rename, so its folder is what can be watched.
    const QString settingsFolder = QFileInfo(QBSharedUserDefaults::suitePath()).absolutePath();
    if (QFileInfo(settingsFolder).isDir()) {
        mSettingsWatcher.addPath(settingsFolder);
    }
    if (!readSettings()) {
        return;
    }
    logInfoMessage(
        QStringLiteral("Changing the signature every %1s").arg(QString::number(mIntervalSeconds)));
    rotate();
    mTimer.start(std::lround(mIntervalSeconds * 1000));
    recordNextChange();
}

void QBSignatureRotator::recordNextChange()
{
    // Only for the application's status bar: a failure costs the time shown, nothing else.
    QBHelperSchedule::recordNextChange(QDateTime::currentDateTimeUtc().addMSecs(mTimer.interval()));
}

bool QBSignatureRotator::readSettings()
{
    if (mStopping) {
        return false;
    }
    QBSharedUserDefaults& suite = QBSharedUserDefaults::sharedInstance();
    suite.suiteUserDefaults().synchronize();
    if (!suite.suiteUserDefaults().boolForKey(QBDefaultsAutoRandomize)) {
        logInfoMessage("Auto-randomize is off: the helper is not needed and exits");
        mStopping = true;
        mTimer.stop();
        emit stopRequested();
        return false;
    }
    // Whole seconds as the application stores them; a fraction is accepted for tools.
    // Beyond what a timer holds (24.8 days) the interval is clamped, not wrapped around.
    const double stored = suite.doubleForKey(QBDefaultsRandomizeInterval);
    mIntervalSeconds = std::isfinite(stored) && stored > 0
                           ? std::clamp(stored, kMinimumIntervalSeconds, kMaximumIntervalSeconds)
                           : static_cast<double>(kQBDefaultRandomizeIntervalSeconds);
    return true;
}

void QBSignatureRotator::settingsFolderChanged()
{
    const double before = mIntervalSeconds;
    if (!readSettings() || before == mIntervalSeconds) {
        return;
    }
    logInfoMessage(QStringLiteral("Interval changed: changing the signature every %1s")
                       .arg(QString::number(mIntervalSeconds)));
    mTimer.start(std::lround(mIntervalSeconds * 1000));
    recordNextChange();
}

void QBSignatureRotator::reportProblem(const QString& key, const std::function<void()>& logLines)
{
    if (key != mLastProblem) {
        logLines();
    }
    mLastProblem = key;
}

void QBSignatureRotator::rotate()
{
    const QBHelperQuoteSource::Signature signature = QBHelperQuoteSource::nextSignature(
        QBHelperQuoteSource::Access::Copied, QBHelperQuoteSource::Output::SignatureFile);
    if (!signature.problem.isEmpty()) {
        reportProblem(signature.problem, [&] {
            logWarningMessage(
                signature.problem +
                QStringLiteral("; trying again in %1s").arg(QString::number(mIntervalSeconds)));
        });
        return;
    }
    const QBCurrentSignatureFileHelper::WriteResult result =
        QBCurrentSignatureFileHelper::writeSignatureBytes(signature.bytes);
    QString key;
    for (const auto& message : result.messages) {
        key += message.second + QLatin1Char('\n');
    }
    reportProblem(key, [&] { QBCurrentSignatureFileHelper::logMessages(result.messages); });
}
