#include "screencompositor.h"

#include "testpicture.h"
#include "videofeed.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QWidget>

namespace {
constexpr QRgb TitleTextColour = 0xffffffff;
constexpr QRgb TitleDetailColour = 0xffb8c8e8;
constexpr QRgb SoftKeyTextColour = 0xffe0e0e0;

// The soft keys left to right, as the device's keypad lays them out.
constexpr int softKeyOrder[] = {Qt::Key_Context2, Qt::Key_Select, Qt::Key_Context1, Qt::Key_Back};

void drawTitleIcon(QPainter *painter, const QRect &rect, const QString &name)
{
    QColor colour(96, 96, 96);
    QString glyph = name.section(QLatin1Char('_'), -1).left(3).toUpper();
    if (name == QLatin1String("title_icon_tv")) {
        colour = QColor(230, 120, 20);
        glyph = QStringLiteral("TV");
    } else if (name == QLatin1String("title_icon_vod")) {
        colour = QColor(40, 160, 80);
        glyph = QStringLiteral("VOD");
    }
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawRoundedRect(rect, 4, 4);
    QFont font = painter->font();
    font.setPixelSize(glyph.size() > 2 ? 8 : 11);
    font.setBold(true);
    painter->setFont(font);
    painter->setPen(Qt::white);
    painter->drawText(rect, Qt::AlignCenter, glyph);
}
}

const char *ScreenCompositor::placementProperty()
{
    return "devicePlacement";
}

ScreenCompositor::ScreenCompositor(const FrameHooks &hooks, QObject *parent)
    : QObject(parent)
    , hooks(hooks)
    , feed(new VideoFeed(hooks, this))
{
}

QRect ScreenCompositor::deviceRect(Placement placement, const QSize &windowSize)
{
    switch (placement) {
    case Maximized:
        return QRect(0, BarHeight, Width, Height - 2 * BarHeight);
    case FullScreen:
        return QRect(0, 0, Width, Height);
    case Centred:
        break;
    }
    const QSize size = windowSize.boundedTo(QSize(Width, Height));
    return QRect(QPoint((Width - size.width()) / 2, (Height - size.height()) / 2), size);
}

ScreenCompositor::Placement ScreenCompositor::placementOf(const QWidget *window)
{
    const QVariant value = window->property(placementProperty());
    return value.isValid() ? Placement(value.toInt()) : Centred;
}

void ScreenCompositor::raise(QWidget *window)
{
    order.removeAll(QPointer<QWidget>(window));
    order.removeAll(QPointer<QWidget>());
    order.append(window);
}

QList<QWidget *> ScreenCompositor::stack() const
{
    const auto drawn = [this](const QWidget *w) { return w && w != excluded && w->isWindow() && w->isVisible(); };
    QList<QWidget *> result;
    // Windows shown before the compositor saw them lie at the bottom.
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (drawn(w) && !order.contains(QPointer<QWidget>(w)))
            result.append(w);
    }
    for (const QPointer<QWidget> &w : order) {
        if (drawn(w) && !result.contains(w.data()))
            result.append(w);
    }
    return result;
}

QImage ScreenCompositor::compose() const
{
    // The video manager draws straight onto the display: wherever the window
    // on top leaves its video area clear, the picture is seen, not the windows
    // underneath.
    QImage video(Width, Height, QImage::Format_ARGB32_Premultiplied);
    video.fill(Qt::black);
    {
        QPainter videoPainter(&video);
        TestPicture::paint(&videoPainter, feed->window(), feed->seconds());
    }
    QImage image = video;
    QPainter painter(&image);

    const QList<QWidget *> windows = stack();
    // The bars lie over the topmost window that takes the whole display and
    // under the pop-ups above it; a full-screen window covers them.
    qsizetype barsAbove = -1;
    bool barsCovered = false;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        const Placement placement = placementOf(windows.at(i));
        if (placement != Centred) {
            barsAbove = i;
            barsCovered = placement == FullScreen;
        }
    }
    const auto drawBars = [&] {
        if (barsCovered)
            return;
        drawTitleBar(&painter, windows);
        drawSoftKeyBar(&painter, windows);
    };
    if (barsAbove < 0)
        drawBars();
    for (qsizetype i = 0; i < windows.size(); ++i) {
        drawWindow(&painter, windows.at(i), video);
        if (i == barsAbove)
            drawBars();
    }
    painter.end();
    return image;
}

void ScreenCompositor::drawWindow(QPainter *painter, QWidget *window, const QImage &video) const
{
    const QRect rect = deviceRect(placementOf(window), window->size());
    painter->drawImage(rect.topLeft(), video, rect);
    // An image of its own keeps what the window clears transparent, so that the
    // picture underneath shows through as on the device.
    QImage layer(rect.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    window->render(&layer, QPoint(), QRegion(QRect(QPoint(), rect.size())),
                   QWidget::DrawWindowBackground | QWidget::DrawChildren);
    painter->drawImage(rect.topLeft(), layer);
}

void ScreenCompositor::drawTitleBar(QPainter *painter, const QList<QWidget *> &windows) const
{
    const QRect bar(0, 0, Width, BarHeight);
    painter->fillRect(bar, QColor::fromRgb(TitleBarColour));

    const QWidget *titled = nullptr;
    for (auto it = windows.crbegin(); it != windows.crend() && !titled; ++it) {
        if (!(*it)->windowTitle().isEmpty())
            titled = *it;
    }
    if (!titled)
        return;

    int left = 6;
    const QString icon = titled->windowIconText();
    if (!icon.isEmpty()) {
        drawTitleIcon(painter, QRect(4, 4, 23, 23), icon);
        left = 33;
    }
    const QStringList pieces = titled->windowTitle().split(QLatin1Char(';'));
    QFont font = QApplication::font();
    font.setPixelSize(15);
    font.setBold(true);
    painter->setFont(font);
    painter->setPen(QColor::fromRgb(TitleTextColour));
    const QRect textRect = bar.adjusted(left, 0, -8, 0);
    const QString head = pieces.first();
    const QFontMetrics headMetrics(font);
    const int headWidth = std::min(headMetrics.horizontalAdvance(head), textRect.width() / 2);
    painter->drawText(QRect(textRect.left(), 0, headWidth, BarHeight), Qt::AlignLeft | Qt::AlignVCenter,
                      headMetrics.elidedText(head, Qt::ElideRight, headWidth));

    const QString rest = pieces.mid(1).join(QStringLiteral("  "));
    if (rest.isEmpty())
        return;
    font.setBold(false);
    font.setPixelSize(14);
    painter->setFont(font);
    painter->setPen(QColor::fromRgb(TitleDetailColour));
    const QRect restRect(textRect.left() + headWidth + 12, 0, textRect.width() - headWidth - 12, BarHeight);
    painter->drawText(restRect, Qt::AlignRight | Qt::AlignVCenter,
                      QFontMetrics(font).elidedText(rest, Qt::ElideRight, restRect.width()));
}

QList<FrameHooks::SoftKey> ScreenCompositor::currentSoftKeys(const QList<QWidget *> &windows) const
{
    // The focused widget and its ancestors first, then the windows from the top.
    QList<const QWidget *> candidates;
    if (QWidget *focus = QApplication::focusWidget(); focus && windows.contains(focus->window())) {
        for (const QWidget *w = focus; w; w = w->isWindow() ? nullptr : w->parentWidget())
            candidates.append(w);
    }
    for (auto it = windows.crbegin(); it != windows.crend(); ++it)
        candidates.append(*it);
    for (const QWidget *w : candidates) {
        const QList<FrameHooks::SoftKey> keys = hooks.softKeys(w);
        if (!keys.isEmpty())
            return keys;
    }
    return {};
}

void ScreenCompositor::drawSoftKeyBar(QPainter *painter, const QList<QWidget *> &windows) const
{
    const QRect bar(0, Height - BarHeight, Width, BarHeight);
    painter->fillRect(bar, QColor::fromRgb(SoftKeyBarColour));

    const QList<FrameHooks::SoftKey> keys = currentSoftKeys(windows);
    constexpr int cellCount = int(std::size(softKeyOrder));
    const int slotWidth = Width / cellCount;
    QFont font = QApplication::font();
    font.setPixelSize(14);
    font.setBold(true);
    painter->setFont(font);
    for (int slot = 0; slot < cellCount; ++slot) {
        const auto found = std::find_if(keys.cbegin(), keys.cend(),
                                        [&](const FrameHooks::SoftKey &k) { return k.key == softKeyOrder[slot]; });
        if (found == keys.cend())
            continue;
        const QRect cell(slot * slotWidth, bar.top() + 2, slotWidth, BarHeight - 4);
        // Image names are resources of the plugin (":image/..."); other names
        // stand for the platform's own icons and are shown as words.
        const QImage picture = found->image.startsWith(QLatin1Char(':')) ? QImage(found->image) : QImage();
        if (!picture.isNull()) {
            const QImage scaled = picture.height() > cell.height()
                                      ? picture.scaledToHeight(cell.height(), Qt::SmoothTransformation)
                                      : picture;
            painter->drawImage(QPoint(cell.center().x() - scaled.width() / 2,
                                      cell.center().y() - scaled.height() / 2 + 1),
                               scaled);
            continue;
        }
        QString text = found->text;
        if (text.isEmpty() && !found->image.startsWith(QLatin1Char(':')) &&
            found->image != QLatin1String("none"))
            text = found->image;
        if (text.isEmpty())
            continue;
        painter->setPen(QColor::fromRgb(SoftKeyTextColour));
        painter->drawText(cell, Qt::AlignCenter, text);
    }
}
