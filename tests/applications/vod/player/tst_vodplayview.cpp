#include "homekeyblock.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "player/playscreen.h"
#include "player/vodplayview.h"
#include "qdirectpainter.h"
#include "qsoftmenubar.h"
#include "qvaluespaceitem.h"
#include "testenvironment.h"
#include "vod.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFocusEvent>
#include <QPainter>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <functional>
#include <memory>

Q_DECLARE_METATYPE(playScreenType)

namespace {

const QString videoManager = QString::fromLatin1(VodChannel::VideoManager);
const QString callManager = QString::fromLatin1(VodChannel::CallManager);
const QString markerFile = QStringLiteral("/tmp/status/vod_setup_status");

// The base player, with a way to see the full-screen volume overlay being asked for.
class TestPlayer : public VodPlayView
{
public:
    using VodPlayView::VodPlayView;
    using VodPlayView::endOfContent;

};

// The region `view` repaints after `trigger`, once its video area is open.
void repainted(VodPlayView &view, const std::function<void()> &trigger, QRegion &all)
{
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_VERIFY(view.playScreenReady);
    QTest::qWait(50);
    struct Recorder : QObject
    {
        QRegion *all;
        bool eventFilter(QObject *, QEvent *e) override
        {
            if (e->type() == QEvent::Paint)
                *all += static_cast<QPaintEvent *>(e)->region();
            return false;
        }
    } recorder;
    recorder.all = &all;
    view.installEventFilter(&recorder);
    trigger();
    QTRY_VERIFY(!all.isEmpty());
    QTest::qWait(20);
    view.removeEventFilter(&recorder);
}

// The browser window that sends the players' requests; it asks for the group
// list as it starts, which is dropped from the traffic log.
std::unique_ptr<vod> makeRequestSender()
{
    auto sender = std::make_unique<vod>();
    QtopiaIpcTransport::clearTraffic();
    return sender;
}

QImage canvas(const QSize &size = QSize(480, 272), const QColor &under = Qt::black)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(under);
    return image;
}

// Whether some pixel of `rect` has exactly the colour `color`.
bool contains(const QImage &image, const QRect &rect, const QColor &color)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            if (image.pixelColor(x, y) == color)
                return true;
    return false;
}

// The picture `name` as drawn at `at` over `under`.
bool showsImage(const QImage &image, const QPoint &at, const QString &name, const QColor &under = Qt::black)
{
    const QPixmap pixmap(name);
    if (pixmap.isNull())
        return false;
    QImage expected = canvas(pixmap.size(), under);
    QPainter(&expected).drawPixmap(0, 0, pixmap);
    return image.copy(QRect(at, pixmap.size())) == expected;
}

QByteArray text(const char *value)
{
    return messageData(QString::fromLatin1(value));
}

using Action = std::function<void(VodPlayView &)>;

} // namespace

Q_DECLARE_METATYPE(Action)

class tst_VodPlayView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void videoArea();
    void volumeKeys_data();
    void volumeKeys();
    void otherKeys();
    void refusedClose();
    void focus_data();
    void focus();
    void windowTitle_data();
    void windowTitle();

    void notifications_data();
    void notifications();
    void soundMute_data();
    void soundMute();
    void startFailClosesFullScreen();
    void endOfContentNotification();
    void callsHideFullScreenPlayers_data();
    void callsHideFullScreenPlayers();
    void pushApplicationStopped();

    void timeReportCreatesGuardOnce();
    void endGuard_data();
    void endGuard();
    void timeReportAtTheEnd_data();
    void timeReportAtTheEnd();
    void animation();
    void totalTime_data();
    void totalTime();
    void progressRunsAhead();
    void flowingTimePainting_data();
    void flowingTimePainting();

    void volumeReadout_data();
    void volumeReadout();
    void softKeys_data();
    void softKeys();
    void controlPanel_data() { softKeys_data(); }
    void controlPanel();
    void fullButton_data();
    void fullButton();
    void maxButton();

    void requests_data();
    void requests();

private:
    std::unique_ptr<TestEnvironment> env;
};

void tst_VodPlayView::initTestCase()
{
    env = std::make_unique<TestEnvironment>();
}

void tst_VodPlayView::init()
{
    QtopiaIpcTransport::clearTraffic();
    QSettings(QStringLiteral("Trolltech"), QStringLiteral("Sound")).clear();
}

void tst_VodPlayView::cleanup()
{
    env->remove(markerFile);
    QValueSpaceItem::clearAll();
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

// ---------------------------------------------------------------------------
// Base dialog

void tst_VodPlayView::videoArea()
{
    QElapsedTimer clock;
    clock.start();
    VodPlayView view(nullptr, FullVodScreen, nullptr);
    QVERIFY(isHomeKeyBlocked(&view));
    QVERIFY(view.seekTimer->isSingleShot());
    QCOMPARE(view.seekTimer->interval(), 1000);
    // The video area opens half a second after construction.
    QVERIFY(!view.playScreenReady);
    QTRY_VERIFY(view.playScreenReady);
    QVERIFY(clock.elapsed() >= 500);

    // Changing the window reopens it 100 ms later, also for a value outside the kinds.
    for (playScreenType type : {WideVodScreen, playScreenType(7)}) {
        clock.restart();
        view.changeVideoWindow(type);
        QCOMPARE(view.videoWindowType, type);
        QVERIFY(!view.playScreenReady);
        QTRY_VERIFY(view.playScreenReady);
        QVERIFY(clock.elapsed() >= 100);
    }
}

void tst_VodPlayView::volumeKeys_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("stored");

    QTest::newRow("up at 16, vod") << SmallVodScreen << 16 << int(Qt::Key_VolumeUp) << 16 << true;
    QTest::newRow("up at 9, full vod") << FullVodScreen << 9 << int(Qt::Key_VolumeUp) << 10 << true;
    QTest::newRow("down at 1, wide vod") << WideVodScreen << 1 << int(Qt::Key_VolumeDown) << 1 << true;
    QTest::newRow("down at 2, vod") << SmallVodScreen << 2 << int(Qt::Key_VolumeDown) << 1 << true;
    QTest::newRow("down at 5, full push") << FullPushScreen << 5 << int(Qt::Key_VolumeDown) << 4 << false;
    QTest::newRow("up at 1, wide push") << WidePushScreen << 1 << int(Qt::Key_VolumeUp) << 2 << false;
}

void tst_VodPlayView::volumeKeys()
{
    QFETCH(playScreenType, type);
    QFETCH(int, start);
    QFETCH(int, key);
    QFETCH(int, level);
    QFETCH(bool, stored);

    VodPlayView view(nullptr, type, nullptr);
    view.volume = start;
    view.isMute = true;
    pressKey(&view, key);

    QCOMPARE(view.volume, level);
    QVERIFY(!view.isMute);
    const QList<QtopiaIpcMessage> sent = sentOn(callManager, QString::fromLatin1(VodMessage::SetVolumeVod));
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent.first().data, messageData(level - 1));

    const QVariant value = QSettings(QStringLiteral("Trolltech"), QStringLiteral("Sound"))
                               .value(QStringLiteral("Volume/VOD"));
    QCOMPARE(value.isValid(), stored);
    if (stored)
        QCOMPARE(value.toInt(), level - 1);
}

void tst_VodPlayView::otherKeys()
{
    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.screenStatus = VodPlayView::Playing;
    view.volume = 7;
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QSignalSpy rejected(&view, &QDialog::rejected);

    // A dialog would close on Escape; the player ignores every key it does not own.
    for (int key : {int(Qt::Key_Escape), int(Qt::Key_Select), int(Qt::Key_Back), 0x01200013, int(Qt::Key_A)})
        pressKey(&view, key);
    QVERIFY(view.isVisible());
    QCOMPARE(rejected.count(), 0);
    QCOMPARE(view.volume, 7);
    QCOMPARE(view.screenStatus, VodPlayView::Playing);
    QVERIFY(QtopiaIpcTransport::traffic().isEmpty());

    QTest::ignoreMessage(QtDebugMsg, "keyPressEvent 1543 Headset pressed");
    pressKey(&view, 0x01200008);
    const QList<QtopiaIpcMessage> sent = sentOn(callManager);
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent.first().message, QStringLiteral("setHeadset_onoff()"));
    QVERIFY(sent.first().data.isEmpty());
    QCOMPARE(view.volume, 7);
}

void tst_VodPlayView::refusedClose()
{
    VodPlayView view(nullptr, FullVodScreen, nullptr);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QSignalSpy rejected(&view, &QDialog::rejected);
    QSignalSpy finished(&view, &QDialog::finished);

    view.ignoreNextClose = true;
    QVERIFY(!view.close());
    QVERIFY(view.isVisible());
    QVERIFY(view.close());
    // Closed as a plain widget: the dialog is not rejected.
    QCOMPARE(rejected.count(), 0);
    QCOMPARE(finished.count(), 0);
}

void tst_VodPlayView::focus_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<int>("callCount");
    QTest::addColumn<VodPlayView::playScreenStatus>("status");
    QTest::addColumn<bool>("reserves");
    QTest::addColumn<bool>("iconOnFocusIn");

    QTest::newRow("small") << SmallVodScreen << 1 << VodPlayView::Interrupted << false << false;
    QTest::newRow("full, no call") << FullVodScreen << 0 << VodPlayView::Interrupted << true << false;
    QTest::newRow("full, call, interrupted") << FullVodScreen << 1 << VodPlayView::Interrupted << true << true;
    QTest::newRow("wide, call, playing") << WideVodScreen << 1 << VodPlayView::Playing << true << false;
    QTest::newRow("wide push, call, interrupted") << WidePushScreen << 2 << VodPlayView::Interrupted << true << true;
}

void tst_VodPlayView::focus()
{
    QFETCH(playScreenType, type);
    QFETCH(int, callCount);
    QFETCH(VodPlayView::playScreenStatus, status);
    QFETCH(bool, reserves);
    QFETCH(bool, iconOnFocusIn);

    VodPlayView view(nullptr, type, nullptr);
    view.callCount = callCount;
    view.screenStatus = status;
    view.playScreen->showPlayIcon = false;

    const int reservedBefore = QDirectPainter::reserveCount();
    QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&view, &out);
    QVERIFY(view.focusLost);
    QCOMPARE(QDirectPainter::reserveCount() - reservedBefore, reserves ? 1 : 0);
    if (reserves)
        QVERIFY(QDirectPainter::reservedRegion().isEmpty());

    QFocusEvent in(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&view, &in);
    QVERIFY(!view.focusLost);
    QCOMPARE(view.playScreen->showPlayIcon, iconOnFocusIn);
    QCOMPARE(QDirectPainter::reserveCount() - reservedBefore, reserves ? 1 : 0);
}

void tst_VodPlayView::windowTitle_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("tellNumber");

    QTest::newRow("empty title") << SmallVodScreen << QString() << QString();
    QTest::newRow("short title") << SmallVodScreen << QStringLiteral("News") << QString();
    QTest::newRow("long title beside a number")
        << SmallVodScreen << QStringLiteral("A very long title of a documentary about the sea and its fishes")
        << QStringLiteral("01012345678");
    QTest::newRow("full screen sets no title") << FullVodScreen << QStringLiteral("News") << QString();
}

void tst_VodPlayView::windowTitle()
{
    QFETCH(playScreenType, type);
    QFETCH(QString, title);
    QFETCH(QString, tellNumber);

    if (!tellNumber.isEmpty())
        QValueSpaceItem(QStringLiteral("/UI/TellNumber")).setValue(tellNumber);
    VodPlayView view(nullptr, type, nullptr);
    view.setContentTitle(title);
    QCOMPARE(view.contentTitle, title);

    if (type != SmallVodScreen) {
        QVERIFY(view.windowTitle().isEmpty());
        return;
    }
    const QString elided = view.elidedContentTitle();
    QCOMPARE(view.windowTitle(), QStringLiteral("Video Contents;") + elided);
    const QFontMetrics metrics = view.fontMetrics();
    const int room = 180 - metrics.horizontalAdvance(tellNumber);
    if (metrics.horizontalAdvance(title) <= room) {
        QCOMPARE(elided, title);
    } else {
        QVERIFY(elided.endsWith(QChar(0x2026)));
        QVERIFY(metrics.horizontalAdvance(elided) <= room);
        QVERIFY(title.startsWith(elided.chopped(1)));
    }
}

// ---------------------------------------------------------------------------
// Notifications

void tst_VodPlayView::notifications_data()
{
    QTest::addColumn<VodPlayView::playScreenStatus>("status");
    QTest::addColumn<int>("calls");
    QTest::addColumn<bool>("icon");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<VodPlayView::playScreenStatus>("newStatus");
    QTest::addColumn<int>("newCalls");
    QTest::addColumn<bool>("newIcon");
    QTest::addColumn<float>("newPausedTime");
    QTest::addColumn<quint32>("newMsecs");

    using V = VodPlayView;
    // Every row starts with pausedTime 7.25 s and currentMsecs 1234.
    const float p = 7.25f;
    const quint32 m = 1234;
    const QByteArray none;
    const QByteArray at12 = messageData(12.5f);

    QTest::newRow("startOKVod from paused") << V::Paused << 0 << true << "startOKVod()" << none << V::Playing << 0 << false << p << m;
    QTest::newRow("pauseOKVod while playing") << V::Playing << 0 << false << "pauseOKVod(float)" << at12 << V::Paused << 0 << true << 12.5f << m;
    QTest::newRow("pauseOKVod while interrupted") << V::Interrupted << 1 << false << "pauseOKVod(float)" << at12 << V::Interrupted << 1 << true << 12.5f << m;
    QTest::newRow("pauseOKVod while paused for push") << V::PausedForPush << 0 << false << "pauseOKVod(float)" << at12 << V::PausedForPush << 0 << true << 12.5f << m;
    QTest::newRow("pauseOKVod while stopping") << V::Stopping << 0 << false << "pauseOKVod(float)" << at12 << V::Paused << 0 << true << 12.5f << m;
    QTest::newRow("pauseOKVod without data") << V::Playing << 0 << false << "pauseOKVod(float)" << none << V::Paused << 0 << true << 0.0f << m;
    QTest::newRow("pauseFailVod") << V::Playing << 0 << false << "pauseFailVod()" << none << V::Playing << 0 << false << p << m;
    QTest::newRow("resumedOKVod, no call") << V::Interrupted << 0 << true << "resumedOKVod()" << none << V::Playing << 0 << false << p << 7250u;
    QTest::newRow("resumedOKVod, count below zero") << V::Paused << -1 << true << "resumedOKVod()" << none << V::Playing << -1 << false << p << 7250u;
    QTest::newRow("resumedOKVod during a call") << V::Interrupted << 1 << true << "resumedOKVod()" << none << V::Interrupted << 1 << true << p << m;
    QTest::newRow("error") << V::Playing << 0 << false << "error(int)" << messageData(3) << V::Playing << 0 << false << p << m;
    QTest::newRow("startPush") << V::Paused << 0 << true << "startPush()" << none << V::Paused << 0 << false << p << m;
    QTest::newRow("pauseOKPush") << V::Playing << 0 << false << "pauseOKPush()" << none << V::Playing << 0 << true << p << m;
    QTest::newRow("startcall while playing") << V::Playing << 0 << false << "startcall()" << none << V::Interrupted << 1 << false << p << m;
    QTest::newRow("startcall while stopped") << V::Stopped << 1 << true << "startcall()" << none << V::Interrupted << 2 << true << p << m;
    QTest::newRow("startcall while stopping") << V::Stopping << 0 << true << "startcall()" << none << V::Stopping << 1 << true << p << m;
    QTest::newRow("startcall while paused for push") << V::PausedForPush << 0 << true << "startcall()" << none << V::PausedForPush << 1 << true << p << m;
    QTest::newRow("stopcall keeps the hold") << V::Interrupted << 1 << true << "stopcall()" << none << V::Interrupted << 0 << true << p << m;
    QTest::newRow("hideVodFullScreen while playing") << V::Playing << 0 << false << "hideVodFullScreen()" << none << V::Playing << 0 << false << p << m;
    QTest::newRow("startVideoPushApp while playing") << V::Playing << 0 << false << "startVideoPushApp()" << none << V::PausedForPush << 0 << false << p << m;
    QTest::newRow("startVideoPushApp while paused") << V::Paused << 0 << true << "startVideoPushApp()" << none << V::Paused << 0 << true << p << m;
    QTest::newRow("stopVideoPushApp while playing") << V::Playing << 0 << false << "stopVideoPushApp()" << none << V::Playing << 0 << false << p << m;
    QTest::newRow("unknown message") << V::Paused << 0 << true << "startokvod()" << none << V::Paused << 0 << true << p << m;
    QTest::newRow("blank in the signature") << V::Playing << 0 << false << "pauseOKVod( float)" << at12 << V::Playing << 0 << false << p << m;
}

void tst_VodPlayView::notifications()
{
    QFETCH(VodPlayView::playScreenStatus, status);
    QFETCH(int, calls);
    QFETCH(bool, icon);
    QFETCH(QString, message);
    QFETCH(QByteArray, data);
    QFETCH(VodPlayView::playScreenStatus, newStatus);
    QFETCH(int, newCalls);
    QFETCH(bool, newIcon);
    QFETCH(float, newPausedTime);
    QFETCH(quint32, newMsecs);

    NoticeRecorder notices;
    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.screenStatus = status;
    view.callCount = calls;
    view.playScreen->showPlayIcon = icon;
    view.pausedTime = 7.25f;
    view.currentMsecs = 1234;

    view.messageHandle(message, data);

    QCOMPARE(view.screenStatus, newStatus);
    QCOMPARE(view.callCount, newCalls);
    QCOMPARE(view.playScreen->showPlayIcon, newIcon);
    QCOMPARE(view.pausedTime, newPausedTime);
    QCOMPARE(view.currentMsecs, newMsecs);
    QVERIFY(notices.notices.isEmpty());
}

void tst_VodPlayView::soundMute_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("muted");
    QTest::addColumn<int>("overlays");

    QTest::newRow("small, 1") << SmallVodScreen << 1 << true << 0;
    QTest::newRow("small, 2") << SmallVodScreen << 2 << false << 0;
    QTest::newRow("full, 1") << FullVodScreen << 1 << true << 1;
    QTest::newRow("wide, 0") << WideVodScreen << 0 << false << 1;
    QTest::newRow("push full screen, 1") << FullPushScreen << 1 << true << 0;
}

void tst_VodPlayView::soundMute()
{
    QFETCH(playScreenType, type);
    QFETCH(int, value);
    QFETCH(bool, muted);
    QFETCH(int, overlays);

    TestPlayer view(nullptr, type, nullptr);
    view.isMute = !muted;
    view.messageHandle(QStringLiteral("vodSoundMute(int)"), messageData(value));
    QCOMPARE(view.isMute, muted);
    QCOMPARE(int(view.volumeRectShown), overlays);
}

void tst_VodPlayView::startFailClosesFullScreen()
{
    VodPlayView view(nullptr, WideVodScreen, nullptr);
    view.screenStatus = VodPlayView::Playing;
    view.messageHandle(QStringLiteral("currentTime(float)"), messageData(0.0f)); // creates the end guard
    QVERIFY(view.frameSliderTimer && view.frameSliderTimer->isActive());
    view.currentMsecs = 4321;
    view.volume = 12;
    view.isMute = true;
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QSignalSpy closed(&view, &VodPlayView::fullScreenCloseSignal);

    view.messageHandle(QStringLiteral("startFailVod(int)"), messageData(5));

    QCOMPARE(closed.count(), 1);
    QCOMPARE(closed.first().at(0).value<VodPlayView::playScreenStatus>(), VodPlayView::Stopping);
    QCOMPARE(closed.first().at(1).value<ulong>(), ulong(4321));
    QCOMPARE(closed.first().at(2).toInt(), 12);
    QCOMPARE(closed.first().at(3).toBool(), true);
    QVERIFY(!view.isVisible());
    QVERIFY(!view.frameSliderTimer->isActive());
}

void tst_VodPlayView::endOfContentNotification()
{
    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.screenStatus = VodPlayView::Playing;
    view.currentMsecs = 5000;
    view.startAnimation();
    view.messageHandle(QStringLiteral("currentTime(float)"), messageData(1.0f));
    QVERIFY(view.frameSliderTimer);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QSignalSpy stopped(&view, &VodPlayView::notifyStopPlay);

    view.messageHandle(QStringLiteral("endOKVod()"), QByteArray());

    QCOMPARE(view.screenStatus, VodPlayView::Stopped);
    QCOMPARE(view.currentMsecs, 0u);
    QVERIFY(view.playScreen->showPlayIcon);
    QVERIFY(!view.frameSliderTimer);
    QVERIFY(!view.animationTimer);
    QVERIFY(!view.seekTimer);
    QVERIFY(view.findChildren<QTimer *>().isEmpty());
    QCOMPARE(stopped.count(), 1);
    QVERIFY(!view.isVisible());
}

void tst_VodPlayView::callsHideFullScreenPlayers_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<bool>("hides");

    QTest::newRow("small vod") << SmallVodScreen << false;
    QTest::newRow("full vod") << FullVodScreen << true;
    QTest::newRow("wide vod") << WideVodScreen << true;
    QTest::newRow("small push") << SmallPushScreen << true;
}

void tst_VodPlayView::callsHideFullScreenPlayers()
{
    QFETCH(playScreenType, type);
    QFETCH(bool, hides);

    VodPlayView view(nullptr, type, nullptr);
    view.screenStatus = VodPlayView::Playing;
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));

    view.messageHandle(QStringLiteral("startcall()"), QByteArray());
    QCOMPARE(view.isVisible(), !hides);
    view.messageHandle(QStringLiteral("stopcall()"), QByteArray());
    QVERIFY(view.isVisible());
    QCOMPARE(view.screenStatus, VodPlayView::Interrupted);

    view.screenStatus = VodPlayView::Playing;
    view.messageHandle(QStringLiteral("hideVodFullScreen()"), QByteArray());
    QCOMPARE(view.isVisible(), !hides);
    view.messageHandle(QStringLiteral("showVodFullScreen()"), QByteArray());
    QVERIFY(view.isVisible());
    if (type == SmallPushScreen)
        return;

    // A resume while the server is being connected is refused with a notice.
    env->writeFile(markerFile, QByteArray());
    view.screenStatus = VodPlayView::Paused;
    bool visibleDuringNotice = true;
    NoticeRecorder recorder([&](const QNoticeDialog::Notice &) { visibleDuringNotice = view.isVisible(); });
    view.resumeVod();

    QCOMPARE(recorder.notices.size(), 1);
    const QNoticeDialog::Notice notice = recorder.notices.first();
    QCOMPARE(notice.kind, QNoticeDialog::Information);
    QCOMPARE(notice.parent, &view);
    QCOMPARE(notice.text, QStringLiteral("Now connecting server"));
    QCOMPARE(notice.detail, QStringLiteral("Please try agian"));
    QCOMPARE(notice.option, 2);
    QCOMPARE(visibleDuringNotice, !hides);
    QVERIFY(view.isVisible());
    QCOMPARE(view.screenStatus, VodPlayView::Paused);

    // Once the marker has gone the resume goes ahead without a notice.
    env->remove(markerFile);
    view.resumeVod();
    QCOMPARE(recorder.notices.size(), 1);
}

void tst_VodPlayView::pushApplicationStopped()
{
    // The marker makes the resume that follows the notice visible as a second notice.
    env->writeFile(markerFile, QByteArray());
    NoticeRecorder recorder;
    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.screenStatus = VodPlayView::PausedForPush;

    view.messageHandle(QStringLiteral("stopVideoPushApp()"), QByteArray());

    QCOMPARE(recorder.notices.size(), 2);
    QCOMPARE(recorder.notices.at(0).text, QStringLiteral("Video will be resumed"));
    QCOMPARE(recorder.notices.at(0).detail, QString());
    QCOMPARE(recorder.notices.at(0).option, 3);
    QCOMPARE(recorder.notices.at(1).text, QStringLiteral("Now connecting server"));
    // The status waits for "resumedOKVod()".
    QCOMPARE(view.screenStatus, VodPlayView::PausedForPush);
}

void tst_VodPlayView::timeReportCreatesGuardOnce()
{
    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.setTotalTime(QStringLiteral("00:01:00"));
    QCOMPARE(view.totalTime, 60000u);

    view.messageHandle(QStringLiteral("currentTime(float)"), messageData(30.0f));
    QVERIFY(!view.frameSliderTimer);
    QCOMPARE(view.flowingTime(), QStringLiteral("00:00:30"));

    view.messageHandle(QStringLiteral("currentTime(float)"), messageData(59.5f));
    QTimer *guard = view.frameSliderTimer;
    QVERIFY(guard);
    QVERIFY(guard->isActive());
    QCOMPARE(guard->interval(), 2000);
    QCOMPARE(view.currentMsecs, 59500u);
    QCOMPARE(view.sliderTime, 59500u);
    QCOMPARE(view.flowingTime(), QStringLiteral("00:00:59"));

    const int timers = view.findChildren<QTimer *>().size();
    view.messageHandle(QStringLiteral("currentTime(float)"), messageData(59.75f));
    QCOMPARE(view.findChildren<QTimer *>().size(), timers);

    // Pause and start notifications stop and start the guard.
    view.messageHandle(QStringLiteral("pauseOKVod(float)"), messageData(59.75f));
    QVERIFY(!guard->isActive());
    view.messageHandle(QStringLiteral("startOKVod()"), QByteArray());
    QVERIFY(guard->isActive());
}

void tst_VodPlayView::endGuard_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<float>("lastReport");
    QTest::addColumn<int>("ticks");

    QTest::newRow("small, report in the last second") << SmallVodScreen << 59.5f << 1;
    QTest::newRow("small, pulled back to 55 s") << SmallVodScreen << 55.0f << 3;
    QTest::newRow("full, pulled back to 50.5 s") << FullVodScreen << 50.5f << 5;
    QTest::newRow("wide, report in the last second") << WideVodScreen << 59.0f << 1;
}

void tst_VodPlayView::endGuard()
{
    QFETCH(playScreenType, type);
    QFETCH(float, lastReport);
    QFETCH(int, ticks);

    VodPlayView view(nullptr, type, nullptr);
    view.screenStatus = VodPlayView::Playing;
    view.volume = 4;
    view.setTotalTime(QStringLiteral("00:01:00"));
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.messageHandle(QStringLiteral("currentTime(float)"), messageData(59.5f));
    view.messageHandle(QStringLiteral("currentTime(float)"), messageData(lastReport));
    view.playScreen->showPlayIcon = false;
    QTimer *guard = view.frameSliderTimer;
    QVERIFY(guard);
    QSignalSpy closed(&view, &VodPlayView::fullScreenCloseSignal);

    for (int i = 1; i < ticks; ++i) {
        QMetaObject::invokeMethod(guard, "timeout");
        QVERIFY(guard->isActive());
        QVERIFY(!view.playScreen->showPlayIcon);
    }
    QMetaObject::invokeMethod(guard, "timeout");
    QVERIFY(!guard->isActive());
    QVERIFY(view.playScreen->showPlayIcon);

    if (VodPlayView::isSmallKind(type)) {
        QCOMPARE(closed.count(), 0);
        QVERIFY(view.isVisible());
    } else {
        QCOMPARE(closed.count(), 1);
        QCOMPARE(closed.first().at(0).value<VodPlayView::playScreenStatus>(), VodPlayView::Stopping);
        QCOMPARE(closed.first().at(1).value<ulong>(), ulong(view.currentMsecs));
        QCOMPARE(closed.first().at(2).toInt(), 4);
        QVERIFY(!view.isVisible());
    }
}

void tst_VodPlayView::timeReportAtTheEnd_data()
{
    QTest::addColumn<QString>("length");
    QTest::addColumn<QTime>("report");
    QTest::addColumn<bool>("ends");

    QTest::newRow("report equal to the length") << "00:01:00" << QTime(0, 1, 0) << true;
    QTest::newRow("report past the length") << "00:01:00" << QTime(0, 1, 5) << true;
    QTest::newRow("report before the length") << "00:01:00" << QTime(0, 0, 59, 999) << false;
    QTest::newRow("no length known") << "" << QTime(0, 0, 10) << false;
}

void tst_VodPlayView::timeReportAtTheEnd()
{
    QFETCH(QString, length);
    QFETCH(QTime, report);
    QFETCH(bool, ends);

    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.setTotalTime(length);
    view.messageHandle(QStringLiteral("currentTime(float)"), messageData(59.5f));
    QTimer *guard = view.frameSliderTimer;
    QVERIFY(guard);
    view.playScreen->showPlayIcon = false;
    view.progressOffset = 3;

    view.updateFlowingTime(report);

    QCOMPARE(view.currentMsecs, quint32(QTime(0, 0).msecsTo(report)));
    QCOMPARE(view.sliderTime, view.currentMsecs);
    QCOMPARE(view.progressOffset, 0);
    QCOMPARE(view.flowingTime(), report.toString(QStringLiteral("hh:mm:ss")));
    QCOMPARE(view.playScreen->showPlayIcon, ends);
    QCOMPARE(guard->isActive(), !ends);
}

void tst_VodPlayView::animation()
{
    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.startAnimation();
    QCOMPARE(view.animationTimer->interval(), 300);
    QVERIFY(view.animationTimer->isActive());
    QCOMPARE(view.animationFrame, 1u);
    QList<quint32> frames;
    for (int i = 0; i < 5; ++i) {
        QMetaObject::invokeMethod(view.animationTimer, "timeout");
        frames.append(view.animationFrame);
    }
    QCOMPARE(frames, (QList<quint32>{2, 3, 4, 1, 2}));
    view.animationTimer->stop();

    // A tick repaints only the animation's corner, a time report the read-out and the bar.
    QRegion painted;
    repainted(view, [&] { QMetaObject::invokeMethod(view.animationTimer, "timeout"); }, painted);
    QCOMPARE(painted, QRegion(QRect(348, 8, 132, 107)));
    VodPlayView second(nullptr, SmallVodScreen, nullptr);
    second.setTotalTime(QStringLiteral("01:00:00"));
    QImage image = canvas();
    {
        QPainter painter(&image);
        second.drawFlowingTime(&painter); // places the read-out
    }
    painted = QRegion();
    repainted(second, [&] { second.messageHandle(QStringLiteral("currentTime(float)"), messageData(12.0f)); }, painted);
    QCOMPARE(painted, QRegion(QRect(398, 91, 82, 40)) + QRegion(QRect(274, 118, 206, 3)));
}

void tst_VodPlayView::totalTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("msecs");
    QTest::addColumn<int>("step");

    QTest::newRow("00:01:40") << "00:01:40" << 100000u << 2;
    QTest::newRow("01:00:00") << "01:00:00" << 3600000u << 0;
    QTest::newRow("00:03:26 is a pixel a second") << "00:03:26" << 206000u << 1;
    QTest::newRow("00:03:27 is too long for a step") << "00:03:27" << 207000u << 0;
    QTest::newRow("00:00:00") << "00:00:00" << 0u << 0;
    QTest::newRow("empty") << "" << 0u << 0;
    QTest::newRow("not a time") << "1:2" << 0u << 0;
}

void tst_VodPlayView::totalTime()
{
    QFETCH(QString, text);
    QFETCH(quint32, msecs);
    QFETCH(int, step);

    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.setTotalTime(text);
    QCOMPARE(view.totalTimeText, text);
    QCOMPARE(view.totalTime, msecs);
    QCOMPARE(view.progressStep, step);
}

void tst_VodPlayView::progressRunsAhead()
{
    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.setTotalTime(QStringLiteral("00:01:40"));
    view.updateFlowingTime(QTime(0, 0, 50));
    const QRect bar(274, 118, 206, 3);

    // Exact share 103 px; the first paint after a report runs one step ahead,
    // later paints two.
    QCOMPARE(view.progressRect(bar), QRect(274, 118, 105, 3));
    QCOMPARE(view.progressRect(bar), QRect(274, 118, 107, 3));
    QCOMPARE(view.progressRect(bar), QRect(274, 118, 107, 3));
    view.updateFlowingTime(QTime(0, 0, 50));
    QCOMPARE(view.progressRect(bar), QRect(274, 118, 105, 3));

    // An hour has no step: the exact share.
    view.setTotalTime(QStringLiteral("01:00:00"));
    view.updateFlowingTime(QTime(0, 30, 0));
    QCOMPARE(view.progressRect(bar).width(), 103);
    QCOMPARE(view.progressRect(bar).width(), 103);
}

void tst_VodPlayView::flowingTimePainting_data()
{
    QTest::addColumn<QString>("length");
    QTest::addColumn<int>("filled");

    QTest::newRow("half of an hour") << "01:00:00" << 103;
    QTest::newRow("zero length") << "00:00:00" << 0;
    QTest::newRow("no length") << "" << -1;
}

void tst_VodPlayView::flowingTimePainting()
{
    QFETCH(QString, length);
    QFETCH(int, filled);

    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.setTotalTime(length);
    view.updateFlowingTime(QTime(0, 30, 0));
    QImage image = canvas();
    {
        QPainter painter(&image);
        view.drawFlowingTime(&painter);
    }

    QVERIFY(showsImage(image, QPoint(279, 93), QStringLiteral(":image/vod/vod_icon_time.png")));
    QVERIFY(contains(image, QRect(398, 91, 82, 40), QColor(23, 161, 190)));
    QVERIFY(!contains(image, QRect(0, 91, 398, 40), QColor(23, 161, 190)));
    QCOMPARE(view.flowingTimeRect, QRect(398, 91, 100, 40));

    const QColor fill(0, 170, 210);
    const QColor tile = QImage(QStringLiteral(":image/vod/vod_bar_bg.png")).pixelColor(0, 1);
    if (filled < 0) {
        QCOMPARE(image.pixelColor(300, 119), QColor(Qt::black));
        return;
    }
    if (filled > 0) {
        QCOMPARE(image.pixelColor(274, 119), fill);
        QCOMPARE(image.pixelColor(274 + filled - 1, 120), fill);
    }
    QCOMPARE(image.pixelColor(274 + filled, 119), tile);
    QCOMPARE(image.pixelColor(479, 119), tile);
}

void tst_VodPlayView::volumeReadout_data()
{
    QTest::addColumn<int>("volume");
    QTest::addColumn<bool>("muted");
    QTest::addColumn<QString>("icon");

    QTest::newRow("9") << 9 << false << ":image/vod/vod_icon_volume.png";
    QTest::newRow("16, muted") << 16 << true << ":image/vod/vod_icon_volume_none.png";
}

void tst_VodPlayView::volumeReadout()
{
    QFETCH(int, volume);
    QFETCH(bool, muted);
    QFETCH(QString, icon);

    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.volume = volume;
    view.isMute = muted;
    QImage image = canvas();
    {
        QPainter painter(&image);
        view.drawVolumeRect(&painter);
    }

    QVERIFY(showsImage(image, QPoint(279, 132), icon));
    // The texts lie above the bar, whose points share their colours.
    QVERIFY(contains(image, QRect(422, 131, 50, 26), VodPlayView::volumeColor(volume)));
    QCOMPARE(contains(image, QRect(307, 131, 100, 26), QColor(207, 56, 72)), muted);

    // One point per level, the ninth at x 377; beyond the last the bar tile.
    QVERIFY(showsImage(image, QPoint(274, 157), QStringLiteral(":image/vod/volume_bar_point_01")));
    QVERIFY(showsImage(image, QPoint(286, 157), QStringLiteral(":image/vod/volume_bar_point_02")));
    QVERIFY(showsImage(image, QPoint(377, 157), QStringLiteral(":image/vod/volume_bar_point_09")));
    const QColor tile = QImage(QStringLiteral(":image/vod/vod_bar_bg.png")).pixelColor(0, 1);
    if (volume == 16)
        QVERIFY(showsImage(image, QPoint(468, 157), QStringLiteral(":image/vod/volume_bar_point_16")));
    else
        QCOMPARE(image.pixelColor(395, 158), tile);
}

void tst_VodPlayView::softKeys_data()
{
    QTest::addColumn<VodPlayView::playScreenStatus>("status");
    QTest::addColumn<QString>("context2");
    QTest::addColumn<QString>("select");
    QTest::addColumn<QString>("context1");

    QTest::newRow("playing") << VodPlayView::Playing << ":image/vod/vod_icon_botton01.png"
                             << ":image/vod/vod_icon_botton04.png" << ":image/vod/vod_icon_botton03.png";
    for (auto status : {VodPlayView::Stopped, VodPlayView::Paused, VodPlayView::Interrupted,
                        VodPlayView::Stopping, VodPlayView::PausedForPush})
        QTest::addRow("status %d", int(status))
            << status << QString() << ":image/vod/vod_icon_botton02.png" << QString();
}

void tst_VodPlayView::softKeys()
{
    QFETCH(VodPlayView::playScreenStatus, status);
    QFETCH(QString, context2);
    QFETCH(QString, select);
    QFETCH(QString, context1);

    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    // A label left over from the other set must be replaced.
    view.screenStatus = status == VodPlayView::Playing ? VodPlayView::Stopped : VodPlayView::Playing;
    view.updateSoftKeys();
    view.screenStatus = status;
    view.updateSoftKeys();

    const QMap<int, QSoftMenuBar::Label> labels = QSoftMenuBar::labels(&view);
    QCOMPARE(labels.size(), 4);
    QCOMPARE(labels.value(Qt::Key_Context2), (QSoftMenuBar::Label{context2, QString(), QSoftMenuBar::AnyFocus}));
    QCOMPARE(labels.value(Qt::Key_Select), (QSoftMenuBar::Label{select, QString(), QSoftMenuBar::AnyFocus}));
    QCOMPARE(labels.value(Qt::Key_Context1), (QSoftMenuBar::Label{context1, QString(), QSoftMenuBar::AnyFocus}));
    QCOMPARE(labels.value(Qt::Key_Back),
             (QSoftMenuBar::Label{QStringLiteral(":image/vod/vod_icon_botton05.png"), QString(),
                                  QSoftMenuBar::AnyFocus}));
}

void tst_VodPlayView::fullButton_data()
{
    QTest::addColumn<VodPlayView::playScreenStatus>("status");
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QColor>("textColor");

    QTest::newRow("playing") << VodPlayView::Playing << ":image/common/05_Calllog_number_bg02.png"
                             << QColor(255, 255, 255);
    QTest::newRow("paused") << VodPlayView::Paused << ":image/common/buddylist_messagebar_bg01.png"
                            << QColor(79, 79, 79);
    QTest::newRow("stopped") << VodPlayView::Stopped << ":image/common/buddylist_messagebar_bg01.png"
                             << QColor(79, 79, 79);
}

void tst_VodPlayView::fullButton()
{
    QFETCH(VodPlayView::playScreenStatus, status);
    QFETCH(QString, cell);
    QFETCH(QColor, textColor);

    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.screenStatus = status;
    QImage image = canvas();
    {
        QPainter painter(&image);
        view.drawFullButton(&painter, QStringLiteral("Full"), 274);
    }

    QCOMPARE(image.pixelColor(274, 167), QColor(10, 10, 10));
    QCOMPARE(image.pixelColor(479, 167), QColor(10, 10, 10));
    const QImage tile(QStringLiteral(":image/common/05_Calllog_number_bg01.png"));
    QCOMPARE(image.pixelColor(274, 170), tile.pixelColor(0, 2));
    QCOMPARE(image.pixelColor(301, 200), tile.pixelColor((301 - 274) % tile.width(), 32));
    // The image cell, right of where the label ends.
    const QImage cellImage(cell);
    QCOMPARE(image.pixelColor(470, 170), cellImage.pixelColor(78, 2));
    QCOMPARE(image.pixelColor(470, 205), cellImage.pixelColor(78, 37));
    QVERIFY(contains(image, QRect(392, 177, 51, 32), textColor));
    QVERIFY(!contains(image, QRect(443, 168, 37, 41), textColor));
    QVERIFY(showsImage(image, QPoint(272, 0), QStringLiteral(":image/vod/line_vertical.png")));
}

void tst_VodPlayView::maxButton()
{
    VodPlayView view(nullptr, FullVodScreen, nullptr);
    view.screenStatus = VodPlayView::Playing;
    QImage image = canvas();
    {
        QPainter painter(&image);
        view.drawMaxButton(&painter, QStringLiteral("Max"), 363);
    }
    // One row lower than the "Full" strip, without its lines.
    const QImage cell(QStringLiteral(":image/common/05_Calllog_number_bg02.png"));
    QCOMPARE(image.pixelColor(363, 199), QImage(QStringLiteral(":image/common/05_Calllog_number_bg01.png")).pixelColor(0, 0));
    QCOMPARE(image.pixelColor(363, 198), QColor(Qt::black));
    QCOMPARE(image.pixelColor(470, 239), cell.pixelColor(78, 40));
    QCOMPARE(image.pixelColor(470, 240), QColor(Qt::black));
    QVERIFY(contains(image, QRect(392, 208, 51, 32), QColor(255, 255, 255)));
}

// The full-screen panel shows the soft keys' pictures, Back's in the last row.
void tst_VodPlayView::controlPanel()
{
    QFETCH(VodPlayView::playScreenStatus, status);
    QFETCH(QString, context2);
    QFETCH(QString, select);
    QFETCH(QString, context1);
    const QStringList rows{context2, select,
                           context1.isEmpty() ? QStringLiteral(":image/vod/vod_icon_botton05.png") : context1};

    VodPlayView view(nullptr, FullVodScreen, nullptr);
    view.screenStatus = status;
    view.setTotalTime(QStringLiteral("01:00:00"));
    view.updateFlowingTime(QTime(0, 10, 0));
    QImage image = canvas();
    {
        QPainter painter(&image);
        view.drawControlPanel(&painter);
    }

    const QColor grey(46, 46, 46);
    const QColor separator(18, 18, 18);
    for (int row = 0; row < 4; ++row) {
        const int y = 31 + 42 * row;
        QCOMPARE(image.pixelColor(364, y), grey);
        QCOMPARE(image.pixelColor(478, y + 40), grey);
        QCOMPARE(image.pixelColor(364, y + 41), separator);
        QCOMPARE(image.pixelColor(478, y + 41), separator);
        QCOMPARE(image.pixelColor(479, y + 20), QColor(Qt::black));
    }
    // Row 0 holds the time read-out.
    QVERIFY(contains(image, QRect(385, 41, 94, 31), QColor(23, 161, 190)));
    for (int row = 1; row < 4; ++row) {
        const int y = 31 + 42 * row;
        const QString name = rows.at(row - 1);
        if (name.isEmpty()) {
            QCOMPARE(image.copy(QRect(364, y, 115, 41)), canvas(QSize(115, 41), grey));
        } else {
            QVERIFY(showsImage(image, QPoint(414, y + 11), name, grey));
        }
    }
}

// ---------------------------------------------------------------------------
// Requests

namespace {

void addRequestRows()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<Action>("action");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("data");

    const auto seek = [](quint32 current, const char *total, int presses) {
        return [=](VodPlayView &v) {
            v.currentMsecs = current;
            v.setTotalTime(QString::fromLatin1(total));
            for (int i = 0; i < qAbs(presses); ++i) {
                v.addSeekStep(presses > 0 ? 1 : -1);
            }
            QMetaObject::invokeMethod(v.seekTimer, "timeout");
        };
    };
    const auto notify = [](const char *message, const QByteArray &data = QByteArray(),
                           VodPlayView::playScreenStatus status = VodPlayView::Playing, int calls = 0) {
        return [=](VodPlayView &v) {
            v.screenStatus = status;
            v.callCount = calls;
            v.messageHandle(QString::fromLatin1(message), data);
        };
    };
    const QString none;

    QTest::newRow("start") << SmallVodScreen << Action([](VodPlayView &v) { v.startVod(); })
                           << "startVod(QString)" << text("0");
    QTest::newRow("play") << SmallVodScreen << Action([](VodPlayView &v) { v.playVod(); })
                          << "startVod(QString)" << text("0");
    QTest::newRow("stop") << SmallVodScreen << Action([](VodPlayView &v) { v.stopVod(); })
                          << "stopVod()" << QByteArray();
    QTest::newRow("pause") << SmallVodScreen << Action([](VodPlayView &v) { v.pauseVod(0); })
                           << "pauseVod(int)" << messageData(0);
    QTest::newRow("resume") << FullVodScreen << Action([](VodPlayView &v) {
        v.pausedTime = 83.5f;
        v.resumeVod();
    }) << "resumeVod(QString)" << text("83.5");
    QTest::newRow("three presses from the start") << SmallVodScreen << Action(seek(0, "00:01:00", 3))
                                                  << "forwardVod(QString)" << text("15");
    QTest::newRow("reverse keeps milliseconds") << SmallVodScreen << Action(seek(40500, "00:01:00", -2))
                                                << "reverseVod(QString)" << text("30.5");
    QTest::newRow("seek without a length") << SmallVodScreen << Action(seek(3000, "", 2)) << none
                                           << QByteArray();
    QTest::newRow("video window, wide") << WideVodScreen << Action([](VodPlayView &v) {
        v.changeVideoWindow(WideVodScreen);
        QCoreApplication::processEvents();
    }) << "changeVodWindow(int,int,int,int)" << messageData(0, 0, 480, 271);
    QTest::newRow("start failed, small") << SmallVodScreen << Action(notify("startFailVod(int)", messageData(1)))
                                         << "stopVod()" << QByteArray();
    QTest::newRow("call while playing") << SmallVodScreen << Action(notify("startcall()"))
                                        << "pauseVod(int)" << messageData(1);
    QTest::newRow("call while paused for push")
        << SmallVodScreen << Action(notify("startcall()", QByteArray(), VodPlayView::PausedForPush)) << none
        << QByteArray();
    QTest::newRow("other screen while playing") << FullVodScreen << Action(notify("hideVodFullScreen()"))
                                                << "pauseVod(int)" << messageData(0);
    QTest::newRow("other screen while paused")
        << FullVodScreen << Action(notify("hideVodFullScreen()", QByteArray(), VodPlayView::Paused)) << none
        << QByteArray();
    QTest::newRow("push application starts") << SmallVodScreen << Action(notify("startVideoPushApp()"))
                                             << "pauseVod(int)" << messageData(1);
    QTest::newRow("resumed during a call")
        << SmallVodScreen << Action(notify("resumedOKVod()", QByteArray(), VodPlayView::Interrupted, 1))
        << "pauseVod(int)" << messageData(1);
    QTest::newRow("push application stopped") << SmallVodScreen << Action([](VodPlayView &v) {
        NoticeRecorder notices;
        v.pausedTime = 12.0f;
        v.screenStatus = VodPlayView::PausedForPush;
        v.messageHandle(QStringLiteral("stopVideoPushApp()"), QByteArray());
    }) << "resumeVod(QString)" << text("12");
    QTest::newRow("end guard, small") << SmallVodScreen << Action([](VodPlayView &v) {
        v.setTotalTime(QStringLiteral("00:01:00"));
        v.messageHandle(QStringLiteral("currentTime(float)"), messageData(59.5f));
        QMetaObject::invokeMethod(v.frameSliderTimer, "timeout");
    }) << "stopVod()" << QByteArray();
    QTest::newRow("end guard, full") << FullVodScreen << Action([](VodPlayView &v) {
        v.setTotalTime(QStringLiteral("00:01:00"));
        v.messageHandle(QStringLiteral("currentTime(float)"), messageData(59.5f));
        QMetaObject::invokeMethod(v.frameSliderTimer, "timeout");
    }) << none << QByteArray();
    QTest::newRow("time report at the end") << SmallVodScreen << Action([](VodPlayView &v) {
        v.setTotalTime(QStringLiteral("00:01:00"));
        v.messageHandle(QStringLiteral("currentTime(float)"), messageData(60.0f));
    }) << "stopVod()" << QByteArray();
}

} // namespace

void tst_VodPlayView::requests_data()
{
    addRequestRows();
}

void tst_VodPlayView::requests()
{
    QFETCH(playScreenType, type);
    QFETCH(Action, action);
    QFETCH(QString, message);
    QFETCH(QByteArray, data);

    {
        // The push players have no request sender: nothing reaches the video manager.
        VodPlayView view(nullptr, type, nullptr);
        action(view);
        flushEvents();
        QVERIFY(sentOn(videoManager).isEmpty());
    }
    std::unique_ptr<vod> sender = makeRequestSender();
    {
        VodPlayView view(sender.get(), type, nullptr);
        action(view);
        flushEvents();
        const QList<QtopiaIpcMessage> sent = sentOn(videoManager);
        if (message.isEmpty()) {
            QVERIFY(sent.isEmpty());
        } else {
            QCOMPARE(sent.size(), 1);
            QCOMPARE(sent.first().message, message);
            QCOMPARE(sent.first().data, data);
        }
    }
}

QTEST_MAIN(tst_VodPlayView)
#include "tst_vodplayview.moc"
