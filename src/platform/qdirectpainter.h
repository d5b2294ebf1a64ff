#pragma once

#include <QRegion>

// Direct painting on the display: a window reserves the region in which another
// process (the video manager) draws.
class QDirectPainter
{
public:
    static void reserveRegion(const QRegion &region);
    // The last region reserved in this process.
    static QRegion reservedRegion();
    static int reserveCount();
};
