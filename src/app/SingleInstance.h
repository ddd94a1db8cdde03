#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

#include <optional>

// Keeps quillbox2 to one process per user, so that two processes never edit one
// collection. The first launch holds a lock file in the user's runtime folder and listens
// on a local socket beside it; a later launch finds the lock taken, asks the first one
// over the socket to bring its window to the front, and ends.
class QBSingleInstance : public QObject
{
    Q_OBJECT
public:
    // |name| names the lock and the socket (the bundle identifier).
    explicit QBSingleInstance(const QString& name, QObject* parent = nullptr);
    ~QBSingleInstance() override;

    // Nothing when this process is the first one (it then listens for later launches);
    // otherwise the exit code after handing over: 0 when the running process answered
    // within |timeoutMs|, 1 when it did not. Says which on the terminal.
    std::optional<int> start(int timeoutMs = 5000);

    // $XDG_RUNTIME_DIR, or the private folder Qt makes when it is unset.
    static QString runtimeFolder();
    QString lockPath() const { return m_lockPath; }
    QString socketPath() const { return m_socketPath; }

signals:
    // Another launch asked for the window.
    void activationRequested();

private:
    bool askRunningInstanceToActivate(int timeoutMs);
    void listen();
    void answer();

    QString m_lockPath;
    QString m_socketPath;
    QLockFile m_lock;
    QLocalServer m_server;
};
