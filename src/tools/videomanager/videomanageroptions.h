#pragma once

#include "simcatalogue.h"

#include <QString>
#include <QStringList>

// How the video manager plays: what it offers, where the broadcast comes from,
// where its pictures and sound go.
struct VideoManagerOptions
{
    SimCatalogue catalogue = SimCatalogue::builtIn();
    QString pushAddress = QStringLiteral("127.0.0.1");
    int pushPort = 5004;
    double pushTimeout = 2; // seconds without a packet that end a broadcast
    double pushStartDelay = 0.5; // "pushAppExecuted()" to "startPush()"
    QString audioSink = QStringLiteral("autoaudiosink");
    QString videoPlane; // the shared memory object's name
};

// The outcome of reading the program's arguments.
struct VideoManagerCommandLine
{
    enum Status { Run, Check, Help, Error };

    Status status = Run;
    VideoManagerOptions options;
    QString text; // the help text, or what is wrong
};

// Reads the arguments (the first is the program name), and the catalogue file
// if one is named. The video plane's name defaults to VideoPlaneLayout::nameFromEnvironment().
VideoManagerCommandLine parseVideoManagerCommandLine(const QStringList &arguments);
