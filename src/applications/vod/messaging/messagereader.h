#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QString>

// Reads the arguments of one message in signature order. Floats are 4 bytes;
// a value that the block is too short for reads as 0.
class MessageReader
{
public:
    explicit MessageReader(const QByteArray &data);

    int readInt();
    float readFloat();
    QString readString();
    // A zero-terminated string with its 32-bit length ("playPush(QString)").
    QByteArray readCString();

    bool atEnd() const { return stream.atEnd(); }
    bool readPastEnd() const { return stream.status() == QDataStream::ReadPastEnd; }

private:
    QByteArray bytes;
    QDataStream stream;
};
