#include "model/SignatureState.h"

#include "core/AppIdentity.h"
#include "core/FolderHelper.h"
#include "core/QuotesDBHelper.h"
#include "model/Notifications.h"
#include "signature/HelperSchedule.h"
#include "signature/LoginItemService.h"
#include "signature/SettingsKeys.h"
#include "util/NotificationCenter.h"
#include "util/UserDefaults.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSocketNotifier>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

// A signature is a few lines; anything far larger is not a quote of ours.
constexpr qint64 kLargestSignatureBytes = 1 << 20;
constexpr qint64 kLogTailBytes = 64 * 1024;

QString helperLogPath()
{
    const std::optional<std::string> folder = QBFolderHelper::getPathToLogsFolder();
    return folder ? QString::fromStdString(*folder) + QLatin1Char('/') +
                        QString::fromUtf8(qbidentity::kHelperProcessName) + QStringLiteral(".log")
                  : QString();
}

// The last warning or error of the helper's last run, without time stamp and level.
QString lastProblemInHelperLog()
{
    QFile log(helperLogPath());
    if (!QFileInfo(log.fileName()).isFile() || !log.open(QIODevice::ReadOnly))
        return QString();
    log.seek(qMax<qint64>(0, log.size() - kLogTailBytes));
    const QList<QByteArray> lines = log.readAll().split('\n');
    for (auto line = lines.crbegin(); line != lines.crend(); ++line) {
        if (line->contains("]   Launch of "))
            break; // older runs do not explain this one
        const qsizetype levelEnd = line->indexOf("]   ");
        if (levelEnd > 0 && (line->contains("[warning]") || line->contains("[error]")))
            return QString::fromUtf8(line->mid(levelEnd + 4)).trimmed();
    }
    return QString();
}

QString whyHelperIsNotRunning()
{
    const QString program = QBLoginItemService::helperExecutablePath();
    if (!QFileInfo(program).isExecutable()) {
        //% "the helper program %1 is missing"
        return qtTrId("SignatureStateHelperMissing").arg(program);
    }
    return lastProblemInHelperLog();
}

QString intervalText(qint64 seconds)
{
    if (seconds >= 3600 && seconds % 3600 == 0) {
        //% "every %n hour(s)"
        return qtTrId("SignatureStateEveryHours", int(seconds / 3600));
    }
    //% "every %n minute(s)"
    return qtTrId("SignatureStateEveryMinutes", int(qMax<qint64>(1, seconds / 60)));
}

} // namespace

QBSignatureState::QBSignatureState(QBUserDefaults& defaults, QObject* parent)
    : QObject(parent), mDefaults(defaults)
{
    // Several notices in one turn of the event loop (a rename shows as two) read once.
    mRefreshTimer.setSingleShot(true);
    mRefreshTimer.setInterval(0);
    connect(&mRefreshTimer, &QTimer::timeout, this, &QBSignatureState::refresh);
    connect(&mFolderWatcher, &QFileSystemWatcher::directoryChanged, this,
            &QBSignatureState::scheduleRefresh);
    connect(&mFolderWatcher, &QFileSystemWatcher::fileChanged, this,
            &QBSignatureState::scheduleRefresh);
    mNotificationTracker.observeNotification(QBUserDefaultsDidChangeNotification,
                                             [this](const QBNotification& notification) {
                                                 if (notification.object == &mDefaults)
                                                     scheduleRefresh();
                                             });
    // An edit can make the file's text a quote's, or no quote's any more; the index has
    // taken the change by the time the refresh runs.
    for (const QString& name :
         {QBQuoteDidUpdateNotification, QBQuoteAddedNotification, QBQuoteRemovedNotification,
          QBQuotesModifiedNotification, QBQuotesImportedNotification}) {
        mNotificationTracker.observeNotification(
            name, [this](const QBNotification&) { scheduleRefresh(); });
    }
    // Read once the event loop runs: indexing a large collection waits for the window.
    scheduleRefresh();
}

QBSignatureState::~QBSignatureState()
{
    mNotificationTracker.removeObservers();
    watchHelperProcess(0);
}

void QBSignatureState::scheduleRefresh()
{
    if (!mRefreshTimer.isActive())
        mRefreshTimer.start();
}

QString QBSignatureState::recognisedQuoteUID(const QString& path)
{
    const QFileInfo info(path);
    // Only a regular file: a FIFO put there would block the read for good.
    if (path.isEmpty() || !info.isFile() || info.size() > kLargestSignatureBytes)
        return QString();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    mIndex.setSettings(QBSignatureSettings::fromDefaults(mDefaults));
    return mIndex.quoteUIDForFileBytes(file.read(kLargestSignatureBytes));
}

void QBSignatureState::refresh()
{
    mRefreshTimer.stop();
    Snapshot next;
    next.signaturePath = mDefaults.stringForKey(QBDefaultsSignatureOutputPath);
    next.currentQuoteUID = recognisedQuoteUID(next.signaturePath);
    next.intervalSeconds = mDefaults.integerForKey(QBDefaultsRandomizeInterval);
    if (next.intervalSeconds <= 0)
        next.intervalSeconds = kQBDefaultRandomizeIntervalSeconds;
    const qint64 helperPid = QBLoginItemService::runningHelperProcessId();
    watchHelperProcess(helperPid);
    if (!mDefaults.boolForKey(QBDefaultsAutoRandomize)) {
        next.rotation = Rotation::Off;
    } else if (helperPid != 0) {
        next.rotation = Rotation::Running;
        // A time already past is from before the helper's latest start.
        const QDateTime due = QBHelperSchedule::readNextChange();
        if (due.isValid() && due > QDateTime::currentDateTimeUtc().addSecs(-1))
            next.nextChange = due;
    } else {
        next.rotation = Rotation::NotRunning;
        next.helperProblem = whyHelperIsNotRunning();
    }
    watchFolders(next.signaturePath);

    if (next == mSnapshot)
        return;
    const bool quoteChanged = next.currentQuoteUID != mSnapshot.currentQuoteUID;
    mSnapshot = std::move(next);
    if (quoteChanged)
        emit currentQuoteChanged(mSnapshot.currentQuoteUID);
    emit changed();
}

void QBSignatureState::watchFolders(const QString& signaturePath)
{
    QStringList wanted;
    if (!signaturePath.isEmpty())
        wanted.append(QFileInfo(signaturePath).absolutePath());
    if (const std::optional<std::string> folder = QBQuotesDBHelper::getApplicationGroupFolder())
        wanted.append(QString::fromStdString(*folder));
    wanted.removeIf([](const QString& folder) { return !QFileInfo(folder).isDir(); });
    wanted.removeDuplicates();
    // The file itself too, for writes in place (an editor, the writer's fallback), which
    // a folder does not report. Added afresh each time: a rename ends the watch on the
    // replaced file, possibly only after this refresh.
    if (!mFolderWatcher.files().isEmpty())
        mFolderWatcher.removePaths(mFolderWatcher.files());
    if (QFileInfo(signaturePath).isFile())
        mFolderWatcher.addPath(signaturePath);
    const QStringList watched = mFolderWatcher.directories();
    for (const QString& folder : watched) {
        if (!wanted.contains(folder))
            mFolderWatcher.removePath(folder);
    }
    for (const QString& folder : wanted) {
        if (!watched.contains(folder))
            mFolderWatcher.addPath(folder);
    }
}

void QBSignatureState::watchHelperProcess(qint64 pid)
{
    if (pid == mWatchedPid)
        return;
    mHelperExitNotifier.reset();
    if (mPidDescriptor >= 0)
        ::close(mPidDescriptor);
    mPidDescriptor = -1;
    mWatchedPid = pid;
#ifdef SYS_pidfd_open
    if (pid > 0)
        mPidDescriptor = int(::syscall(SYS_pidfd_open, pid_t(pid), 0));
#endif
    // Readable once the process has ended, however it ended. Without pidfds (kernels
    // before 5.3) the helper's own exit still removes its lock, which the folder watch sees.
    if (mPidDescriptor >= 0) {
        mHelperExitNotifier =
            std::make_unique<QSocketNotifier>(mPidDescriptor, QSocketNotifier::Read);
        connect(mHelperExitNotifier.get(), &QSocketNotifier::activated, this,
                &QBSignatureState::scheduleRefresh);
    }
}

QString QBSignatureState::rotationDescription() const
{
    switch (mSnapshot.rotation) {
    case Rotation::Off:
        //% "Automatic quote changes are off"
        return qtTrId("SignatureStateRotationOff");
    case Rotation::Running: {
        const QString every = intervalText(mSnapshot.intervalSeconds);
        if (!mSnapshot.nextChange.isValid()) {
            //% "New quote %1"
            return qtTrId("SignatureStateRotating").arg(every);
        }
        const QDateTime local = mSnapshot.nextChange.toLocalTime();
        const QLocale locale;
        const QString when = local.date() == QDate::currentDate()
                                 ? locale.toString(local.time(), QLocale::ShortFormat)
                                 : locale.toString(local, QLocale::ShortFormat);
        //% "New quote %1, next at %2"
        return qtTrId("SignatureStateRotatingNext").arg(every, when);
    }
    case Rotation::NotRunning:
        if (mSnapshot.helperProblem.isEmpty()) {
            //% "Automatic changes are on, but the helper is not running"
            return qtTrId("SignatureStateHelperNotRunning");
        }
        //% "Automatic changes are on, but the helper is not running: %1"
        return qtTrId("SignatureStateHelperNotRunningBecause").arg(mSnapshot.helperProblem);
    }
    return QString();
}
