// The two VOD players as tables: (state x notification) and (state x key) ->
// state, requests on the wire, visibility and play icon; then what only the
// small player does (its filter and server watchdog, the hand-over to the
// full-screen player and back). Notifications reach the players as the
// browser hands them on: through the small player's filter.

#include "devicekeys.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "noticewatcher.h"
#include "player/playscreen.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QPointer>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using Status = VodPlayView::playScreenStatus;
using namespace VodMessage;

namespace {

enum Kind { Small, Full };
// The play icon after the step: unchanged, off or on.
enum Icon { AnyIcon, NoIcon, IconShown };

const QString application = QLatin1String(VodChannel::VideoApplication);
const QString marker = QStringLiteral("/tmp/status/vod_setup_status");

// A small player of a 5:12 title (312 s) at 1:01 (61 s), its requests leaving
// through a browser, optionally with its full-screen player open.
struct Rig
{
    vod browser;
    VodPlaySmallScreenView small{&browser, nullptr};
    QPointer<VodPlayView> player;

    explicit Rig(Kind kind)
    {
        small.setTotalTime(QStringLiteral("00:05:12"));
        small.currentMsecs = 61000;
        small.show();
        player = &small;
        if (kind == Full) {
            small.setScreenStatus(VodPlayView::Playing);
            small.playScreenReady = true;
            pressKey(&small, Key_Video4);
            player = small.fullScreenView;
        }
        flushEvents();
        QtopiaIpcTransport::clearTraffic();
    }
};

} // namespace

Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(Icon)

class tst_VodPlayers : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;
    std::unique_ptr<NoticeWatcher> notices;

private slots:
    void initTestCase()
    {
        env = std::make_unique<TestEnvironment>();
        notices = std::make_unique<NoticeWatcher>();
    }
    void init()
    {
        env->remove(marker);
        QSettings(QStringLiteral("Trolltech"), QStringLiteral("Sound")).clear();
        notices->seen.clear();
    }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void notifications_data();
    void notifications();
    void keys_data();
    void keys();
    void smallFilterAndWatchdog_data();
    void smallFilterAndWatchdog();
    void endGuard_data();
    void endGuard();
    void endGuardThroughACallAndAResume();
    void handOverAndBack_data();
    void handOverAndBack();
    void seekPressesAddUp();
    void backRefusesOneClose();
    void awayAndBack_data();
    void awayAndBack();
    void serverSilence();
};

void tst_VodPlayers::notifications_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<Status>("from");
    QTest::addColumn<int>("calls");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<Status>("to");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<Icon>("icon");

    const Status Stopped = VodPlayView::Stopped, Playing = VodPlayView::Playing, Paused = VodPlayView::Paused,
                 Interrupted = VodPlayView::Interrupted, PausedForPush = VodPlayView::PausedForPush;
    const QStringList none;
    const QString pauseUser = QStringLiteral("pauseVod(int) 00000000");
    const QString pauseCall = QStringLiteral("pauseVod(int) 00000001");
    // "resumeVod(QString)" with the text "12.5", the position of the last pause.
    const QString resume = QStringLiteral("resumeVod(QString) 0000000800310032002e0035");
    for (Kind kind : {Small, Full}) {
        const bool small = kind == Small;
        const auto row = [&](const char *name) -> QTestData & {
            return QTest::addRow("%s: %s", small ? "small" : "full", name);
        };
        row("started") << kind << Stopped << 0 << StartOKVod << QByteArray() << Playing << none << true << NoIcon;
        row("paused") << kind << Playing << 0 << PauseOKVod << messageData(12.5f) << Paused << none << true
                      << IconShown;
        row("paused by the server") << kind << Playing << 0 << PauseVodByServer << messageData(3.0f) << Paused
                                    << none << true << IconShown;
        row("pause keeps a call's hold") << kind << Interrupted << 1 << PauseOKVod << messageData(3.0f)
                                         << Interrupted << none << true << IconShown;
        row("pause keeps a broadcast's hold") << kind << PausedForPush << 0 << PauseOKVod << messageData(3.0f)
                                              << PausedForPush << none << true << IconShown;
        row("resumed") << kind << Paused << 0 << ResumedOKVod << QByteArray() << Playing << none << true << NoIcon;
        row("resumed during a call") << kind << Interrupted << 1 << ResumedOKVod << QByteArray() << Interrupted
                                     << QStringList{pauseCall} << true << AnyIcon;
        row("call while playing") << kind << Playing << 0 << StartCall << QByteArray() << Interrupted
                                  << QStringList{pauseCall} << small << AnyIcon;
        row("call while stopped") << kind << Stopped << 0 << StartCall << QByteArray() << Interrupted
                                  << QStringList{pauseCall} << small << AnyIcon;
        row("call while held") << kind << Interrupted << 1 << StartCall << QByteArray() << Interrupted << none
                               << small << AnyIcon;
        row("call over") << kind << Interrupted << 1 << StopCall << QByteArray() << Interrupted << none << true
                         << AnyIcon;
        row("other screen while playing") << kind << Playing << 0 << HideVodFullScreen << QByteArray() << Playing
                                          << QStringList{pauseUser} << small << AnyIcon;
        row("other screen while paused") << kind << Paused << 0 << HideVodFullScreen << QByteArray() << Paused
                                         << none << small << AnyIcon;
        row("screen back") << kind << Paused << 0 << ShowVodFullScreen << QByteArray() << Paused << none << true
                           << AnyIcon;
        row("broadcast starts") << kind << Playing << 0 << StartVideoPushApp << QByteArray() << PausedForPush
                                << QStringList{pauseCall} << true << AnyIcon;
        row("broadcast starts, paused") << kind << Paused << 0 << StartVideoPushApp << QByteArray() << Paused
                                        << none << true << AnyIcon;
        row("broadcast over") << kind << PausedForPush << 0 << StopVideoPushApp << QByteArray() << PausedForPush
                              << QStringList{resume} << true << AnyIcon;
        row("broadcast over, not held") << kind << Playing << 0 << StopVideoPushApp << QByteArray() << Playing
                                        << none << true << AnyIcon;
        row("pause failed") << kind << Playing << 0 << PauseFailVod << QByteArray() << Playing << none << true
                            << AnyIcon;
        row("error") << kind << Playing << 0 << Error << messageData(4) << Playing << none << true << AnyIcon;
        row("push starts") << kind << Paused << 0 << StartPush << QByteArray() << Paused << none << true << NoIcon;
        row("push paused") << kind << Playing << 0 << PauseOKPush << QByteArray() << Playing << none << true
                           << IconShown;
        // The small player asks the video manager to stop; the full-screen one
        // hands Stopping back, and the small player asks.
        row("start failed") << kind << Playing << 0 << StartFailVod << messageData(2)
                            << (small ? Playing : VodPlayView::Stopping) << QStringList{QStringLiteral("stopVod()")}
                            << small << AnyIcon;
        row("ended") << kind << Playing << 0 << EndOKVod << QByteArray() << Stopped << none << false << IconShown;
        row("a signature with a blank is no message")
            << kind << Playing << 0 << "startcall( )" << QByteArray() << Playing << none << true << AnyIcon;
    }
}

void tst_VodPlayers::notifications()
{
    QFETCH(Kind, kind);
    QFETCH(Status, from);
    QFETCH(int, calls);
    QFETCH(QString, message);
    QFETCH(QByteArray, data);
    QFETCH(Status, to);
    QFETCH(QStringList, sent);
    QFETCH(bool, shown);
    QFETCH(Icon, icon);

    Rig rig(kind);
    VodPlayView *player = rig.player;
    player->setScreenStatus(from);
    player->callCount = calls;
    player->pausedTime = 12.5f;
    rig.small.messageHandle(message, data);
    flushEvents();

    // A full-screen player that hands back is the small player's again.
    const VodPlayView *now = kind == Full && to == VodPlayView::Stopping ? &rig.small : player;
    QCOMPARE(now->screenStatus, to);
    QCOMPARE(sentMessages(), sent);
    QCOMPARE(player->isVisible(), shown);
    if (icon != AnyIcon)
        QCOMPARE(player->playScreen->showPlayIcon, icon == IconShown);
    QCOMPARE(int(notices->seen.size()), int(message == QLatin1String(StopVideoPushApp) && from == VodPlayView::PausedForPush));
}

void tst_VodPlayers::keys_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<Status>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<Status>("to");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<bool>("shown");

    const Status Stopped = VodPlayView::Stopped, Playing = VodPlayView::Playing, Paused = VodPlayView::Paused,
                 Interrupted = VodPlayView::Interrupted, Stopping = VodPlayView::Stopping;
    const int keypad = int(Qt::KeypadModifier);
    const QStringList none;
    const QString start = QStringLiteral("startVod(QString) 000000020030");
    const QString pause = QStringLiteral("pauseVod(int) 00000000");
    const QString resume = QStringLiteral("resumeVod(QString) 0000000800310032002e0035");
    const QString stop = QStringLiteral("stopVod()");
    // One seek key press: five seconds from 1:01, a second after the press.
    const QString forward = QStringLiteral("forwardVod(QString) 0000000400360036");
    const QString reverse = QStringLiteral("reverseVod(QString) 0000000400350036");
    // The level 9 of the stored setting, one up and one down.
    const QString louder = QStringLiteral("QPE/CallManager setVolume_vod(int) 00000009");
    const QString softer = QStringLiteral("QPE/CallManager setVolume_vod(int) 00000007");
    const QString headset = QStringLiteral("QPE/CallManager setHeadset_onoff()");

    QTest::newRow("small: Select plays") << Small << Stopped << int(Qt::Key_Select) << 0 << Stopped
                                         << QStringList{start} << true;
    QTest::newRow("small: Select pauses") << Small << Playing << int(Qt::Key_Select) << 0 << Playing
                                          << QStringList{pause} << true;
    QTest::newRow("small: Select resumes") << Small << Paused << int(Qt::Key_Select) << 0 << Paused
                                           << QStringList{resume} << true;
    QTest::newRow("small: Select resumes after a call") << Small << Interrupted << int(Qt::Key_Select) << 0
                                                        << Interrupted << QStringList{resume} << true;
    QTest::newRow("small: Select while stopping") << Small << Stopping << int(Qt::Key_Select) << 0 << Stopping
                                                  << none << true;
    QTest::newRow("small: Context1 seeks forward") << Small << Playing << int(Qt::Key_Context1) << 0 << Playing
                                                   << QStringList{forward} << true;
    QTest::newRow("small: Context2 seeks back") << Small << Playing << int(Qt::Key_Context2) << 0 << Playing
                                                << QStringList{reverse} << true;
    QTest::newRow("small: no seek when paused") << Small << Paused << int(Qt::Key_Context1) << 0 << Paused
                                                << none << true;
    QTest::newRow("small: Back stops a playing video") << Small << Playing << int(Qt::Key_Back) << 0 << Playing
                                                       << QStringList{stop} << true;
    QTest::newRow("small: Back closes a stopped one") << Small << Stopped << int(Qt::Key_Back) << 0 << Stopped
                                                      << none << false;
    QTest::newRow("small: Hangup") << Small << Paused << int(Qt::Key_Hangup) << 0 << Stopping
                                   << QStringList{stop, QStringLiteral("QPE/VideoApplication hangUpBySmallScreen()")}
                                   << true;
    QTest::newRow("small: Hangup when stopped") << Small << Stopped << int(Qt::Key_Hangup) << 0 << Stopped
                                                << QStringList{QStringLiteral("QPE/VideoApplication hangUpBySmallScreen()")}
                                                << true;
    QTest::newRow("small: Video4 paused") << Small << Paused << int(Key_Video4) << 0 << Paused << none << true;
    QTest::newRow("small: volume up") << Small << Playing << int(Qt::Key_VolumeUp) << 0 << Playing
                                      << QStringList{louder} << true;
    QTest::newRow("small: volume down") << Small << Playing << int(Qt::Key_VolumeDown) << 0 << Playing
                                        << QStringList{softer} << true;
    QTest::newRow("small: headset") << Small << Playing << int(Key_Headset) << 0 << Playing
                                    << QStringList{headset} << true;

    QTest::newRow("full: Select pauses") << Full << Playing << int(Qt::Key_Select) << keypad << Playing
                                         << QStringList{pause} << true;
    QTest::newRow("full: Select not from the keypad") << Full << Playing << int(Qt::Key_Select) << 0 << Playing
                                                      << none << true;
    QTest::newRow("full: Select plays") << Full << Stopped << int(Qt::Key_Select) << keypad << Stopped
                                        << QStringList{start} << true;
    QTest::newRow("full: Video2 pauses") << Full << Playing << int(Key_Video2) << 0 << Playing << QStringList{pause}
                                         << true;
    QTest::newRow("full: Video2 resumes") << Full << Interrupted << int(Key_Video2) << 0 << Interrupted
                                          << QStringList{resume} << true;
    QTest::newRow("full: Video2 plays") << Full << Stopped << int(Key_Video2) << 0 << Stopped << QStringList{start}
                                        << true;
    QTest::newRow("full: Video1 seeks back") << Full << Playing << int(Key_Video1) << 0 << Playing
                                             << QStringList{reverse} << true;
    QTest::newRow("full: Video3 seeks forward") << Full << Playing << int(Key_Video3) << 0 << Playing
                                                << QStringList{forward} << true;
    // Video3 stops a video that does not play: Stopping goes back to the small player, which asks.
    QTest::newRow("full: Video3 stops") << Full << Paused << int(Key_Video3) << 0 << Stopping
                                        << QStringList{stop} << false;
    QTest::newRow("full: Back does nothing") << Full << Playing << int(Qt::Key_Back) << 0 << Playing << none
                                             << true;
    QTest::newRow("full: volume up") << Full << Playing << int(Qt::Key_VolumeUp) << 0 << Playing
                                     << QStringList{louder} << true;
    QTest::newRow("full: headset") << Full << Playing << int(Key_Headset) << 0 << Playing << QStringList{headset}
                                   << true;
}

void tst_VodPlayers::keys()
{
    QFETCH(Kind, kind);
    QFETCH(Status, from);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(Status, to);
    QFETCH(QStringList, sent);
    QFETCH(bool, shown);

    Rig rig(kind);
    VodPlayView *player = rig.player;
    player->setScreenStatus(from);
    player->pausedTime = 12.5f;
    pressKey(player, key, Qt::KeyboardModifiers(modifiers));
    // A seek is made a second after the last seek key.
    if (player && player->seekTimer && player->seekTimer->isActive())
        QMetaObject::invokeMethod(player->seekTimer, "timeout");
    flushEvents();

    const VodPlayView *now = kind == Full && to == VodPlayView::Stopping ? &rig.small : player;
    QCOMPARE(now->screenStatus, to);
    QCOMPARE(sentMessages(), sent);
    QCOMPARE(player->isVisible(), shown);
}

void tst_VodPlayers::smallFilterAndWatchdog_data()
{
    QTest::addColumn<Status>("from");
    QTest::addColumn<bool>("dropNext");
    QTest::addColumn<QString>("message");
    QTest::addColumn<Status>("to");
    QTest::addColumn<int>("watchdog"); // -1: none, 0: stopped, 1: running

    const Status Playing = VodPlayView::Playing, Stopping = VodPlayView::Stopping;
    // From a running watchdog, made by a first start confirmation.
    QTest::newRow("start again keeps it") << Playing << false << StartOKVod << Playing << 1;
    QTest::newRow("pause stops it") << Playing << false << PauseOKVod << VodPlayView::Paused << 0;
    QTest::newRow("server pause stops it") << Playing << false << PauseVodByServer << VodPlayView::Paused << 0;
    QTest::newRow("call stops it") << Playing << false << StartCall << VodPlayView::Interrupted << 0;
    QTest::newRow("broadcast stops it") << Playing << false << StartVideoPushApp << VodPlayView::PausedForPush << 0;
    QTest::newRow("failed pause stops it") << Playing << false << PauseFailVod << Playing << 0;
    QTest::newRow("other screen keeps it") << Playing << false << HideVodFullScreen << Playing << 1;
    QTest::newRow("dropped once") << Playing << true << PauseOKVod << Playing << 1;
    QTest::newRow("stopping drops all") << Stopping << false << StartOKVod << Stopping << 1;
    QTest::newRow("stopping takes the end") << Stopping << false << EndOKVod << VodPlayView::Stopped << 0;
}

void tst_VodPlayers::smallFilterAndWatchdog()
{
    QFETCH(Status, from);
    QFETCH(bool, dropNext);
    QFETCH(QString, message);
    QFETCH(Status, to);
    QFETCH(int, watchdog);

    Rig rig(Small);
    rig.small.messageHandle(QLatin1String(StartOKVod), QByteArray());
    QVERIFY(rig.small.serverWatchdog->isActive());
    rig.small.setScreenStatus(from);
    rig.small.ignoreNextNotification = dropNext;
    rig.small.messageHandle(message, messageData(7.0f));
    QCOMPARE(rig.small.screenStatus, to);
    QCOMPARE(rig.small.ignoreNextNotification, false);
    QCOMPARE(rig.small.serverWatchdog ? int(rig.small.serverWatchdog->isActive()) : -1, watchdog);

    // A time report restarts a stopped watchdog, unless the player is stopping.
    rig.small.messageHandle(QLatin1String(CurrentTime), messageData(8.0f));
    if (rig.small.serverWatchdog)
        QCOMPARE(rig.small.serverWatchdog->isActive(), to != VodPlayView::Stopping || watchdog == 1);
}

void tst_VodPlayers::endGuard_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("length");
    QTest::addColumn<float>("report");
    QTest::addColumn<int>("ticks");
    QTest::addColumn<QStringList>("sent");

    const QStringList stop{QStringLiteral("stopVod()")};
    // A report of the end itself ends the video at once.
    QTest::newRow("small: report at the end") << Small << "00:01:00" << 60.0f << 0 << stop;
    QTest::newRow("full: report at the end") << Full << "00:01:00" << 60.0f << 0 << stop;
    // Less than a second left: the guard ends it when its ticks pass the end.
    QTest::newRow("small: last second, then silence") << Small << "00:01:00" << 59.5f << 1 << stop;
    QTest::newRow("full: last second, then silence") << Full << "00:01:00" << 59.5f << 1 << stop;
    QTest::newRow("a second and more left") << Small << "00:01:00" << 58.5f << 1 << QStringList();
    // No length known: the first report finds less than a second left.
    QTest::newRow("no length") << Small << "" << 5.0f << 1 << stop;
}

// The end guard: once a time report leaves less than a second, 2-second ticks
// end the video even if the reports stop.
void tst_VodPlayers::endGuard()
{
    QFETCH(Kind, kind);
    QFETCH(QString, length);
    QFETCH(float, report);
    QFETCH(int, ticks);
    QFETCH(QStringList, sent);

    Rig rig(kind);
    rig.player->setTotalTime(length);
    rig.player->setScreenStatus(VodPlayView::Playing);
    rig.small.messageHandle(QLatin1String(CurrentTime), messageData(report));
    QCOMPARE(bool(rig.player && rig.player->frameSliderTimer), report > 59.0f || length.isEmpty());
    for (int i = 0; i < ticks && rig.player && rig.player->frameSliderTimer; ++i)
        QMetaObject::invokeMethod(rig.player->frameSliderTimer, "timeout");
    flushEvents();
    QCOMPARE(sentMessages(), sent);
    if (kind == Full && !sent.isEmpty())
        QCOMPARE(rig.small.screenStatus, VodPlayView::Stopping);
}

// A call stops the end guard and the resume after it starts it again: with the
// video manager silent, the guard alone ends the title.
void tst_VodPlayers::endGuardThroughACallAndAResume()
{
    Rig rig(Small);
    rig.small.setTotalTime(QStringLiteral("00:01:00"));
    rig.small.setScreenStatus(VodPlayView::Playing);
    rig.small.messageHandle(QLatin1String(CurrentTime), messageData(59.5f));
    QVERIFY(rig.small.frameSliderTimer && rig.small.frameSliderTimer->isActive());
    rig.small.messageHandle(QLatin1String(StartCall), QByteArray());
    QVERIFY(!rig.small.frameSliderTimer->isActive());
    rig.small.messageHandle(QLatin1String(StopCall), QByteArray());
    rig.small.messageHandle(QLatin1String(ResumedOKVod), QByteArray());
    QCOMPARE(rig.small.screenStatus, VodPlayView::Playing);
    QVERIFY(rig.small.frameSliderTimer->isActive());
    QtopiaIpcTransport::clearTraffic();
    QMetaObject::invokeMethod(rig.small.frameSliderTimer, "timeout");
    QCOMPARE(sentMessages(), QStringList{QStringLiteral("stopVod()")});
}

void tst_VodPlayers::handOverAndBack_data()
{
    QTest::addColumn<bool>("muted");
    QTest::newRow("sound on") << false;
    QTest::newRow("muted") << true;
}

// Video4 opens the full-screen player with the content, Video4 switches it to
// the wide picture, and Video4 hands position, volume and mute back.
void tst_VodPlayers::handOverAndBack()
{
    QFETCH(bool, muted);
    Rig rig(Small);
    rig.small.setContentTitle(QStringLiteral("Title"));
    rig.small.isMute = muted;
    rig.small.volume = 5;
    rig.small.setScreenStatus(VodPlayView::Playing);
    rig.small.playScreenReady = true;
    pressKey(&rig.small, Key_Video4);
    VodPlayFullScreenView *full = rig.small.fullScreenView;
    QVERIFY(full && full->isVisible() && rig.small.fullScreenShown);
    QCOMPARE(full->screenStatus, VodPlayView::Playing);
    QCOMPARE(full->totalTime, 312000u);
    QCOMPARE(full->currentMsecs, 61000u);
    QCOMPARE(full->volume, 5);
    QCOMPARE(full->isMute, muted);
    QTRY_COMPARE(sentMessages(),
                 QStringList{QStringLiteral("changeVodWindow(int,int,int,int) 00000000000000000000016b00000110")});
    QTRY_VERIFY(full->playScreenReady);

    QtopiaIpcTransport::clearTraffic();
    pressKey(full, Key_Video4);
    QCOMPARE(full->screenType, WideVodScreen);
    QCOMPARE(sentMessages(),
             QStringList{QStringLiteral("changeVodWindow(int,int,int,int) 0000000000000000000001e00000010f")});
    rig.small.messageHandle(QLatin1String(CurrentTime), messageData(75.0f));
    pressKey(full, Qt::Key_VolumeUp);

    QtopiaIpcTransport::clearTraffic();
    pressKey(full, Key_Video4);
    QVERIFY(!full->isVisible() && !rig.small.fullScreenShown);
    QCOMPARE(rig.small.screenStatus, VodPlayView::Playing);
    QCOMPARE(rig.small.flowingTime(), QStringLiteral("00:01:15"));
    QCOMPARE(rig.small.volume, 6);
    QCOMPARE(rig.small.isMute, false);
    QTRY_COMPARE(sentMessages(),
                 QStringList{QStringLiteral("changeVodWindow(int,int,int,int) 0000000800000027" "00000100000000c2")});
}

// Seek presses add up until a second after the last one: forward and back
// cancel out, two forward make ten seconds.
void tst_VodPlayers::seekPressesAddUp()
{
    Rig rig(Small);
    rig.small.setScreenStatus(VodPlayView::Playing);
    for (const QList<int> &presses : {QList<int>{Qt::Key_Context1, Qt::Key_Context2},
                                      QList<int>{Qt::Key_Context1, Qt::Key_Context1}}) {
        for (int key : presses)
            pressKey(&rig.small, key);
        QMetaObject::invokeMethod(rig.small.seekTimer, "timeout");
    }
    // 1:01 and ten seconds: "71".
    QCOMPARE(sentMessages(), QStringList{QStringLiteral("forwardVod(QString) 0000000400370031")});
}

// Back in the full-screen player refuses the close that the platform makes of
// it, once; the next close is taken.
void tst_VodPlayers::backRefusesOneClose()
{
    Rig rig(Full);
    pressKey(rig.player, Qt::Key_Back);
    rig.player->close();
    QVERIFY(rig.player->isVisible());
    rig.player->close();
    QVERIFY(!rig.player->isVisible());
}

void tst_VodPlayers::awayAndBack_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("away");
    QTest::addColumn<QString>("back");
    for (Kind kind : {Small, Full}) {
        const char *name = kind == Small ? "small" : "full";
        QTest::addRow("%s: call", name) << kind << QString(StartCall) << QString(StopCall);
        QTest::addRow("%s: other screen", name) << kind << QString(HideVodFullScreen) << QString(ShowVodFullScreen);
    }
}

// A call or another screen hides the full-screen player, not the small one;
// their end shows it again.
void tst_VodPlayers::awayAndBack()
{
    QFETCH(Kind, kind);
    QFETCH(QString, away);
    QFETCH(QString, back);
    Rig rig(kind);
    rig.small.messageHandle(away, QByteArray());
    QCOMPARE(rig.player->isVisible(), kind == Small);
    rig.small.messageHandle(back, QByteArray());
    QVERIFY(rig.player->isVisible());
}

// Ten seconds without a sign of life: the notice, a stop request, the player closes.
void tst_VodPlayers::serverSilence()
{
    Rig rig(Full);
    rig.small.messageHandle(QLatin1String(StartOKVod), QByteArray());
    QSignalSpy ended(&rig.small, &VodPlayView::notifyStopPlay);
    QMetaObject::invokeMethod(rig.small.serverWatchdog, "timeout");
    QCOMPARE(notices->seen.size(), 1);
    QCOMPARE(notices->seen.constFirst().text, QStringLiteral("A video has been stopped by the VCS server."));
    QCOMPARE(notices->seen.constFirst().parent, static_cast<QWidget *>(&rig.small));
    QCOMPARE(sentMessages(), QStringList{QStringLiteral("stopVod()")});
    QVERIFY(!rig.small.isVisible() && !rig.small.fullScreenView->isVisible());
    QCOMPARE(rig.small.screenStatus, VodPlayView::Stopped);
    QCOMPARE(ended.size(), 0);
}

QTEST_MAIN(tst_VodPlayers)
#include "tst_vodplayers.moc"
