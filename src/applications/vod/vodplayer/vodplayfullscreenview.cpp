#include "vodplayfullscreenview.h"

#include "devicekeys.h"
#include "messaging/vodmessages.h"
#include "player/playerlogic.h"
#include "player/playscreen.h"
#include "vod.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>

VodPlayFullScreenView::VodPlayFullScreenView(vod *requestSender, QWidget *parent)
    : VodPlayView(requestSender, FullVodScreen, parent)
{
    setUpFullScreenWindow();
    // The opener hands its own status over right after construction.
    screenStatus = Playing;
}

VodPlayFullScreenView::~VodPlayFullScreenView()
{
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
    repaintFlowingTime();
}

void VodPlayFullScreenView::keyPressEvent(QKeyEvent *e)
{
    switch (e->key()) {
    case Qt::Key_VolumeUp:
    case Qt::Key_VolumeDown:
        stepVolume(e->key());
        showVolumeRect();
        break;
    case Qt::Key_Select:
        // Only the device's keypad pauses and resumes here.
        if (e->modifiers() & Qt::KeypadModifier)
            togglePlayback();
        break;
    case Key_Video1:
        if (screenStatus == Playing)
            addSeekStep(-1);
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
            addSeekStep(+1);
        } else {
            // Stop, as at the end of the content: hands Stopping back and closes;
            // the small player sends the request and waits for "endOKVod()".
            endOfContent();
        }
        break;
    case Key_Video4:
        switchWideOrClose();
        break;
    case Qt::Key_Back:
        ignoreNextClose = true;
        break;
    case Key_Headset:
        toggleHeadset(406);
        break;
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
