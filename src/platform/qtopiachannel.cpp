#include "qtopiachannel.h"

#include "qtopiaipctransport.h"

#include <QList>
#include <QPointer>

namespace {
QList<QtopiaChannel *> &openChannels()
{
    static QList<QtopiaChannel *> channels;
    return channels;
}
}

QtopiaChannel::QtopiaChannel(const QString &channel, QObject *parent)
    : QObject(parent), channelName(channel)
{
    const bool first = !isListening(channel);
    openChannels().append(this);
    if (first)
        QtopiaIpcTransport::instance()->subscribe(channel);
}

QtopiaChannel::~QtopiaChannel()
{
    openChannels().removeOne(this);
    if (!isListening(channelName))
        QtopiaIpcTransport::instance()->unsubscribe(channelName);
}

bool QtopiaChannel::isListening(const QString &channel)
{
    for (const QtopiaChannel *c : openChannels())
        if (c->channelName == channel)
            return true;
    return false;
}

QStringList QtopiaChannel::listenedChannels()
{
    QStringList names;
    for (const QtopiaChannel *c : openChannels())
        if (!names.contains(c->channelName))
            names.append(c->channelName);
    return names;
}

void QtopiaChannel::deliver(const QString &channel, const QString &message, const QByteArray &data)
{
    // A handler may close windows and so destroy channels, or open new ones:
    // take a guarded snapshot and skip the ones that went.
    QList<QPointer<QtopiaChannel>> targets;
    for (QtopiaChannel *c : openChannels())
        if (c->channelName == channel)
            targets.append(c);
    for (const QPointer<QtopiaChannel> &c : targets)
        if (c)
            emit c->received(message, data);
}
