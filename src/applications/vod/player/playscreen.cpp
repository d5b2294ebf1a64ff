#include "playscreen.h"

#include "phonestatus.h"

#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

namespace {

const QColor dark(10, 10, 10);
const QColor tileGrey(46, 46, 46);

bool isHeld(VodPlayView::playScreenStatus status)
{
    return status == VodPlayView::Interrupted || status == VodPlayView::PausedForPush;
}

bool isPushKind(playScreenType type)
{
    return type == SmallPushScreen || type == FullPushScreen || type == WidePushScreen;
}

bool isWideKind(playScreenType type)
{
    return type == WideVodScreen || type == WidePushScreen;
}

} // namespace

PlayScreen::PlayScreen(VodPlayView *parent)
    : QWidget(parent),
      owner(parent),
      // One icon for the play screen's life: a new QIcon at every paint would
      // leave a scaled copy in the pixmap cache each time.
      playIcon(QStringLiteral(":image/vod/vod_player_botton01.png"))
{
    setObjectName(QStringLiteral("_fullscreen_"));
    setGeometry(0, 0, 480, 272);
    setWindowState(Qt::WindowFullScreen);
    setFocusPolicy(Qt::NoFocus);

    QPalette pal = palette();
    pal.setColor(backgroundRole(), tileGrey);
    setPalette(pal);

    QSize size(480, 272);
    switch (owner->screenType) {
    case FullVodScreen:
    case FullPushScreen:
        iconRect = QRect(135, 107, 71, 70);
        showPlayIcon = false;
        size = QSize(363, 272);
        break;
    case SmallVodScreen:
    case SmallPushScreen:
        outerFrameRect = QRect(0, 0, 272, 210);
        innerFrameRect = QRect(6, 6, 260, 198);
        screenRect = QRect(8, 8, 256, 194);
        iconRect = QRect(100, 69, 71, 70);
        showPlayIcon = true;
        size = QSize(272, 210);
        break;
    case WideVodScreen:
    case WidePushScreen:
        // Players start 4:3 and switch later; a wide start gets the wide layout.
        iconRect = QRect(193, 107, 71, 70);
        showPlayIcon = false;
        break;
    }

    // The phone's own screens darken the area when they come and go.
    connect(&PhoneStatus::instance(), &PhoneStatus::changed, this, qOverload<>(&QWidget::update));

    // The area must stay transparent where it is cleared: the system never
    // fills its background.
    setAttribute(Qt::WA_NoSystemBackground);
    resize(size);
}

void PlayScreen::setWideLayout(playScreenType type)
{
    if (!isWideKind(type))
        return;
    iconRect = QRect(193, 107, 71, 70);
    showPlayIcon = false;
    resize(480, 272);
}

void PlayScreen::setShowPlayIcon(bool show)
{
    if (showPlayIcon == show)
        return;
    showPlayIcon = show;
    update();
}

bool PlayScreen::phoneScreenUp()
{
    return PhoneStatus::instance().screenUp();
}

PlayScreen::Content PlayScreen::contentFor(playScreenType type, VodPlayView::playScreenStatus status,
                                           bool focusLost, bool phoneScreenUp, bool showPlayIcon,
                                           bool ready)
{
    if (isHeld(status))
        return Content::HeldDark;
    // A push player never offers the play icon outside a hold.
    if (isPushKind(type))
        showPlayIcon = false;
    if (focusLost || phoneScreenUp)
        return Content::Dark;
    if (showPlayIcon)
        return Content::PlayIcon;
    if (!ready)
        return Content::Waiting;
    return Content::Open;
}

void PlayScreen::drawPlayIcon(QPainter *painter) const
{
    painter->drawPixmap(iconRect, playIcon.pixmap(iconRect.size(), QIcon::Normal, QIcon::Off));
}

void PlayScreen::drawKeyHints(QPainter *painter, int offset)
{
    // Seen only when the play screen is 480 wide; the other layouts clip them.
    painter->fillRect(QRect(458, offset + 84, 22, 41), tileGrey);
    painter->drawPixmap(460, offset + 95, QPixmap(QStringLiteral(":image/vod/vod_icon_botton02.png")));
    painter->fillRect(QRect(458, offset + 126, 22, 41), tileGrey);
    painter->drawPixmap(460, offset + 137, QPixmap(QStringLiteral(":image/vod/vod_icon_botton05.png")));
}

void PlayScreen::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const playScreenType type = owner->screenType;
    const VodPlayView::playScreenStatus status = owner->screenStatus;
    const bool small = VodPlayView::isSmallKind(type);

    // The video rectangle in screen coordinates (as sent to the video manager)
    // and where the key hints go.
    QRect video;
    int hintOffset;
    if (small) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(tileGrey, 11));
        painter.drawRect(outerFrameRect);
        painter.setPen(QPen(QColor(85, 85, 85), 4));
        painter.drawRect(innerFrameRect);
        video = QRect(8, 39, 256, 194);
        hintOffset = 0;
    } else {
        video = QRect(0, 0, isWideKind(type) ? 480 : 363, 272);
        hintOffset = 31;
    }
    // The area that darkens: the framed screen, or the whole video area.
    const QRect area = small ? QRect(8, 8, 256, 194) : video;

    if (!isHeld(status) && isPushKind(type))
        showPlayIcon = false;

    switch (contentFor(type, status, owner->focusLost, phoneScreenUp(), showPlayIcon,
                       owner->playScreenReady)) {
    case Content::HeldDark:
        painter.fillRect(area, dark);
        drawPlayIcon(&painter);
        if (!small)
            drawKeyHints(&painter, hintOffset);
        break;
    case Content::Dark:
        painter.fillRect(area, dark);
        break;
    case Content::PlayIcon:
        drawPlayIcon(&painter);
        drawKeyHints(&painter, hintOffset);
        break;
    case Content::Waiting:
        // 31 is the title bar above a small player, whose video rectangle is
        // given in screen coordinates.
        painter.fillRect(video.translated(0, -31), dark);
        break;
    case Content::Open: {
        const QPainter::CompositionMode mode = painter.compositionMode();
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(small ? video.translated(0, -31) : QRect(0, 0, 480, 272), Qt::transparent);
        painter.setCompositionMode(mode);
        if (!small && owner->volumeRectShown)
            owner->drawVolumeRect(&painter);
        break;
    }
    }
}

void PlayScreen::showEvent(QShowEvent *)
{
    showFullScreen();
}
