#include "push/videopushfullview.h"
#include "push/videopushview.h"

#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "testenvironment.h"

#include "devicekeys.h"
#include "qsoftmenubar.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {
const QString VideoManager = QLatin1String(VodChannel::VideoManager);
const QString VideoApp = QLatin1String(VodChannel::VideoApplication);
const QString PushApp = QLatin1String(VodChannel::PushApplication);

// Every message of the traffic log as "channel message".
QStringList wire()
{
    QStringList result;
    for (const QtopiaIpcMessage &m : QtopiaIpcTransport::traffic())
        result << m.channel + QLatin1Char(' ') + m.message;
    return result;
}
}

class tst_VideoPushView : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init() { QtopiaIpcTransport::clearTraffic(); }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void pushRequests_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("sent");
        QTest::addColumn<QByteArray>("wireHex");

        // The caller's argument never reaches the wire: always the C string "0.0".
        QTest::newRow("playPush, no data") << "playPush(QString)" << QByteArray() << true << QByteArray("00000004302e3000");
        QTest::newRow("playPush, QString") << "playPush(QString)" << messageData(QString("83.5")) << true
                                           << QByteArray("00000004302e3000");
        QTest::newRow("pausePush") << "pausePush()" << messageData(7) << true << QByteArray();
        QTest::newRow("resumePush") << "resumePush()" << QByteArray() << true << QByteArray();
        QTest::newRow("stopPush") << "stopPush()" << QByteArray() << true << QByteArray();
        QTest::newRow("stopUIPush") << "stopUIPush()" << QByteArray() << true << QByteArray();
        QTest::newRow("stopMulticastPush") << "stopMulticastPush()" << QByteArray() << true << QByteArray();
        QTest::newRow("changeVodWindow keeps order") << "changeVodWindow(int,int,int,int)" << messageData(1, 2, 300, 400)
                                                     << true << QByteArray("00000001" "00000002" "0000012c" "00000190");
        QTest::newRow("changeVodWindow short block") << "changeVodWindow(int,int,int,int)" << messageData(5, 6) << true
                                                     << QByteArray("00000005" "00000006" "00000000" "00000000");
        QTest::newRow("VOD request") << "stopVod()" << QByteArray() << false << QByteArray();
        QTest::newRow("blank") << "pausePush( )" << QByteArray() << false << QByteArray();
        QTest::newRow("case") << "PausePush()" << QByteArray() << false << QByteArray();
    }
    void pushRequests()
    {
        QFETCH(QString, message);
        QFETCH(QByteArray, data);
        QFETCH(bool, sent);
        QFETCH(QByteArray, wireHex);

        VideoPushView view(nullptr, {});
        QtopiaIpcTransport::clearTraffic();
        view.pushRequestHandle(message, data);
        if (!sent) {
            QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
            return;
        }
        QCOMPARE(QtopiaIpcTransport::traffic().size(), 1);
        const QtopiaIpcMessage m = QtopiaIpcTransport::traffic().first();
        QCOMPARE(m.channel, VideoManager);
        QCOMPARE(m.message, message);
        QCOMPARE(m.data.toHex(), wireHex);
    }

    void videoAppRequests()
    {
        VideoPushView view(nullptr, {});
        QtopiaIpcTransport::clearTraffic();
        view.videoAppRequestHandle("startVideoPushApp()", messageData(3));
        view.videoAppRequestHandle("stopVideoPushApp()", QByteArray());
        QCOMPARE(wire(), QStringList{"QPE/VideoApplication startVideoPushApp()"});
        QVERIFY(QtopiaIpcTransport::traffic().first().data.isEmpty());
    }

    void newViewIsStoppedAndAnnouncesItself()
    {
        VideoPushView view(nullptr, {});
        QCOMPARE(view.screenStatus, VodPlayView::Stopped);
        QCOMPARE(view.volume, 1);
        QCOMPARE(view.screenType, SmallPushScreen);
        QVERIFY(view.isVisible());
        QVERIFY(view.windowState() & Qt::WindowMaximized);
        QCOMPARE(view.windowTitle(), QString("Video Contents;Broadcast"));
        QCOMPARE(view.windowIconText(), QString("title_icon_tv"));
        // A VOD player gives up the display before the video manager hears of us.
        QCOMPARE(wire(), (QStringList{"QPE/VideoApplication hideVodFullScreen()", "QPE/VideoManager pushAppExecuted()"}));

        const auto labels = QSoftMenuBar::labels(&view);
        QCOMPARE(labels.size(), 4);
        for (int key : {Qt::Key_Context1, Qt::Key_Context2, Qt::Key_Select})
            QCOMPARE(labels.value(key), (QSoftMenuBar::Label{QString(), QString(), QSoftMenuBar::AnyFocus}));
        QCOMPARE(labels.value(Qt::Key_Back).pixmap, QString(":image/vod/vod_icon_botton05.png"));
    }

    void startPushSendsInOrder()
    {
        VideoPushView view(nullptr, {});
        QtopiaIpcTransport::clearTraffic();
        deliver(PushApp, "startPush()");
        QCOMPARE(wire(), (QStringList{"QPE/VideoApplication startVideoPushApp()", "QPE/VideoManager playPush(QString)",
                                      "QPE/CallManager setVolume_vod(int)", "QPE/VideoApplication hideVodFullScreen()"}));
        QCOMPARE(sentOn(VideoManager).first().data.toHex(), QByteArray("00000004302e3000"));
        QCOMPARE(sentOn("QPE/CallManager").first().data, messageData(0));
        QCOMPARE(view.screenStatus, VodPlayView::Playing);
    }

    void stateTable_data()
    {
        QTest::addColumn<VodPlayView::playScreenStatus>("from");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<VodPlayView::playScreenStatus>("to");
        QTest::addColumn<QStringList>("requests");
        QTest::addColumn<bool>("closes");

        using S = VodPlayView;
        const QStringList none;
        QTest::newRow("pause ok") << S::Playing << "pauseOKPush()" << QByteArray() << S::Paused << none << false;
        QTest::newRow("pause ok, interrupted") << S::Interrupted << "pauseOKPush()" << QByteArray() << S::Interrupted << none << false;
        QTest::newRow("call") << S::Playing << "startcall()" << QByteArray() << S::Interrupted << QStringList{"pausePush()"} << false;
        QTest::newRow("other screen") << S::Playing << "hideVodFullScreen()" << QByteArray() << S::Interrupted
                                      << QStringList{"pausePush()"} << false;
        QTest::newRow("call, stopped") << S::Stopped << "startcall()" << QByteArray() << S::Stopped << none << false;
        QTest::newRow("call, paused") << S::Paused << "startcall()" << QByteArray() << S::Paused << none << false;
        QTest::newRow("call over") << S::Interrupted << "stopcall()" << QByteArray() << S::Playing << QStringList{"resumePush()"} << false;
        QTest::newRow("screen back, paused") << S::Paused << "showVodFullScreen()" << QByteArray() << S::Playing
                                             << QStringList{"resumePush()"} << false;
        QTest::newRow("call over, playing") << S::Playing << "stopcall()" << QByteArray() << S::Playing << none << false;
        QTest::newRow("call over, stopped") << S::Stopped << "stopcall()" << QByteArray() << S::Stopped << none << false;
        QTest::newRow("end") << S::Playing << "endOKPush()" << QByteArray() << S::Stopped << QStringList{"stopPush()"} << true;
        QTest::newRow("multicast end") << S::Paused << "endOKMulticastPush()" << QByteArray() << S::Stopped
                                       << QStringList{"stopMulticastPush()"} << true;
        QTest::newRow("error") << S::Playing << "error(int)" << messageData(5) << S::Playing << none << false;
        QTest::newRow("blank") << S::Playing << "startcall( )" << QByteArray() << S::Playing << none << false;
        QTest::newRow("case") << S::Stopped << "StartPush()" << QByteArray() << S::Stopped << none << false;
    }
    void stateTable()
    {
        QFETCH(VodPlayView::playScreenStatus, from);
        QFETCH(QString, message);
        QFETCH(QByteArray, data);
        QFETCH(VodPlayView::playScreenStatus, to);
        QFETCH(QStringList, requests);
        QFETCH(bool, closes);

        VideoPushView view(nullptr, {});
        view.screenStatus = from;
        QtopiaIpcTransport::clearTraffic();
        if (closes)
            QTest::ignoreMessage(QtDebugMsg, "VideoPushView::close()");
        deliver(PushApp, message, data);
        QCOMPARE(view.screenStatus, to);
        QCOMPARE(signaturesOn(VideoManager), requests);
        QCOMPARE(view.isVisible(), !closes);
        QCOMPARE(signaturesOn(VideoApp), closes ? QStringList{"showVodFullScreen()"} : QStringList());
    }

    void setupFailureClosesAfterTheWarning()
    {
        VideoPushView view(nullptr, {});
        deliver(PushApp, "startPush()");
        bool visibleDuringNotice = false;
        VodPlayView::playScreenStatus statusDuringNotice = VodPlayView::Stopped;
        NoticeRecorder notices([&](const QNoticeDialog::Notice &) {
            visibleDuringNotice = view.isVisible();
            statusDuringNotice = view.screenStatus;
        });
        QtopiaIpcTransport::clearTraffic();
        QTest::ignoreMessage(QtDebugMsg, "VideoPushView::close()");
        deliver(PushApp, "setupFailPush(int)", messageData(2));

        QCOMPARE(notices.notices.size(), 1);
        const QNoticeDialog::Notice n = notices.notices.first();
        QCOMPARE(n.kind, QNoticeDialog::Warning);
        QCOMPARE(n.parent, &view);
        QCOMPARE(n.text, QString("It's not broadcasting time"));
        QVERIFY(n.detail.isEmpty());
        QCOMPARE(n.option, 3);
        QVERIFY(visibleDuringNotice);
        QCOMPARE(statusDuringNotice, VodPlayView::Playing);
        QVERIFY(!view.isVisible());
        QCOMPARE(view.screenStatus, VodPlayView::Stopped);
        QVERIFY(signaturesOn(VideoManager).isEmpty());
    }

    void stopKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("debugLine");
        QTest::newRow("back") << int(Qt::Key_Back) << true << "VideoPushView::keyPressEvent Back";
        // The platform needs the hang-up too.
        QTest::newRow("hangup") << int(Qt::Key_Hangup) << false << "VideoPushView::keyPressEvent HangUp";
    }
    void stopKeys()
    {
        QFETCH(int, key);
        QFETCH(bool, accepted);
        QFETCH(QString, debugLine);

        VideoPushView view(nullptr, {});
        deliver(PushApp, "startPush()");
        QtopiaIpcTransport::clearTraffic();
        QTest::ignoreMessage(QtDebugMsg, qPrintable(debugLine));
        QCOMPARE(keyAccepted(&view, key), accepted);
        QCOMPARE(view.screenStatus, VodPlayView::Stopped);
        QCOMPARE(signaturesOn(VideoManager), QStringList{"stopUIPush()"});
        QVERIFY(view.isVisible());
    }

    void serverWatchdog()
    {
        VideoPushView view(nullptr, {});
        NoticeRecorder notices;
        deliver(PushApp, "currentTime(float)", messageData(1.0f));
        QVERIFY(!view.serverWatchdog);

        deliver(PushApp, "startPush()");
        QTimer *watchdog = view.serverWatchdog;
        QVERIFY(watchdog);
        QVERIFY(watchdog->isActive());
        QCOMPARE(watchdog->interval(), 30000);
        QVERIFY(!watchdog->isSingleShot());

        deliver(PushApp, "pauseOKPush()");
        QVERIFY(!watchdog->isActive());
        deliver(PushApp, "stopcall()");
        QVERIFY(!watchdog->isActive());
        deliver(PushApp, "currentTime(float)", messageData(12.5f));
        QVERIFY(watchdog->isActive());
        deliver(PushApp, "startPush()");
        QCOMPARE(view.serverWatchdog, watchdog);

        QtopiaIpcTransport::clearTraffic();
        QMetaObject::invokeMethod(watchdog, "timeout");
        QCOMPARE(notices.notices.size(), 1);
        const QNoticeDialog::Notice n = notices.notices.first();
        QCOMPARE(n.kind, QNoticeDialog::Information);
        QCOMPARE(n.text, QString("Temporary disconnection from VCS server"));
        QCOMPARE(n.detail, QString("If you want to quit this broadcast, Please push 'stop' button"));
        QCOMPARE(n.option, 3);
        QVERIFY(!watchdog->isActive());
        // The user decides whether to stop.
        QCOMPARE(view.screenStatus, VodPlayView::Playing);
        QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
    }

    void soundMute_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("muted");
        QTest::newRow("1 mutes") << 1 << false << true;
        QTest::newRow("2 unmutes") << 2 << true << false;
        QTest::newRow("0 unmutes") << 0 << true << false;
    }
    void soundMute()
    {
        QFETCH(int, value);
        QFETCH(bool, before);
        QFETCH(bool, muted);
        VideoPushView view(nullptr, {});
        view.isMute = before;
        deliver(PushApp, "vodSoundMute(int)", messageData(value));
        QCOMPARE(view.isMute, muted);
    }

    void fullScreenKey_data()
    {
        QTest::addColumn<VodPlayView::playScreenStatus>("status");
        QTest::addColumn<bool>("ready");
        QTest::addColumn<bool>("opens");
        QTest::newRow("playing, ready") << VodPlayView::Playing << true << true;
        QTest::newRow("playing, moving") << VodPlayView::Playing << false << false;
        QTest::newRow("paused") << VodPlayView::Paused << true << false;
        QTest::newRow("stopped") << VodPlayView::Stopped << true << false;
    }
    void fullScreenKey()
    {
        QFETCH(VodPlayView::playScreenStatus, status);
        QFETCH(bool, ready);
        QFETCH(bool, opens);

        VideoPushView view(nullptr, {});
        view.screenStatus = status;
        view.playScreenReady = ready;
        view.volume = 7;
        view.isMute = true;
        view.currentMsecs = 4200;
        QtopiaIpcTransport::clearTraffic();
        pressKey(&view, Key_Video4);
        QCOMPARE(view.fullScreenView != nullptr, opens);
        if (!opens) {
            QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
            return;
        }
        VideoPushFullView *full = view.fullScreenView;
        QVERIFY(full->isVisible());
        QCOMPARE(full->owner, &view);
        QCOMPARE(full->screenStatus, VodPlayView::Playing);
        QCOMPARE(full->volume, 7);
        QVERIFY(full->isMute);
        QCOMPARE(full->currentMsecs, 4200u);
        QCOMPARE(wire(), QStringList{"QPE/VideoManager changeVodWindow(int,int,int,int)"});
        QCOMPARE(QtopiaIpcTransport::traffic().first().data.toHex(),
                 QByteArray("00000000" "00000000" "0000016b" "00000110"));
        // The picture is being moved: dark until the video manager is done.
        QVERIFY(!view.playScreenReady);
        QTRY_VERIFY(view.playScreenReady);
    }

    void paintsItsPanel()
    {
        VideoPushView view(nullptr, {});
        const QImage image = view.grab().toImage();
        QCOMPARE(image.pixelColor(280, 20), QColor(35, 35, 35));
        QCOMPARE(image.pixelColor(280, 80), QColor(35, 35, 35));
    }
};

QTEST_MAIN(tst_VideoPushView)
#include "tst_videopushview.moc"
