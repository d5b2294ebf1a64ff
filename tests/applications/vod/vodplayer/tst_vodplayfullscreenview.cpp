#include "vodplayer/vodplayfullscreenview.h"

#include "devicekeys.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "player/emptybg.h"
#include "player/playscreen.h"
#include "qdirectpainter.h"
#include "testenvironment.h"
#include "vod.h"

#include <QApplication>
#include <QGridLayout>
#include <QImage>
#include <QPainter>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using Status = VodPlayView::playScreenStatus;

namespace {

const QString manager = QLatin1String(VodChannel::VideoManager);
const QString callManager = QLatin1String(VodChannel::CallManager);

bool near(int value, int expected)
{
    return qAbs(value - expected) <= 2;
}

} // namespace

// A full-screen player on its own, its requests leaving through a real browser.
struct Rig
{
    vod browser;
    VodPlayFullScreenView view{&browser, nullptr};

    Rig()
    {
        flushEvents();
        QtopiaIpcTransport::clearTraffic();
    }
};

class tst_VodPlayFullScreenView : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init()
    {
        env->remove(QStringLiteral("/tmp/status/vod_setup_status"));
        QtopiaIpcTransport::clearTraffic();
    }
    void cleanup() { QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void construction()
    {
        VodPlayFullScreenView view(nullptr, nullptr);
        QCOMPARE(view.geometry(), QRect(0, 0, 480, 272));
        QCOMPARE(view.palette().color(view.backgroundRole()), QColor(46, 46, 46));
        auto *grid = qobject_cast<QGridLayout *>(view.layout());
        QVERIFY(grid && qobject_cast<EmptyBg *>(grid->itemAtPosition(0, 0)->widget()));
    }

    void focus()
    {
        Rig rig;
        rig.view.showNormal();
        QVERIFY(rig.view.windowState() & Qt::WindowFullScreen);
        QTRY_COMPARE(rig.browser.focusedWidget.data(), &rig.view);
        QTRY_COMPARE(QApplication::focusWidget(), &rig.view);
        QVERIFY(!rig.view.focusLost);

        // Losing the window darkens the video area and gives up the painting region.
        const int reserved = QDirectPainter::reserveCount();
        QWidget other;
        other.show();
        other.activateWindow();
        QTRY_VERIFY(rig.view.focusLost);
        QCOMPARE(QDirectPainter::reserveCount(), reserved + 1);
        QVERIFY(QDirectPainter::reservedRegion().isEmpty());
    }

    void select_data()
    {
        QTest::addColumn<Status>("status");
        QTest::addColumn<bool>("keypad");
        QTest::addColumn<bool>("iconBefore");
        QTest::addColumn<QString>("request");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("iconAfter");
        QTest::newRow("playing, keypad") << VodPlayView::Playing << true << false << "pauseVod(int)"
                                         << messageData(0) << true;
        QTest::newRow("playing, not from the keypad") << VodPlayView::Playing << false << false << QString()
                                                      << QByteArray() << false;
        QTest::newRow("paused, not from the keypad") << VodPlayView::Paused << false << true << QString()
                                                     << QByteArray() << true;
        QTest::newRow("paused, keypad") << VodPlayView::Paused << true << true << "resumeVod(QString)"
                                        << messageData(QStringLiteral("7.5")) << false;
        QTest::newRow("interrupted, keypad") << VodPlayView::Interrupted << true << true << "resumeVod(QString)"
                                             << messageData(QStringLiteral("7.5")) << true;
        QTest::newRow("stopped, keypad") << VodPlayView::Stopped << true << true << "startVod(QString)"
                                         << messageData(QStringLiteral("0")) << false;
    }
    void select()
    {
        QFETCH(Status, status);
        QFETCH(bool, keypad);
        QFETCH(bool, iconBefore);
        QFETCH(QString, request);
        QFETCH(QByteArray, data);
        QFETCH(bool, iconAfter);
        Rig rig;
        rig.view.screenStatus = status;
        rig.view.pausedTime = 7.5f;
        rig.view.playScreen->showPlayIcon = iconBefore;

        pressKey(&rig.view, Qt::Key_Select, keypad ? Qt::KeypadModifier : Qt::NoModifier);

        if (request.isEmpty()) {
            QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
        } else {
            QCOMPARE(signaturesOn(manager), QStringList{request});
            QCOMPARE(sentOn(manager).first().data, data);
        }
        QCOMPARE(rig.view.playScreen->showPlayIcon, iconAfter);
        QCOMPARE(rig.view.screenStatus, status);
    }

    void videoKeys_data()
    {
        QTest::addColumn<Status>("status");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QString>("request");
        QTest::newRow("Video1 playing: reverse step") << VodPlayView::Playing << int(Key_Video1) << -1 << QString();
        QTest::newRow("Video1 paused: nothing") << VodPlayView::Paused << int(Key_Video1) << 0 << QString();
        QTest::newRow("Video3 playing: forward step") << VodPlayView::Playing << int(Key_Video3) << 1 << QString();
        QTest::newRow("Video2 playing: pause") << VodPlayView::Playing << int(Key_Video2) << 0 << "pauseVod(int)";
        QTest::newRow("Video2 interrupted: resume") << VodPlayView::Interrupted << int(Key_Video2) << 0
                                                    << "resumeVod(QString)";
        QTest::newRow("Video2 stopped: start") << VodPlayView::Stopped << int(Key_Video2) << 0
                                               << "startVod(QString)";
    }
    void videoKeys()
    {
        QFETCH(Status, status);
        QFETCH(int, key);
        QFETCH(int, steps);
        QFETCH(QString, request);
        Rig rig;
        rig.view.screenStatus = status;
        rig.view.playScreen->showPlayIcon = true;

        pressKey(&rig.view, key);

        QCOMPARE(rig.view.seekSteps, steps);
        QCOMPARE(rig.view.seekTimer->isActive(), steps != 0);
        QCOMPARE(rig.view.playScreen->showPlayIcon, steps == 0);
        QCOMPARE(signaturesOn(manager), request.isEmpty() ? QStringList() : QStringList{request});
    }

    void handBack_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Status>("status");
        QTest::addColumn<Status>("handedBack");
        QTest::newRow("Video3 stops unless playing") << int(Key_Video3) << VodPlayView::Interrupted
                                                     << VodPlayView::Stopping;
        QTest::newRow("Video4 from wide") << int(Key_Video4) << VodPlayView::Playing << VodPlayView::Playing;
    }
    void handBack()
    {
        QFETCH(int, key);
        QFETCH(Status, status);
        QFETCH(Status, handedBack);
        Rig rig;
        rig.view.show();
        rig.view.screenStatus = status;
        rig.view.playScreenReady = true;
        rig.view.screenType = WideVodScreen;
        rig.view.currentMsecs = 42000;
        rig.view.volume = 6;
        rig.view.isMute = true;
        QSignalSpy closed(&rig.view, &VodPlayView::fullScreenCloseSignal);

        pressKey(&rig.view, key);

        QCOMPARE(closed.size(), 1);
        QCOMPARE(closed.first().at(0).value<Status>(), handedBack);
        QCOMPARE(closed.first().at(1).value<ulong>(), 42000ul);
        QCOMPARE(closed.first().at(2).toInt(), 6);
        QCOMPARE(closed.first().at(3).toBool(), true);
        QVERIFY(!rig.view.isVisible());
        QCOMPARE(rig.view.playScreen->showPlayIcon, handedBack == VodPlayView::Stopping);
        QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
    }

    void backRefusesOneClose()
    {
        Rig rig;
        rig.view.show();
        pressKey(&rig.view, Qt::Key_Back);
        QVERIFY(rig.view.isVisible());
        QVERIFY(!rig.view.close());
        QVERIFY(rig.view.isVisible());
        QVERIFY(rig.view.close());
        QVERIFY(!rig.view.isVisible());
    }

    void volumeKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("after");
        QTest::newRow("up") << int(Qt::Key_VolumeUp) << 9 << 10;
        QTest::newRow("up at 16") << int(Qt::Key_VolumeUp) << 16 << 16;
        QTest::newRow("down") << int(Qt::Key_VolumeDown) << 5 << 4;
        QTest::newRow("down at 1") << int(Qt::Key_VolumeDown) << 1 << 1;
    }
    void volumeKeys()
    {
        QFETCH(int, key);
        QFETCH(int, before);
        QFETCH(int, after);
        Rig rig;
        rig.view.volume = before;
        rig.view.isMute = true;

        pressKey(&rig.view, key);

        QCOMPARE(rig.view.volume, after);
        QVERIFY(!rig.view.isMute);
        QVERIFY(rig.view.volumeRectShown);
        QVERIFY(rig.view.volumeRectTimer && rig.view.volumeRectTimer->isActive());
        const QList<QtopiaIpcMessage> sent = sentOn(callManager, QLatin1String(VodMessage::SetVolumeVod));
        QCOMPARE(sent.size(), 1);
        QCOMPARE(sent.first().data, messageData(after - 1));
        QSettings settings(QStringLiteral("Trolltech"), QStringLiteral("Sound"));
        QCOMPARE(settings.value(QStringLiteral("Volume/VOD")).toInt(), after - 1);
    }

    void volumeOverlayLastsOneSecondAfterTheLastKey()
    {
        Rig rig;
        pressKey(&rig.view, Qt::Key_VolumeUp);
        QTimer *timer = rig.view.volumeRectTimer;
        QCOMPARE(timer->interval(), 1000);

        QTest::qWait(300);
        pressKey(&rig.view, Qt::Key_VolumeDown);
        QCOMPARE(rig.view.volumeRectTimer, timer);
        QVERIFY(timer->remainingTime() > 800);

        QVERIFY(QMetaObject::invokeMethod(timer, "timeout"));
        QVERIFY(!rig.view.volumeRectShown);
        QVERIFY(!timer->isActive());
    }

    void volumeOverlayPixels_data()
    {
        QTest::addColumn<bool>("wide");
        QTest::addColumn<int>("dx");
        QTest::newRow("4:3") << false << 0;
        QTest::newRow("wide") << true << 58;
    }
    void volumeOverlayPixels()
    {
        QFETCH(bool, wide);
        QFETCH(int, dx);
        VodPlayFullScreenView view(nullptr, nullptr);
        if (wide)
            view.screenType = WideVodScreen;
        view.volume = 1;

        QImage image(480, 272, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            view.drawVolumeRect(&painter);
        }

        // The translucent backdrop (27, 207, 309, 34): white shows through.
        const QColor backdrop = image.pixelColor(28 + dx, 208);
        QVERIFY2(near(backdrop.red(), 217) && near(backdrop.green(), 217) && near(backdrop.blue(), 217),
                 qPrintable(backdrop.name()));
        QCOMPARE(image.pixelColor(335 + dx, 240), backdrop);
        QCOMPARE(image.pixelColor(26 + dx, 208), QColor(Qt::white));
        QCOMPARE(image.pixelColor(336 + dx, 208), QColor(Qt::white));
        QCOMPARE(image.pixelColor(28 + dx, 206), QColor(Qt::white));
        QCOMPARE(image.pixelColor(28 + dx, 241), QColor(Qt::white));

        // The solid bar (73, 221, 210, 5).
        QCOMPARE(image.pixelColor(73 + dx, 221), QColor(10, 10, 10));
        QCOMPARE(image.pixelColor(282 + dx, 225), QColor(10, 10, 10));
        QCOMPARE(image.pixelColor(72 + dx, 221), backdrop);
        QCOMPARE(image.pixelColor(283 + dx, 221), backdrop);
    }

    void timeReports()
    {
        Rig rig;
        rig.view.show();
        rig.view.setTotalTime(QStringLiteral("00:01:40"));
        rig.view.volume = 7;
        rig.view.progressOffset = 4;
        QSignalSpy closed(&rig.view, &VodPlayView::fullScreenCloseSignal);

        // Unlike the base, a report keeps the progress offset.
        rig.view.messageHandle(QLatin1String(VodMessage::CurrentTime), messageData(30.25f));
        QCOMPARE(rig.view.currentMsecs, 30250u);
        QCOMPARE(rig.view.flowingTimeText, QStringLiteral("00:00:30"));
        QCOMPARE(rig.view.progressOffset, 4);
        QCOMPARE(closed.size(), 0);

        // At the end it hands Stopping back; the small player sends the stop.
        rig.view.messageHandle(QLatin1String(VodMessage::CurrentTime), messageData(100.0f));
        QCOMPARE(closed.size(), 1);
        QCOMPARE(closed.first().at(0).value<Status>(), VodPlayView::Stopping);
        QCOMPARE(closed.first().at(1).value<ulong>(), 100000ul);
        QCOMPARE(closed.first().at(2).toInt(), 7);
        QVERIFY(!rig.view.isVisible());
        QVERIFY(rig.view.playScreen->showPlayIcon);
        QVERIFY(sentOn(manager).isEmpty());
    }

    void headsetKey()
    {
        Rig rig;
        QTest::ignoreMessage(QtDebugMsg, "keyPressEvent 406 Headset pressed");
        pressKey(&rig.view, Key_Headset);
        const QList<QtopiaIpcMessage> sent = sentOn(callManager, QLatin1String(VodMessage::SetHeadsetOnOff));
        QCOMPARE(sent.size(), 1);
        QVERIFY(sent.first().data.isEmpty());
    }

    void paintsTheBackgroundAroundThePanel()
    {
        VodPlayFullScreenView view(nullptr, nullptr);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const QImage image = view.grab().toImage();
        // Above the panel and below the "Max" strip only the background shows.
        QCOMPARE(image.pixelColor(420, 10), QColor(18, 18, 18));
        QCOMPARE(image.pixelColor(420, 250), QColor(18, 18, 18));
    }
};

QTEST_MAIN(tst_VodPlayFullScreenView)
#include "tst_vodplayfullscreenview.moc"
