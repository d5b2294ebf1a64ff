#include "qtopiaipcenvelope.h"

#include "qtopiaipctransport.h"

QtopiaIpcEnvelope::QtopiaIpcEnvelope(const QString &channel, const QString &message)
    : channelName(channel), messageName(message)
{
    buffer.open(QIODevice::WriteOnly);
    setDevice(&buffer);
    setFloatingPointPrecision(QDataStream::SinglePrecision);
}

QtopiaIpcEnvelope::~QtopiaIpcEnvelope()
{
    setDevice(nullptr);
    QtopiaIpcTransport::instance()->send(channelName, messageName, buffer.data());
}
