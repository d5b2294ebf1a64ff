#include "testpicture.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QTime>

#include <algorithm>
#include <cmath>

namespace TestPicture {

void paint(QPainter *painter, const QRect &rect, double seconds)
{
    if (rect.isEmpty())
        return;
    static const QColor bars[] = {{235, 235, 235}, {235, 235, 16}, {16, 235, 235}, {16, 235, 16},
                                  {235, 16, 235},  {235, 16, 16},  {16, 16, 235}};
    constexpr int barCount = int(std::size(bars));
    const int barsHeight = rect.height() * 2 / 3;

    painter->save();
    painter->setClipRect(rect);
    painter->setRenderHint(QPainter::Antialiasing, false);
    for (int i = 0; i < barCount; ++i) {
        const int left = rect.left() + rect.width() * i / barCount;
        const int right = rect.left() + rect.width() * (i + 1) / barCount;
        painter->fillRect(QRect(left, rect.top(), right - left, barsHeight), bars[i]);
    }

    const QRect strip(rect.left(), rect.top() + barsHeight, rect.width(), rect.height() - barsHeight);
    painter->fillRect(strip, QColor(24, 24, 40));

    // A block that crosses the strip once every ten seconds of the video.
    const double phase = std::fmod(std::max(seconds, 0.0), 10.0) / 10.0;
    const int blockWidth = std::max(8, rect.width() / 12);
    const int blockLeft = strip.left() + int(phase * (strip.width() - blockWidth));
    painter->fillRect(QRect(blockLeft, strip.top() + 4, blockWidth, std::max(4, strip.height() / 4)),
                      QColor(255, 200, 0));

    // The position in a box at the top left, clear of the players' overlays.
    const QTime time = QTime(0, 0).addMSecs(qint64(std::max(seconds, 0.0) * 1000));
    const QString text = time.toString(QStringLiteral("hh:mm:ss"));
    QFont font = painter->font();
    font.setPixelSize(std::clamp(rect.height() / 9, 12, 28));
    font.setBold(true);
    painter->setFont(font);
    const QFontMetrics metrics(font);
    const QRect box(rect.left() + 6, rect.top() + 6, metrics.horizontalAdvance(text) + 12, metrics.height() + 4);
    painter->fillRect(box, QColor(0, 0, 0));
    painter->setPen(Qt::white);
    painter->drawText(box, Qt::AlignCenter, text);

    QFont label = font;
    label.setPixelSize(std::max(10, strip.height() / 4));
    painter->setFont(label);
    painter->setPen(QColor(140, 140, 170));
    painter->drawText(strip.adjusted(0, strip.height() / 3, 0, 0), Qt::AlignCenter, QStringLiteral("TEST PICTURE"));
    painter->restore();
}

}
