#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGINT and SIGTERM into the signal `stopRequested` in the event loop,
// so that the program ends as it does normally (the real video manager then
// removes its video plane).
// One per process.
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject *parent = nullptr);
    ~StopSignals() override;

signals:
    void stopRequested();

private:
    static void handle(int signal);
    void take();

    QSocketNotifier *notifier = nullptr;
};
