#include "util/UnixSignalWatcher.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {
// [0] written by the signal handler, [1] read on the main thread.
int gSignalSockets[2] = {-1, -1};
} // namespace

QBUnixSignalWatcher::QBUnixSignalWatcher(QObject* parent) : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, gSignalSockets) != 0) {
        return;
    }
    mNotifier = new QSocketNotifier(gSignalSockets[1], QSocketNotifier::Read, this);
    connect(mNotifier, &QSocketNotifier::activated, this, &QBUnixSignalWatcher::readSignal);

    struct sigaction action = {};
    action.sa_handler = &QBUnixSignalWatcher::handleSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGTERM, &action, nullptr);
    ::sigaction(SIGINT, &action, nullptr);
}

QBUnixSignalWatcher::~QBUnixSignalWatcher()
{
    ::signal(SIGTERM, SIG_DFL);
    ::signal(SIGINT, SIG_DFL);
    delete mNotifier;
    for (int& socket : gSignalSockets) {
        if (socket >= 0) {
            ::close(socket);
            socket = -1;
        }
    }
}

void QBUnixSignalWatcher::handleSignal(int signalNumber)
{
    // Only async-signal-safe calls here.
    const unsigned char byte = static_cast<unsigned char>(signalNumber);
    [[maybe_unused]] const ssize_t written = ::write(gSignalSockets[0], &byte, 1);
}

void QBUnixSignalWatcher::readSignal()
{
    unsigned char byte = 0;
    if (::read(gSignalSockets[1], &byte, 1) == 1) {
        emit terminationRequested(byte);
    }
}
