#pragma once

#include "qtopiaipctransport.h"

#include <QList>
#include <QObject>

#include <cstdio>

// Prints the messages that the plugin sends, one line each, as they appear in
// its traffic log: "channel signature hexdata" (no data, no third field).
class TrafficPrinter : public QObject
{
    Q_OBJECT

public:
    // log is the plugin's traffic log; it outlives the printer.
    TrafficPrinter(const QList<QtopiaIpcMessage> *log, FILE *out, QObject *parent = nullptr);

    static QByteArray line(const QtopiaIpcMessage &message);

    // Prints what was sent since the last call.
    void flush();

private:
    const QList<QtopiaIpcMessage> *log;
    FILE *out;
    qsizetype printed = 0;
};
