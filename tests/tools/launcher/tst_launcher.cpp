#include <QDir>
#include <QLibraryInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// The launcher program as people run it: what it prints, sends and says is
// wrong. LAUNCHER_PATH, MODULE_PATH and WRONG_VERSION_PLUGIN come from the build.
class tst_Launcher : public QObject
{
    Q_OBJECT

    struct Run
    {
        int exitCode = -1;
        QStringList out;
        QStringList err;
    };
    // Runs the launcher; `environment` holds "NAME=value" to set and "NAME" to remove.
    Run run(const QStringList &arguments, const QByteArray &input, const QStringList &environment);

    QTemporaryDir root;

private slots:
    void initTestCase();
    void runs_data();
    void runs();
};

void tst_Launcher::initTestCase()
{
    for (const char *dir : {"tmp/status", "tmp/systemdb", "settings", "runtime"})
        QVERIFY(QDir(root.path()).mkpath(QLatin1String(dir)));
    QVERIFY(QFile::setPermissions(root.filePath("runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QFile text(root.filePath("notalibrary.so"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("not a library\n") > 0);
}

tst_Launcher::Run tst_Launcher::run(const QStringList &arguments, const QByteArray &input,
                                    const QStringList &environment)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("QPE_ROOT", root.path());
    // The module's settings stay out of the user's home; the in-process
    // transport, whatever bus the machine has; no notice waits for a user.
    env.insert("XDG_CONFIG_HOME", root.filePath("settings"));
    env.insert("XDG_RUNTIME_DIR", root.filePath("runtime"));
    env.insert("QPE_IPC_TRANSPORT", "local");
    env.insert("QPE_NOTICE_TIMEOUT", "0");
    for (const QString &change : environment) {
        if (change.contains('='))
            env.insert(change.section('=', 0, 0), change.section('=', 1));
        else
            env.remove(change);
    }
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(LAUNCHER_PATH), arguments);
    Run result;
    if (!process.waitForStarted())
        return result;
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(30000))
        process.kill();
    process.waitForFinished();
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromLocal8Bit(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    result.err = QString::fromLocal8Bit(process.readAllStandardError()).split('\n', Qt::SkipEmptyParts);
    return result;
}

void tst_Launcher::runs_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QStringList>("out"); // what the trace shows, in order, from its first line
    QTest::addColumn<QString>("line"); // the one line the launcher or the module says on stderr

    const QString hide = "QPE/VideoApplication hideVodFullScreen()";
    const QString announce = "QPE/VideoManager pushAppExecuted()";
    const QString show = "QPE/VideoApplication showVodFullScreen()";
    const QStringList trace{"--trace", "--keys"};
    const QString plugin = QStringLiteral(WRONG_VERSION_PLUGIN);
    const QString qtPlugin = QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms/libqoffscreen.so";

    // Without --module the launcher finds the plugin built beside it.
    QTest::newRow("list") << QStringList{"--list"} << QByteArray() << QStringList() << 0 << QStringList{"videoPush"}
                          << QString();
    // The push view announces itself; closed at the end of the input, it gives the display back.
    QTest::newRow("push view") << trace << QByteArray() << QStringList() << 0 << QStringList{hide, announce, show}
                               << "IPC over the in-process transport (QPE_IPC_TRANSPORT=local)";
    // Volume 1 -> 2 -> 3 sends the level minus one; Back asks the video manager to stop.
    QTest::newRow("keys") << trace << QByteArray("Jump\nVolumeUp\nVolumeUp\nBack\n") << QStringList() << 0
                          << QStringList{hide, announce, "QPE/CallManager setVolume_vod(int) 00000001",
                                         "QPE/CallManager setVolume_vod(int) 00000002",
                                         "QPE/VideoManager stopUIPush()"}
                          << "qpe-launcher: unknown key name \"Jump\"";
    QTest::newRow("no display") << trace << QByteArray() << QStringList{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}
                                << 0 << QStringList{hide, announce} << "qpe-launcher: no display found, using the offscreen platform";
    QTest::newRow("D-Bus asked, no bus")
        << trace << QByteArray()
        << QStringList{"QPE_IPC_TRANSPORT=dbus", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent/bus"} << 0
        << QStringList{hide, announce}
        << "QPE_IPC_TRANSPORT=dbus but no D-Bus session bus is reachable; IPC falls back to the in-process transport";

    // Refused: one line, nothing launched, nothing sent.
    const auto refused = [&](const char *name, const QStringList &arguments, const QString &line) {
        QTest::newRow(name) << arguments + QStringList{"--trace"} << QByteArray() << QStringList() << 1
                            << QStringList() << line;
    };
    refused("missing module", {"--module", root.filePath("none/libvod.so")},
            "qpe-launcher: no plugin library at " + root.filePath("none/libvod.so"));
    refused("not a library", {"--module", root.filePath("notalibrary.so")},
            "qpe-launcher: cannot load " + root.filePath("notalibrary.so") + ": ");
    if (QFileInfo::exists(qtPlugin))
        refused("other plugin", {"--module", qtPlugin},
                "qpe-launcher: " + qtPlugin + " is not an application plugin: it has no verification data");
    refused("wrong verification", {"--module", plugin, "--list"},
            "qpe-launcher: " + plugin + " does not fit this platform: version is \"4.3.0\", expected \"4.2.3\"");
    refused("unknown key", {"--key", "vod"}, "qpe-launcher: unknown application key \"vod\" (the plugin has: videoPush)");
    refused("key and browser", {"--key", "videoPush", "--vod"}, "qpe-launcher: --key and --vod exclude each other");
    refused("bad quit-after", {"--quit-after", "soon"}, "qpe-launcher: --quit-after needs a number of milliseconds");
}

void tst_Launcher::runs()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, keys);
    QFETCH(QStringList, environment);
    QFETCH(int, exitCode);
    QFETCH(QStringList, out);
    QFETCH(QString, line);
    const Run result = run(arguments, keys, environment);
    QCOMPARE(result.exitCode == 0, exitCode == 0);
    QCOMPARE(result.out.mid(0, out.size()), out);
    // The launcher's own lines start with its name; the module's debug lines go to stderr too.
    QVERIFY2(line.isEmpty() || !result.err.filter(line).isEmpty(), qPrintable(result.err.join('\n')));
    QCOMPARE(result.err.filter("qpe-launcher: ").size(), qsizetype(line.startsWith("qpe-launcher: ")));
}

QTEST_GUILESS_MAIN(tst_Launcher)
#include "tst_launcher.moc"
