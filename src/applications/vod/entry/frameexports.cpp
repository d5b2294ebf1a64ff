// Exported from the plugin library for the launcher's device frame.
#include "frameexports.h"

#include "qsoftmenubar.h"
#include "qtopiachannel.h"

#include <QWidget>

extern "C" Q_DECL_EXPORT int videophone_soft_keys(const QWidget *widget, QList<int> *keys, QStringList *images,
                                                  QStringList *texts)
{
    const QMap<int, QSoftMenuBar::Label> labels = QSoftMenuBar::labels(widget);
    for (auto it = labels.cbegin(); it != labels.cend(); ++it) {
        keys->append(it.key());
        images->append(it->pixmap);
        texts->append(it->text);
    }
    return int(labels.size());
}

extern "C" Q_DECL_EXPORT QObject *videophone_listen(const char *channel, VideophoneMessageHandler handler,
                                                    void *context)
{
    auto *listener = new QtopiaChannel(QString::fromLatin1(channel), nullptr);
    QObject::connect(listener, &QtopiaChannel::received, listener,
                     [handler, context](const QString &message, const QByteArray &data) {
                         handler(context, message, data);
                     });
    return listener;
}
