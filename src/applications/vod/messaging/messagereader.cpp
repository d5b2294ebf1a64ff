#include "messagereader.h"

MessageReader::MessageReader(const QByteArray &data)
    : bytes(data), stream(bytes)
{
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
}

int MessageReader::readInt()
{
    qint32 value = 0;
    stream >> value;
    return stream.status() == QDataStream::Ok ? value : 0;
}

float MessageReader::readFloat()
{
    float value = 0.0f;
    stream >> value;
    return stream.status() == QDataStream::Ok ? value : 0.0f;
}

QString MessageReader::readString()
{
    QString value;
    stream >> value;
    return stream.status() == QDataStream::Ok ? value : QString();
}

QByteArray MessageReader::readCString()
{
    char *raw = nullptr;
    stream >> raw;
    QByteArray value = stream.status() == QDataStream::Ok && raw ? QByteArray(raw) : QByteArray();
    delete[] raw;
    return value;
}
