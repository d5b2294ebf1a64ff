#include "screencompositor.h"

#include "testpicture.h"
#include "videofeed.h"
#include "windowmanager.h"

#include <QApplication>
#include <QBackingStore>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
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

ScreenCompositor::ScreenCompositor(const FrameHooks &hooks, const WindowManager *windows, QObject *parent)
    : QObject(parent)
    , hooks(hooks)
    , manager(windows)
    , feed(new VideoFeed(hooks, this))
{
}

QImage ScreenCompositor::paintedImage(const QWidget *window)
{
    QImage image;
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        // The offscreen platform hands out a window's backing store as last flushed.
        if (window->windowHandle() && window->windowHandle()->handle())
            image = window->screen()->grabWindow(window->winId()).toImage();
    } else if (QBackingStore *store = window->backingStore()) {
        if (QPaintDevice *device = store->paintDevice(); device && device->devType() == QInternal::Image)
            image = *static_cast<const QImage *>(device);
    }
    if (image.isNull())
        return image;
    // An opaque store has no alpha, yet what the window cleared holds zero
    // bytes where painted pixels hold an opaque alpha; what was blended over a
    // cleared pixel keeps the alpha of the blend. Read as premultiplied ARGB,
    // the store is the window as the phone's display composes it.
    if (image.format() == QImage::Format_RGB32)
        image.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
    return image;
}

QImage ScreenCompositor::compose() const
{
    // The video manager draws straight onto the display: wherever the window
    // on top leaves its video area clear, the picture is seen, not the windows
    // underneath. Its frames fill the rectangle the module asked for, whatever
    // their own size; without a video manager's plane the test picture stands in.
    QImage video(Width, Height, QImage::Format_ARGB32_Premultiplied);
    video.fill(Qt::black);
    {
        QPainter videoPainter(&video);
        if (const std::optional<QImage> picture = feed->planePicture()) {
            if (!picture->isNull() && !feed->window().isEmpty()) {
                videoPainter.setRenderHint(QPainter::SmoothPixmapTransform);
                videoPainter.drawImage(feed->window(), *picture);
            }
        } else {
            TestPicture::paint(&videoPainter, feed->window(), feed->seconds());
        }
    }
    // Where no window is, the display shows its own background: a picture
    // shows only through a window's clear video area.
    QImage image(Width, Height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);

    const QList<QWidget *> windows = manager->stack();
    // The bars lie over the topmost window that takes the whole display and
    // under the pop-ups above it; a full-screen window covers them.
    qsizetype barsAbove = -1;
    bool barsCovered = false;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        const WindowManager::Placement placement = WindowManager::placementOf(windows.at(i));
        if (placement != WindowManager::Centred) {
            barsAbove = i;
            barsCovered = placement == WindowManager::FullScreen;
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
        // A window that has flushed nothing yet shows nothing; what it has
        // painted covers the windows beneath it, and where it is clear the
        // picture shows, not those windows: the video plane lies under them all.
        QWidget *window = windows.at(i);
        const QImage painted = paintedImage(window);
        if (!painted.isNull()) {
            const QRect rect = manager->displayRect(window);
            painter.drawImage(rect.topLeft(), video, QRect(rect.topLeft(), painted.size()));
            painter.drawImage(rect.topLeft(), painted);
        }
        if (i == barsAbove)
            drawBars();
    }
    painter.end();
    return image;
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
