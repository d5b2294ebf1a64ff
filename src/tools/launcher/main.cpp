#include "displaychoice.h"
#include "keymap.h"
#include "launcher.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>

#include <cstdio>

namespace {
QString text(const char *source)
{
    return QCoreApplication::translate("qpe-launcher", source);
}

QString description()
{
    QStringList lines{
        text("Loads the video phone's application plugin and launches one of its applications"),
        text("on a 480 x 272 screen, as the phone's quick-launcher does. The screen shows what the"),
        text("phone would: the platform's title bar and soft-key bar around the module's windows, and the"),
        text("video under them, in the rectangle of the last \"changeVodWindow(int,int,int,int)\": the"),
        text("pictures of the video manager's video plane (QPE_VIDEO_PLANE, by default one per user and"),
        text("QPE_ROOT) while a video manager holds one, else a moving test picture that shows the"),
        text("position of the last \"currentTime(float)\")."),
        QString(),
        text("Keyboard keys that stand for the device's keys:"),
    };
    lines += KeyMap::keyboardHelp();
    lines += {
        text("  (Select carries the keypad modifier, as the device's keypad sends it.)"),
        QString(),
        text("Key names for --keys, one per line on standard input:"),
        QStringLiteral("  ") + KeyMap::names().join(QLatin1String(", ")),
        QString(),
        text("Without a display (DISPLAY, WAYLAND_DISPLAY) or a chosen platform (QT_QPA_PLATFORM)"),
        text("the offscreen platform is used. QPE_ROOT names the directory that stands for the"),
        text("device's root, where the module's files (/tmp/status, /tmp/systemdb) are read."),
        text("QPE_IPC_TRANSPORT (dbus or local) chooses how the plugin reaches the video manager;"),
        text("by default the D-Bus session bus when one is reachable, else the in-process transport."),
    };
    return lines.join(QLatin1Char('\n'));
}
}

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (needsOffscreenPlatform(QProcessEnvironment::systemEnvironment(), arguments)) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        std::fprintf(stderr, "qpe-launcher: %s\n", qPrintable(text("no display found, using the offscreen platform")));
    }

    useDeviceFontResolution();
    QApplication app(argc, argv);
    // The launcher ends a launch itself (its main window gone, its input over),
    // not whenever no window happens to be up.
    QApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::setApplicationName(QStringLiteral("qpe-launcher"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VIDEOPHONE_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(description());
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption moduleOption(
        QStringLiteral("module"),
        text("The plugin library to load (default: %1).").arg(Launcher::defaultModulePath()),
        QStringLiteral("path"));
    const QCommandLineOption listOption(QStringLiteral("list"), text("Print the plugin's application keys and exit."));
    const QCommandLineOption keyOption(QStringLiteral("key"),
                                       text("The application to launch (default: videoPush)."),
                                       QStringLiteral("key"), QStringLiteral("videoPush"));
    const QCommandLineOption vodOption(QStringLiteral("vod"),
                                       text("Launch the VOD browser, which has no application key."));
    const QCommandLineOption keysOption(
        QStringLiteral("keys"),
        text("Also read key names from standard input and deliver each to the focused window; "
             "exit at the end of the input."));
    const QCommandLineOption traceOption(
        QStringLiteral("trace"),
        text("Print every message the plugin sends, one line each: channel, signature, argument bytes in hex."));
    const QCommandLineOption pluginLoaderOption(
        QStringLiteral("plugin-loader"),
        text("Take the plugin object through Qt's QPluginLoader instead of calling qt_plugin_instance()."));
    const QCommandLineOption quitAfterOption(QStringLiteral("quit-after"),
                                             text("Exit after this many milliseconds."),
                                             QStringLiteral("ms"));
    const QCommandLineOption langOption(
        QStringLiteral("lang"),
        text("The locale of the module's texts (default: the system's, now %1).").arg(QLocale::system().name()),
        QStringLiteral("locale"));
    const QCommandLineOption grabOption(
        QStringLiteral("grab"),
        text("When the launch ends, write what the display shows (title bar, windows, soft keys) as a PNG file."),
        QStringLiteral("file"));
    parser.addOptions({moduleOption, listOption, keyOption, vodOption, keysOption, traceOption, pluginLoaderOption,
                       quitAfterOption, langOption, grabOption});
    parser.process(app);

    Launcher::Options options;
    options.modulePath = parser.value(moduleOption);
    options.key = parser.value(keyOption);
    options.vod = parser.isSet(vodOption);
    options.list = parser.isSet(listOption);
    options.keys = parser.isSet(keysOption);
    options.trace = parser.isSet(traceOption);
    options.usePluginLoader = parser.isSet(pluginLoaderOption);
    options.language = parser.value(langOption);
    options.grabPath = parser.value(grabOption);
    if (options.vod && parser.isSet(keyOption)) {
        std::fprintf(stderr, "qpe-launcher: %s\n", qPrintable(text("--key and --vod exclude each other")));
        return 1;
    }
    if (parser.isSet(quitAfterOption)) {
        bool ok = false;
        options.quitAfterMsecs = parser.value(quitAfterOption).toInt(&ok);
        if (!ok || options.quitAfterMsecs < 0) {
            std::fprintf(stderr, "qpe-launcher: %s\n", qPrintable(text("--quit-after needs a number of milliseconds")));
            return 1;
        }
    }
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "qpe-launcher: %s\n",
                     qPrintable(text("unexpected argument \"%1\"").arg(parser.positionalArguments().first())));
        return 1;
    }

    Launcher launcher(options);
    return launcher.exec();
}
