// Draws the player's image set. Usage: vodimagegen <output dir> <name>...
// Each name is a path under ":image/" (some have no file extension); every
// image is written as PNG whatever its name says. An unknown name is an error,
// so that the build notices an image that nobody drew.

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QLinearGradient>
#include <QMap>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QString>

#include <cstdio>
#include <functional>

namespace {

const QColor symbol(225, 225, 225);
const QColor accent(0, 170, 210);

QImage blank(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

// Runs `draw` with an antialiased painter on a transparent image.
QImage drawn(int width, int height, const std::function<void(QPainter &)> &draw)
{
    QImage image = blank(width, height);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    return image;
}

QImage verticalGradient(int width, int height, const QColor &top, const QColor &bottom)
{
    return drawn(width, height, [&](QPainter &p) {
        QLinearGradient g(0, 0, 0, height);
        g.setColorAt(0, top);
        g.setColorAt(1, bottom);
        p.fillRect(QRect(0, 0, width, height), g);
    });
}

QPolygonF triangleRight(qreal left, qreal top, qreal width, qreal height)
{
    return QPolygonF({QPointF(left, top), QPointF(left + width, top + height / 2),
                      QPointF(left, top + height)});
}

QPolygonF triangleLeft(qreal left, qreal top, qreal width, qreal height)
{
    return QPolygonF({QPointF(left + width, top), QPointF(left, top + height / 2),
                      QPointF(left + width, top + height)});
}

// The big play icon over a stopped or held video.
QImage playIcon()
{
    return drawn(71, 70, [](QPainter &p) {
        const QRectF disc(3, 2.5, 65, 65);
        p.setPen(QPen(QColor(255, 255, 255, 220), 3));
        p.setBrush(QColor(0, 0, 0, 150));
        p.drawEllipse(disc);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(255, 255, 255, 235));
        p.drawPolygon(triangleRight(27, 19, 24, 32));
    });
}

// Key icons: 01 reverse, 02 play, 03 forward, 04 pause, 05 stop.
QImage keyIcon(int which)
{
    return drawn(20, 20, [which](QPainter &p) {
        p.setPen(Qt::NoPen);
        p.setBrush(symbol);
        switch (which) {
        case 1:
            p.drawPolygon(triangleLeft(1, 4, 9, 12));
            p.drawPolygon(triangleLeft(10, 4, 9, 12));
            break;
        case 2:
            p.drawPolygon(triangleRight(5, 3, 12, 14));
            break;
        case 3:
            p.drawPolygon(triangleRight(1, 4, 9, 12));
            p.drawPolygon(triangleRight(10, 4, 9, 12));
            break;
        case 4:
            p.drawRect(QRectF(5, 4, 4, 12));
            p.drawRect(QRectF(11, 4, 4, 12));
            break;
        default:
            p.drawRect(QRectF(4, 4, 12, 12));
            break;
        }
    });
}

QImage clockIcon()
{
    return drawn(24, 24, [](QPainter &p) {
        p.setPen(QPen(accent, 2));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QRectF(2, 2, 20, 20));
        p.setPen(QPen(symbol, 2, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(12, 12), QPointF(12, 6));
        p.drawLine(QPointF(12, 12), QPointF(16, 14));
    });
}

QImage titleIcon()
{
    return drawn(24, 24, [](QPainter &p) {
        p.setPen(Qt::NoPen);
        p.setBrush(accent);
        p.drawRoundedRect(QRectF(2, 4, 20, 16), 2, 2);
        p.setBrush(QColor(20, 20, 20));
        for (int i = 0; i < 4; ++i) {
            p.drawRect(QRectF(4 + 5 * i, 5, 2, 2));
            p.drawRect(QRectF(4 + 5 * i, 17, 2, 2));
        }
        p.setBrush(symbol);
        p.drawPolygon(triangleRight(10, 9, 6, 6));
    });
}

QImage speakerIcon(bool muted)
{
    return drawn(24, 22, [muted](QPainter &p) {
        p.setPen(Qt::NoPen);
        p.setBrush(symbol);
        p.drawPolygon(QPolygonF({QPointF(2, 8), QPointF(6, 8), QPointF(11, 3), QPointF(11, 19),
                                 QPointF(6, 14), QPointF(2, 14)}));
        p.setBrush(Qt::NoBrush);
        if (muted) {
            p.setPen(QPen(QColor(207, 56, 72), 2, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(14, 7), QPointF(21, 15));
            p.drawLine(QPointF(21, 7), QPointF(14, 15));
        } else {
            p.setPen(QPen(symbol, 1.6, Qt::SolidLine, Qt::RoundCap));
            p.drawArc(QRectF(8, 6, 8, 10), -60 * 16, 120 * 16);
            p.drawArc(QRectF(8, 2, 14, 18), -60 * 16, 120 * 16);
        }
    });
}

// The colour of each volume level, dark violet to yellow.
QColor levelColor(int level)
{
    static const QColor colors[16] = {
        QColor(88, 30, 152),  QColor(101, 32, 143), QColor(117, 34, 132), QColor(135, 36, 120),
        QColor(154, 40, 107), QColor(174, 44, 94),  QColor(191, 49, 82),  QColor(207, 56, 72),
        QColor(220, 65, 64),  QColor(231, 79, 61),  QColor(240, 102, 61), QColor(246, 130, 61),
        QColor(249, 158, 61), QColor(251, 186, 61), QColor(253, 209, 62), QColor(255, 255, 63),
    };
    return colors[qBound(1, level, 16) - 1];
}

// A 12 × 3 point of the volume bar; the "full" ends of the overlay bar are
// rounded on their outer side.
QImage volumePoint(int level, bool roundedEnd)
{
    QImage image = blank(12, 3);
    image.fill(levelColor(level));
    if (roundedEnd) {
        const int x = level == 1 ? 0 : 11;
        QColor faded = levelColor(level);
        faded.setAlpha(0);
        image.setPixelColor(x, 0, faded);
        image.setPixelColor(x, 2, faded);
    }
    return image;
}

// Four frames of a level meter that moves while the player runs.
QImage animationFrame(int frame)
{
    static const int heights[4][5] = {
        {30, 52, 20, 44, 26},
        {46, 28, 40, 24, 50},
        {22, 44, 56, 34, 18},
        {38, 18, 30, 54, 40},
    };
    return drawn(64, 76, [frame](QPainter &p) {
        p.setPen(Qt::NoPen);
        for (int i = 0; i < 5; ++i) {
            const int h = heights[frame - 1][i];
            QLinearGradient g(0, 70 - h, 0, 70);
            g.setColorAt(0, QColor(120, 220, 240));
            g.setColorAt(1, accent);
            p.setBrush(g);
            p.drawRoundedRect(QRectF(4 + 12 * i, 70 - h, 9, h), 2, 2);
        }
    });
}

QImage barBackground()
{
    QImage image = blank(1, 3);
    image.setPixelColor(0, 0, QColor(80, 80, 80));
    image.setPixelColor(0, 1, QColor(60, 60, 60));
    image.setPixelColor(0, 2, QColor(80, 80, 80));
    return image;
}

QImage verticalLine()
{
    QImage image = blank(2, 209);
    QPainter p(&image);
    p.fillRect(QRect(0, 0, 1, 209), QColor(18, 18, 18));
    p.fillRect(QRect(1, 0, 1, 209), QColor(70, 70, 70));
    return image;
}

QImage messageBarCell()
{
    QImage image = verticalGradient(88, 41, QColor(40, 40, 40), QColor(28, 28, 28));
    QPainter p(&image);
    p.fillRect(QRect(0, 0, 88, 1), QColor(60, 60, 60));
    return image;
}

using Painter = std::function<QImage()>;

QMap<QString, Painter> painters()
{
    QMap<QString, Painter> map;
    map.insert(QStringLiteral("vod/vod_player_botton01.png"), playIcon);
    for (int i = 1; i <= 5; ++i)
        map.insert(QStringLiteral("vod/vod_icon_botton%1.png").arg(i, 2, 10, QLatin1Char('0')),
                   [i]() { return keyIcon(i); });
    map.insert(QStringLiteral("vod/vod_icon_time.png"), clockIcon);
    map.insert(QStringLiteral("vod/vod_icon_title.png"), titleIcon);
    map.insert(QStringLiteral("vod/vod_bar_bg.png"), barBackground);
    map.insert(QStringLiteral("vod/vod_icon_volume.png"), []() { return speakerIcon(false); });
    map.insert(QStringLiteral("vod/vod_icon_volume_none.png"), []() { return speakerIcon(true); });
    for (int i = 1; i <= 16; ++i)
        map.insert(QStringLiteral("vod/volume_bar_point_%1").arg(i, 2, 10, QLatin1Char('0')),
                   [i]() { return volumePoint(i, false); });
    map.insert(QStringLiteral("vod/volume_bar_point_01_full"), []() { return volumePoint(1, true); });
    map.insert(QStringLiteral("vod/volume_bar_point_16_full"), []() { return volumePoint(16, true); });
    for (int i = 1; i <= 4; ++i)
        map.insert(QStringLiteral("vod/aniicon_vod_0%1.png").arg(i), [i]() { return animationFrame(i); });
    map.insert(QStringLiteral("vod/line_vertical.png"), verticalLine);
    map.insert(QStringLiteral("common/05_Calllog_number_bg01.png"),
               []() { return verticalGradient(4, 41, QColor(62, 62, 62), QColor(40, 40, 40)); });
    map.insert(QStringLiteral("common/05_Calllog_number_bg02.png"),
               []() { return verticalGradient(88, 41, QColor(0, 160, 205), QColor(0, 96, 140)); });
    map.insert(QStringLiteral("common/buddylist_messagebar_bg01.png"), messageBarCell);
    return map;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: vodimagegen <output dir> <name>...\n");
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    const QMap<QString, Painter> known = painters();
    for (int i = 2; i < argc; ++i) {
        const QString name = QString::fromLocal8Bit(argv[i]);
        const auto painter = known.constFind(name);
        if (painter == known.constEnd()) {
            std::fprintf(stderr, "vodimagegen: no picture for %s\n", argv[i]);
            return 1;
        }
        const QString path = out.filePath(name);
        if (!QDir().mkpath(QFileInfo(path).path()) || !(*painter)().save(path, "PNG")) {
            std::fprintf(stderr, "vodimagegen: cannot write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
