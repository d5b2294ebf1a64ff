#pragma once

#include <QBuffer>
#include <QDataStream>
#include <QString>

// A request being written: stream the arguments into it; the message leaves
// when the envelope is destroyed. Floats go out as 4-byte single precision.
class QtopiaIpcEnvelope : public QDataStream
{
public:
    QtopiaIpcEnvelope(const QString &channel, const QString &message);
    ~QtopiaIpcEnvelope();

    QtopiaIpcEnvelope(const QtopiaIpcEnvelope &) = delete;
    QtopiaIpcEnvelope &operator=(const QtopiaIpcEnvelope &) = delete;

private:
    QString channelName;
    QString messageName;
    QBuffer buffer;
};
