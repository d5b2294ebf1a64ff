#include "launcher.h"

#include "keydelivery.h"
#include "keymap.h"
#include "keynamereader.h"
#include "keytranslator.h"
#include "launcherscreen.h"
#include "mainwindowwatcher.h"
#include "pluginlocator.h"
#include "pluginverification.h"
#include "trafficprinter.h"
#include "videoplanelayout.h"

#include "entry/pluginexports.h"
#include "framehooks.h"
#include "qapplicationplugin.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace {
void printError(const QString &message)
{
    std::fprintf(stderr, "qpe-launcher: %s\n", qPrintable(message));
}

template<typename Function>
Function resolve(QLibrary &library, const char *name)
{
    return reinterpret_cast<Function>(library.resolve(name));
}
}

Launcher::Launcher(const Options &options, QObject *parent)
    : QObject(parent)
    , options(options)
{
}

Launcher::~Launcher() = default;

QString Launcher::defaultModulePath()
{
    // The installed layout first, then the build tree beside the launcher.
    return PluginLocator::locate(QCoreApplication::applicationDirPath(),
                                 {QStringLiteral(VIDEOPHONE_INSTALLED_PLUGIN_RELDIR),
                                  QStringLiteral(VIDEOPHONE_BUILD_PLUGIN_RELDIR)},
                                 QStringLiteral(VIDEOPHONE_PLUGIN_FILE));
}

bool Launcher::fail(const QString &message)
{
    printError(message);
    return false;
}

bool Launcher::loadPlugin()
{
    const QString path = options.modulePath.isEmpty() ? defaultModulePath() : options.modulePath;
    if (!QFileInfo(path).isFile())
        return fail(tr("no plugin library at %1").arg(path));

    library.setFileName(path);
    if (!library.load())
        return fail(tr("cannot load %1: %2").arg(path, library.errorString()));

    const auto verificationData =
        resolve<decltype(&qt_plugin_query_verification_data)>(library, "qt_plugin_query_verification_data");
    if (!verificationData)
        return fail(tr("%1 is not an application plugin: it has no verification data").arg(path));
    const QString problem = PluginVerification::problem(verificationData());
    if (!problem.isEmpty())
        return fail(tr("%1 does not fit this platform: %2").arg(path, problem));

    QObject *instance = nullptr;
    if (options.usePluginLoader) {
        loader.setFileName(path);
        instance = loader.instance();
        if (!instance)
            return fail(tr("Qt's plugin loader refuses %1: %2").arg(path, loader.errorString()));
    } else {
        const auto pluginInstance = resolve<decltype(&qt_plugin_instance)>(library, "qt_plugin_instance");
        if (!pluginInstance)
            return fail(tr("%1 is not an application plugin: it has no plugin instance").arg(path));
        instance = pluginInstance();
    }
    plugin = qobject_cast<QApplicationPlugin *>(instance);
    if (!plugin)
        return fail(tr("the plugin object of %1 is not an application factory").arg(path));
    return true;
}

void Launcher::installTranslation()
{
    // Plugins without translations do not export the function; they simply stay untranslated.
    using InstallTranslation = bool (*)(const char *);
    const auto install = resolve<InstallTranslation>(library, "videophone_install_translation");
    if (!install)
        return;
    const QString locale = options.language.isEmpty() ? QLocale::system().name() : options.language;
    // The system's locale often has no translation, which is no news; a chosen one is.
    if (!install(locale.toUtf8().constData()) && !options.language.isEmpty())
        printError(tr("the plugin has no translation for %1: its texts stay untranslated").arg(locale));
}

QWidget *Launcher::createWindow(LauncherScreen *screen)
{
    if (options.vod) {
        const auto createBrowser =
            resolve<decltype(&videophone_create_vod_browser)>(library, "videophone_create_vod_browser");
        if (!createBrowser) {
            fail(tr("%1 has no VOD browser").arg(library.fileName()));
            return nullptr;
        }
        QWidget *browser = createBrowser();
        browser->showMaximized();
        return browser;
    }

    const QStringList keys = plugin->keys();
    if (!keys.contains(options.key)) {
        fail(tr("unknown application key \"%1\" (the plugin has: %2)")
                 .arg(options.key, keys.join(QLatin1String(", "))));
        return nullptr;
    }
    QWidget *created = plugin->createMainWindow(options.key, screen, Qt::WindowFlags());
    if (!created) {
        fail(tr("the plugin created no window for \"%1\"").arg(options.key));
        return nullptr;
    }
    // The platform's main windows show themselves; one that does not is shown as the platform would.
    if (!created->isVisible())
        created->showMaximized();
    return created;
}

int Launcher::exec()
{
    if (!loadPlugin())
        return 1;

    if (options.list) {
        for (const QString &key : plugin->keys())
            std::printf("%s\n", qPrintable(key));
        return 0;
    }

    if (options.trace) {
        const auto traffic = resolve<decltype(&videophone_traffic)>(library, "videophone_traffic");
        if (!traffic) {
            fail(tr("%1 cannot report its messages (no traffic log)").arg(library.fileName()));
            return 1;
        }
        printer = new TrafficPrinter(traffic(), stdout, this);
        // Whenever the event loop goes idle, the messages sent so far are out.
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, printer,
                &TrafficPrinter::flush);
    }

    // The plugin carries its own copy of the IPC layer: it picks the transport
    // to the other processes (the video manager) itself.
    if (const auto selectTransport =
            resolve<decltype(&videophone_select_transport)>(library, "videophone_select_transport"))
        selectTransport();
    installTranslation();

    qApp->installEventFilter(new KeyTranslator(this));
    auto *launcherScreen = new LauncherScreen;
    launcherScreen->setFrameHooks(FrameHooks::fromLibrary(library));
    launcherScreen->watchVideoPlane(VideoPlaneLayout::nameFromEnvironment());
    screen = launcherScreen;
    connect(launcherScreen, &LauncherScreen::closed, this, &Launcher::quit);
    launcherScreen->showFrame();

    window = createWindow(launcherScreen);
    if (!window) {
        delete launcherScreen;
        if (printer)
            printer->flush();
        return 1;
    }
    auto *watcher = new MainWindowWatcher(window, this);
    connect(watcher, &MainWindowWatcher::gone, this, &Launcher::quit, Qt::QueuedConnection);

    if (options.keys) {
        auto *reader = new KeyNameReader(STDIN_FILENO, this);
        connect(reader, &KeyNameReader::lineRead, this, &Launcher::queueKey);
        connect(reader, &KeyNameReader::finished, this, &Launcher::inputFinished);
    }
    if (options.quitAfterMsecs >= 0)
        QTimer::singleShot(options.quitAfterMsecs, this, &Launcher::quit);

    int code = QApplication::exec();
    if (!grabDisplay() || grabFailed)
        code = code ? code : 1;

    // The window belongs to the launcher, which closes it as the platform does
    // when an application ends; what it sends on its way out is traced too.
    if (window && window->isVisible())
        window->close();
    delete window;
    delete launcherScreen;
    if (printer)
        printer->flush();
    return code;
}

bool Launcher::grabDisplay()
{
    if (options.grabPath.isEmpty() || grabbed || !screen)
        return true;
    grabbed = true;
    if (screen->screenImage().save(options.grabPath, "PNG"))
        return true;
    printError(tr("cannot write the screen picture to %1").arg(options.grabPath));
    return false;
}

void Launcher::quit()
{
    // Quitting closes every window: the display is taken while it still shows them.
    if (!grabDisplay())
        grabFailed = true;
    QCoreApplication::quit();
}

void Launcher::queueKey(const QString &name)
{
    pendingKeys.enqueue(name);
    if (!delivering) {
        delivering = true;
        QMetaObject::invokeMethod(this, &Launcher::deliverNext, Qt::QueuedConnection);
    }
}

void Launcher::inputFinished()
{
    inputDone = true;
    if (!delivering) {
        delivering = true;
        QMetaObject::invokeMethod(this, &Launcher::deliverNext, Qt::QueuedConnection);
    }
}

void Launcher::deliverNext()
{
    // One key per turn of the event loop, each to whatever has the focus by then,
    // as keys typed one after the other would arrive.
    if (pendingKeys.isEmpty()) {
        delivering = false;
        if (inputDone)
            quit();
        return;
    }
    // The next key is due before this one is handled: a key that opens a modal
    // notice runs a nested event loop, and the notice waits for the next key.
    const QString name = pendingKeys.dequeue();
    QMetaObject::invokeMethod(this, &Launcher::deliverNext, Qt::QueuedConnection);
    deliverKey(name);
}

void Launcher::deliverKey(const QString &name)
{
    const KeyStroke stroke = KeyMap::fromName(name);
    if (!stroke.isValid()) {
        printError(tr("unknown key name \"%1\" (known: %2)").arg(name, KeyMap::names().join(QLatin1String(", "))));
        return;
    }

    if (!deliverKeyStroke(stroke) && options.trace)
        printError(tr("no window has the keyboard: the key \"%1\" reaches nobody").arg(name));
}
