#include "qtopiaipctransport.h"

#include "qtopialocaltransport.h"

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
    installed = transport;
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
