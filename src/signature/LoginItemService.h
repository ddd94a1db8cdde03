#pragma once

#include <QString>

// Starts a helper program at every login and now, the way Linux desktops do it: an XDG
// autostart entry ($XDG_CONFIG_HOME/autostart/<identifier>.desktop) whose Exec= is the
// helper's absolute path, plus a detached start. The running helper names itself in a
// pid file in the application-group container (it holds a lock on that file), which is
// how unregistering finds the process to stop. Failures come back as readable texts.
class QBLoginItemService
{
public:
    static QBLoginItemService loginItemServiceWithIdentifier(const QString& identifier);

    // Writes the autostart entry and starts the helper unless one already runs.
    bool registerAndReturnError(QString* error);
    // Removes the entry (a missing one is fine) and stops the process the pid file
    // names, only if that process is the helper. Waits briefly for it to end, so that a
    // register right after starts a helper that can take the lock.
    bool unregisterAndReturnError(QString* error);

    QString autostartEntryPath() const;
    // The desktop entry text for |helperPath|.
    QString autostartEntry(const QString& helperPath) const;

    // The helper executable: beside the running program unless set otherwise (tests).
    static QString helperExecutablePath();
    static void setHelperExecutablePath(const QString& path);
    // The helper's lock and pid file in the container; empty without a container.
    static QString pidFilePath();
    // Process id of the running helper, or 0 when none runs.
    static qint64 runningHelperProcessId();

    // The system log line for a failed helper operation.
    static void logFailureToSystemLog();

private:
    explicit QBLoginItemService(const QString& identifier) : mIdentifier(identifier) {}

    QString mIdentifier;
};
