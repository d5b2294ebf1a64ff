#include "vodplayer/vodplaysmallscreenview.h"

#include "browser/mvodinfoview.h"
#include "devicekeys.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "player/playscreen.h"
#include "qsoftmenubar.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodplayer/vodplayfullscreenview.h"

#include <QApplication>
#include <QPaintEvent>
#include <QPointer>
#include <QScopeGuard>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using Status = VodPlayView::playScreenStatus;

namespace {

const QString manager = QLatin1String(VodChannel::VideoManager);
const QString application = QLatin1String(VodChannel::VideoApplication);

int trafficIndex(const QString &channel, const QString &message)
{
    const QList<QtopiaIpcMessage> &traffic = QtopiaIpcTransport::traffic();
    for (int i = 0; i < traffic.size(); ++i)
        if (traffic.at(i).channel == channel && traffic.at(i).message == message)
            return i;
    return -1;
}

QList<QByteArray> windowRequests()
{
    QList<QByteArray> result;
    for (const QtopiaIpcMessage &m : sentOn(manager, QLatin1String(VodMessage::ChangeVodWindow)))
        result.append(m.data);
    return result;
}

enum WatchdogState { NoWatchdog, WatchdogStopped, WatchdogRunning };

WatchdogState watchdogState(const VodPlaySmallScreenView &player)
{
    if (!player.serverWatchdog)
        return NoWatchdog;
    return player.serverWatchdog->isActive() ? WatchdogRunning : WatchdogStopped;
}

} // namespace

// A player whose requests leave through a real browser window.
struct Rig
{
    vod browser;
    VodPlaySmallScreenView player{&browser, nullptr};

    Rig()
    {
        flushEvents();
        QtopiaIpcTransport::clearTraffic();
    }

    void notify(const char *message, const QByteArray &data = QByteArray())
    {
        player.messageHandle(QLatin1String(message), data);
    }

    void setWatchdog(WatchdogState state)
    {
        if (state == NoWatchdog)
            return;
        notify(VodMessage::StartOKVod);
        if (state == WatchdogStopped)
            player.serverWatchdog->stop();
    }

    // Opens the full-screen player from a playing small player.
    VodPlayFullScreenView *openFullScreen()
    {
        player.screenStatus = VodPlayView::Playing;
        player.playScreenReady = true;
        pressKey(&player, Key_Video4);
        return player.fullScreenView;
    }
};

class tst_VodPlaySmallScreenView : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init()
    {
        QSettings(QStringLiteral("Trolltech"), QStringLiteral("Sound")).clear();
        env->remove(QStringLiteral("/tmp/status/vod_setup_status"));
        QtopiaIpcTransport::clearTraffic();
    }
    void cleanup() { QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void constructionReadsStoredVolume_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("level");
        QTest::newRow("nothing stored") << QVariant() << 9;
        QTest::newRow("15") << QVariant(15) << 16;
        QTest::newRow("0") << QVariant(0) << 1;
    }
    void constructionReadsStoredVolume()
    {
        QFETCH(QVariant, stored);
        QFETCH(int, level);
        if (stored.isValid())
            QSettings(QStringLiteral("Trolltech"), QStringLiteral("Sound")).setValue(QStringLiteral("Volume/VOD"), stored);
        VodPlaySmallScreenView player(nullptr, nullptr);
        QCOMPARE(player.volume, level);
    }

    void ignoreNextNotificationDropsExactlyOne()
    {
        Rig rig;
        rig.player.ignoreNextNotification = true;
        rig.notify(VodMessage::StartOKVod);
        QCOMPARE(rig.player.screenStatus, VodPlayView::Stopped);
        QVERIFY(!rig.player.serverWatchdog);
        rig.notify(VodMessage::StartOKVod);
        QCOMPARE(rig.player.screenStatus, VodPlayView::Playing);
        QVERIFY(rig.player.serverWatchdog->isActive());
    }

    void stoppingDropsAllButEnd_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<int>("watchdog");
        QTest::newRow("start") << "startOKVod()" << QByteArray() << int(NoWatchdog);
        QTest::newRow("time report") << "currentTime(float)" << messageData(12.5f) << int(WatchdogStopped);
        QTest::newRow("resumed") << "resumedOKVod()" << QByteArray() << int(WatchdogStopped);
        QTest::newRow("pause") << "pauseOKVod(float)" << messageData(3.0f) << int(WatchdogRunning);
        QTest::newRow("call") << "startcall()" << QByteArray() << int(WatchdogRunning);
        QTest::newRow("start failed") << "startFailVod(int)" << messageData(1) << int(WatchdogRunning);
    }
    void stoppingDropsAllButEnd()
    {
        QFETCH(QString, message);
        QFETCH(QByteArray, data);
        QFETCH(int, watchdog);
        Rig rig;
        rig.setWatchdog(WatchdogState(watchdog));
        rig.player.screenStatus = VodPlayView::Stopping;
        QtopiaIpcTransport::clearTraffic();

        rig.player.messageHandle(message, data);

        QCOMPARE(rig.player.screenStatus, VodPlayView::Stopping);
        QCOMPARE(rig.player.callCount, 0);
        QVERIFY(rig.player.flowingTimeText.isEmpty());
        QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
        QCOMPARE(int(watchdogState(rig.player)), watchdog);
    }

    void watchdogFollowsNotifications_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("runningBefore");
        QTest::addColumn<bool>("runningAfter");
        const struct
        {
            const char *message;
            QByteArray data;
        } stops[] = {
            {"startFailVod(int)", messageData(2)}, {"pauseOKVod(float)", messageData(4.0f)},
            {"pauseVodByServer(float)", messageData(4.0f)}, {"pauseFailVod()", {}},
            {"endOKVod()", {}}, {"startPush()", {}}, {"startcall()", {}}, {"startVideoPushApp()", {}},
        };
        for (const auto &row : stops)
            QTest::newRow(row.message) << row.message << row.data << true << false;

        QTest::newRow("resumedOKVod()") << "resumedOKVod()" << QByteArray() << false << true;
        QTest::newRow("currentTime(float)") << "currentTime(float)" << messageData(20.0f) << false << true;

        const struct
        {
            const char *message;
            QByteArray data;
        } keeps[] = {
            // A repeated start neither restarts a stopped watchdog nor makes another.
            {"startOKVod()", {}}, {"stopcall()", {}}, {"vodSoundMute(int)", messageData(1)},
            {"hangUpBySmallScreen()", {}}, {"currentTime( float)", messageData(20.0f)}, {"EndOKVod()", {}},
        };
        for (const auto &row : keeps) {
            QTest::addRow("%s running", row.message) << row.message << row.data << true << true;
            QTest::addRow("%s stopped", row.message) << row.message << row.data << false << false;
        }
    }
    void watchdogFollowsNotifications()
    {
        QFETCH(QString, message);
        QFETCH(QByteArray, data);
        QFETCH(bool, runningBefore);
        QFETCH(bool, runningAfter);
        Rig rig;
        rig.setWatchdog(runningBefore ? WatchdogRunning : WatchdogStopped);
        QTimer *watchdog = rig.player.serverWatchdog;
        QCOMPARE(watchdog->interval(), 10000);

        rig.player.messageHandle(message, data);

        QCOMPARE(rig.player.serverWatchdog, watchdog);
        QCOMPARE(watchdog->isActive(), runningAfter);
        if (runningAfter && !runningBefore)
            QVERIFY(watchdog->remainingTime() > 9000);
    }

    void silentServerStopsPlayback_data()
    {
        QTest::addColumn<bool>("fullScreenOpen");
        QTest::newRow("small") << false;
        QTest::newRow("full screen shown") << true;
    }
    void silentServerStopsPlayback()
    {
        QFETCH(bool, fullScreenOpen);
        Rig rig;
        rig.player.show();
        rig.notify(VodMessage::StartOKVod);
        VodPlayFullScreenView *full = fullScreenOpen ? rig.openFullScreen() : nullptr;
        QtopiaIpcTransport::clearTraffic();

        bool stopSentDuringNotice = true;
        bool fullShownDuringNotice = true;
        NoticeRecorder notices([&](const QNoticeDialog::Notice &) {
            stopSentDuringNotice = !sentOn(manager, QLatin1String(VodMessage::StopVod)).isEmpty();
            fullShownDuringNotice = full && full->isVisible();
        });
        QVERIFY(QMetaObject::invokeMethod(rig.player.serverWatchdog, "timeout"));

        QCOMPARE(notices.notices.size(), 1);
        const QNoticeDialog::Notice notice = notices.notices.first();
        QCOMPARE(notice.kind, QNoticeDialog::Information);
        QCOMPARE(notice.parent, &rig.player);
        QCOMPARE(notice.text, QStringLiteral("A video has been stopped by the VCS server."));
        QVERIFY(notice.detail.isEmpty());
        QCOMPARE(notice.option, 3);
        // Notice first, with the full-screen player already gone; the stop after.
        QVERIFY(!stopSentDuringNotice);
        QVERIFY(!fullShownDuringNotice);

        QCOMPARE(signaturesOn(manager), QStringList{QStringLiteral("stopVod()")});
        QCOMPARE(rig.player.screenStatus, VodPlayView::Stopped);
        QVERIFY(!rig.player.isVisible());
        QVERIFY(!rig.player.fullScreenShown);
        QVERIFY(rig.player.playScreen->showPlayIcon);
        QCOMPARE(rig.player.currentMsecs, 0u);
        QVERIFY(!rig.player.animationTimer);
        QVERIFY(!rig.player.seekTimer);
        QVERIFY(!rig.player.serverWatchdog->isActive());
    }

    void seekKeys_data()
    {
        QTest::addColumn<Status>("status");
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QString>("request");
        QTest::addColumn<QString>("position");
        QTest::newRow("forward twice") << VodPlayView::Playing << QList<int>{Qt::Key_Context1, Qt::Key_Context1}
                                       << 2 << "forwardVod(QString)" << "40";
        QTest::newRow("reverse") << VodPlayView::Playing << QList<int>{Qt::Key_Context2} << -1
                                 << "reverseVod(QString)" << "25";
        QTest::newRow("cancelled out") << VodPlayView::Playing << QList<int>{Qt::Key_Context1, Qt::Key_Context2}
                                       << 0 << QString() << QString();
        QTest::newRow("paused") << VodPlayView::Paused << QList<int>{Qt::Key_Context1} << 0 << QString()
                                << QString();
    }
    void seekKeys()
    {
        QFETCH(Status, status);
        QFETCH(QList<int>, keys);
        QFETCH(int, steps);
        QFETCH(QString, request);
        QFETCH(QString, position);
        Rig rig;
        rig.player.setTotalTime(QStringLiteral("00:01:40"));
        rig.player.currentMsecs = 30000;
        rig.player.screenStatus = status;
        rig.player.playScreen->showPlayIcon = true;

        for (int key : keys)
            pressKey(&rig.player, key);

        const bool playing = status == VodPlayView::Playing;
        QCOMPARE(rig.player.seekSteps, steps);
        QCOMPARE(rig.player.seekTimer->isActive(), playing);
        QCOMPARE(rig.player.playScreen->showPlayIcon, !playing);

        QVERIFY(QMetaObject::invokeMethod(rig.player.seekTimer, "timeout"));
        if (request.isEmpty()) {
            QVERIFY(signaturesOn(manager).isEmpty());
        } else {
            QCOMPARE(signaturesOn(manager), QStringList{request});
            QCOMPARE(sentOn(manager).first().data, messageData(position));
        }
    }

    void selectPerState_data()
    {
        QTest::addColumn<Status>("status");
        QTest::addColumn<bool>("iconBefore");
        QTest::addColumn<QString>("request");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("iconAfter");
        QTest::newRow("playing") << VodPlayView::Playing << false << "pauseVod(int)" << messageData(0) << true;
        QTest::newRow("interrupted") << VodPlayView::Interrupted << false << "resumeVod(QString)"
                                     << messageData(QStringLiteral("12.5")) << false;
        QTest::newRow("paused") << VodPlayView::Paused << true << "resumeVod(QString)"
                                << messageData(QStringLiteral("12.5")) << false;
        QTest::newRow("stopped") << VodPlayView::Stopped << true << "startVod(QString)"
                                 << messageData(QStringLiteral("0")) << false;
        QTest::newRow("stopping") << VodPlayView::Stopping << true << QString() << QByteArray() << true;
        QTest::newRow("push") << VodPlayView::PausedForPush << true << QString() << QByteArray() << true;
    }
    void selectPerState()
    {
        QFETCH(Status, status);
        QFETCH(bool, iconBefore);
        QFETCH(QString, request);
        QFETCH(QByteArray, data);
        QFETCH(bool, iconAfter);
        Rig rig;
        rig.player.screenStatus = status;
        rig.player.pausedTime = 12.5f;
        rig.player.playScreen->showPlayIcon = iconBefore;

        pressKey(&rig.player, Qt::Key_Select);

        if (request.isEmpty()) {
            QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
        } else {
            QCOMPARE(signaturesOn(manager), QStringList{request});
            QCOMPARE(sentOn(manager).first().data, data);
        }
        QCOMPARE(rig.player.playScreen->showPlayIcon, iconAfter);
        QCOMPARE(rig.player.screenStatus, status);
    }

    void backPerState_data()
    {
        QTest::addColumn<Status>("status");
        QTest::addColumn<bool>("stops");
        QTest::newRow("playing") << VodPlayView::Playing << true;
        QTest::newRow("paused") << VodPlayView::Paused << true;
        QTest::newRow("stopped") << VodPlayView::Stopped << false;
        QTest::newRow("interrupted") << VodPlayView::Interrupted << false;
        QTest::newRow("stopping") << VodPlayView::Stopping << false;
    }
    void backPerState()
    {
        QFETCH(Status, status);
        QFETCH(bool, stops);
        Rig rig;
        rig.player.show();
        rig.player.screenStatus = status;
        QSignalSpy finished(&rig.player, &VodPlayView::notifyStopPlay);

        pressKey(&rig.player, Qt::Key_Back);

        if (stops) {
            // The dialog waits for "endOKVod()".
            QCOMPARE(signaturesOn(manager), QStringList{QStringLiteral("stopVod()")});
            QVERIFY(rig.player.isVisible());
            QCOMPARE(finished.size(), 0);
            QVERIFY(rig.player.playScreen->showPlayIcon);
        } else {
            QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
            QVERIFY(!rig.player.isVisible());
            QCOMPARE(finished.size(), 1);
            QVERIFY(!rig.player.animationTimer);
        }
    }

    void hangUp_data()
    {
        QTest::addColumn<Status>("status");
        QTest::addColumn<bool>("fullScreen");
        QTest::addColumn<bool>("stops");
        QTest::newRow("playing") << VodPlayView::Playing << false << true;
        QTest::newRow("paused") << VodPlayView::Paused << false << true;
        QTest::newRow("stopped") << VodPlayView::Stopped << false << false;
        QTest::newRow("playing full screen") << VodPlayView::Playing << true << true;
    }
    void hangUp()
    {
        QFETCH(Status, status);
        QFETCH(bool, fullScreen);
        QFETCH(bool, stops);
        Rig rig;
        QPointer<VodPlayFullScreenView> full = fullScreen ? rig.openFullScreen() : nullptr;
        rig.player.screenStatus = status;
        QtopiaIpcTransport::clearTraffic();

        pressKey(&rig.player, Qt::Key_Hangup);

        const QList<QtopiaIpcMessage> hangUps = sentOn(application, QLatin1String(VodMessage::HangUpBySmallScreen));
        QCOMPARE(hangUps.size(), 1);
        QVERIFY(hangUps.first().data.isEmpty());
        QVERIFY(rig.player.ignoreNextNotification);
        QVERIFY(!full);
        QVERIFY(!rig.player.fullScreenView);
        QVERIFY(!rig.player.fullScreenShown);
        if (stops) {
            const int stop = trafficIndex(manager, QLatin1String(VodMessage::StopVod));
            QVERIFY(stop >= 0);
            QVERIFY(stop < trafficIndex(application, QLatin1String(VodMessage::HangUpBySmallScreen)));
            QCOMPARE(rig.player.screenStatus, VodPlayView::Stopping);
            QVERIFY(rig.player.playScreen->showPlayIcon);
        } else {
            QVERIFY(signaturesOn(manager).isEmpty());
            QCOMPARE(rig.player.screenStatus, status);
        }
    }

    // The hang-up echo is dropped; the end of the content closes player and page.
    void hangUpEchoIsDropped()
    {
        vod browser;
        MVodInfoView page(QStringLiteral("Title"), QTime(0, 10, 0), &browser, nullptr);
        browser.infoView = &page;
        const auto forgetPage = qScopeGuard([&browser]() { browser.infoView = nullptr; });
        VodPlaySmallScreenView *player = page.playView;
        page.show();
        player->show();
        deliver(application, QLatin1String(VodMessage::StartOKVod));
        QCOMPARE(player->screenStatus, VodPlayView::Playing);
        flushEvents();
        QtopiaIpcTransport::clearTraffic();
        QSignalSpy finished(player, &VodPlayView::notifyStopPlay);

        pressKey(player, Qt::Key_Hangup);
        QVERIFY(player->ignoreNextNotification);
        QTRY_VERIFY(!player->ignoreNextNotification);
        QCOMPARE(player->screenStatus, VodPlayView::Stopping);
        QVERIFY(player->isVisible());

        deliver(application, QLatin1String(VodMessage::EndOKVod));
        QCOMPARE(finished.size(), 1);
        QCOMPARE(player->screenStatus, VodPlayView::Stopped);
        QVERIFY(!player->isVisible());
        QVERIFY(!player->serverWatchdog->isActive());
        QVERIFY(!page.isVisible());
    }

    void videoKeyOpensFullScreen_data()
    {
        QTest::addColumn<Status>("status");
        QTest::addColumn<bool>("ready");
        QTest::addColumn<bool>("opens");
        QTest::newRow("playing, ready") << VodPlayView::Playing << true << true;
        QTest::newRow("playing, window moving") << VodPlayView::Playing << false << false;
        QTest::newRow("paused") << VodPlayView::Paused << true << false;
        QTest::newRow("stopped") << VodPlayView::Stopped << true << false;
    }
    void videoKeyOpensFullScreen()
    {
        QFETCH(Status, status);
        QFETCH(bool, ready);
        QFETCH(bool, opens);
        Rig rig;
        rig.player.setTotalTime(QStringLiteral("00:01:40"));
        rig.player.setContentTitle(QStringLiteral("Some title"));
        rig.player.currentMsecs = 30000;
        rig.player.volume = 12;
        rig.player.isMute = true;
        rig.player.screenStatus = status;
        rig.player.playScreenReady = ready;

        pressKey(&rig.player, Key_Video4);

        VodPlayFullScreenView *full = rig.player.fullScreenView;
        QCOMPARE(full != nullptr, opens);
        QCOMPARE(rig.player.fullScreenShown, opens);
        QCOMPARE(rig.player.playScreenReady, ready && !opens);
        if (!opens) {
            QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
            return;
        }
        QCOMPARE(full->parentWidget(), &rig.player);
        QCOMPARE(full->requestSender, &rig.browser);
        QCOMPARE(full->screenStatus, VodPlayView::Playing);
        QCOMPARE(full->currentMsecs, 30000u);
        QCOMPARE(full->totalTimeText, QStringLiteral("00:01:40"));
        QCOMPARE(full->totalTime, 100000u);
        QCOMPARE(full->volume, 12);
        QVERIFY(full->isMute);
        QCOMPARE(full->contentTitle, QStringLiteral("Some title"));
        QVERIFY(full->isVisible());
        QVERIFY(full->windowState() & Qt::WindowFullScreen);
        // The video window moves once the event loop runs.
        QVERIFY(windowRequests().isEmpty());
        QTRY_COMPARE(windowRequests(), QList<QByteArray>{messageData(0, 0, 363, 272)});
    }

    void notificationsGoToTheShownFullScreen()
    {
        Rig rig;
        rig.notify(VodMessage::StartOKVod);
        VodPlayFullScreenView *full = rig.openFullScreen();
        rig.player.serverWatchdog->stop();

        rig.notify(VodMessage::CurrentTime, messageData(50.0f));
        QCOMPARE(full->flowingTimeText, QStringLiteral("00:00:50"));
        QVERIFY(rig.player.flowingTimeText.isEmpty());
        QVERIFY(rig.player.serverWatchdog->isActive());

        rig.notify(VodMessage::PauseOKVod, messageData(50.0f));
        QCOMPARE(full->screenStatus, VodPlayView::Paused);
        QCOMPARE(rig.player.screenStatus, VodPlayView::Playing);
        QVERIFY(!rig.player.serverWatchdog->isActive());
    }

    void wideSwitchThenBackToSmall()
    {
        Rig rig;
        VodPlayFullScreenView *full = rig.openFullScreen();
        // Not before the video manager has placed the window.
        pressKey(full, Key_Video4);
        QCOMPARE(full->screenType, FullVodScreen);
        QTRY_VERIFY(full->playScreenReady);
        QtopiaIpcTransport::clearTraffic();

        pressKey(full, Key_Video4);
        QCOMPARE(full->screenType, WideVodScreen);
        QCOMPARE(full->playScreen->width(), 480);
        QCOMPARE(windowRequests(), QList<QByteArray>{messageData(0, 0, 480, 271)});

        full->currentMsecs = 61000;
        full->volume = 3;
        full->isMute = true;
        QtopiaIpcTransport::clearTraffic();
        pressKey(full, Key_Video4);

        QVERIFY(!full->isVisible());
        QVERIFY(rig.player.isVisible());
        QCOMPARE(rig.player.fullScreenView, full);
        QVERIFY(!rig.player.fullScreenShown);
        QCOMPARE(rig.player.screenStatus, VodPlayView::Playing);
        QCOMPARE(rig.player.currentMsecs, 61000u);
        QCOMPARE(rig.player.flowingTimeText, QStringLiteral("00:01:01"));
        QCOMPARE(rig.player.volume, 3);
        QVERIFY(rig.player.isMute);
        QCOMPARE(QSoftMenuBar::label(&rig.player, Qt::Key_Select).pixmap,
                 QStringLiteral(":image/vod/vod_icon_botton04.png"));
        QTRY_COMPARE(windowRequests(), QList<QByteArray>{messageData(8, 39, 256, 194)});
    }

    void stopOnTheFullScreenStopsTheContent_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("Video3 while paused") << "key";
        QTest::newRow("start failed") << "startFail";
    }
    void stopOnTheFullScreenStopsTheContent()
    {
        QFETCH(QString, how);
        Rig rig;
        rig.notify(VodMessage::StartOKVod);
        VodPlayFullScreenView *full = rig.openFullScreen();
        QtopiaIpcTransport::clearTraffic();

        if (how == QLatin1String("key")) {
            rig.notify(VodMessage::PauseOKVod, messageData(20.0f));
            QCOMPARE(full->screenStatus, VodPlayView::Paused);
            pressKey(full, Key_Video3);
        } else {
            rig.notify(VodMessage::StartFailVod, messageData(5));
        }

        QVERIFY(!full->isVisible());
        QVERIFY(!rig.player.fullScreenShown);
        QCOMPARE(rig.player.screenStatus, VodPlayView::Stopping);
        QCOMPARE(signaturesOn(manager), QStringList{QStringLiteral("stopVod()")});
        QVERIFY(!rig.player.serverWatchdog->isActive());
    }

    // Soft keys follow notifications only while the player has the focus.
    void focusedPlayerFollowsNotifications()
    {
        Rig rig;
        const QString idleSelect = QStringLiteral(":image/vod/vod_icon_botton02.png");
        const QString playingSelect = QStringLiteral(":image/vod/vod_icon_botton04.png");
        QCOMPARE(QSoftMenuBar::label(&rig.player, Qt::Key_Select).pixmap, idleSelect);
        rig.notify(VodMessage::StartOKVod);
        QCOMPARE(QSoftMenuBar::label(&rig.player, Qt::Key_Select).pixmap, idleSelect);

        rig.player.show();
        rig.player.activateWindow();
        QTRY_COMPARE(QApplication::focusWidget(), &rig.player);
        QCOMPARE(rig.browser.focusedWidget.data(), &rig.player);
        rig.notify(VodMessage::PauseOKVod, messageData(1.0f));
        QCOMPARE(QSoftMenuBar::label(&rig.player, Qt::Key_Select).pixmap, idleSelect);
        rig.notify(VodMessage::ResumedOKVod);
        QCOMPARE(QSoftMenuBar::label(&rig.player, Qt::Key_Select).pixmap, playingSelect);

    }
};

QTEST_MAIN(tst_VodPlaySmallScreenView)
#include "tst_vodplaysmallscreenview.moc"
