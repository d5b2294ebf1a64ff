#include "qtopiadbustransport.h"

#include "qtopiachannel.h"
#include "qtopiadbusnames.h"

#include <QDBusMessage>

namespace {
// D-Bus refuses member names longer than this.
constexpr int MaxMemberLength = 255;
}

QtopiaDBusTransport::QtopiaDBusTransport(const QDBusConnection &connection, QObject *parent)
    : QObject(parent), bus(connection)
{
    if (!bus.isConnected())
        qCWarning(lcQtopiaIpc) << "D-Bus transport without a bus connection:" << bus.lastError().message();
}

QtopiaDBusTransport::~QtopiaDBusTransport()
{
    for (const QString &channel : std::as_const(subscribed))
        connectChannel(channel, false);
}

QString QtopiaDBusTransport::objectPath(const QString &channel)
{
    return QLatin1String(QtopiaDBus::PathPrefix) + qtopiaDBusEscape(channel);
}

bool QtopiaDBusTransport::sync()
{
    const QDBusMessage ping = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    return bus.call(ping).type() == QDBusMessage::ReplyMessage;
}

bool QtopiaDBusTransport::connectChannel(const QString &channel, bool connect)
{
    // An empty member name listens to every signal of the interface on that
    // path. QDBusConnection offers only the string form of the slot.
    const QString path = objectPath(channel);
    const QString interface = QLatin1String(QtopiaDBus::Interface);
    return connect ? bus.connect(QString(), path, interface, QString(), this, SLOT(receive(QDBusMessage)))
                   : bus.disconnect(QString(), path, interface, QString(), this, SLOT(receive(QDBusMessage)));
}

void QtopiaDBusTransport::subscribe(const QString &channel)
{
    if (subscribed.contains(channel))
        return;
    if (channel.isEmpty() || !connectChannel(channel, true)) {
        qCWarning(lcQtopiaIpc) << "cannot listen on channel" << channel << "over D-Bus";
        return;
    }
    subscribed.append(channel);
}

void QtopiaDBusTransport::unsubscribe(const QString &channel)
{
    if (subscribed.removeAll(channel) > 0)
        connectChannel(channel, false);
}

void QtopiaDBusTransport::transmit(const QtopiaIpcMessage &message)
{
    const QString member = qtopiaDBusEscape(message.message);
    if (message.channel.isEmpty() || member.isEmpty() || member.size() > MaxMemberLength) {
        qCWarning(lcQtopiaIpc) << "cannot send" << message.message << "on channel" << message.channel
                               << "over D-Bus: the name does not fit a D-Bus signal";
        return;
    }
    // With the bus daemon gone the connection still takes messages and drops them.
    if (!bus.isConnected()) {
        qCWarning(lcQtopiaIpc) << "lost" << message.message << "on channel" << message.channel
                               << ": no connection to the D-Bus bus";
        return;
    }
    QDBusMessage signal = QDBusMessage::createSignal(objectPath(message.channel),
                                                     QLatin1String(QtopiaDBus::Interface), member);
    signal << message.data;
    if (!bus.send(signal))
        qCWarning(lcQtopiaIpc) << "D-Bus refused" << message.message << "on channel" << message.channel
                               << bus.lastError().message();
}

void QtopiaDBusTransport::receive(const QDBusMessage &message)
{
    const QString prefix = QLatin1String(QtopiaDBus::PathPrefix);
    bool channelOk = false;
    bool memberOk = false;
    const QString channel = message.path().startsWith(prefix)
        ? qtopiaDBusUnescape(message.path().mid(prefix.size()), &channelOk)
        : QString();
    const QString signature = qtopiaDBusUnescape(message.member(), &memberOk);
    if (!channelOk || !memberOk || signature.isEmpty()) {
        qCWarning(lcQtopiaIpc) << "ignored D-Bus signal with unknown names:" << message.path()
                               << message.member();
        return;
    }

    // A peer may leave out the block of a message without arguments.
    QByteArray data;
    if (message.signature() == QLatin1String("ay")) {
        data = message.arguments().constFirst().toByteArray();
    } else if (!message.arguments().isEmpty()) {
        qCWarning(lcQtopiaIpc) << "ignored" << signature << "on channel" << channel
                               << "with D-Bus arguments" << message.signature() << "instead of ay";
        return;
    }
    QtopiaChannel::deliver(channel, signature, data);
}
