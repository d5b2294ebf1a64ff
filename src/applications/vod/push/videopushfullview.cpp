#include "videopushfullview.h"

#include "player/playscreen.h"
#include "videopushview.h"

#include "devicekeys.h"

#include <QDebug>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QTimer>

namespace {
// The overlay stays this long after the last volume change.
constexpr int VolumeOverlayMsecs = 1000;
}

VideoPushFullView::VideoPushFullView(VideoPushView *owner, QWidget *parent)
    : VodPlayView(nullptr, FullPushScreen, parent), owner(owner)
{
    setUpFullScreenWindow();
    // Only opened while the broadcast plays; the owner hands over its status.
    screenStatus = Playing;
}

VideoPushFullView::~VideoPushFullView()
{
    delete volumeRectTimer;
    volumeRectTimer = nullptr;
    stopAllTimers();
}

int VideoPushFullView::steppedVolume(int level, int key)
{
    if (key == Qt::Key_VolumeUp && level <= 15)
        return level + 1;
    if (key == Qt::Key_VolumeDown && level > 1)
        return level - 1;
    return level;
}

void VideoPushFullView::showVolumeRect()
{
    volumeRectShown = true;
    if (!volumeRectTimer) {
        volumeRectTimer = new QTimer(this);
        volumeRectTimer->setInterval(VolumeOverlayMsecs);
        connect(volumeRectTimer, &QTimer::timeout, this, &VideoPushFullView::deleteVolumeRect);
    }
    volumeRectTimer->start();
    playScreen->update();
}

void VideoPushFullView::deleteVolumeRect()
{
    volumeRectShown = false;
    volumeRectTimer->stop();
    playScreen->update();
}

void VideoPushFullView::drawVolumeRect(QPainter *painter)
{
    drawVolumeOverlay(painter, 50, 214);
}

void VideoPushFullView::drawButtonColumn(QPainter *painter)
{
    for (int y : {31, 73, 115, 157})
        painter->fillRect(QRect(365, y, 115, 41), QBrush(QColor(46, 46, 46, 255)));
    painter->drawPixmap(QPoint(414, 168), QPixmap(QStringLiteral(":image/vod/vod_icon_botton05.png")));
}

void VideoPushFullView::keyPressEvent(QKeyEvent *e)
{
    switch (e->key()) {
    case Qt::Key_VolumeUp:
    case Qt::Key_VolumeDown:
        // At the ends of the range the level stays, but the user still sees it.
        volume = steppedVolume(volume, e->key());
        isMute = false;
        showVolumeRect();
        setVolume(volume);
        break;
    case Qt::Key_Back:
        // Only the push view's own Back stops the broadcast.
        e->accept();
        break;
    case Key_Video3:
        qDebug() << "Fullscreen push stop!!";
        // The owner closes this view when the end notification arrives.
        if (owner)
            owner->requestStopUI();
        break;
    case Key_Video4:
        if (screenStatus != Playing || !playScreenReady)
            break;
        if (screenType == FullPushScreen) {
            screenType = WidePushScreen;
            playScreen->setWideLayout(WidePushScreen);
            if (owner)
                owner->changePushWindow(WidePushScreen);
        } else if (screenType == WidePushScreen) {
            if (frameSliderTimer)
                frameSliderTimer->stop();
            emit fullScreenCloseSignal(screenStatus, currentMsecs, volume, isMute);
            close();
        }
        break;
    case Key_Headset:
        VodPlayView::keyPressEvent(e);
        e->accept();
        break;
    default:
        break;
    }
}

void VideoPushFullView::paintEvent(QPaintEvent *e)
{
    Q_UNUSED(e);
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, 480, 272), QBrush(QColor(18, 18, 18, 255)));
    drawButtonColumn(&painter);
    drawMaxButton(&painter, tr("Max"), 363);
    painter.drawPixmap(QPoint(363, 31), QPixmap(QStringLiteral(":image/vod/line_vertical.png")));
}

void VideoPushFullView::showEvent(QShowEvent *e)
{
    Q_UNUSED(e);
    showFullScreen();
}
