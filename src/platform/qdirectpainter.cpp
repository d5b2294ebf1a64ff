#include "qdirectpainter.h"

namespace {
QRegion lastRegion;
int count = 0;
}

void QDirectPainter::reserveRegion(const QRegion &region)
{
    lastRegion = region;
    ++count;
}

QRegion QDirectPainter::reservedRegion()
{
    return lastRegion;
}

int QDirectPainter::reserveCount()
{
    return count;
}
