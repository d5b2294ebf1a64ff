#include "vodplaysmallscreenview.h"

#include "vodplayfullscreenview.h"

#include "devicekeys.h"
#include "messaging/vodmessages.h"
#include "player/playerlogic.h"
#include "player/playscreen.h"
#include "qnoticedialog.h"
#include "qtopiaipcenvelope.h"
#include "vod.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QSettings>
#include <QTimer>

VodPlaySmallScreenView::VodPlaySmallScreenView(vod *requestSender, QWidget *parent)
    : VodPlayView(requestSender, SmallVodScreen, parent)
{
    screenStatus = Stopped;
    fullScreenView = nullptr;
    fullScreenShown = false;

    startAnimation();

    QSettings settings(QStringLiteral("Trolltech"), QStringLiteral("Sound"));
    settings.beginGroup(QStringLiteral("Volume"));
    volume = settings.value(QStringLiteral("VOD"), 8).toInt() + 1;
    settings.endGroup();
    settings.sync();

    setWindowIconText(QStringLiteral("title_icon_vod"));
    updateSoftKeys();
    serverWatchdog = nullptr;
}

VodPlaySmallScreenView::~VodPlaySmallScreenView()
{
    delete fullScreenView;
    fullScreenView = nullptr;
    stopAllTimers();
}

VodPlaySmallScreenView::WatchdogAction VodPlaySmallScreenView::watchdogAction(const QString &message)
{
    if (isMessage(message, VodMessage::StartOKVod))
        return WatchdogCreate;
    static const char *const stopping[] = {
        VodMessage::StartFailVod, VodMessage::PauseOKVod,   VodMessage::PauseVodByServer,
        VodMessage::PauseFailVod, VodMessage::EndOKVod,     VodMessage::StartPush,
        VodMessage::StartCall,    VodMessage::StartVideoPushApp,
    };
    for (const char *signature : stopping) {
        if (isMessage(message, signature))
            return WatchdogStop;
    }
    if (isMessage(message, VodMessage::ResumedOKVod) || isMessage(message, VodMessage::CurrentTime))
        return WatchdogRestart;
    return WatchdogKeep;
}

void VodPlaySmallScreenView::messageHandle(const QString &message, const QByteArray &data)
{
    // The browser hands back our own "hangUpBySmallScreen()" (and whatever else
    // comes first after a hang-up); it must not reach the handler.
    if (ignoreNextNotification) {
        ignoreNextNotification = false;
        return;
    }
    // A stop is under way: only its confirmation counts.
    if (screenStatus == Stopping && !isMessage(message, VodMessage::EndOKVod))
        return;

    // The handlers below can close this dialog and emit signals whose receivers
    // may delete it.
    const QPointer<VodPlaySmallScreenView> self(this);
    if (fullScreenView && fullScreenShown) {
        fullScreenView->messageHandle(message, data);
    } else {
        VodPlayView::messageHandle(message, data);
        // Also after a time report: the labels are set again and the whole
        // dialog repainted, progress bar included.
        if (self && QApplication::focusWidget() == this)
            updateSoftKeys();
    }
    if (!self)
        return;

    // The watchdog follows the video also while the full-screen player shows it.
    followWatchdog(message);
}

void VodPlaySmallScreenView::followWatchdog(const QString &message)
{
    switch (watchdogAction(message)) {
    case WatchdogCreate:
        // A repeated start confirmation leaves a running (or stopped) watchdog alone.
        if (!serverWatchdog) {
            serverWatchdog = new QTimer(this);
            serverWatchdog->setTimerType(Qt::PreciseTimer);
            serverWatchdog->setInterval(ServerWatchdogInterval);
            connect(serverWatchdog, &QTimer::timeout, this, &VodPlaySmallScreenView::setServerIsDown);
            serverWatchdog->start();
        }
        break;
    case WatchdogStop:
        if (serverWatchdog)
            serverWatchdog->stop();
        break;
    case WatchdogRestart:
        if (serverWatchdog)
            serverWatchdog->start(ServerWatchdogInterval);
        break;
    case WatchdogKeep:
        break;
    }
}

void VodPlaySmallScreenView::setServerIsDown()
{
    if (serverWatchdog)
        serverWatchdog->stop();
    if (fullScreenView) {
        fullScreenView->setVisible(false);
        fullScreenShown = false;
    }

    const QPointer<VodPlaySmallScreenView> self(this);
    QNoticeDialog::information(this, tr("A video has been stopped by the VCS server."), QString(), 3);
    // The notice's modal loop may have deleted the player, or the content ended
    // meanwhile and closed it: nothing is left to stop.
    if (!self || (screenStatus == Stopped && isHidden()))
        return;
    // A time report during the notice restarted the watchdog.
    if (serverWatchdog)
        serverWatchdog->stop();

    setScreenStatus(Stopped);
    stopVod();
    if (frameSliderTimer)
        frameSliderTimer->stop();
    playScreen->setShowPlayIcon(true);
    currentMsecs = 0;
    stopAllTimers();
    close();
}

void VodPlaySmallScreenView::finishedVod()
{
    stopAllTimers();
    const QPointer<VodPlaySmallScreenView> self(this);
    emit notifyStopPlay();
    if (self)
        close();
}

void VodPlaySmallScreenView::fullScreenCloseSlot(VodPlayView::playScreenStatus pss, ulong ct, int cv,
                                                 bool mute)
{
    // The full-screen player stays allocated until the next one is opened.
    if (fullScreenView) {
        fullScreenView->hide();
        fullScreenShown = false;
    }

    setScreenStatus(pss);
    if (pss == Playing) {
        currentMsecs = quint32(ct);
        flowingTimeText = PlayerLogic::clockText(QTime(0, 0, 0, 0).addMSecs(int(currentMsecs)));
        volume = cv;
        isMute = mute;
        if (frameSliderTimer)
            frameSliderTimer->start();
        changeVideoWindow(SmallVodScreen);
        if (!isVisible())
            show();
    } else if (pss == Stopping) {
        stopVod();
    }

    repaint();
    playScreen->repaint();
    updateSoftKeys();
    updateWindowTitle();
}

void VodPlaySmallScreenView::keyPressEvent(QKeyEvent *e)
{
    VodPlayView::keyPressEvent(e);

    switch (e->key()) {
    case Qt::Key_Context1:
        if (screenStatus == Playing)
            addSeekStep(+1);
        break;
    case Qt::Key_Context2:
        if (screenStatus == Playing)
            addSeekStep(-1);
        break;
    case Qt::Key_Select:
        togglePlayback();
        break;
    case Qt::Key_Back:
        if (screenStatus == Playing || screenStatus == Paused) {
            // The dialog closes when the video manager confirms with "endOKVod()".
            playScreen->setShowPlayIcon(true);
            stopVod();
        } else {
            finishedVod();
        }
        break;
    case Qt::Key_Hangup:
        hangUp(e);
        break;
    case Key_Video4:
        if (screenStatus == Playing && playScreenReady)
            openFullScreen();
        break;
    default:
        break;
    }
}

void VodPlaySmallScreenView::hangUp(QKeyEvent *e)
{
    // Our own message comes back through the browser's channel; drop it there.
    ignoreNextNotification = true;
    {
        // Prepared first, sent when it goes out of scope: after the stop request.
        QtopiaIpcEnvelope envelope{QLatin1String(VodChannel::VideoApplication),
                                   QLatin1String(VodMessage::HangUpBySmallScreen)};
        if (screenStatus == Playing || screenStatus == Paused) {
            setScreenStatus(Stopping);
            playScreen->setShowPlayIcon(true);
            stopVod();
        }
        if (fullScreenView) {
            delete fullScreenView;
            fullScreenShown = false;
            fullScreenView = nullptr;
        }
        QWidget::keyPressEvent(e);
    }
}

void VodPlaySmallScreenView::openFullScreen()
{
    if (frameSliderTimer)
        frameSliderTimer->stop();
    fullScreenShown = true;

    delete fullScreenView;
    fullScreenView = new VodPlayFullScreenView(requestSender, this);
    connect(fullScreenView, &VodPlayView::fullScreenCloseSignal, this,
            &VodPlaySmallScreenView::fullScreenCloseSlot);

    handOverTo(fullScreenView);
    changeVideoWindow(FullVodScreen);
}

void VodPlaySmallScreenView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintSmallLayout(&painter, tr("Full"));
}

void VodPlaySmallScreenView::focusInEvent(QFocusEvent *)
{
    if (requestSender)
        requestSender->setVodFocusedWidget(this);
    updateSoftKeys();
}

void VodPlaySmallScreenView::focusOutEvent(QFocusEvent *)
{
}

void VodPlaySmallScreenView::showEvent(QShowEvent *)
{
    updateSoftKeys();
}
