#include "messaging/messagedata.h"
#include "testenvironment.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <memory>

// The launcher and a video manager as programs on one D-Bus session bus (the
// test runs under dbus-run-session): the simulated one, and the real one with a
// clip made here and a broadcast that scripts/broadcast.sh sends to 127.0.0.1.
// Each road runs against both. What happens is read from the bus (with the time
// each message was seen), the launcher's trace and the video manager's log;
// what the display shows from the launcher's --grab. LAUNCHER_PATH,
// SIMULATOR_PATH, VIDEOMANAGER_PATH, BROADCAST_SCRIPT, GST_LAUNCH and
// GST_INSPECT come from the build (the last four empty without GStreamer).

namespace {

const QString Interface = QStringLiteral("com.trolltech.qtopia");

// A program whose output is collected line by line as it comes; asked to end
// (SIGTERM) when the test is done with it.
class Program : public QObject
{
public:
    Program(const QString &name, const QString &path, const QStringList &arguments, const QProcessEnvironment &env)
        : name(name)
    {
        process.setProcessEnvironment(env);
        connect(&process, &QProcess::readyReadStandardOutput, this,
                [this] { take(process.readAllStandardOutput(), outPart, out); });
        connect(&process, &QProcess::readyReadStandardError, this,
                [this] { take(process.readAllStandardError(), errPart, err); });
        process.start(path, arguments);
    }
    ~Program() override { stop(); }

    // Ends the program as a signal does; true if it ended with code 0.
    bool stop()
    {
        if (process.state() != QProcess::NotRunning) {
            process.terminate();
            if (!process.waitForFinished(10000 * Slowdown)) {
                process.kill();
                process.waitForFinished(5000);
                return false;
            }
        }
        return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }
    void write(const QByteArray &text) { process.write(text); }
    void closeInput() { process.closeWriteChannel(); }
    bool running() const { return process.state() != QProcess::NotRunning; }
    int exitCode() const { return process.exitCode(); }
    // Both outputs, for a failed test's report.
    QString dump() const
    {
        return QStringLiteral("--- %1 stdout:\n%2\n--- %1 stderr:\n%3\n").arg(name, out.join('\n'), err.join('\n'));
    }

    QString name;
    QProcess process;
    QStringList out;
    QStringList err;

private:
    static void take(const QByteArray &bytes, QByteArray &part, QStringList &lines)
    {
        part += bytes;
        qsizetype end;
        while ((end = part.indexOf('\n')) >= 0) {
            lines << QString::fromUtf8(part.left(end));
            part.remove(0, end + 1);
        }
    }

    QByteArray outPart;
    QByteArray errPart;
};

// The index of the first line from `from` on that matches, waiting for it (the
// deadline stretched for the sanitizers' build); -1 when none came in time.
qsizetype waitForLine(const QStringList &lines, const QString &pattern, qsizetype from = 0, int timeoutMs = 10000)
{
    const QRegularExpression re(pattern);
    QDeadlineTimer deadline(qint64(timeoutMs) * Slowdown);
    for (;;) {
        for (qsizetype i = from; i < lines.size(); ++i) {
            if (re.match(lines.at(i)).hasMatch())
                return i;
        }
        if (deadline.hasExpired())
            return -1;
        QTest::qWait(10);
    }
}

// Waits until the launcher has handled every notification the bus carried so
// far: a message its transport refuses (a text where it takes a byte array),
// sent now, is refused (and says so) after all of them.
bool launcherSettled(const Program &launcher)
{
    const QRegularExpression refused(QStringLiteral("ignored \"?e2eProbe\\(\\)\"?"));
    const qsizetype before = launcher.err.filter(refused).size();
    QDBusMessage probe = QDBusMessage::createSignal(QStringLiteral("/com/trolltech/qtopia/QPE_2FVideoApplication"),
                                                    Interface, QStringLiteral("e2eProbe_28_29"));
    probe << QStringLiteral("probe");
    if (!QDBusConnection::sessionBus().send(probe))
        return false;
    QDeadlineTimer deadline(10000 * Slowdown);
    while (launcher.err.filter(refused).size() == before) {
        if (deadline.hasExpired())
            return false;
        QTest::qWait(10);
    }
    return true;
}

// A failed wait shows what it waited for; cleanup() shows the programs' output.
#define WAIT_LINE(index, lines, pattern, from, timeout)                                                        \
    const qsizetype index = waitForLine(lines, pattern, from, timeout);                                         \
    QVERIFY2(index >= 0, qPrintable(QStringLiteral("no line matching %1").arg(pattern)))

// Every signal of the module's interface on the bus, in the bus's order, as
// "path member hex", with its bytes and the time it was seen.
class BusWatch : public QObject
{
    Q_OBJECT

public:
    explicit BusWatch(QDBusConnection bus)
        : bus(bus)
    {
        clock.start();
        // QDBusConnection offers only the string form of the slot.
        ok = bus.connect(QString(), QString(), Interface, QString(), this, SLOT(seen(QDBusMessage)));
    }
    ~BusWatch() override { bus.disconnect(QString(), QString(), Interface, QString(), this, SLOT(seen(QDBusMessage))); }

    bool ok = false;
    QStringList lines;
    QList<QByteArray> data;
    QList<qint64> times; // milliseconds since the watch began

private slots:
    void seen(const QDBusMessage &message)
    {
        const QByteArray bytes =
            message.arguments().isEmpty() ? QByteArray() : message.arguments().constFirst().toByteArray();
        QString line = message.path().section('/', -1) + ' ' + message.member();
        if (!bytes.isEmpty())
            line += ' ' + QString::fromLatin1(bytes.toHex());
        lines << line;
        data << bytes;
        times << clock.elapsed();
    }

private:
    QDBusConnection bus;
    QElapsedTimer clock;
};

// The clip: five seconds of one colour, 64 x 48, far smaller than any video
// window, so that only a picture scaled to the window fills it. The catalogue
// says seven: the simulator plays what the catalogue says, the real video
// manager what the file holds.
constexpr double ClipSeconds = 5.0;
constexpr double CatalogueSeconds = 7.0;
constexpr QRgb ClipColour = 0xff96d228;
// The broadcast's colour, in pictures of the clip's size.
constexpr QRgb StreamColour = 0xffc88c14;
// How late a message may be seen on a busy machine (the sanitizers' build
// runs our programs several times slower; GStreamer's threads do not).
constexpr double Jitter = Slowdown > 1 ? 1.0 : 0.5;

const QString VodTime = QStringLiteral("^QPE_2FVideoApplication currentTime_28float_29 ");
const QString PushTime = QStringLiteral("^QPE_2FPushApplication currentTime_28float_29 ");

bool near(QRgb a, QRgb b)
{
    constexpr int tolerance = 24;
    return qAbs(qRed(a) - qRed(b)) <= tolerance && qAbs(qGreen(a) - qGreen(b)) <= tolerance
        && qAbs(qBlue(a) - qBlue(b)) <= tolerance;
}

float floatAt(const QByteArray &bytes, int offset)
{
    const quint32 bits = qFromBigEndian<quint32>(bytes.constData() + offset);
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// A UDP port on 127.0.0.1 that nobody uses now.
int freeUdpPort()
{
    const int fd = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    int port = 0;
    if (bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0
        && getsockname(fd, reinterpret_cast<sockaddr *>(&address), &size) == 0)
        port = ntohs(address.sin_port);
    close(fd);
    return port;
}

bool signal(const char *channel, const char *member)
{
    return QDBusConnection::sessionBus().send(QDBusMessage::createSignal(
        QStringLiteral("/com/trolltech/qtopia/") + QLatin1String(channel), Interface, QLatin1String(member)));
}

} // namespace

class tst_DBusRoads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void vodRoad_data() { managers(); }
    void vodRoad();
    void pushRoad_data() { managers(); }
    void pushRoad();
    void picture_data();
    void picture();

private:
    void managers();
    QProcessEnvironment environment() const;
    bool startManager(bool real, const QStringList &options = QStringList());
    void startLauncher(const QStringList &options);
    void startSender();
    void key(const char *name) { launcher->write(QByteArray(name) + '\n'); }
    // From the groups to the clip playing in the small player.
    bool playClip();

    QTemporaryDir root;
    QString noRealManager; // why the real video manager cannot play here
    int pushPort = 0;
    std::unique_ptr<BusWatch> bus;
    std::unique_ptr<Program> manager;
    std::unique_ptr<Program> launcher;
    std::unique_ptr<Program> sender;
};

void tst_DBusRoads::managers()
{
    QTest::addColumn<bool>("real");
    QTest::newRow("simulator") << false;
    QTest::newRow("real video manager") << true;
}

void tst_DBusRoads::initTestCase()
{
    QVERIFY2(QDBusConnection::sessionBus().isConnected(),
             "no session bus: run this test under dbus-run-session (ctest does)");
    for (const char *dir : {"tmp/status", "tmp/systemdb", "settings", "runtime"})
        QVERIFY(QDir(root.path()).mkpath(QLatin1String(dir)));
    QVERIFY(QFile::setPermissions(root.filePath("runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QFile catalogue(root.filePath("catalogue.json"));
    QVERIFY(catalogue.open(QIODevice::WriteOnly));
    catalogue.write(R"({"groups": [{"name": "Cards", "parts": [{"name": "Colour", "titles": [
        {"name": "Lime", "length": 7, "file": "clip.ogg"}]}]}]})");
    catalogue.close();

    // Without GStreamer's elements nothing real can play: the one reason to skip.
    QProcess check;
    check.start(QStringLiteral(VIDEOMANAGER_PATH), {"--check"});
    if (!check.waitForFinished(30000) || check.exitCode() != 0) {
        noRealManager = "the video manager cannot play here: " + check.readAllStandardOutput();
        return;
    }
    if (QStringLiteral(GST_LAUNCH).isEmpty() || QStringLiteral(GST_INSPECT).isEmpty()) {
        noRealManager = "gst-launch-1.0 or gst-inspect-1.0 is missing (Debian: gstreamer1.0-tools)";
        return;
    }
    for (const char *element : {"videotestsrc", "audiotestsrc", "theoraenc", "vorbisenc", "oggmux", "vp8enc",
                                "rtpvp8pay", "udpsink", "videorate"}) {
        if (QProcess::execute(QStringLiteral(GST_INSPECT), {"--exists", QLatin1String(element)}) != 0) {
            noRealManager = QStringLiteral("GStreamer has no %1 to make the clip or the broadcast").arg(element);
            return;
        }
    }
    const QString make =
        QStringLiteral("-q -e videotestsrc num-buffers=%1 pattern=solid-color foreground-color=%2 "
                       "! video/x-raw,width=64,height=48,framerate=25/1 ! theoraenc keyframe-freq=25 ! mux. "
                       "audiotestsrc num-buffers=%3 samplesperbuffer=882 ! audio/x-raw,rate=44100,channels=1 "
                       "! audioconvert ! vorbisenc ! mux. oggmux name=mux ! filesink location=%4")
            .arg(int(ClipSeconds * 25))
            .arg(ClipColour)
            .arg(int(ClipSeconds * 50))
            .arg(root.filePath("clip.ogg"));
    QCOMPARE(QProcess::execute(QStringLiteral(GST_LAUNCH), make.split(' ')), 0);
}

void tst_DBusRoads::init()
{
    pushPort = freeUdpPort();
    QVERIFY(pushPort > 0);
    bus = std::make_unique<BusWatch>(QDBusConnection::sessionBus());
    QVERIFY(bus->ok);
}

void tst_DBusRoads::cleanup()
{
    // E2E_DUMP=1 shows what every program said, also when the test passed.
    QString said;
    for (const Program *p : {launcher.get(), manager.get(), sender.get()}) {
        if (p)
            said += p->dump();
    }
    if (bus)
        said += "--- bus:\n" + bus->lines.join('\n');
    if (QTest::currentTestFailed() || qEnvironmentVariableIsSet("E2E_DUMP"))
        qInfo().noquote() << said;
    sender.reset();
    launcher.reset();
    // Asked to end, the video manager ends cleanly (and without a sanitizer finding).
    const bool clean = !manager || manager->stop();
    manager.reset();
    bus.reset();
    QVERIFY2(clean, qPrintable(said));
}

QProcessEnvironment tst_DBusRoads::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("QPE_IPC_TRANSPORT", "dbus");
    env.insert("QPE_ROOT", root.path());
    env.insert("QPE_NOTICE_TIMEOUT", "0");
    env.insert("QPE_VIDEO_PLANE", QStringLiteral("/tst-dbusroads-%1").arg(getpid()));
    env.insert("XDG_CONFIG_HOME", root.filePath("settings"));
    env.insert("XDG_RUNTIME_DIR", root.filePath("runtime"));
    return env;
}

bool tst_DBusRoads::startManager(bool real, const QStringList &options)
{
    const QStringList catalogue{"--catalogue", root.filePath("catalogue.json")};
    if (real) {
        manager = std::make_unique<Program>(
            "videomanager", QStringLiteral(VIDEOMANAGER_PATH),
            catalogue + QStringList{"--push-port", QString::number(pushPort), "--push-timeout", "1", "--audio-sink",
                                    "fakesink sync=true"},
            environment());
    } else {
        // Simulated seconds last real ones, so that both video managers keep the same time.
        manager = std::make_unique<Program>("videomanager-sim", QStringLiteral(SIMULATOR_PATH),
                                            catalogue + QStringList{"--time-scale", "1"} + options, environment());
    }
    // It says it is ready once it listens.
    return waitForLine(manager->out, "-- ready:") >= 0;
}

void tst_DBusRoads::startLauncher(const QStringList &options)
{
    // Standard input stays open: the run ends when the module's window closes.
    launcher = std::make_unique<Program>("qpe-launcher", QStringLiteral(LAUNCHER_PATH),
                                         QStringList{"--trace", "--keys"} + options, environment());
}

void tst_DBusRoads::startSender()
{
    sender = std::make_unique<Program>(
        "broadcast.sh", "/bin/bash",
        QStringList{QStringLiteral(BROADCAST_SCRIPT), "--port", QString::number(pushPort), "--colour",
                    QStringLiteral("0x%1").arg(StreamColour, 8, 16, QLatin1Char('0')), "--size", "64x48"},
        environment());
}

bool tst_DBusRoads::playClip()
{
    const auto handled = [this](const QString &member) {
        return waitForLine(bus->lines, "^QPE_2FVideoApplication " + member) >= 0 && launcherSettled(*launcher);
    };
    if (!handled("getGroupList_28_29"))
        return false;
    key("Select");
    key("Select");
    if (!handled("getContentsList_28_29"))
        return false;
    key("Select");
    if (!handled("setupOKVod_28"))
        return false;
    key("Context1");
    return handled("startOKVod_28_29");
}

// Set up with the title's duration, reports in real time, a pause and a resume
// where it left off, a seek back that lands where asked, and the end, found by
// the video manager itself, which closes the player.
void tst_DBusRoads::vodRoad()
{
    QFETCH(bool, real);
    if (real && !noRealManager.isEmpty())
        QSKIP(qPrintable(noRealManager));
    const double length = real ? ClipSeconds : CatalogueSeconds;
    QVERIFY(startManager(real));
    startLauncher({"--vod"});
    QVERIFY(playClip());

    WAIT_LINE(setup, bus->lines, "^QPE_2FVideoApplication setupOKVod_28", 0, 5000);
    const QByteArray answer = bus->data.at(setup);
    QCOMPARE(answer.size(), 24);
    const double duration = floatAt(answer, 16) - floatAt(answer, 12);
    QVERIFY2(qAbs(duration - length) <= 0.1, qPrintable(QString::number(duration)));

    // Two reports a second apart say that a second of the title has played.
    WAIT_LINE(first, bus->lines, VodTime, setup, 5000);
    WAIT_LINE(second, bus->lines, VodTime, first + 1, 5000);
    const double played = floatAt(bus->data.at(second), 0) - floatAt(bus->data.at(first), 0);
    const double passed = (bus->times.at(second) - bus->times.at(first)) / 1000.0;
    QVERIFY2(played > 0.5 && qAbs(played - passed) <= Jitter,
             qPrintable(QStringLiteral("%1 s played in %2 s").arg(played).arg(passed)));

    // Paused and resumed at the position the pause reported, as text.
    QVERIFY(launcherSettled(*launcher));
    key("Select");
    WAIT_LINE(paused, bus->lines, "^QPE_2FVideoApplication pauseOKVod_28float_29 ", second, 5000);
    QVERIFY(launcherSettled(*launcher));
    key("Select");
    WAIT_LINE(resume, bus->lines, "^QPE_2FVideoManager resumeVod_28QString_29 ", paused, 5000);
    const QString position = QString::number(double(floatAt(bus->data.at(paused), 0)), 'g', 6);
    QCOMPARE(bus->data.at(resume), messageData(position));
    WAIT_LINE(resumed, bus->lines, "^QPE_2FVideoApplication resumedOKVod_28_29$", resume, 5000);

    // Back by five seconds, a second after the key: the player asks for 1 s.
    // (Sooner than a report within a second of the end: that arms the
    // player's own end guard, which would stop the title before its end.)
    key("Context2");
    WAIT_LINE(seek, bus->lines, "^QPE_2FVideoManager reverseVod_28QString_29 ", resumed, 5000);
    QCOMPARE(bus->data.at(seek), QByteArray::fromHex("000000020031")); // "1"
    // The first report from the new place (not a second on from the last one):
    // at 1 s at least, and no further than the time since the request allows.
    qsizetype last = seek;
    while (last > 0 && !bus->lines.at(last).contains(QRegularExpression(VodTime)))
        --last;
    QVERIFY(last > setup);
    const float before = floatAt(bus->data.at(last), 0);
    qsizetype after = seek;
    float reported = before + 1;
    while (reported >= before + 0.5f) {
        after = waitForLine(bus->lines, VodTime, after + 1, 5000);
        QVERIFY2(after >= 0, "no report from the new place");
        reported = floatAt(bus->data.at(after), 0);
    }
    const double latest = 1.0 + (bus->times.at(after) - bus->times.at(seek)) / 1000.0;
    QVERIFY2(reported >= 1.0 - Jitter && reported <= latest + Jitter,
             qPrintable(QStringLiteral("at %1 s, at most %2 s expected").arg(reported).arg(latest)));

    // The rest plays in real time, then the end comes by itself: the video
    // manager reached the end before any stop reached it. (The player answers
    // the last report, at the total time, with "stopVod()", which may pass the
    // end on the bus.) The player closes and says so.
    WAIT_LINE(end, bus->lines, "^QPE_2FVideoApplication endOKVod_28_29$", after, 15000);
    const double rest = (bus->times.at(end) - bus->times.at(seek)) / 1000.0;
    QVERIFY2(rest >= length - 1.0 - Jitter && rest <= length - 1.0 + 2 * Jitter, qPrintable(QString::number(rest)));
    WAIT_LINE(titleEnded, manager->out, "-- end of the title$", 0, 5000);
    QCOMPARE(manager->out.mid(0, titleEnded).filter("<- QPE/VideoManager stopVod()").size(), 0);
    WAIT_LINE(stop, launcher->out, "^QPE/VideoManager stopVod\\(\\)$", 0, 5000);

    launcher->closeInput();
    QTRY_VERIFY_WITH_TIMEOUT(!launcher->running(), 10000 * Slowdown);
    QCOMPARE(launcher->exitCode(), 0);
}

// Pictures arrive and are reported once a second; a call pauses and resumes
// the stream; when the broadcast ends, the viewer closes and the launcher ends.
void tst_DBusRoads::pushRoad()
{
    QFETCH(bool, real);
    if (real && !noRealManager.isEmpty())
        QSKIP(qPrintable(noRealManager));
    // The simulated broadcast ends by itself, after the call.
    QVERIFY(startManager(real, {"--multicast-end-at", "7"}));
    startLauncher({});
    WAIT_LINE(play, bus->lines, "^QPE_2FVideoManager playPush_28QString_29 ", 0, 10000);
    if (real)
        startSender();

    WAIT_LINE(first, bus->lines, PushTime, play, 10000);
    WAIT_LINE(second, bus->lines, PushTime, first + 1, 5000);
    QCOMPARE(floatAt(bus->data.at(second), 0) - floatAt(bus->data.at(first), 0), 1.0f);
    const double passed = (bus->times.at(second) - bus->times.at(first)) / 1000.0;
    QVERIFY2(qAbs(passed - 1.0) <= Jitter, qPrintable(QString::number(passed)));

    QVERIFY(signal("QPE_2FPushApplication", "startcall_28_29"));
    WAIT_LINE(paused, bus->lines, "^QPE_2FPushApplication pauseOKPush_28_29$", second, 5000);
    QVERIFY(signal("QPE_2FPushApplication", "stopcall_28_29"));
    WAIT_LINE(resumed, bus->lines, "^QPE_2FVideoManager resumePush_28_29$", paused, 5000);
    QCOMPARE(bus->lines.mid(paused, resumed - paused).filter(QRegularExpression(PushTime)).size(), 0);
    WAIT_LINE(again, bus->lines, PushTime, resumed, 5000);

    QElapsedTimer sinceStop;
    sinceStop.start();
    if (real)
        sender->stop();
    WAIT_LINE(end, bus->lines, "^QPE_2FPushApplication endOKMulticastPush_28_29$", again, 10000);
    // The end of the pictures ends it (--push-timeout), not the viewer's 30-second watchdog.
    QVERIFY2(sinceStop.elapsed() < 5000 * Slowdown, qPrintable(QString::number(sinceStop.elapsed())));
    WAIT_LINE(stop, launcher->out, "^QPE/VideoManager stopMulticastPush\\(\\)$", 0, 5000);
    QTRY_VERIFY_WITH_TIMEOUT(!launcher->running(), 10000 * Slowdown);
    QCOMPARE(launcher->exitCode(), 0);
}

void tst_DBusRoads::picture_data()
{
    QTest::addColumn<bool>("push");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QRect>("window");
    QTest::addColumn<QRgb>("colour");
    QTest::newRow("VOD, small player") << false << QStringList() << QRect(8, 39, 256, 194) << ClipColour;
    QTest::newRow("VOD, wide") << false << QStringList{"Video4", "Video4"} << QRect(0, 0, 480, 271) << ClipColour;
    QTest::newRow("push, small viewer") << true << QStringList() << QRect(8, 39, 256, 194) << StreamColour;
    QTest::newRow("push, full screen") << true << QStringList{"Video4"} << QRect(0, 0, 363, 272) << StreamColour;
}

// The real video manager's picture, scaled into the window the module asked
// for, and the module's own drawing everywhere else.
void tst_DBusRoads::picture()
{
    QFETCH(bool, push);
    QFETCH(QStringList, keys);
    QFETCH(QRect, window);
    QFETCH(QRgb, colour);
    if (!noRealManager.isEmpty())
        QSKIP(qPrintable(noRealManager));

    const QString shot = root.filePath("screen.png");
    QFile::remove(shot);
    QVERIFY(startManager(true));
    startLauncher(push ? QStringList{"--grab", shot} : QStringList{"--vod", "--grab", shot});
    if (push) {
        WAIT_LINE(play, manager->out, "<- QPE/VideoManager playPush\\(QString\\)", 0, 10000);
        startSender();
    } else {
        QVERIFY(playClip());
    }
    const QString time = push ? PushTime : VodTime;
    WAIT_LINE(playing, bus->lines, time, 0, 10000);
    // Each key switches the player's size. A player takes the next switch 100 ms
    // after it asked for its window: the next report that much later says so.
    const QString change = "^QPE_2FVideoManager changeVodWindow_28int_2Cint_2Cint_2Cint_29 ";
    qsizetype seen = playing;
    for (const QString &name : std::as_const(keys)) {
        key(name.toLatin1().constData());
        WAIT_LINE(changed, bus->lines, change, seen + 1, 10000);
        seen = changed;
        qsizetype ready = changed;
        do {
            ready = waitForLine(bus->lines, time, ready + 1, 5000);
            QVERIFY(ready >= 0);
        } while (bus->times.at(ready) - bus->times.at(changed) < 150);
        QVERIFY(launcherSettled(*launcher));
    }
    if (!keys.isEmpty()) {
        QByteArray asked(16, 0);
        qToBigEndian<qint32>(window.x(), asked.data());
        qToBigEndian<qint32>(window.y(), asked.data() + 4);
        qToBigEndian<qint32>(window.width(), asked.data() + 8);
        qToBigEndian<qint32>(window.height(), asked.data() + 12);
        QCOMPARE(bus->data.at(seen), asked);
        // A picture comes after the change.
        WAIT_LINE(later, bus->lines, time, seen, 5000);
    }
    QVERIFY(launcherSettled(*launcher));
    launcher->closeInput();
    QTRY_VERIFY_WITH_TIMEOUT(!launcher->running(), 10000 * Slowdown);
    QCOMPARE(launcher->exitCode(), 0);

    const QImage image(shot);
    QCOMPARE(image.size(), QSize(480, 272));
    // The far corners prove the scaling: the clip's own 64 x 48 cover a corner only.
    const QRect inner = window.adjusted(6, 6, -6, -6);
    for (const QPoint &p : {inner.topLeft(), inner.topRight(), inner.bottomLeft(), inner.bottomRight(), inner.center()})
        QVERIFY2(near(image.pixel(p), colour),
                 qPrintable(QStringLiteral("%1,%2 is %3").arg(p.x()).arg(p.y()).arg(image.pixel(p), 8, 16)));
    // Outside the window (give or take the blend of its edge) the picture never shows.
    const QRect edge = window.adjusted(-2, -2, 2, 2);
    int strays = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            strays += !edge.contains(x, y) && near(image.pixel(x, y), colour);
    QCOMPARE(strays, 0);
    // Around the small player the platform's title bar and soft-key bar are drawn.
    if (window.top() > 31) {
        QCOMPARE(image.pixel(0, 0), QRgb(0xff142442));
        QCOMPARE(image.pixel(0, 271), QRgb(0xff1c1c1c));
    }
}

QTEST_GUILESS_MAIN(tst_DBusRoads)
#include "tst_dbusroads.moc"
