#include "displaychoice.h"

bool needsOffscreenPlatform(const QProcessEnvironment &environment, const QStringList &arguments)
{
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!environment.value(QLatin1String(name)).isEmpty())
            return false;
    }
    for (const QString &argument : arguments) {
        if (argument == QLatin1String("-platform") || argument == QLatin1String("--platform")
            || argument.startsWith(QLatin1String("-platform=")) || argument.startsWith(QLatin1String("--platform=")))
            return false;
    }
    return true;
}

void useDeviceFontResolution()
{
    if (qEnvironmentVariableIsEmpty("QT_FONT_DPI"))
        qputenv("QT_FONT_DPI", "72");
}
