#include "messagetext.h"

#include "messaging/messagedata.h"

std::optional<QByteArray> encodeArguments(const MessageEntry &entry, const QStringList &values,
                                          QString *error)
{
    auto fail = [error](const QString &why) -> std::optional<QByteArray> {
        if (error)
            *error = why;
        return std::nullopt;
    };
    if (values.size() != entry.arguments.size())
        return fail(QStringLiteral("%1 takes %2 argument(s), %3 given")
                        .arg(QLatin1String(entry.signature))
                        .arg(entry.arguments.size())
                        .arg(values.size()));
    QByteArray data;
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QString &value = values.at(i);
        bool ok = true;
        switch (entry.arguments.at(i)) {
        case MessageEntry::Int:
            data += messageData(qint32(value.toInt(&ok)));
            break;
        case MessageEntry::Float:
            data += messageData(value.toFloat(&ok));
            break;
        case MessageEntry::String:
            data += messageData(value);
            break;
        case MessageEntry::CString:
            data += messageData(value.toUtf8().constData());
            break;
        }
        if (!ok)
            return fail(QStringLiteral("argument %1 of %2 is not a number: %3")
                            .arg(i + 1)
                            .arg(QLatin1String(entry.signature), value));
    }
    return data;
}

QString messageLogLine(const QString &direction, const QString &channel, const QString &message,
                       const QByteArray &data, const QString &remark)
{
    QString line = direction + QLatin1Char(' ') + channel + QLatin1Char(' ') + message;
    const MessageEntry *entry = findMessage(channel, message);
    const QString arguments = entry ? describeArguments(*entry, data) : QString::fromLatin1(data.toHex(' '));
    if (!arguments.isEmpty())
        line += QLatin1Char(' ') + arguments;
    if (!remark.isEmpty())
        line += QLatin1String(" (") + remark + QLatin1Char(')');
    return line;
}
