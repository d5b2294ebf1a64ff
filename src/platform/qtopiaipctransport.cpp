#include "qtopiaipctransport.h"

#include "qtopiachannel.h"
#include "qtopiadbustransport.h"
#include "qtopialocaltransport.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QPointer>

Q_LOGGING_CATEGORY(lcQtopiaIpc, "QtopiaIpc")

namespace {
QtopiaIpcTransport *installed = nullptr;

QList<QtopiaIpcMessage> &trafficLog()
{
    static QList<QtopiaIpcMessage> log;
    return log;
}
}

QtopiaIpcTransport::~QtopiaIpcTransport()
{
    if (installed == this)
        installed = nullptr;
}

QtopiaIpcTransport *QtopiaIpcTransport::instance()
{
    if (installed)
        return installed;
    static QtopiaLocalTransport local;
    return &local;
}

void QtopiaIpcTransport::setInstance(QtopiaIpcTransport *transport)
{
    QtopiaIpcTransport *previous = instance();
    installed = transport;
    QtopiaIpcTransport *next = instance();
    if (previous == next)
        return;
    const QStringList channels = QtopiaChannel::listenedChannels();
    for (const QString &channel : channels)
        previous->unsubscribe(channel);
    for (const QString &channel : channels)
        next->subscribe(channel);
}

QtopiaIpcTransport::Choice QtopiaIpcTransport::choose(const QString &requested,
                                                      const std::function<bool()> &busReachable)
{
    const QString wanted = requested.trimmed().toLower();
    if (wanted == QLatin1String("local"))
        return {Kind::Local, false, QStringLiteral("IPC over the in-process transport (QPE_IPC_TRANSPORT=local)")};
    if (wanted == QLatin1String("dbus")) {
        if (busReachable())
            return {Kind::DBus, false, QStringLiteral("IPC over the D-Bus session bus (QPE_IPC_TRANSPORT=dbus)")};
        return {Kind::Local, true,
                QStringLiteral("QPE_IPC_TRANSPORT=dbus but no D-Bus session bus is reachable; "
                               "IPC falls back to the in-process transport")};
    }
    const bool reachable = busReachable();
    if (!wanted.isEmpty()) {
        return {reachable ? Kind::DBus : Kind::Local, true,
                QStringLiteral("QPE_IPC_TRANSPORT=%1 is neither dbus nor local; IPC over %2")
                    .arg(requested,
                         reachable ? QStringLiteral("the D-Bus session bus")
                                   : QStringLiteral("the in-process transport (no session bus)"))};
    }
    if (reachable)
        return {Kind::DBus, false, QStringLiteral("IPC over the D-Bus session bus")};
    return {Kind::Local, false,
            QStringLiteral("IPC over the in-process transport (no D-Bus session bus reachable)")};
}

QtopiaIpcTransport *QtopiaIpcTransport::selectDefault()
{
    const Choice choice = choose(qEnvironmentVariable("QPE_IPC_TRANSPORT"),
                                 [] { return QDBusConnection::sessionBus().isConnected(); });
    if (choice.warning)
        qCWarning(lcQtopiaIpc).noquote() << choice.text;
    else
        qCInfo(lcQtopiaIpc).noquote() << choice.text;

    if (choice.kind == Kind::Local) {
        setInstance(nullptr);
        return instance();
    }
    // One bus transport per program, living as long as the application object.
    static QPointer<QtopiaDBusTransport> bus;
    if (!bus)
        bus = new QtopiaDBusTransport(QDBusConnection::sessionBus(), QCoreApplication::instance());
    setInstance(bus);
    return bus;
}

void QtopiaIpcTransport::send(const QString &channel, const QString &message, const QByteArray &data)
{
    QtopiaIpcMessage m{channel, message, data};
    trafficLog().append(m);
    transmit(m);
}

const QList<QtopiaIpcMessage> &QtopiaIpcTransport::traffic()
{
    return trafficLog();
}

void QtopiaIpcTransport::clearTraffic()
{
    trafficLog().clear();
}
