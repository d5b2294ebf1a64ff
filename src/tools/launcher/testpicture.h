#pragma once

#include <QRect>

class QPainter;

// The synthetic picture the frame shows where the video manager would draw the
// video: colour bars over a strip with a marker that moves with the position
// and the position as text. The same position always gives the same pixels.
namespace TestPicture {
void paint(QPainter *painter, const QRect &rect, double seconds);
}
