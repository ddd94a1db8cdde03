#pragma once

#include "signature/LoginItemService.h"

#include <QObject>
#include <QTimer>

// Turns the helper process on and off and restarts it, logging every failure and showing
// it to the user (QBUserMessages). The restart runs in two phases on the event loop, each
// 1.0 s after the one before: stop (unregister), then start (register); a failed stop
// ends it. While the helper is meant to run, it is watched: one that stops, or does not
// come up after a start, is reported with a button that starts it again.
class QBHelperAppControl : public QObject
{
    Q_OBJECT
public:
    static constexpr int kRestartPhaseDelayMilliseconds = 1000;
    static constexpr int kWatchIntervalMilliseconds = 2000;
    // How long a started helper may take to show up.
    static constexpr int kStartGraceMilliseconds = 6000;
    // Topic of the messages about the helper.
    static const QString kMessageTopic;

    explicit QBHelperAppControl(QObject* parent = nullptr);

    bool enable();
    bool disable();
    void restart();

    // Watches a helper that should be running already (the setting was on at launch); it
    // too may take kStartGraceMilliseconds to show up.
    void watchRunningHelper();
    bool isWatching() const { return mWatchTimer.isActive(); }

signals:
    // After the last phase of a restart that got that far; |started| tells its outcome.
    void restartFinished(bool started);

private:
    bool setEnabled(bool enabled);
    void stopPhase();
    void startPhase();
    void startWatching();
    void stopWatching();
    void checkHelper();
    void reportFailure(const QString& text, bool offerStart);

    QBLoginItemService mService;
    QTimer mWatchTimer;
    bool mSeenRunning = false;
    qint64 mStartDeadline = 0; // msecs since epoch; 0 when not waiting for a start
};
