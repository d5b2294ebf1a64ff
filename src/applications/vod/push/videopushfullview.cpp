#include "videopushfullview.h"

#include "player/playscreen.h"
#include "videopushview.h"

#include "devicekeys.h"

#include "qlogbase.h"

#include <QDebug>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>

VideoPushFullView::VideoPushFullView(VideoPushView *owner, QWidget *parent)
    : VodPlayView(nullptr, FullPushScreen, parent), owner(owner)
{
    setUpFullScreenWindow();
    // Only opened while the broadcast plays; the owner hands over its status.
    screenStatus = Playing;
}

VideoPushFullView::~VideoPushFullView()
{
    stopAllTimers();
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
        stepVolume(e->key());
        showVolumeRect();
        break;
    case Qt::Key_Back:
        // Only the push view's own Back stops the broadcast.
        e->accept();
        break;
    case Key_Video3:
        qCDebug(lcQtopiaDebug) << "Fullscreen push stop!!";
        // The owner closes this view when the end notification arrives.
        if (owner)
            owner->requestStopUI();
        break;
    case Key_Video4:
        switchWideOrClose();
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

void VideoPushFullView::requestWideWindow()
{
    // Only this view's picture moves: it stays ready, the owner waits for the move.
    if (owner)
        owner->changePushWindow(WidePushScreen);
}

void VideoPushFullView::showEvent(QShowEvent *e)
{
    Q_UNUSED(e);
    showFullScreen();
}
