#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include "e2eprograms.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <memory>

// The launcher and the real video manager as programs on one D-Bus session bus
// (the test runs under dbus-run-session), playing a clip made here and a
// broadcast that scripts/broadcast.sh sends to 127.0.0.1. What happens is read
// from the bus (with the time each message was seen), the launcher's trace and
// the video manager's log; what the display shows from the launcher's --grab.
// LAUNCHER_PATH, VIDEOMANAGER_PATH, BROADCAST_SCRIPT, GST_LAUNCH and GST_INSPECT
// come from the build.

namespace {

// How late a message may be seen on a busy machine (the sanitizers' build
// runs our programs several times slower; GStreamer's threads do not).
constexpr double Jitter = E2ESlowness > 1 ? 1.0 : 0.5;

// The clip: five seconds of one colour, 64 x 48, far smaller than any video
// window, so that only a picture scaled to the window fills it.
constexpr double ClipSeconds = 5.0;
constexpr QRgb ClipColour = 0xff96d228;
// The broadcast's colour, in pictures of the clip's size.
constexpr QRgb StreamColour = 0xffc88c14;

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

const QString VodTime = QStringLiteral("^QPE_2FVideoApplication currentTime_28float_29 ");
const QString PushTime = QStringLiteral("^QPE_2FPushApplication currentTime_28float_29 ");

} // namespace

class tst_VideoManagerRoads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void vodRoad();
    void pushRoad();
    void picture_data();
    void picture();

private:
    QProcessEnvironment environment() const;
    bool startVideoManager();
    void startLauncher(const QStringList &options);
    void startSender();
    QString dumps() const;
    bool settle();
    void key(const char *name) { launcher->write(QByteArray(name) + '\n'); }
    // From the groups to the clip playing in the small player.
    bool playClip();

    QTemporaryDir root;
    QString clip;
    int pushPort = 0;
    std::unique_ptr<BusWatch> bus;
    std::unique_ptr<Program> manager;
    std::unique_ptr<Program> launcher;
    std::unique_ptr<Program> sender;
};

void tst_VideoManagerRoads::initTestCase()
{
    QVERIFY2(QDBusConnection::sessionBus().isConnected(),
             "no session bus: run this test under dbus-run-session (ctest does)");
    // Without GStreamer's elements nothing can play: that is the one reason to skip.
    QProcess check;
    check.start(QStringLiteral(VIDEOMANAGER_PATH), {QStringLiteral("--check")});
    QVERIFY(check.waitForFinished(30000));
    if (check.exitCode() != 0)
        QSKIP(qPrintable(QStringLiteral("the video manager cannot play here: ") + check.readAllStandardOutput()));
    if (QStringLiteral(GST_LAUNCH).isEmpty() || QStringLiteral(GST_INSPECT).isEmpty())
        QSKIP("gst-launch-1.0 or gst-inspect-1.0 is missing (Debian: gstreamer1.0-tools)");
    for (const char *element : {"videotestsrc", "audiotestsrc", "theoraenc", "vorbisenc", "oggmux", "vp8enc",
                                "rtpvp8pay", "udpsink", "videorate"}) {
        if (QProcess::execute(QStringLiteral(GST_INSPECT), {QStringLiteral("--exists"), QLatin1String(element)}) != 0)
            QSKIP(qPrintable(QStringLiteral("GStreamer has no %1 to make the clip or the broadcast").arg(element)));
    }

    QVERIFY(root.isValid());
    for (const char *dir : {"tmp/status", "tmp/systemdb", "settings", "runtime"})
        QVERIFY(QDir(root.path()).mkpath(QLatin1String(dir)));
    QVERIFY(QFile::setPermissions(root.filePath(QStringLiteral("runtime")),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));

    clip = root.filePath(QStringLiteral("clip.ogg"));
    const QString make =
        QStringLiteral("-q -e videotestsrc num-buffers=%1 pattern=solid-color foreground-color=%2 "
                       "! video/x-raw,width=64,height=48,framerate=25/1 ! theoraenc keyframe-freq=25 ! mux. "
                       "audiotestsrc num-buffers=%3 samplesperbuffer=882 ! audio/x-raw,rate=44100,channels=1 "
                       "! audioconvert ! vorbisenc ! mux. oggmux name=mux ! filesink location=%4")
            .arg(int(ClipSeconds * 25))
            .arg(ClipColour)
            .arg(int(ClipSeconds * 50))
            .arg(clip);
    QCOMPARE(QProcess::execute(QStringLiteral(GST_LAUNCH), make.split(QLatin1Char(' '))), 0);

    // The catalogue's length is what the browser lists; the set-up tells the real one.
    QFile catalogue(root.filePath(QStringLiteral("catalogue.json")));
    QVERIFY(catalogue.open(QIODevice::WriteOnly));
    catalogue.write(R"({"groups": [{"name": "Cards", "parts": [{"name": "Colour", "titles": [
        {"name": "Lime", "length": 7, "file": "clip.ogg"}]}]}]})");
}

void tst_VideoManagerRoads::init()
{
    pushPort = freeUdpPort();
    QVERIFY(pushPort > 0);
    bus = std::make_unique<BusWatch>(QDBusConnection::sessionBus());
    QVERIFY(bus->ok);
}

void tst_VideoManagerRoads::cleanup()
{
    if (QTest::currentTestFailed() || qEnvironmentVariableIsSet("E2E_DUMP"))
        qInfo().noquote() << dumps();
    sender.reset();
    launcher.reset();
    // Asked to end, the video manager ends cleanly (and without a sanitizer finding).
    const bool clean = !manager || manager->stop();
    const QString said = manager ? manager->dump() : QString();
    manager.reset();
    bus.reset();
    QVERIFY2(clean, qPrintable(said));
}

QProcessEnvironment tst_VideoManagerRoads::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("QPE_IPC_TRANSPORT"), QStringLiteral("dbus"));
    env.insert(QStringLiteral("QPE_ROOT"), root.path());
    env.insert(QStringLiteral("QPE_NOTICE_TIMEOUT"), QStringLiteral("0"));
    env.insert(QStringLiteral("QPE_VIDEO_PLANE"), QStringLiteral("/tst-videomanagerroads-%1").arg(getpid()));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), root.filePath(QStringLiteral("settings")));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), root.filePath(QStringLiteral("runtime")));
    return env;
}

QString tst_VideoManagerRoads::dumps() const
{
    QString text;
    for (const Program *p : {launcher.get(), manager.get(), sender.get()})
        if (p)
            text += p->dump();
    if (bus)
        text += QStringLiteral("--- bus:\n") + bus->lines.join(QLatin1Char('\n'));
    return text;
}

bool tst_VideoManagerRoads::startVideoManager()
{
    manager = std::make_unique<Program>(
        QStringLiteral("videomanager"), QStringLiteral(VIDEOMANAGER_PATH),
        QStringList{QStringLiteral("--catalogue"), root.filePath(QStringLiteral("catalogue.json")),
                    QStringLiteral("--push-port"), QString::number(pushPort), QStringLiteral("--push-timeout"),
                    QStringLiteral("1"), QStringLiteral("--audio-sink"), QStringLiteral("fakesink sync=true")},
        environment());
    return waitForLine(manager->out, QStringLiteral("-- ready:")) >= 0;
}

void tst_VideoManagerRoads::startLauncher(const QStringList &options)
{
    launcher = std::make_unique<Program>(QStringLiteral("qpe-launcher"), QStringLiteral(LAUNCHER_PATH),
                                         QStringList{QStringLiteral("--trace"), QStringLiteral("--keys")} + options,
                                         environment());
}

void tst_VideoManagerRoads::startSender()
{
    sender = std::make_unique<Program>(
        QStringLiteral("broadcast.sh"), QStringLiteral("/bin/bash"),
        QStringList{QStringLiteral(BROADCAST_SCRIPT), QStringLiteral("--port"), QString::number(pushPort),
                    QStringLiteral("--colour"), QStringLiteral("0x%1").arg(StreamColour, 8, 16, QLatin1Char('0')),
                    QStringLiteral("--size"), QStringLiteral("64x48")},
        environment());
}

bool tst_VideoManagerRoads::settle()
{
    return launcherSettled(*launcher);
}

bool tst_VideoManagerRoads::playClip()
{
    const auto handled = [this](const QString &member) {
        return waitForLine(bus->lines, QStringLiteral("^QPE_2FVideoApplication ") + member) >= 0 && settle();
    };
    if (!handled(QStringLiteral("getGroupList_28_29")))
        return false;
    key("Select");
    key("Select");
    if (!handled(QStringLiteral("getContentsList_28_29")))
        return false;
    key("Select");
    if (!handled(QStringLiteral("setupOKVod_28")))
        return false;
    key("Context1");
    return handled(QStringLiteral("startOKVod_28_29"));
}

// Set up with the clip's real duration, reports in real time, a seek back that
// lands where asked, and the real end, which closes the player.
void tst_VideoManagerRoads::vodRoad()
{
    QVERIFY(startVideoManager());
    startLauncher({QStringLiteral("--vod")});
    QVERIFY(playClip());

    WAIT_LINE(setup, bus->lines, QStringLiteral("^QPE_2FVideoApplication setupOKVod_28"), 0, 5000);
    const QByteArray answer = bus->data.at(setup);
    QCOMPARE(answer.size(), 24);
    const double duration = floatAt(answer, 16) - floatAt(answer, 12);
    QVERIFY2(qAbs(duration - ClipSeconds) <= 0.1, qPrintable(QString::number(duration)));

    // Two reports a second apart say that a second of the clip has played.
    WAIT_LINE(first, bus->lines, VodTime, setup, 5000);
    WAIT_LINE(second, bus->lines, VodTime, first + 1, 5000);
    const double played = floatAt(bus->data.at(second), 0) - floatAt(bus->data.at(first), 0);
    const double passed = (bus->times.at(second) - bus->times.at(first)) / 1000.0;
    QVERIFY2(played > 0.5 && qAbs(played - passed) <= Jitter,
             qPrintable(QStringLiteral("%1 s played in %2 s").arg(played).arg(passed)));

    // Back by five seconds, a second after the key: the player asks for 1 s.
    // (Sooner than a report within a second of the end: that arms the
    // player's own end guard, which would stop the title before its end.)
    key("Context2");
    WAIT_LINE(seek, bus->lines, QStringLiteral("^QPE_2FVideoManager reverseVod_28QString_29 "), second, 5000);
    QCOMPARE(bus->data.at(seek), QByteArray::fromHex("000000020031")); // "1"
    // The first report from the new place: at 1 s at least, and no further
    // than the time since the request allows (the seek may take a while).
    const float before = floatAt(bus->data.at(second), 0);
    qsizetype after = seek;
    float reported = before;
    while (reported >= before) {
        after = waitForLine(bus->lines, VodTime, after + 1, 5000);
        QVERIFY2(after >= 0, "no report from the new place");
        reported = floatAt(bus->data.at(after), 0);
    }
    const double latest = 1.0 + (bus->times.at(after) - bus->times.at(seek)) / 1000.0;
    QVERIFY2(reported >= 1.0 - Jitter && reported <= latest + Jitter,
             qPrintable(QStringLiteral("at %1 s, at most %2 s expected").arg(reported).arg(latest)));

    // The rest of the clip plays in real time, then the end comes by itself.
    WAIT_LINE(end, bus->lines, QStringLiteral("^QPE_2FVideoApplication endOKVod_28_29$"), after, 10000);
    const double rest = (bus->times.at(end) - bus->times.at(seek)) / 1000.0;
    QVERIFY2(rest >= ClipSeconds - 1.0 - Jitter && rest <= ClipSeconds - 1.0 + 2 * Jitter,
             qPrintable(QString::number(rest)));
    // The video manager found the end itself: no stop had reached it.
    WAIT_LINE(ended, manager->out, QStringLiteral("-- end of the title$"), 0, 5000);
    QCOMPARE(manager->out.mid(0, ended).filter(QStringLiteral("<- QPE/VideoManager stopVod()")).size(), 0);
    // The player closes and says so.
    WAIT_LINE(stop, launcher->out, QStringLiteral("^QPE/VideoManager stopVod\\(\\)$"), 0, 5000);

    launcher->closeInput();
    QTRY_VERIFY_WITH_TIMEOUT(!launcher->running(), 10000 * E2ESlowness);
    QCOMPARE(launcher->exitCode(), 0);
}

// Pictures arrive and are reported once a second; a call pauses and resumes
// the stream; when the sender stops, the broadcast ends and the viewer closes.
void tst_VideoManagerRoads::pushRoad()
{
    QVERIFY(startVideoManager());
    startLauncher({});
    WAIT_LINE(play, manager->out, QStringLiteral("<- QPE/VideoManager playPush\\(QString\\)"), 0, 10000);
    startSender();

    WAIT_LINE(first, bus->lines, PushTime, 0, 10000);
    WAIT_LINE(second, bus->lines, PushTime, first + 1, 5000);
    QCOMPARE(floatAt(bus->data.at(second), 0) - floatAt(bus->data.at(first), 0), 1.0f);
    const double passed = (bus->times.at(second) - bus->times.at(first)) / 1000.0;
    QVERIFY2(qAbs(passed - 1.0) <= Jitter, qPrintable(QString::number(passed)));

    const auto call = [](const char *member) {
        return QDBusConnection::sessionBus().send(QDBusMessage::createSignal(
            QStringLiteral("/com/trolltech/qtopia/QPE_2FPushApplication"), QStringLiteral("com.trolltech.qtopia"),
            QLatin1String(member)));
    };
    QVERIFY(call("startcall_28_29"));
    WAIT_LINE(paused, bus->lines, QStringLiteral("^QPE_2FPushApplication pauseOKPush_28_29$"), second, 5000);
    QVERIFY(call("stopcall_28_29"));
    WAIT_LINE(resumed, bus->lines, QStringLiteral("^QPE_2FVideoManager resumePush_28_29$"), paused, 5000);
    QCOMPARE(bus->lines.mid(paused, resumed - paused).filter(QRegularExpression(PushTime)).size(), 0);
    WAIT_LINE(again, bus->lines, PushTime, resumed, 5000);

    sender->stop();
    QElapsedTimer sinceStop;
    sinceStop.start();
    WAIT_LINE(end, bus->lines, QStringLiteral("^QPE_2FPushApplication endOKMulticastPush_28_29$"), again, 10000);
    // One second of silence (--push-timeout) ends it, not the viewer's 30-second watchdog.
    QVERIFY2(sinceStop.elapsed() < 5000 * E2ESlowness, qPrintable(QString::number(sinceStop.elapsed())));
    WAIT_LINE(stop, launcher->out, QStringLiteral("^QPE/VideoManager stopMulticastPush\\(\\)$"), 0, 5000);
    QTRY_VERIFY_WITH_TIMEOUT(!launcher->running(), 10000 * E2ESlowness);
    QCOMPARE(launcher->exitCode(), 0);
}

void tst_VideoManagerRoads::picture_data()
{
    QTest::addColumn<bool>("push");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QRect>("window");
    QTest::addColumn<QRgb>("colour");
    QTest::newRow("VOD, small player") << false << QStringList() << QRect(8, 39, 256, 194) << ClipColour;
    QTest::newRow("VOD, wide") << false << QStringList{QStringLiteral("Video4"), QStringLiteral("Video4")}
                               << QRect(0, 0, 480, 271) << ClipColour;
    QTest::newRow("push, small viewer") << true << QStringList() << QRect(8, 39, 256, 194) << StreamColour;
    QTest::newRow("push, full screen") << true << QStringList{QStringLiteral("Video4")} << QRect(0, 0, 363, 272)
                                       << StreamColour;
}

// The display shows the picture scaled into the window the module asked for,
// and the module's own drawing everywhere else.
void tst_VideoManagerRoads::picture()
{
    QFETCH(bool, push);
    QFETCH(QStringList, keys);
    QFETCH(QRect, window);
    QFETCH(QRgb, colour);

    const QString shot = root.filePath(QStringLiteral("screen.png"));
    QFile::remove(shot);
    QVERIFY(startVideoManager());
    startLauncher(push ? QStringList{QStringLiteral("--grab"), shot}
                       : QStringList{QStringLiteral("--vod"), QStringLiteral("--grab"), shot});
    if (push) {
        WAIT_LINE(play, manager->out, QStringLiteral("<- QPE/VideoManager playPush\\(QString\\)"), 0, 10000);
        startSender();
    } else {
        QVERIFY(playClip());
    }
    const QString time = push ? PushTime : VodTime;
    WAIT_LINE(playing, bus->lines, time, 0, 10000);
    // Each key switches the player's size. A player takes the next switch 100 ms
    // after it asked for its window: the next report that much later says so.
    const QString change = QStringLiteral("^QPE_2FVideoManager changeVodWindow_28int_2Cint_2Cint_2Cint_29 ");
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
        QVERIFY(settle());
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
    QVERIFY(settle());
    launcher->closeInput();
    QTRY_VERIFY_WITH_TIMEOUT(!launcher->running(), 10000 * E2ESlowness);
    QCOMPARE(launcher->exitCode(), 0);

    const QImage image(shot);
    QCOMPARE(image.size(), QSize(480, 272));
    // The far corners prove the scaling: the clip's own 64 x 48 cover a corner only.
    const QRect inner = window.adjusted(6, 6, -6, -6);
    for (const QPoint &p : {inner.topLeft(), inner.topRight(), inner.bottomLeft(), inner.bottomRight(), inner.center()})
        QVERIFY2(near(image.pixel(p), colour), qPrintable(QStringLiteral("%1,%2 is %3").arg(p.x()).arg(p.y()).arg(
                                                   image.pixel(p), 8, 16)));
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

QTEST_GUILESS_MAIN(tst_VideoManagerRoads)
#include "tst_videomanagerroads.moc"
