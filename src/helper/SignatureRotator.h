#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <limits>

// The helper's work: every interval, the next quote of the shuffled cycle goes into the
// signature file through the same writer the application uses. Settings come from the
// shared suite and are read again when its folder changes (inotify, no polling): a new
// interval takes effect at once, auto-randomize turned off ends the helper. A problem
// (no database, no quotes, no or a stale bookmark) is logged once and retried at the
// next interval.
class QBSignatureRotator : public QObject
{
    Q_OBJECT
public:
    static constexpr double kMinimumIntervalSeconds = 0.1;
    static constexpr double kMaximumIntervalSeconds = std::numeric_limits<int>::max() / 1000;

    explicit QBSignatureRotator(QObject* parent = nullptr);

    // Reads the settings; writes the first quote and starts the timer, or asks to stop
    // when auto-randomize is off.
    void start();
    double intervalSeconds() const { return mIntervalSeconds; }

signals:
    // Auto-randomize is off: the helper has nothing to do.
    void stopRequested();

private:
    // Re-reads the suite; false when auto-randomize is off.
    bool readSettings();
    void settingsFolderChanged();
    void rotate();
    // Tells the application when the next change is due.
    void recordNextChange();
    // Runs |logLines| unless |key| names the same problem as last time; an empty key
    // (success) forgets the last problem.
    void reportProblem(const QString& key, const std::function<void()>& logLines);

    QTimer mTimer;
    QFileSystemWatcher mSettingsWatcher;
    double mIntervalSeconds = 0;
    QString mLastProblem;
    bool mStopping = false; // one folder change can signal several times
};
