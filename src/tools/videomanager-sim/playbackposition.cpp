#include "playbackposition.h"

#include <QtNumeric>

#include <algorithm>

PlaybackPosition::PlaybackPosition(double length)
    : total(std::max(0.0, length))
{
}

void PlaybackPosition::advance(double seconds)
{
    moveTo(position + seconds);
}

void PlaybackPosition::moveTo(double seconds)
{
    position = std::clamp(seconds, 0.0, total);
}

std::optional<double> parsePositionText(const QString &text)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || !qIsFinite(value))
        return std::nullopt;
    return value;
}
