#include "trafficprinter.h"

TrafficPrinter::TrafficPrinter(const QList<QtopiaIpcMessage> *log, FILE *out, QObject *parent)
    : QObject(parent)
    , log(log)
    , out(out)
{
}

QByteArray TrafficPrinter::line(const QtopiaIpcMessage &message)
{
    QByteArray text = message.channel.toUtf8() + ' ' + message.message.toUtf8();
    if (!message.data.isEmpty())
        text += ' ' + message.data.toHex();
    return text;
}

void TrafficPrinter::flush()
{
    // A cleared log starts again from its beginning.
    if (printed > log->size())
        printed = 0;
    if (printed == log->size())
        return;
    for (; printed < log->size(); ++printed) {
        const QByteArray text = line(log->at(printed)) + '\n';
        std::fwrite(text.constData(), 1, size_t(text.size()), out);
    }
    std::fflush(out);
}
