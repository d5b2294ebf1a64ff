#include "vodplayfullscreenview.h"

#include "devicekeys.h"
#include "messaging/vodmessages.h"
#include "player/playerlogic.h"
#include "player/playscreen.h"
#include "qtopiaipcenvelope.h"
#include "vod.h"

#include <QDebug>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QTimer>

VodPlayFullScreenView::VodPlayFullScreenView(vod *requestSender, QWidget *parent)
    : VodPlayView(requestSender, FullVodScreen, parent)
{
    volumeRectShown = false;
    volumeRectTimer = nullptr;

    setUpFullScreenWindow();
    // The opener hands its own status over right after construction.
    screenStatus = Playing;
}

VodPlayFullScreenView::~VodPlayFullScreenView()
{
    if (volumeRectTimer) {
        volumeRectTimer->stop();
        delete volumeRectTimer;
        volumeRectTimer = nullptr;
    }
    stopAllTimers();
}

void VodPlayFullScreenView::messageHandle(const QString &message, const QByteArray &data)
{
    VodPlayView::messageHandle(message, data);
}

void VodPlayFullScreenView::drawVolumeRect(QPainter *painter)
{
    drawVolumeOverlay(painter, 40, 211);
}

void VodPlayFullScreenView::showVolumeRect()
{
    volumeRectShown = true;
    if (!volumeRectTimer) {
        volumeRectTimer = new QTimer(this);
        volumeRectTimer->setInterval(1000);
        connect(volumeRectTimer, &QTimer::timeout, this, &VodPlayFullScreenView::deleteVolumeRect);
    }
    // Restarts a running timer: the overlay stays one second after the last key.
    volumeRectTimer->start();
    playScreen->update();
}

void VodPlayFullScreenView::deleteVolumeRect()
{
    volumeRectShown = false;
    if (volumeRectTimer)
        volumeRectTimer->stop();
    playScreen->update();
}

void VodPlayFullScreenView::updateFlowingTime(QTime currentTime)
{
    // Unlike the small layouts, a time report keeps the progress offset.
    currentMsecs = quint32(QTime(0, 0, 0, 0).msecsTo(currentTime));
    flowingTimeText = PlayerLogic::clockText(currentTime);
    sliderTime = currentMsecs;

    if (currentMsecs >= totalTime && !totalTimeText.isEmpty()) {
        // Hands Stopping back and closes: the small player sends the stop request.
        endOfContent();
        return;
    }
    update(QRegion(flowingTimeRect));
}

void VodPlayFullScreenView::applyVolumeKey()
{
    // Also at a limit: the mute goes, the overlay shows and the level is sent again.
    isMute = false;
    showVolumeRect();
    setVolume(volume);
}

void VodPlayFullScreenView::keyPressEvent(QKeyEvent *e)
{
    switch (e->key()) {
    case Qt::Key_VolumeUp:
        if (volume <= 15)
            volume += 1;
        applyVolumeKey();
        break;
    case Qt::Key_VolumeDown:
        if (volume > 1)
            volume -= 1;
        applyVolumeKey();
        break;
    case Qt::Key_Select:
        // Only the device's keypad pauses and resumes here.
        if (e->modifiers() & Qt::KeypadModifier)
            togglePlayback();
        break;
    case Key_Video1:
        if (screenStatus == Playing) {
            playScreen->showPlayIcon = false;
            restartSeekTimer();
            seekSteps -= 1;
        }
        break;
    case Key_Video2:
        if (screenStatus == Stopped)
            startVod();
        else if (screenStatus == Playing)
            pauseVod(0);
        else if (screenStatus == Paused || screenStatus == Interrupted)
            resumeVod();
        break;
    case Key_Video3:
        if (screenStatus == Playing) {
            playScreen->showPlayIcon = false;
            restartSeekTimer();
            seekSteps += 1;
        } else {
            // Stop, as at the end of the content: hands Stopping back and closes;
            // the small player sends the request and waits for "endOKVod()".
            endOfContent();
        }
        break;
    case Key_Video4:
        if (screenStatus != Playing || !playScreenReady)
            break;
        if (screenType == FullVodScreen) {
            screenType = WideVodScreen;
            playScreen->setWideLayout(WideVodScreen);
            videoWindowType = WideVodScreen;
            doVideoScreenSizeChange();
        } else if (screenType == WideVodScreen) {
            // There is no way back to 4:3: the small player takes over again.
            if (frameSliderTimer)
                frameSliderTimer->stop();
            if (hasFocus())
                update();
            emit fullScreenCloseSignal(screenStatus, currentMsecs, volume, isMute);
            close();
        }
        break;
    case Qt::Key_Back:
        ignoreNextClose = true;
        break;
    case Key_Headset: {
        qDebug() << "keyPressEvent" << 406 << "Headset pressed";
        QtopiaIpcEnvelope envelope{QLatin1String(VodChannel::CallManager),
                                   QLatin1String(VodMessage::SetHeadsetOnOff)};
        break;
    }
    default:
        break;
    }
}

void VodPlayFullScreenView::focusInEvent(QFocusEvent *)
{
    if (requestSender)
        requestSender->setVodFocusedWidget(this);
}

void VodPlayFullScreenView::focusOutEvent(QFocusEvent *)
{
}

void VodPlayFullScreenView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, 480, 272), QColor(18, 18, 18, 255));
    drawControlPanel(&painter);
    drawMaxButton(&painter, tr("Max"), 363);
    painter.drawPixmap(363, 31, QPixmap(QStringLiteral(":image/vod/line_vertical.png")));
}

void VodPlayFullScreenView::showEvent(QShowEvent *)
{
    // Also when the handler shows it again after a call.
    showFullScreen();
}
