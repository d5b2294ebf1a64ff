// The push broadcast viewer as tables: (state x notification) and (state x key)
// -> state, requests on the wire, what the full-screen view shows; then the
// orders the video manager relies on and the full-screen view's switches.

#include "devicekeys.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "noticewatcher.h"
#include "push/videopushfullview.h"
#include "player/playscreen.h"
#include "push/videopushview.h"
#include "testenvironment.h"

#include <QPointer>
#include <QTest>
#include <QTimer>

#include <memory>

using Status = VodPlayView::playScreenStatus;
using namespace VodMessage;

namespace {

const QString push = QLatin1String(VodChannel::PushApplication);

// The view playing, optionally with its full-screen view open and visible.
std::unique_ptr<VideoPushView> playingView(bool full)
{
    auto view = std::make_unique<VideoPushView>(nullptr, Qt::WindowFlags());
    deliver(push, QLatin1String(StartPush));
    if (full) {
        view->playScreenReady = true;
        pressKey(view.get(), Key_Video4);
    }
    flushEvents();
    QtopiaIpcTransport::clearTraffic();
    return view;
}

} // namespace

class tst_Push : public QObject
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
        notices->seen.clear();
        QtopiaIpcTransport::clearTraffic();
    }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void startsAndStarts();
    void notifications_data();
    void notifications();
    void keys_data();
    void keys();
    void fullScreenViewSwitches();
    void serverWatchdog_data();
    void serverWatchdog();
};

// Shown, the view tells a VOD player to give up the display before the video
// manager hears of it; a broadcast's start leaves its requests in this order.
void tst_Push::startsAndStarts()
{
    VideoPushView view(nullptr, Qt::WindowFlags());
    QCOMPARE(sentMessages(), (QStringList{QStringLiteral("QPE/VideoApplication hideVodFullScreen()"),
                                          QStringLiteral("pushAppExecuted()")}));
    QCOMPARE(view.screenStatus, VodPlayView::Stopped);
    QCOMPARE(view.windowTitle(), QStringLiteral("Video Contents;Broadcast"));
    QtopiaIpcTransport::clearTraffic();
    view.volume = 4;
    deliver(push, QLatin1String(StartPush));
    QCOMPARE(sentMessages(),
             (QStringList{QStringLiteral("QPE/VideoApplication startVideoPushApp()"),
                          QStringLiteral("playPush(QString) 00000004302e3000"),
                          QStringLiteral("QPE/CallManager setVolume_vod(int) 00000003"),
                          QStringLiteral("QPE/VideoApplication hideVodFullScreen()")}));
    QCOMPARE(view.screenStatus, VodPlayView::Playing);
    QVERIFY(view.serverWatchdog->isActive());
}

void tst_Push::notifications_data()
{
    QTest::addColumn<bool>("full");
    QTest::addColumn<Status>("from");
    QTest::addColumn<QString>("message");
    QTest::addColumn<Status>("to");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<int>("fullShown"); // -1: no full-screen view
    QTest::addColumn<bool>("open");

    const Status Stopped = VodPlayView::Stopped, Playing = VodPlayView::Playing, Paused = VodPlayView::Paused,
                 Interrupted = VodPlayView::Interrupted;
    const QStringList none;
    // A closing view gives the display back to a VOD player.
    const QString displayBack = QStringLiteral("QPE/VideoApplication showVodFullScreen()");
    for (bool full : {false, true}) {
        const int shown = full ? 1 : -1;
        const int hidden = full ? 0 : -1;
        const auto row = [&](const char *name) -> QTestData & {
            return QTest::addRow("%s%s", name, full ? " (full screen)" : "");
        };
        row("paused") << full << Playing << PauseOKPush << Paused << none << shown << true;
        row("paused while held") << full << Interrupted << PauseOKPush << Interrupted << none << shown << true;
        row("call") << full << Playing << StartCall << Interrupted << QStringList{QStringLiteral("pausePush()")}
                    << hidden << true;
        row("other screen") << full << Playing << HideVodFullScreen << Interrupted
                            << QStringList{QStringLiteral("pausePush()")} << hidden << true;
        row("call while paused") << full << Paused << StartCall << Paused << none << hidden << true;
        row("call over") << full << Interrupted << StopCall << Playing << QStringList{QStringLiteral("resumePush()")}
                         << shown << true;
        row("screen back while paused") << full << Paused << ShowVodFullScreen << Playing
                                        << QStringList{QStringLiteral("resumePush()")} << shown << true;
        row("call over while playing") << full << Playing << StopCall << Playing << none << shown << true;
        row("ended") << full << Playing << EndOKPush << Stopped
                     << QStringList{QStringLiteral("stopPush()"), displayBack} << hidden << false;
        row("multicast ended") << full << Playing << EndOKMulticastPush << Stopped
                               << QStringList{QStringLiteral("stopMulticastPush()"), displayBack} << hidden << false;
        row("set-up failed") << full << Playing << SetupFailPush << Stopped << QStringList{displayBack} << hidden
                             << false;
        row("error") << full << Playing << Error << Playing << none << shown << true;
        row("muted") << full << Playing << VodSoundMute << Playing << none << shown << true;
    }
}

void tst_Push::notifications()
{
    QFETCH(bool, full);
    QFETCH(Status, from);
    QFETCH(QString, message);
    QFETCH(Status, to);
    QFETCH(QStringList, sent);
    QFETCH(int, fullShown);
    QFETCH(bool, open);

    const auto view = playingView(full);
    view->setScreenStatus(from);
    if (view->fullScreenView)
        view->fullScreenView->setScreenStatus(from);
    deliver(push, message, messageData(1));
    QCOMPARE(view->screenStatus, to);
    QCOMPARE(sentMessages(), sent);
    QCOMPARE(view->isVisible(), open);
    QCOMPARE(view->fullScreenView ? int(view->fullScreenView->isVisible()) : -1, fullShown);
    // Painted, a push player outside a hold offers no play icon.
    view->playScreen->grab();
    if (to != VodPlayView::Interrupted)
        QVERIFY(!view->playScreen->showPlayIcon);
    if (view->fullScreenView) {
        QCOMPARE(view->fullScreenView->screenStatus, to);
        QCOMPARE(view->fullScreenView->volumeRectShown, message == QLatin1String(VodSoundMute));
        QCOMPARE(view->fullScreenView->isMute, message == QLatin1String(VodSoundMute));
    }
    QCOMPARE(notices->seen.size(), qsizetype(message == QLatin1String(SetupFailPush)));
}

void tst_Push::keys_data()
{
    QTest::addColumn<bool>("full");
    QTest::addColumn<Status>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<Status>("to");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<bool>("accepted");

    const Status Playing = VodPlayView::Playing, Stopped = VodPlayView::Stopped;
    const QString stopUI = QStringLiteral("stopUIPush()");
    QTest::newRow("Back") << false << Playing << int(Qt::Key_Back) << Stopped << QStringList{stopUI} << true;
    // Left ignored, so that the platform sees the hang-up too.
    QTest::newRow("Hangup") << false << Playing << int(Qt::Key_Hangup) << Stopped << QStringList{stopUI} << false;
    QTest::newRow("volume up") << false << Playing << int(Qt::Key_VolumeUp) << Playing
                               << QStringList{QStringLiteral("QPE/CallManager setVolume_vod(int) 00000001")} << true;
    QTest::newRow("volume down at 1") << false << Playing << int(Qt::Key_VolumeDown) << Playing
                                      << QStringList{QStringLiteral("QPE/CallManager setVolume_vod(int) 00000000")}
                                      << true;
    QTest::newRow("headset") << false << Playing << int(Key_Headset) << Playing
                             << QStringList{QStringLiteral("QPE/CallManager setHeadset_onoff()")} << true;
    QTest::newRow("Video4 when stopped") << false << Stopped << int(Key_Video4) << Stopped << QStringList() << true;
    QTest::newRow("full: Back does nothing") << true << Playing << int(Qt::Key_Back) << Playing << QStringList()
                                             << true;
    QTest::newRow("full: Video3 stops") << true << Playing << int(Key_Video3) << Stopped << QStringList{stopUI}
                                        << true;
    QTest::newRow("full: volume up") << true << Playing << int(Qt::Key_VolumeUp) << Playing
                                     << QStringList{QStringLiteral("QPE/CallManager setVolume_vod(int) 00000001")}
                                     << true;
    QTest::newRow("full: headset") << true << Playing << int(Key_Headset) << Playing
                                   << QStringList{QStringLiteral("QPE/CallManager setHeadset_onoff()")} << true;
}

void tst_Push::keys()
{
    QFETCH(bool, full);
    QFETCH(Status, from);
    QFETCH(int, key);
    QFETCH(Status, to);
    QFETCH(QStringList, sent);
    QFETCH(bool, accepted);

    const auto view = playingView(full);
    view->setScreenStatus(from);
    QWidget *target = full ? static_cast<QWidget *>(view->fullScreenView) : view.get();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &press);
    QCOMPARE(press.isAccepted(), accepted);
    QCOMPARE(view->screenStatus, to);
    QCOMPARE(sentMessages(), sent);
    if (full) {
        QCOMPARE(view->fullScreenView->screenStatus, to);
        QCOMPARE(view->fullScreenView->volumeRectShown, key == Qt::Key_VolumeUp);
    }
    QVERIFY(view->isVisible());
}

// Video4 opens the 4:3 view once the picture is in place, Video4 switches to
// the wide picture, and from there back to the view with the volume and mute.
// (The windows asked for are the VOD players' own, checked there.)
void tst_Push::fullScreenViewSwitches()
{
    const auto view = playingView(false);
    view->isMute = true;
    view->volume = 7;
    // Not before the picture has been placed.
    pressKey(view.get(), Key_Video4);
    QVERIFY(!view->fullScreenView);
    // The view is only opened while the broadcast plays.
    QCOMPARE(VideoPushFullView(view.get(), nullptr).screenStatus, VodPlayView::Playing);
    QTRY_VERIFY(view->playScreenReady);
    pressKey(view.get(), Key_Video4);
    VideoPushFullView *full = view->fullScreenView;
    QVERIFY(full && full->isVisible());
    QCOMPARE(full->screenStatus, VodPlayView::Playing);
    QCOMPARE(full->volume, 7);
    QVERIFY(full->isMute);
    QVERIFY(!view->playScreenReady);
    QTRY_VERIFY(full->playScreenReady);
    pressKey(full, Key_Video4);
    QCOMPARE(full->screenType, WidePushScreen);
    pressKey(full, Qt::Key_VolumeDown);
    pressKey(full, Key_Video4);
    QVERIFY(!full->isVisible() && view->isVisible());
    QCOMPARE(view->volume, 6);
    QVERIFY(!view->isMute);

    // A second Video4 makes a new view.
    QTRY_VERIFY(view->playScreenReady);
    const QPointer<VideoPushFullView> old(full);
    pressKey(view.get(), Key_Video4);
    QVERIFY(!old && view->fullScreenView);
}

void tst_Push::serverWatchdog_data()
{
    QTest::addColumn<int>("key"); // pressed after the notice; 0: the reports come back
    QTest::newRow("reports again") << 0;
    QTest::newRow("Back") << int(Qt::Key_Back);
    QTest::newRow("Hangup") << int(Qt::Key_Hangup);
}

// Thirty seconds without a time report: the notice; the broadcast goes on. A
// stop asked for before the next report closes the view at once: a lost
// server never sends the end.
void tst_Push::serverWatchdog()
{
    QFETCH(int, key);
    const auto view = playingView(false);
    QTimer *watchdog = view->serverWatchdog;
    deliver(push, QLatin1String(CurrentTime), messageData(3.0f));
    QVERIFY(watchdog->isActive());
    QMetaObject::invokeMethod(watchdog, "timeout");
    QCOMPARE(notices->seen.size(), 1);
    QCOMPARE(notices->seen.constFirst().text, QStringLiteral("Temporary disconnection from VCS server"));
    QCOMPARE(notices->seen.constFirst().detail,
             QStringLiteral("If you want to quit this broadcast, Please push 'stop' button"));
    QVERIFY(!watchdog->isActive());
    QCOMPARE(view->screenStatus, VodPlayView::Playing);
    QVERIFY(sentMessages().isEmpty());
    if (key) {
        pressKey(view.get(), key);
        QCOMPARE(sentMessages(), (QStringList{"stopUIPush()", "QPE/VideoApplication showVodFullScreen()"}));
        QVERIFY(!view->isVisible());
        return;
    }
    // The next report arms it again; a pause stops it.
    deliver(push, QLatin1String(CurrentTime), messageData(4.0f));
    QVERIFY(watchdog->isActive());
    deliver(push, QLatin1String(PauseOKPush));
    QVERIFY(!watchdog->isActive());
}

QTEST_MAIN(tst_Push)
#include "tst_push.moc"
