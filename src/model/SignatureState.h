#pragma once

#include "model/NotificationObserverTracker.h"
#include "model/SignatureQuoteIndex.h"

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

class QBUserDefaults;
class QSocketNotifier;

// What the signature is doing right now: which file, which quote it holds, and whether
// the helper changes it (and when next). The window, its status bar and the settings page
// show this one object instead of each asking the files themselves.
//
// Nothing is polled: the signature file's folder and the helper's folder (its lock,
// which is its pid file, and the time of its next change) are watched, because both
// files are replaced by a rename; the running helper's process is watched through a
// pidfd, so a helper that dies without removing its lock is noticed too.
class QBSignatureState : public QObject
{
    Q_OBJECT
public:
    enum class Rotation
    {
        Off,        // automatic changes are turned off
        Running,    // turned on and the helper runs
        NotRunning, // turned on, but no helper runs
    };

    explicit QBSignatureState(QBUserDefaults& defaults, QObject* parent = nullptr);
    ~QBSignatureState() override;

    // The chosen signature file; empty when none is chosen.
    QString signaturePath() const { return mSnapshot.signaturePath; }
    // The quote whose text the file holds; empty when it holds none of the collection.
    QString currentQuoteUID() const { return mSnapshot.currentQuoteUID; }
    Rotation rotation() const { return mSnapshot.rotation; }
    qint64 intervalSeconds() const { return mSnapshot.intervalSeconds; }
    // When the helper changes the signature next; invalid when unknown or not running.
    QDateTime nextChange() const { return mSnapshot.nextChange; }
    // Why the helper is not running, when its log or its program tell; else empty.
    QString helperProblem() const { return mSnapshot.helperProblem; }

    // The rotation in one line for people ("New quote every 5 minutes, next at 14:05").
    QString rotationDescription() const;

    // Reads everything again now; change notices call it on their own.
    void refresh();

signals:
    // Any of the values above changed.
    void changed();
    void currentQuoteChanged(const QString& quoteUID);

private:
    struct Snapshot
    {
        QString signaturePath;
        QString currentQuoteUID;
        Rotation rotation = Rotation::Off;
        qint64 intervalSeconds = 0;
        QDateTime nextChange;
        QString helperProblem;
        bool operator==(const Snapshot&) const = default;
    };

    void scheduleRefresh();
    QString recognisedQuoteUID(const QString& path);
    void watchFolders(const QString& signaturePath);
    void watchHelperProcess(qint64 pid);

    QBUserDefaults& mDefaults;
    QBSignatureQuoteIndex mIndex;
    Snapshot mSnapshot;
    QFileSystemWatcher mFolderWatcher;
    QTimer mRefreshTimer;
    qint64 mWatchedPid = 0;
    int mPidDescriptor = -1;
    std::unique_ptr<QSocketNotifier> mHelperExitNotifier;
    QBNotificationObserverTracker mNotificationTracker;
};
