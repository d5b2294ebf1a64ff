#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

// A listener on one IPC channel. It lives as a child of the widget that listens
// and emits received() for every message sent on its channel by any process,
// this one included.
class QtopiaChannel : public QObject
{
    Q_OBJECT

public:
    QtopiaChannel(const QString &channel, QObject *parent);
    ~QtopiaChannel() override;

    QString channel() const { return channelName; }

    // Hands one message to every open channel object of that name, in the order
    // in which they were opened. Transports call this.
    static void deliver(const QString &channel, const QString &message, const QByteArray &data);

    // Whether any channel object of that name is open in this process.
    static bool isListening(const QString &channel);

    // The names of the channels open in this process, each once, in opening order.
    static QStringList listenedChannels();

signals:
    void received(const QString &message, const QByteArray &data);

private:
    QString channelName;
};
