#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include "e2eprograms.h"

#include <memory>

// The launcher and the simulated video manager as separate programs on one
// D-Bus session bus (the test runs under dbus-run-session): the road that
// README's main job walks without GStreamer. The broadcast over D-Bus is the
// real video manager's road. Keys go to the
// launcher's standard input; what happens is read from the launcher's trace
// (every message the module sends), the simulator's log and the bus itself.
// LAUNCHER_PATH and SIMULATOR_PATH come from the build.

namespace {

// The simulator's one second lasts 50 ms.
const QString TimeScale = QStringLiteral("0.05");

} // namespace

class tst_DBusRoads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void vodRoad();

private:
    QProcessEnvironment environment() const;
    bool startSimulator(const QStringList &options);
    void startLauncher(const QStringList &options);
    QString dumps() const;
    // Waits until the launcher has handled every notification the bus carried so
    // far: a probe sent now reaches it after all of them.
    bool settle();
    // Waits for the notification on the bus, then for the launcher to have handled it.
    bool handled(const QString &member);
    void key(const char *name) { launcher->write(QByteArray(name) + '\n'); }

    QTemporaryDir root;
    std::unique_ptr<BusWatch> bus;
    std::unique_ptr<Program> simulator;
    std::unique_ptr<Program> launcher;
};

#define SETTLE(member) QVERIFY2(handled(QStringLiteral(member)), member " not seen on the bus or not handled")

void tst_DBusRoads::initTestCase()
{
    QVERIFY2(QDBusConnection::sessionBus().isConnected(),
             "no session bus: run this test under dbus-run-session (ctest does)");
    QVERIFY(root.isValid());
    for (const char *dir : {"tmp/status", "tmp/systemdb", "settings", "runtime"})
        QVERIFY(QDir(root.path()).mkpath(QLatin1String(dir)));
    QVERIFY(QFile::setPermissions(root.filePath(QStringLiteral("runtime")),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));

    QFile catalogue(root.filePath(QStringLiteral("catalogue.json")));
    QVERIFY(catalogue.open(QIODevice::WriteOnly));
    catalogue.write(R"({"groups": [
        {"name": "News", "parts": [{"name": "Today", "titles": [{"name": "Noon", "length": 60}]}]},
        {"name": "Drama", "parts": [
            {"name": "Season 1", "titles": [{"name": "Pilot", "length": 40}]},
            {"name": "Season 2", "titles": [{"name": "Opening", "length": 30},
                                            {"name": "Finale", "length": 3723.5}]}]}]})");
}

void tst_DBusRoads::init()
{
    bus = std::make_unique<BusWatch>(QDBusConnection::sessionBus());
    QVERIFY(bus->ok);
}

void tst_DBusRoads::cleanup()
{
    // E2E_DUMP=1 shows what every program said, also when the test passed.
    if (QTest::currentTestFailed() || qEnvironmentVariableIsSet("E2E_DUMP"))
        qInfo().noquote() << dumps();
    launcher.reset();
    simulator.reset();
    bus.reset();
}

QProcessEnvironment tst_DBusRoads::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("QPE_IPC_TRANSPORT"), QStringLiteral("dbus"));
    env.insert(QStringLiteral("QPE_ROOT"), root.path());
    env.insert(QStringLiteral("QPE_NOTICE_TIMEOUT"), QStringLiteral("0"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), root.filePath(QStringLiteral("settings")));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), root.filePath(QStringLiteral("runtime")));
    env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("VOD.debug=true"));
    return env;
}

QString tst_DBusRoads::dumps() const
{
    QString text;
    for (const Program *p : {launcher.get(), simulator.get()})
        if (p)
            text += p->dump();
    if (bus)
        text += QStringLiteral("--- bus:\n") + bus->lines.join(QLatin1Char('\n'));
    return text;
}

bool tst_DBusRoads::startSimulator(const QStringList &options)
{
    simulator = std::make_unique<Program>(
        QStringLiteral("videomanager-sim"), QStringLiteral(SIMULATOR_PATH),
        QStringList{QStringLiteral("--time-scale"), TimeScale, QStringLiteral("--catalogue"),
                    root.filePath(QStringLiteral("catalogue.json"))} + options,
        environment());
    // It says it is ready once it listens.
    return waitForLine(simulator->out, QStringLiteral("-- ready:")) >= 0;
}

void tst_DBusRoads::startLauncher(const QStringList &options)
{
    // Standard input stays open: the run ends when the module's window closes.
    launcher = std::make_unique<Program>(QStringLiteral("qpe-launcher"), QStringLiteral(LAUNCHER_PATH),
                                         QStringList{QStringLiteral("--trace"), QStringLiteral("--keys")} + options,
                                         environment());
}

bool tst_DBusRoads::settle()
{
    return launcherSettled(*launcher);
}

bool tst_DBusRoads::handled(const QString &member)
{
    return waitForLine(bus->lines, QStringLiteral("^QPE_2FVideoApplication ") + QRegularExpression::escape(member))
        >= 0
        && settle();
}



// Three levels down, set up, play, pause, resume, seek, stop; the browser is
// back at the titles (two Backs reach the groups, which are asked for again).
void tst_DBusRoads::vodRoad()
{
    QElapsedTimer clock;
    clock.start();
    QVERIFY(startSimulator({}));
    startLauncher({QStringLiteral("--vod")});

    SETTLE("getGroupList_28_29");
    key("Down");
    key("Select");
    key("Down");
    key("Select");
    WAIT_LINE(contents, launcher->out, QStringLiteral("^QPE/VideoManager requestContents\\(int,int\\) 0000000100000001$"),
              0, 5000);
    SETTLE("getContentsList_28_29");
    key("Down");
    key("Select");
    WAIT_LINE(setup, launcher->out, QStringLiteral("^QPE/VideoManager setupVod\\(int\\) 00000002$"), contents, 5000);
    SETTLE("setupOKVod_28int_2Cint_2Cint_2Cfloat_2Cfloat_2Cfloat_29");
    key("Context1");
    SETTLE("startOKVod_28_29");
    WAIT_LINE(start, simulator->out, QStringLiteral("<- QPE/VideoManager startVod\\(QString\\) \"0\"$"), 0, 5000);
    // Pause once the player has had two seconds of reports (2.0f is 40000000).
    WAIT_LINE(reported, bus->lines, QStringLiteral("^QPE_2FVideoApplication currentTime_28float_29 40000000$"), 0,
              5000);
    QVERIFY(settle());

    key("Select");
    WAIT_LINE(pause, launcher->out, QStringLiteral("^QPE/VideoManager pauseVod\\(int\\) 00000000$"), setup, 5000);
    SETTLE("pauseOKVod_28float_29");
    key("Select");
    WAIT_LINE(resume, launcher->out, QStringLiteral("^QPE/VideoManager resumeVod\\(QString\\) "), pause, 5000);
    // It resumes where the pause left it.
    WAIT_LINE(paused, simulator->out, QStringLiteral("-> QPE/VideoApplication pauseOKVod\\(float\\) "), start, 5000);
    const QString position = simulator->out.at(paused).section(QLatin1Char(' '), -1);
    QVERIFY2(position.toDouble() >= 2, qPrintable(position));
    WAIT_LINE(resumedAt, simulator->out,
              QStringLiteral("<- QPE/VideoManager resumeVod\\(QString\\) \"%1\"$").arg(position), paused, 5000);
    SETTLE("resumedOKVod_28_29");

    // Two forward presses make one seek of 10 s, a second after the last press.
    key("Context1");
    key("Context1");
    WAIT_LINE(seek, launcher->out, QStringLiteral("^QPE/VideoManager forwardVod\\(QString\\) "), resume, 5000);
    WAIT_LINE(moved, simulator->out, QStringLiteral("-- position now \\d+(\\.\\d+)? of 3723.5$"), resumedAt, 5000);

    key("Back");
    WAIT_LINE(stop, launcher->out, QStringLiteral("^QPE/VideoManager stopVod\\(\\)$"), seek, 5000);
    SETTLE("endOKVod_28_29");
    key("Back");
    key("Back");
    WAIT_LINE(again, launcher->out, QStringLiteral("^QPE/VideoManager requestGroupList\\(\\)$"), stop, 5000);
    QCOMPARE(launcher->out.mid(stop + 1, again - stop), QStringList{QStringLiteral("QPE/VideoManager requestGroupList()")});

    launcher->closeInput();
    QTRY_VERIFY_WITH_TIMEOUT(!launcher->running(), 10000);
    QCOMPARE(launcher->exitCode(), 0);
    qInfo("VOD road: %lld ms", qint64(clock.elapsed()));
}


QTEST_GUILESS_MAIN(tst_DBusRoads)
#include "tst_dbusroads.moc"
