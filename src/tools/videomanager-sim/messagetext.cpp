#include "messagetext.h"

#include "messaging/messagedata.h"

std::optional<QByteArray> encodeArguments(const MessageSpec &spec, const QStringList &values,
                                          QString *error)
{
    auto fail = [error](const QString &why) -> std::optional<QByteArray> {
        if (error)
            *error = why;
        return std::nullopt;
    };
    if (values.size() != spec.arguments.size())
        return fail(QStringLiteral("%1 takes %2 argument(s), %3 given")
                        .arg(QLatin1String(spec.signature))
                        .arg(spec.arguments.size())
                        .arg(values.size()));
    QByteArray data;
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QString &value = values.at(i);
        bool ok = true;
        switch (spec.arguments.at(i)) {
        case MessageSpec::Int:
            data += messageData(qint32(value.toInt(&ok)));
            break;
        case MessageSpec::Float:
            data += messageData(value.toFloat(&ok));
            break;
        case MessageSpec::String:
            data += messageData(value);
            break;
        case MessageSpec::CString:
            data += messageData(value.toUtf8().constData());
            break;
        }
        if (!ok)
            return fail(QStringLiteral("argument %1 of %2 is not a number: %3")
                            .arg(i + 1)
                            .arg(QLatin1String(spec.signature), value));
    }
    return data;
}
