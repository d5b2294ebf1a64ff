#pragma once

#include <QLibrary>
#include <QObject>
#include <QPluginLoader>
#include <QPointer>
#include <QQueue>
#include <QString>

class LauncherScreen;
class QApplicationPlugin;
class TrafficPrinter;
class QWidget;

// The quick-launcher stand-in: loads the application plugin, checks it,
// creates one main window on the launcher's screen and runs until that window
// is over (or standard input ends with --keys, or --quit-after runs out).
class Launcher : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        QString modulePath;
        QString key = QStringLiteral("videoPush");
        bool vod = false;
        bool list = false;
        bool keys = false;
        bool trace = false;
        bool usePluginLoader = false;
        int quitAfterMsecs = -1;
        // The locale whose translation the plugin installs (empty: the system's).
        QString language;
        // Where to write the display's picture when the launch ends (empty: nowhere).
        QString grabPath;
    };

    explicit Launcher(const Options &options, QObject *parent = nullptr);
    ~Launcher() override;

    // The plugin library used when no --module is given.
    static QString defaultModulePath();

    // Runs the whole launch; the process exit code.
    int exec();

private:
    bool loadPlugin();
    void installTranslation();
    // Writes the display's picture for --grab, once; false if it cannot be written.
    bool grabDisplay();
    void quit();
    QWidget *createWindow(LauncherScreen *screen);
    void queueKey(const QString &name);
    void inputFinished();
    void deliverNext();
    void deliverKey(const QString &name);
    bool fail(const QString &message);

    Options options;
    QLibrary library;
    QPluginLoader loader;
    QApplicationPlugin *plugin = nullptr;
    TrafficPrinter *printer = nullptr;
    QPointer<QWidget> window;
    QPointer<LauncherScreen> screen;
    QQueue<QString> pendingKeys;
    bool delivering = false;
    bool inputDone = false;
    bool grabbed = false;
    bool grabFailed = false;
};
