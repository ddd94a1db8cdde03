#include "signature/LoginItemService.h"

#include "core/AppIdentity.h"
#include "core/QuotesDBHelper.h"
#include "core/XdgDirectories.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QProcess>
#include <QSaveFile>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <syslog.h>

namespace {

QString gHelperPathOverride;

constexpr int kStopWaitMilliseconds = 2000;

// Exec= quoting of the Desktop Entry rules: a path with reserved characters goes in
// double quotes with ", `, $ and \ escaped, and the value then escapes its backslashes;
// a literal % is %%, since a lone one starts a field code.
QString desktopExecArgument(const QString& argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    static const QString escapedInQuotes = QStringLiteral("\"`$\\");
    const bool needsQuotes = std::any_of(argument.cbegin(), argument.cend(),
                                         [](QChar c) { return reserved.contains(c); });
    QString value = needsQuotes ? QStringLiteral("\"") : QString();
    for (const QChar c : argument) {
        if (needsQuotes && escapedInQuotes.contains(c)) {
            value += QLatin1Char('\\');
        }
        value += c;
    }
    if (needsQuotes) {
        value += QLatin1Char('"');
    }
    return value.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('%'), QStringLiteral("%%"));
}

// Whether |pid| runs the helper executable (whichever copy of it), read from /proc.
bool isHelperProcess(qint64 pid)
{
    QString executable =
        QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(pid)); // empty when gone
    executable.remove(QStringLiteral(" (deleted)")); // a helper rebuilt while running
    return QFileInfo(executable).fileName() == QString::fromUtf8(qbidentity::kHelperProcessName);
}

bool isRunning(qint64 pid)
{
    // A zombie still answers kill(0); /proc/<pid>/exe is gone once it has exited.
    return ::kill(static_cast<pid_t>(pid), 0) == 0 &&
           QFileInfo::exists(QStringLiteral("/proc/%1/exe").arg(pid));
}

bool fail(QString* error, const QString& description)
{
    if (error) {
        *error = description;
    }
    return false;
}

} // namespace

QBLoginItemService QBLoginItemService::loginItemServiceWithIdentifier(const QString& identifier)
{
    return QBLoginItemService(identifier);
}

QString QBLoginItemService::helperExecutablePath()
{
    if (!gHelperPathOverride.isEmpty()) {
        return gHelperPathOverride;
    }
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') +
           QString::fromUtf8(qbidentity::kHelperProcessName);
}

void QBLoginItemService::setHelperExecutablePath(const QString& path)
{
    gHelperPathOverride = path;
}

QString QBLoginItemService::pidFilePath()
{
    const std::optional<std::string> folder = QBQuotesDBHelper::getApplicationGroupFolder();
    if (!folder) {
        return QString();
    }
    return QString::fromStdString(*folder) + QLatin1Char('/') +
           QString::fromUtf8(qbidentity::kHelperProcessName) + QStringLiteral(".pid");
}

qint64 QBLoginItemService::runningHelperProcessId()
{
    const QString path = pidFilePath();
    qint64 pid = 0;
    QString hostName;
    QString application;
    if (path.isEmpty() || !QLockFile(path).getLockInfo(&pid, &hostName, &application)) {
        return 0;
    }
    return pid > 0 && isRunning(pid) && isHelperProcess(pid) ? pid : 0;
}

QString QBLoginItemService::autostartEntryPath() const
{
    const QBXdgLookup config = xdgBaseDirectory(QBXdgBase::Config);
    if (!config.path) {
        return QString();
    }
    return QString::fromStdString(config.path->string()) + QStringLiteral("/autostart/") +
           mIdentifier + QStringLiteral(".desktop");
}

QString QBLoginItemService::autostartEntry(const QString& helperPath) const
{
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Quillbox2 Helper\n"
                          "Comment=Puts another quote into the e-mail signature at an interval\n"
                          "Exec=%1\n"
                          "Icon=%2\n"
                          "Terminal=false\n"
                          "NoDisplay=true\n")
        .arg(desktopExecArgument(helperPath), QString::fromUtf8(qbidentity::kBundleIdentifier));
}

bool QBLoginItemService::registerAndReturnError(QString* error)
{
    const QString helper = helperExecutablePath();
    const QFileInfo helperInfo(helper);
    if (!helperInfo.isFile() || !helperInfo.isExecutable()) {
        return fail(
            error,
            QStringLiteral("The helper program '%1' is missing or cannot be run").arg(helper));
    }
    const QString entryPath = autostartEntryPath();
    if (entryPath.isEmpty()) {
        return fail(error, QStringLiteral("There is no configuration folder for the autostart "
                                          "entry ($XDG_CONFIG_HOME and $HOME are unusable)"));
    }
    QDir().mkpath(QFileInfo(entryPath).absolutePath());
    QSaveFile entry(entryPath);
    if (!entry.open(QIODevice::WriteOnly) ||
        entry.write(autostartEntry(helperInfo.absoluteFilePath()).toUtf8()) < 0 ||
        !entry.commit()) {
        return fail(error, QStringLiteral("Cannot write the autostart entry '%1': %2")
                               .arg(entryPath, entry.errorString()));
    }
    if (runningHelperProcessId() != 0) {
        return true;
    }
    // Detached from our terminal or pipe too: the helper logs to its own file, and a pipe
    // it held would keep whoever reads our output waiting after we are gone.
    QProcess helperProcess;
    helperProcess.setProgram(helperInfo.absoluteFilePath());
    helperProcess.setWorkingDirectory(QDir::homePath());
    helperProcess.setStandardInputFile(QProcess::nullDevice());
    helperProcess.setStandardOutputFile(QProcess::nullDevice());
    helperProcess.setStandardErrorFile(QProcess::nullDevice());
    if (!helperProcess.startDetached()) {
        return fail(error, QStringLiteral("Cannot start the helper program '%1'").arg(helper));
    }
    return true;
}

bool QBLoginItemService::unregisterAndReturnError(QString* error)
{
    const QString entryPath = autostartEntryPath();
    if (!entryPath.isEmpty() && QFileInfo::exists(entryPath)) {
        QFile entry(entryPath);
        if (!entry.remove()) {
            return fail(error, QStringLiteral("Cannot remove the autostart entry '%1': %2")
                                   .arg(entryPath, entry.errorString()));
        }
    }
    const qint64 pid = runningHelperProcessId();
    if (pid == 0) {
        return true;
    }
    ::kill(static_cast<pid_t>(pid), SIGTERM);
    QElapsedTimer waited;
    waited.start();
    while (isRunning(pid)) {
        if (waited.elapsed() > kStopWaitMilliseconds) {
            return fail(error,
                        QStringLiteral("The helper program (process %1) did not stop").arg(pid));
        }
        QThread::msleep(10);
    }
    return true;
}

void QBLoginItemService::logFailureToSystemLog()
{
    ::openlog(qbidentity::kProcessName, LOG_PID, LOG_USER);
    ::syslog(LOG_ERR, "%s", "Login Item Was Not Successful");
    ::closelog();
}
