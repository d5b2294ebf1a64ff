#include "framehooks.h"

#include <QLibrary>

FrameHooks::FrameHooks(decltype(&videophone_soft_keys) softKeys, decltype(&videophone_listen) listen)
    : softKeysFunction(softKeys)
    , listenFunction(listen)
{
}

FrameHooks FrameHooks::fromLibrary(QLibrary &library)
{
    return FrameHooks(reinterpret_cast<decltype(&videophone_soft_keys)>(library.resolve("videophone_soft_keys")),
                      reinterpret_cast<decltype(&videophone_listen)>(library.resolve("videophone_listen")));
}

QList<FrameHooks::SoftKey> FrameHooks::softKeys(const QWidget *widget) const
{
    QList<SoftKey> result;
    if (!softKeysFunction || !widget)
        return result;
    QList<int> keys;
    QStringList images;
    QStringList texts;
    const int count = softKeysFunction(widget, &keys, &images, &texts);
    for (int i = 0; i < count && i < keys.size(); ++i)
        result.append(SoftKey{keys.at(i), images.value(i), texts.value(i)});
    return result;
}

QObject *FrameHooks::listen(const char *channel, VideophoneMessageHandler handler, void *context) const
{
    return listenFunction ? listenFunction(channel, handler, context) : nullptr;
}
