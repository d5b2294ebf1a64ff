#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// One message as it travels between processes: channel, signature, argument block.
struct QtopiaIpcMessage
{
    QString channel;
    QString message;
    QByteArray data;

    bool operator==(const QtopiaIpcMessage &other) const
    {
        return channel == other.channel && message == other.message && data == other.data;
    }
};

// What carries QtopiaIpcEnvelope's messages to QtopiaChannel listeners. The module
// never knows which transport runs; it only builds envelopes and opens channels.
// A transport hands every message it receives to QtopiaChannel::deliver(), on the
// GUI thread, in the order the messages were sent.
class QtopiaIpcTransport
{
public:
    virtual ~QtopiaIpcTransport();

    // The transport in use, an in-process one unless another was installed.
    static QtopiaIpcTransport *instance();
    // Installs a transport (not owned; null goes back to the in-process one).
    static void setInstance(QtopiaIpcTransport *transport);

    // Sends one message. Every message sent in this process is also recorded in
    // the traffic log, whatever the transport.
    void send(const QString &channel, const QString &message, const QByteArray &data);

    // Called when the first listener of a channel opens in this process, and when
    // its last one goes.
    virtual void subscribe(const QString &channel) { Q_UNUSED(channel); }
    virtual void unsubscribe(const QString &channel) { Q_UNUSED(channel); }

    // What this process has sent, in sending order.
    static const QList<QtopiaIpcMessage> &traffic();
    static void clearTraffic();

protected:
    virtual void transmit(const QtopiaIpcMessage &message) = 0;
};
