#pragma once

#include "qtopiaipctransport.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

class QDBusMessage;

// Carries the messages over D-Bus, so that every process on the bus hears them.
// A message on channel C with signature S and data block D is a broadcast signal
// on the object path QtopiaDBus::PathPrefix + escape(C), interface
// QtopiaDBus::Interface, member escape(S), with one argument of type "ay" holding
// D (names in qtopiadbusnames.h). Every listener of C in every process on the
// bus gets it, this process included: the own copy comes back through the bus,
// so all listeners see all senders' messages in the bus's one order.
class QtopiaDBusTransport : public QObject, public QtopiaIpcTransport
{
    Q_OBJECT

public:
    explicit QtopiaDBusTransport(const QDBusConnection &connection = QDBusConnection::sessionBus(),
                                 QObject *parent = nullptr);
    ~QtopiaDBusTransport() override;

    bool isConnected() const { return bus.isConnected(); }
    QDBusConnection connection() const { return bus; }

    // Waits for one round trip to the bus daemon: the subscriptions made before
    // it are in force when it returns, so a peer that starts sending afterwards
    // is heard from its first message. False when the bus does not answer.
    bool sync();

    void subscribe(const QString &channel) override;
    void unsubscribe(const QString &channel) override;

    static QString objectPath(const QString &channel);

protected:
    void transmit(const QtopiaIpcMessage &message) override;

private slots:
    void receive(const QDBusMessage &message);

private:
    bool connectChannel(const QString &channel, bool connect);

    QDBusConnection bus;
    QStringList subscribed;
};
