#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// The whole protocol as data: each message with its channel and the wire types
// of its arguments. Tools that speak the protocol (the simulator, the tests,
// the fuzzers) walk this table instead of repeating it.
struct MessageEntry
{
    enum ArgType { Int, Float, String, CString };

    const char *channel;
    const char *signature;
    QList<ArgType> arguments;
};

const QList<MessageEntry> &messageCatalogue();

// The entry of a channel and signature, or null.
const MessageEntry *findMessage(const QString &channel, const QString &signature);

// The arguments of a block as readable text ("12.5, 3"), for logs.
QString describeArguments(const MessageEntry &entry, const QByteArray &data);
