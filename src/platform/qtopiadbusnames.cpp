#include "qtopiadbusnames.h"

#include <QByteArray>
#include <QStringDecoder>

namespace {
bool isPlain(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

int hexValue(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u >= 'A' && u <= 'F')
        return u - 'A' + 10;
    if (u >= 'a' && u <= 'f')
        return u - 'a' + 10;
    return -1;
}

QString failed(bool *ok)
{
    if (ok)
        *ok = false;
    return QString();
}
}

QString qtopiaDBusEscape(const QString &text)
{
    static const char hex[] = "0123456789ABCDEF";
    const QByteArray utf8 = text.toUtf8();
    QString result;
    result.reserve(utf8.size() * 3 + 3);
    if (!utf8.isEmpty() && utf8.at(0) >= '0' && utf8.at(0) <= '9')
        result += QLatin1String("_00");
    for (const char c : utf8) {
        if (isPlain(c)) {
            result += QLatin1Char(c);
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result += QLatin1Char('_');
            result += QLatin1Char(hex[byte >> 4]);
            result += QLatin1Char(hex[byte & 0xF]);
        }
    }
    return result;
}

QString qtopiaDBusUnescape(const QString &text, bool *ok)
{
    qsizetype i = 0;
    // The marker in front of a leading digit carries no character.
    if (text.startsWith(QLatin1String("_00")) && text.size() > 3 && text.at(3).isDigit()
        && text.at(3).unicode() < 0x80)
        i = 3;

    QByteArray utf8;
    utf8.reserve(text.size());
    while (i < text.size()) {
        const QChar c = text.at(i);
        if (c.unicode() < 0x80 && isPlain(char(c.unicode()))) {
            utf8 += char(c.unicode());
            ++i;
            continue;
        }
        if (c != QLatin1Char('_') || i + 2 >= text.size())
            return failed(ok);
        const int high = hexValue(text.at(i + 1));
        const int low = hexValue(text.at(i + 2));
        if (high < 0 || low < 0)
            return failed(ok);
        utf8 += char(high * 16 + low);
        i += 3;
    }

    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString result = decoder.decode(utf8);
    if (decoder.hasError())
        return failed(ok);
    if (ok)
        *ok = true;
    return result;
}
