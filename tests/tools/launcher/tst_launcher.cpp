#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// The launcher program as people run it. LAUNCHER_PATH, MODULE_PATH and
// WRONG_VERSION_PLUGIN come from the build.
class tst_Launcher : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void list_data();
    void list();
    void refusals_data();
    void refusals();
    void pushViewStartsAndStopsAtEndOfInput_data();
    void pushViewStartsAndStopsAtEndOfInput();
    void keysReachTheFocusedWindow();
    void grabShowsTheDisplay();
    void fallbacks_data();
    void fallbacks();

private:
    struct Run
    {
        int exitCode = -1;
        QProcess::ExitStatus exitStatus = QProcess::CrashExit;
        QStringList out;
        QStringList err;

        // The launcher's own lines; the module's debug lines go to stderr too.
        QStringList launcherErrors() const
        {
            return err.filter(QRegularExpression(QStringLiteral("^qpe-launcher: ")));
        }
    };
    Run run(const QStringList &arguments, const QByteArray &input = QByteArray(), bool closeInput = true,
            QProcessEnvironment environment = QProcessEnvironment());
    QProcessEnvironment environment() const;

    QTemporaryDir root;
};

void tst_Launcher::initTestCase()
{
    QVERIFY(root.isValid());
    for (const char *dir : {"tmp/status", "tmp/systemdb", "settings", "runtime"})
        QVERIFY(QDir(root.path()).mkpath(QLatin1String(dir)));
    QVERIFY(QFile::setPermissions(root.filePath(QStringLiteral("runtime")),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(QFileInfo(QStringLiteral(LAUNCHER_PATH)).isExecutable());
    QVERIFY(QFileInfo(QStringLiteral(MODULE_PATH)).isFile());
}

QProcessEnvironment tst_Launcher::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("QPE_ROOT"), root.path());
    // Settings of the module (the sound volume) stay out of the user's home.
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), root.filePath(QStringLiteral("settings")));
    // The in-process transport, whatever session bus the machine has.
    env.insert(QStringLiteral("QPE_IPC_TRANSPORT"), QStringLiteral("local"));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), root.filePath(QStringLiteral("runtime")));
    // A notice must never wait for a user.
    env.insert(QStringLiteral("QPE_NOTICE_TIMEOUT"), QStringLiteral("0"));
    return env;
}

tst_Launcher::Run tst_Launcher::run(const QStringList &arguments, const QByteArray &input, bool closeInput,
                                    QProcessEnvironment env)
{
    QProcess process;
    process.setProcessEnvironment(env.isEmpty() ? environment() : env);
    process.start(QStringLiteral(LAUNCHER_PATH), arguments);
    Run result;
    if (!process.waitForStarted())
        return result;
    if (!input.isEmpty())
        process.write(input);
    if (closeInput)
        process.closeWriteChannel();
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
    }
    result.exitCode = process.exitCode();
    result.exitStatus = process.exitStatus();
    result.out = QString::fromLocal8Bit(process.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    result.err = QString::fromLocal8Bit(process.readAllStandardError()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return result;
}

void tst_Launcher::list_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("qt_plugin_instance") << QStringList{QStringLiteral("--list")};
    QTest::newRow("QPluginLoader") << QStringList{QStringLiteral("--list"), QStringLiteral("--plugin-loader")};
}

void tst_Launcher::list()
{
    // Without --module the launcher finds the plugin built beside it.
    QFETCH(QStringList, arguments);
    const Run result = run(arguments);
    QCOMPARE(result.exitStatus, QProcess::NormalExit);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out, QStringList{QStringLiteral("videoPush")});
    QCOMPARE(result.launcherErrors(), QStringList());
}

void tst_Launcher::refusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");

    const QString missing = root.filePath(QStringLiteral("nothing/libvod.so"));
    QTest::newRow("missing module") << QStringList{QStringLiteral("--module"), missing}
                                    << QStringLiteral("qpe-launcher: no plugin library at %1").arg(missing);

    const QString text = root.filePath(QStringLiteral("notalibrary.so"));
    QFile file(text);
    if (file.open(QIODevice::WriteOnly))
        file.write("not a library\n");
    file.close();
    QTest::newRow("not a library") << QStringList{QStringLiteral("--module"), text}
                                   << QStringLiteral("qpe-launcher: cannot load %1: ").arg(text);

    // A Qt plugin, but not an application plugin of this platform.
    const QString qtPlugin =
        QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms/libqoffscreen.so");
    QTest::newRow("other plugin")
        << QStringList{QStringLiteral("--module"), qtPlugin}
        << QStringLiteral("qpe-launcher: %1 is not an application plugin: it has no verification data").arg(qtPlugin);

    QTest::newRow("wrong verification")
        << QStringList{QStringLiteral("--module"), QStringLiteral(WRONG_VERSION_PLUGIN), QStringLiteral("--list")}
        << QStringLiteral("qpe-launcher: %1 does not fit this platform: version is \"4.3.0\", expected \"4.2.3\"")
               .arg(QStringLiteral(WRONG_VERSION_PLUGIN));

    QTest::newRow("unknown key")
        << QStringList{QStringLiteral("--key"), QStringLiteral("vod")}
        << QStringLiteral("qpe-launcher: unknown application key \"vod\" (the plugin has: videoPush)");
    QTest::newRow("key and browser") << QStringList{QStringLiteral("--key"), QStringLiteral("videoPush"),
                                                    QStringLiteral("--vod")}
                                     << QStringLiteral("qpe-launcher: --key and --vod exclude each other");
    QTest::newRow("bad quit-after") << QStringList{QStringLiteral("--quit-after"), QStringLiteral("soon")}
                                    << QStringLiteral("qpe-launcher: --quit-after needs a number of milliseconds");
}

void tst_Launcher::refusals()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    if (!QFileInfo::exists(arguments.value(1)) && QTest::currentDataTag() == QLatin1String("other plugin"))
        QSKIP("Qt's offscreen platform plugin is not where QLibraryInfo says");

    const Run result = run(arguments + QStringList{QStringLiteral("--trace")});
    QCOMPARE(result.exitStatus, QProcess::NormalExit);
    QVERIFY(result.exitCode != 0);
    QCOMPARE(result.launcherErrors().size(), 1);
    QVERIFY2(result.launcherErrors().at(0).startsWith(message), qPrintable(result.err.join(QLatin1Char('\n'))));
    // Nothing was launched, so nothing was sent.
    QCOMPARE(result.out, QStringList());
}

void tst_Launcher::pushViewStartsAndStopsAtEndOfInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("default key") << QStringList();
    QTest::newRow("QPluginLoader") << QStringList{QStringLiteral("--plugin-loader")};
}

void tst_Launcher::pushViewStartsAndStopsAtEndOfInput()
{
    QFETCH(QStringList, arguments);
    const Run result = run(arguments + QStringList{QStringLiteral("--trace"), QStringLiteral("--keys")});
    QCOMPARE(result.exitStatus, QProcess::NormalExit);
    QCOMPARE(result.exitCode, 0);
    // The push view announces itself; closed by the launcher at the end, it
    // gives the display back.
    QCOMPARE(result.out, (QStringList{QStringLiteral("QPE/VideoApplication hideVodFullScreen()"),
                                      QStringLiteral("QPE/VideoManager pushAppExecuted()"),
                                      QStringLiteral("QPE/VideoApplication showVodFullScreen()")}));
    QCOMPARE(result.launcherErrors(), QStringList());
    // The plugin's IPC layer was asked to pick its transport, and said which.
    QVERIFY2(!result.err.filter(QStringLiteral("IPC over the in-process transport (QPE_IPC_TRANSPORT=local)")).isEmpty(),
             qPrintable(result.err.join(QLatin1Char('\n'))));
}

void tst_Launcher::keysReachTheFocusedWindow()
{
    // An unknown name is reported and skipped.
    const Run result = run({QStringLiteral("--trace"), QStringLiteral("--keys")}, "Jump\nVolumeUp\nVolumeUp\nBack\n");
    QCOMPARE(result.exitStatus, QProcess::NormalExit);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.launcherErrors().size(), 1);
    QVERIFY(result.launcherErrors().at(0).startsWith(QStringLiteral("qpe-launcher: unknown key name \"Jump\"")));

    // Volume 1 -> 2 -> 3 sends the level minus one; Back asks the video manager to stop.
    const QStringList expected{
        QStringLiteral("QPE/CallManager setVolume_vod(int) 00000001"),
        QStringLiteral("QPE/CallManager setVolume_vod(int) 00000002"),
        QStringLiteral("QPE/VideoManager stopUIPush()"),
    };
    const qsizetype first = result.out.indexOf(expected.at(0));
    QVERIFY2(first >= 0, qPrintable(result.out.join(QLatin1Char('\n'))));
    QCOMPARE(result.out.mid(first, 3), expected);
}

// --grab writes the display once --quit-after ends the run; --lang picks the
// texts: the push view's title is drawn in the chosen language.
void tst_Launcher::grabShowsTheDisplay()
{
    QTemporaryDir out;
    QList<QImage> shots;
    for (const QString &locale : {QStringLiteral("en_US"), QStringLiteral("ko_KR")}) {
        const QString file = out.filePath(locale + QStringLiteral(".png"));
        // The push view's video area opens 500 ms after it is shown.
        const Run result = run({"--quit-after", "1200", "--grab", file, "--lang", locale}, QByteArray(), false);
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.launcherErrors(), QStringList());
        shots.append(QImage(file));
        QCOMPARE(shots.constLast().size(), QSize(480, 272));
    }
    // The test picture's first bar, light grey, shows through the small player's video area.
    QCOMPARE(shots.at(0).pixel(30, 140), qRgb(235, 235, 235));
    QVERIFY(shots.at(0).copy(0, 0, 480, 31) != shots.at(1).copy(0, 0, 480, 31));
}

void tst_Launcher::fallbacks_data()
{
    QTest::addColumn<QStringList>("removed");
    QTest::addColumn<QStringList>("set");
    QTest::addColumn<QString>("line");
    QTest::newRow("no display") << QStringList{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"} << QStringList()
                                << "qpe-launcher: no display found, using the offscreen platform";
    QTest::newRow("D-Bus asked, no bus")
        << QStringList() << QStringList{"QPE_IPC_TRANSPORT=dbus", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent/bus"}
        << "QPE_IPC_TRANSPORT=dbus but no D-Bus session bus is reachable; IPC falls back to the in-process transport";
}

// What is missing is said in one line, and the push view starts anyway.
void tst_Launcher::fallbacks()
{
    QFETCH(QStringList, removed);
    QFETCH(QStringList, set);
    QFETCH(QString, line);
    QProcessEnvironment env = environment();
    for (const QString &name : removed)
        env.remove(name);
    for (const QString &pair : set)
        env.insert(pair.section(QLatin1Char('='), 0, 0), pair.section(QLatin1Char('='), 1));
    const Run result = run({QStringLiteral("--trace"), QStringLiteral("--keys")}, QByteArray(), true, env);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.err.filter(line).size(), 1);
    QVERIFY(result.out.contains(QStringLiteral("QPE/VideoManager pushAppExecuted()")));
}

QTEST_GUILESS_MAIN(tst_Launcher)
#include "tst_launcher.moc"
