#include "push/videopushfullview.h"
#include "push/videopushview.h"

#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "player/emptybg.h"
#include "player/playscreen.h"
#include "testenvironment.h"

#include "devicekeys.h"

#include <QApplication>
#include <QGridLayout>
#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {
const QString VideoManager = QLatin1String(VodChannel::VideoManager);
const QString PushApp = QLatin1String(VodChannel::PushApplication);

// Starts a broadcast in the push view and opens its full-screen view, with the
// picture in place.
VideoPushFullView *openFullView(VideoPushView &view)
{
    deliver(PushApp, "startPush()");
    view.playScreenReady = true;
    pressKey(&view, Key_Video4);
    VideoPushFullView *full = view.fullScreenView;
    if (full)
        full->playScreenReady = true;
    QtopiaIpcTransport::clearTraffic();
    return full;
}
}

class tst_VideoPushFullView : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init() { QtopiaIpcTransport::clearTraffic(); }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void construction()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView full(&owner, nullptr);
        QCOMPARE(full.screenType, FullPushScreen);
        QCOMPARE(full.screenStatus, VodPlayView::Playing);
        QCOMPARE(full.geometry(), QRect(0, 0, 480, 272));
        auto *grid = qobject_cast<QGridLayout *>(full.layout());
        QVERIFY(grid && qobject_cast<EmptyBg *>(grid->itemAtPosition(0, 0)->widget()));
    }

    void wideSwitchThenHandBack()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        QVERIFY(full);
        QSignalSpy closed(full, &VodPlayView::fullScreenCloseSignal);

        pressKey(full, Key_Video4);
        QCOMPARE(full->screenType, WidePushScreen);
        QVERIFY(full->isVisible());
        QCOMPARE(signaturesOn(VideoManager), QStringList{"changeVodWindow(int,int,int,int)"});
        QCOMPARE(sentOn(VideoManager).first().data, messageData(0, 0, 480, 271));
        QVERIFY(!owner.playScreenReady);
        // The view's own readiness stays: the next key is honoured at once.
        QVERIFY(full->playScreenReady);
        QCOMPARE(closed.size(), 0);

        full->volume = 12;
        full->isMute = true;
        full->currentMsecs = 9000;
        owner.hide();
        QtopiaIpcTransport::clearTraffic();
        pressKey(full, Key_Video4);
        QCOMPARE(closed.size(), 1);
        QCOMPARE(closed.first().at(0).value<VodPlayView::playScreenStatus>(), VodPlayView::Playing);
        QCOMPARE(closed.first().at(1).value<ulong>(), 9000ul);
        QCOMPARE(closed.first().at(2).toInt(), 12);
        QCOMPARE(closed.first().at(3).toBool(), true);
        QVERIFY(!full->isVisible());
        QCOMPARE(owner.fullScreenView, full); // closing does not delete it
        QCOMPARE(owner.volume, 12);
        QVERIFY(owner.isMute);
        QCOMPARE(owner.currentMsecs, 9000u);
        QVERIFY(owner.isVisible());
        QCOMPARE(sentOn(VideoManager, "changeVodWindow(int,int,int,int)").size(), 1);
        QCOMPARE(sentOn(VideoManager, "changeVodWindow(int,int,int,int)").first().data, messageData(8, 39, 256, 194));
    }

    void wideKeyNeedsPlayingAndReady_data()
    {
        QTest::addColumn<VodPlayView::playScreenStatus>("status");
        QTest::addColumn<bool>("ready");
        QTest::newRow("moving") << VodPlayView::Playing << false;
        QTest::newRow("paused") << VodPlayView::Paused << true;
        QTest::newRow("stopped") << VodPlayView::Stopped << true;
    }
    void wideKeyNeedsPlayingAndReady()
    {
        QFETCH(VodPlayView::playScreenStatus, status);
        QFETCH(bool, ready);
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        full->screenStatus = status;
        full->playScreenReady = ready;
        pressKey(full, Key_Video4);
        QCOMPARE(full->screenType, FullPushScreen);
        QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
    }

    void stopKeyStopsBothViews()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        QTest::ignoreMessage(QtDebugMsg, "Fullscreen push stop!!");
        pressKey(full, Key_Video3);
        QCOMPARE(signaturesOn(VideoManager), QStringList{"stopUIPush()"});
        QCOMPARE(full->screenStatus, VodPlayView::Stopped);
        QCOMPARE(owner.screenStatus, VodPlayView::Stopped);
        // It stays up until the end notification.
        QVERIFY(full->isVisible());

        QTest::ignoreMessage(QtDebugMsg, "VideoPushView::close()");
        deliver(PushApp, "endOKPush()");
        QVERIFY(!full->isVisible());
        QVERIFY(!owner.isVisible());
    }

    void backKeyIsSwallowed()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        QVERIFY(keyAccepted(full, Qt::Key_Back));
        QVERIFY(full->isVisible());
        QCOMPARE(full->screenStatus, VodPlayView::Playing);
        QCOMPARE(owner.screenStatus, VodPlayView::Playing);
        QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
    }

    void rejectingClosesTheOwner()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        QTest::ignoreMessage(QtDebugMsg, "VideoPushView::close()");
        full->reject();
        QVERIFY(!owner.isVisible());
        QCOMPARE(QtopiaIpcTransport::traffic().last().message, QString("showVodFullScreen()"));
    }

    void headsetKeyGoesToTheBase()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        QTest::ignoreMessage(QtDebugMsg, "keyPressEvent 1543 Headset pressed");
        QVERIFY(keyAccepted(full, Key_Headset));
        QCOMPARE(signaturesOn("QPE/CallManager"), QStringList{"setHeadset_onoff()"});
    }

    void callHidesTheView()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        deliver(PushApp, "startcall()");
        QVERIFY(full->isHidden());
        QCOMPARE(full->screenStatus, VodPlayView::Interrupted);
        QCOMPARE(owner.screenStatus, VodPlayView::Interrupted);
        deliver(PushApp, "stopcall()");
        QVERIFY(full->isVisible());
        QCOMPARE(full->screenStatus, VodPlayView::Playing);
        QCOMPARE(owner.screenStatus, VodPlayView::Playing);
        QCOMPARE(signaturesOn(VideoManager), (QStringList{"pausePush()", "resumePush()"}));
    }

    void failedSetupClosesTheView()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        NoticeRecorder notices;
        QTest::ignoreMessage(QtDebugMsg, "VideoPushView::close()");
        deliver(PushApp, "setupFailPush(int)", messageData(1));
        QCOMPARE(notices.notices.size(), 1);
        QCOMPARE(full->screenStatus, VodPlayView::Stopped);
        QVERIFY(!full->isVisible());
        QVERIFY(!owner.isVisible());
    }

    void secondOpeningDeletesTheFirst()
    {
        VideoPushView owner(nullptr, {});
        QPointer<VideoPushFullView> first = openFullView(owner);
        pressKey(first, Key_Video4);
        pressKey(first, Key_Video4);
        QVERIFY(!first->isVisible());
        owner.playScreenReady = true;
        pressKey(&owner, Key_Video4);
        QVERIFY(first.isNull());
        QVERIFY(owner.fullScreenView);
        QVERIFY(owner.fullScreenView->isVisible());
    }

    void muteShowsTheOverlay()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        deliver(PushApp, "vodSoundMute(int)", messageData(1));
        QVERIFY(full->isMute);
        QVERIFY(full->volumeRectShown);
        QVERIFY(full->volumeRectTimer->isActive());
    }

    void volumeKeys_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("expected");
        QTest::newRow("up at 16") << 16 << int(Qt::Key_VolumeUp) << 16;
        QTest::newRow("down at 1") << 1 << int(Qt::Key_VolumeDown) << 1;
        QTest::newRow("up") << 8 << int(Qt::Key_VolumeUp) << 9;
        QTest::newRow("down") << 8 << int(Qt::Key_VolumeDown) << 7;
    }
    void volumeKeys()
    {
        QFETCH(int, level);
        QFETCH(int, key);
        QFETCH(int, expected);
        VideoPushView owner(nullptr, {});
        VideoPushFullView *full = openFullView(owner);
        full->volume = level;
        full->isMute = true;
        pressKey(full, key);
        QCOMPARE(full->volume, expected);
        QVERIFY(!full->isMute);
        QCOMPARE(signaturesOn("QPE/CallManager"), QStringList{"setVolume_vod(int)"});
        QCOMPARE(sentOn("QPE/CallManager").first().data, messageData(expected - 1));
        QVERIFY(!QSettings("Trolltech", "Sound").contains("Volume/VOD"));

        QVERIFY(full->volumeRectShown);
        QTimer *timer = full->volumeRectTimer;
        QCOMPARE(timer->interval(), 1000);
        QVERIFY(timer->isActive());
        // A second key restarts the 1000 ms.
        QTest::qWait(400);
        pressKey(full, key);
        QCOMPARE(full->volumeRectTimer, timer);
        QVERIFY(timer->remainingTime() > 700);

        QMetaObject::invokeMethod(timer, "timeout");
        QVERIFY(!full->volumeRectShown);
        QVERIFY(!timer->isActive());
    }

    void volumeOverlayPixels_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("dx");
        QTest::newRow("4:3") << int(FullPushScreen) << 0;
        QTest::newRow("wide") << int(WidePushScreen) << 58;
    }
    void volumeOverlayPixels()
    {
        QFETCH(int, type);
        QFETCH(int, dx);
        VideoPushView owner(nullptr, {});
        VideoPushFullView full(&owner, nullptr);
        full.screenType = playScreenType(type);
        full.volume = 5;
        QImage image(480, 272, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter painter(&image);
            full.drawVolumeRect(&painter);
        }
        // The bar's frame, around the tiled background.
        for (const QPoint &p : {QPoint(dx + 73, 221), QPoint(dx + 150, 221), QPoint(dx + 282, 225)})
            QCOMPARE(image.pixelColor(p), QColor(10, 10, 10, 255));
        // The translucent backdrop and its edges.
        QCOMPARE(image.pixelColor(dx + 30, 210).alpha(), 50);
        QCOMPARE(image.pixelColor(dx + 335, 240).alpha(), 50);
        QCOMPARE(image.pixelColor(dx + 26, 210).alpha(), 0);
        QCOMPARE(image.pixelColor(dx + 336, 210).alpha(), 0);
        QCOMPARE(image.pixelColor(dx + 30, 206).alpha(), 0);
    }

    void paintsTheButtonColumn()
    {
        VideoPushView owner(nullptr, {});
        VideoPushFullView full(&owner, nullptr);
        const QImage image = full.grab().toImage();
        const QColor tile(46, 46, 46), dark(18, 18, 18);
        for (int y : {31, 73, 115, 157}) {
            QCOMPARE(image.pixelColor(365, y), tile);
            QCOMPARE(image.pixelColor(479, y + 40), tile);
            QCOMPARE(image.pixelColor(470, y + 41), dark);
        }
        QCOMPARE(image.pixelColor(470, 10), dark);
        QCOMPARE(image.pixelColor(364, 20), dark);
    }
};

QTEST_MAIN(tst_VideoPushFullView)
#include "tst_videopushfullview.moc"
