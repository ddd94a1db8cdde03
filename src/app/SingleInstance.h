#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

// Keeps quillbox2 to one process per user, so that two processes never edit one
// collection. The first launch holds a lock file in the user's runtime folder and listens
// on a local socket beside it; a later launch finds the lock taken, asks the first one
// over the socket to bring its window to the front (or to import the files it was
// given), and ends.
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
    // With |filesToImport| the running process imports them (with |separator|, a
    // separator name, when not empty) instead.
    std::optional<int> start(int timeoutMs = 5000, const QStringList& filesToImport = {},
                             const QString& separator = {});
    // Takes the lock without listening, for a command that changes the collection
    // without a window. False when another process holds it.
    bool lockWithoutListening() { return m_lock.tryLock(0); }
    // Hands files to the running process; true when it took them within |timeoutMs|.
    bool askRunningInstanceToImport(const QStringList& files, const QString& separator,
                                    int timeoutMs);

    // $XDG_RUNTIME_DIR, or the private folder Qt makes when it is unset.
    static QString runtimeFolder();
    QString lockPath() const { return m_lockPath; }
    QString socketPath() const { return m_socketPath; }

signals:
    // Another launch asked for the window.
    void activationRequested();
    // Another launch named files to import (absolute paths).
    void importRequested(const QStringList& files, const QString& separator);

private:
    bool ask(const QByteArray& request, int timeoutMs);
    void handleRequest(const QByteArray& request);
    void listen();
    void answer();

    QString m_lockPath;
    QString m_socketPath;
    QLockFile m_lock;
    QLocalServer m_server;
};
