#include "mvodinfoview.h"

#include "qeuckr.h"
#include "qsoftmenubar.h"
#include "vod.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>

MVodInfoView::MVodInfoView(const QString &rawTitle, const QTime &time, vod *browser, QWidget *parent)
    : QWidget(parent),
      // The browser keeps catalogue text as raw EUC-KR bytes in a Latin-1 string.
      title(qEUCKRtoQString(rawTitle.toLatin1())),
      playTime(time),
      owner(browser)
{
    setWindowIconText(QStringLiteral("title_icon_vod"));

    // Hidden until Play; it is a sibling of this page, not a child.
    playView = new VodPlaySmallScreenView(owner, parentWidget());
    connect(playView, &VodPlayView::notifyStopPlay, this, &MVodInfoView::finishedVod);

    setWindowTitle(tr("Video Contents") + QLatin1Char(';') + tr("Media Information"));

    QSoftMenuBar::setLabel(this, Qt::Key_Select, QStringLiteral("select"), QString(), QSoftMenuBar::AnyFocus);
    QSoftMenuBar::setLabel(this, Qt::Key_Context1, QStringLiteral("Play"), tr("Play"), QSoftMenuBar::AnyFocus);
    QSoftMenuBar::setLabel(this, Qt::Key_Back, QStringLiteral("back"), tr("Back"), QSoftMenuBar::AnyFocus);

    setFixedSize(480, 272);
}

MVodInfoView::~MVodInfoView()
{
    delete playView;
    playView = nullptr;
}

QString MVodInfoView::elidedTitle(const QString &text, const QFont &font)
{
    return QFontMetrics(font).elidedText(text, Qt::ElideRight, TitleElideWidth);
}

QFont MVodInfoView::titleFont() const
{
    QFont f = font();
    f.setPixelSize(24);
    return f;
}

QFont MVodInfoView::playTimeFont() const
{
    QFont f = font();
    f.setPixelSize(30);
    return f;
}

QString MVodInfoView::playTimeText() const
{
    return playTime.toString(QStringLiteral("hh:mm:ss"));
}

void MVodInfoView::showMaximized()
{
    QWidget::showMaximized();
    repaint();
    emit showFinished();
}

void MVodInfoView::finishedVod()
{
    // A repeated end of the same content finds the page closed already: the
    // browser steps back once only.
    if (isHidden())
        return;
    if (owner && owner->currentLevel > 0)
        owner->currentLevel -= 1;
    close();
}

void MVodInfoView::keyPressEvent(QKeyEvent *e)
{
    switch (e->key()) {
    case Qt::Key_Back:
        finishedVod();
        break;
    case Qt::Key_Context1:
        // The same player plays again on every Play.
        playView->playVod();
        playView->setContentTitle(title);
        playView->setTotalTime(playTimeText());
        playView->showMaximized();
        break;
    default:
        break;
    }
    QWidget::keyPressEvent(e);
}

void MVodInfoView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, 480, 120), QColor(35, 35, 35));
    painter.fillRect(QRect(0, 120, 480, 120), QColor(46, 46, 46));

    painter.drawPixmap(10, 6, QPixmap(QStringLiteral(":image/vod/vod_icon_title.png")));
    painter.drawPixmap(10, 126, QPixmap(QStringLiteral(":image/vod/vod_icon_time.png")));

    QFont labelFont = painter.font();
    labelFont.setPixelSize(17);
    painter.setFont(labelFont);
    painter.setPen(QColor(171, 171, 171));
    painter.drawText(QRect(34, 0, 70, 30), Qt::AlignLeft | Qt::AlignVCenter, tr("Title"));
    painter.drawText(QRect(34, 120, 70, 30), Qt::AlignLeft | Qt::AlignVCenter, tr("PlayTime"));

    const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;
    const QFont nameFont = titleFont();
    painter.setFont(nameFont);
    painter.setPen(QColor(255, 255, 255));
    painter.drawText(QRect(110, 4, TitleWidth, 120), flags, elidedTitle(title, nameFont));

    painter.setFont(playTimeFont());
    painter.drawText(QRect(110, 124, TitleWidth, 120), flags, playTimeText());
}
