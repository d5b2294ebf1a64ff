#pragma once

#include "entry/frameexports.h"

#include <QList>
#include <QString>

class QLibrary;
class QObject;
class QWidget;

// How the device frame reaches into the module: the soft-key labels of a
// widget and the IPC channels, both kept by the plugin's copy of the platform
// layer. Built from the plugin's exports, or from the same functions linked in.
class FrameHooks
{
public:
    struct SoftKey
    {
        int key = 0;
        QString image;
        QString text;
    };

    FrameHooks() = default;
    FrameHooks(decltype(&videophone_soft_keys) softKeys, decltype(&videophone_listen) listen);

    // The hooks of a loaded plugin library; missing exports leave them inert.
    static FrameHooks fromLibrary(QLibrary &library);

    QList<SoftKey> softKeys(const QWidget *widget) const;
    // A listener on the channel, or null without the hook; owned by the caller.
    QObject *listen(const char *channel, VideophoneMessageHandler handler, void *context) const;

private:
    decltype(&videophone_soft_keys) softKeysFunction = nullptr;
    decltype(&videophone_listen) listenFunction = nullptr;
};
