#include "qtopialocaltransport.h"

#include "qtopiachannel.h"

QtopiaLocalTransport::QtopiaLocalTransport() = default;

void QtopiaLocalTransport::transmit(const QtopiaIpcMessage &message)
{
    // Queued calls to one receiver run in posting order.
    QMetaObject::invokeMethod(
        this, [message]() { QtopiaChannel::deliver(message.channel, message.message, message.data); },
        Qt::QueuedConnection);
}
