#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGTERM and SIGINT, with which desktop sessions and terminals end programs, into
// an orderly quit of the event loop. The handler only writes a byte to a socket; the
// quit happens on the main thread when the socket becomes readable.
class QBUnixSignalWatcher : public QObject
{
    Q_OBJECT
public:
    explicit QBUnixSignalWatcher(QObject* parent = nullptr);
    ~QBUnixSignalWatcher() override;

signals:
    void terminationRequested(int signalNumber);

private:
    static void handleSignal(int signalNumber);
    void readSignal();

    QSocketNotifier* mNotifier = nullptr;
};
