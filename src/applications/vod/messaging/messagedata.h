#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

// Builds an argument block: the values in order, as a QtopiaIpcEnvelope would
// stream them (ints 4 bytes, floats 4 bytes single precision, QString with its
// byte count, const char * as a zero-terminated string).
template <typename... Args>
QByteArray messageData(const Args &...args)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    (stream << ... << args);
    return data;
}
