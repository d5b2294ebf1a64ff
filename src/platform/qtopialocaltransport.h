#pragma once

#include "qtopiaipctransport.h"

#include <QObject>

// Delivers every message to the channels of this process through the event loop:
// a message sent from a handler reaches its listeners after that handler returns,
// and messages arrive in sending order.
class QtopiaLocalTransport : public QObject, public QtopiaIpcTransport
{
    Q_OBJECT

public:
    QtopiaLocalTransport();

protected:
    void transmit(const QtopiaIpcMessage &message) override;
};
