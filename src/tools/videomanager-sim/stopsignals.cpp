#include "stopsignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {
// The handler may only write to a pipe; the event loop reads the other end.
int pipeEnds[2] = {-1, -1};
}

StopSignals::StopSignals(QObject *parent)
    : QObject(parent)
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &StopSignals::take);
    struct sigaction action = {};
    action.sa_handler = &StopSignals::handle;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

StopSignals::~StopSignals()
{
    if (!notifier)
        return;
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    delete notifier;
    close(pipeEnds[0]);
    close(pipeEnds[1]);
    pipeEnds[0] = pipeEnds[1] = -1;
}

void StopSignals::handle(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
}

void StopSignals::take()
{
    char bytes[16];
    while (read(pipeEnds[0], bytes, sizeof bytes) > 0) {
    }
    emit stopRequested();
}
