#pragma once

#include "simcatalogue.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// A notification that the simulator sends at a given time, whatever happens.
struct ScheduledMessage
{
    double at = 0; // simulated seconds after the simulator starts
    QString channel;
    QString message;
    QByteArray data;
};

// How the simulated video manager behaves. Times are simulated seconds: one
// lasts timeScale real seconds. The fault times count from the first start of
// a playback ("playPush(QString)" or "startVod(QString)"; the multicast end from
// the first push playback, the server pause from the first VOD playback).
struct SimulatorOptions
{
    SimCatalogue catalogue = SimCatalogue::builtIn();
    double timeScale = 1.0;
    // Simulated time passes only through VideoManagerSimulator::advance(): no
    // timer of the simulator runs by itself, so every run is the same.
    bool manualClock = false;
    double pushStartDelay = 0.5; // "pushAppExecuted()" to "startPush()"
    double answerDelay = 0; // a catalogue or set-up request to its answer

    double silentAfter = -1; // negative: never
    std::optional<int> failSetupVod;
    std::optional<int> failSetupPush;
    std::optional<int> failStartVod;
    double callAt = -1;
    double callLength = 5;
    double multicastEndAt = -1;
    double serverPauseAt = -1;
    QList<ScheduledMessage> scheduled;
};

// The outcome of reading the program's arguments.
struct SimulatorCommandLine
{
    enum Status { Run, Help, Error };

    Status status = Run;
    SimulatorOptions options;
    QString text; // the help text, or what is wrong
};

// Reads the arguments (the first is the program name). Reads the catalogue file
// if one is named.
SimulatorCommandLine parseSimulatorCommandLine(const QStringList &arguments);
