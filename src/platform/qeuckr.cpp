#include "qeuckr.h"

#include "qlogbase.h"

#include <QStringDecoder>

QString qEUCKRtoQString(const QByteArray &text)
{
    // Stop at the first NUL, as the C string form does.
    const qsizetype end = text.indexOf('\0');
    const QByteArray bytes = end < 0 ? text : text.left(end);
    QStringDecoder decoder("EUC-KR");
    if (!decoder.isValid()) {
        // Qt finds EUC-KR through ICU; a Qt built without it shows Korean as junk.
        static const bool warned = [] {
            qCWarning(lcQtopiaDebug, "qEUCKRtoQString: this Qt has no EUC-KR codec: Korean names are shown as Latin-1");
            return true;
        }();
        Q_UNUSED(warned);
        return QString::fromLatin1(bytes);
    }
    return decoder.decode(bytes);
}

QString qEUCKRtoQString(const char *text)
{
    return text ? qEUCKRtoQString(QByteArray(text)) : QString();
}
