#pragma once

#include "signature/LoginItemService.h"

#include <QObject>

// Turns the helper process on and off and restarts it, logging every failure. The
// restart runs in two phases on the event loop, each 1.0 s after the one before: stop
// (unregister), then start (register); a failed stop ends it.
class QBHelperAppControl : public QObject
{
    Q_OBJECT
public:
    static constexpr int kRestartPhaseDelayMilliseconds = 1000;

    explicit QBHelperAppControl(QObject* parent = nullptr);

    bool enable();
    bool disable();
    void restart();

signals:
    // After the last phase of a restart that got that far; |started| tells its outcome.
    void restartFinished(bool started);

private:
    bool setEnabled(bool enabled);
    void stopPhase();
    void startPhase();

    QBLoginItemService mService;
};
