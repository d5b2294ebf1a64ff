#pragma once

#include <QByteArray>
#include <QList>
#include <QLoggingCategory>
#include <QString>

#include <functional>

// Which transport a program runs on, and any trouble in it, goes to this category.
Q_DECLARE_LOGGING_CATEGORY(lcQtopiaIpc)

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
//
// The transport in use is the in-process one until a transport is installed.
// Nothing picks another on its own: a program that talks to other processes (the
// launcher, the video-manager simulator) calls selectDefault() once at start-up.
// Tests therefore run on the deterministic in-process transport whatever session
// bus the user has, unless a test installs a transport itself.
class QtopiaIpcTransport
{
public:
    virtual ~QtopiaIpcTransport();

    // The transport in use, an in-process one unless another was installed.
    static QtopiaIpcTransport *instance();
    // Installs a transport (not owned; null goes back to the in-process one).
    // The channels open at that moment move over: the old transport is told that
    // their listeners went, the new one that they came.
    static void setInstance(QtopiaIpcTransport *transport);

    enum class Kind { Local, DBus };
    struct Choice
    {
        Kind kind;
        bool warning; // the line is a warning rather than information
        QString text; // the one line that tells which transport runs, and why
    };
    // The decision of selectDefault(): `requested` is the value of
    // QPE_IPC_TRANSPORT ("dbus", "local" or empty, in any case); busReachable is
    // asked only when the choice depends on it.
    static Choice choose(const QString &requested, const std::function<bool()> &busReachable);

    // Installs the D-Bus transport on the session bus when one is reachable, else
    // keeps the in-process one; QPE_IPC_TRANSPORT=dbus|local forces the choice (a
    // forced but unreachable bus gives a warning and the in-process transport).
    // Says which on the "QtopiaIpc" category, one line. Returns the transport in use.
    static QtopiaIpcTransport *selectDefault();

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
