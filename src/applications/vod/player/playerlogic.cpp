#include "playerlogic.h"

#include "messaging/messagedata.h"

#include <cmath>
#include <limits>

namespace PlayerLogic {

int truncated(double value)
{
    if (std::isnan(value))
        return 0;
    if (value <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    if (value >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return int(value);
}

Clock splitClock(int wholeSeconds, int msecs)
{
    return Clock{wholeSeconds / 3600, (wholeSeconds % 3600) / 60, wholeSeconds % 60, msecs % 1000};
}

int steppedVolume(int level, bool up)
{
    if (up)
        return level <= 15 ? level + 1 : level;
    return level > 1 ? level - 1 : level;
}

std::optional<quint32> seekTarget(SeekDirection direction, quint32 currentMsecs, quint32 seconds,
                                  quint32 totalTime)
{
    const quint32 step = seconds * 1000u;
    quint32 t;
    if (direction == SeekDirection::Forward) {
        t = qMin(currentMsecs + step, totalTime);
    } else {
        t = currentMsecs - step;
        // Unsigned: a target before the start wraps far past the end.
        if (t > totalTime)
            t = 0;
    }
    if (t >= totalTime) {
        t = totalTime - 1000u;
        if (t > totalTime) // shorter than one second: nowhere to go
            return std::nullopt;
    }
    if (t == 0) {
        t = 1000u;
        if (1000u > totalTime)
            return std::nullopt;
    }
    return t;
}

quint32 pausedPositionMsecs(float pausedTime)
{
    // The milliseconds from the float widened to double.
    const Clock c = splitClock(truncated(pausedTime), truncated(double(pausedTime) * 1000.0));
    return quint32(qint64(c.hours) * 3600000 + c.minutes * 60000 + c.seconds * 1000 + c.msecs);
}

QTime reportedTime(float seconds)
{
    // The milliseconds in single precision.
    const Clock c = splitClock(truncated(seconds), truncated(seconds * 1000.0f));
    return QTime(c.hours, c.minutes, c.seconds, c.msecs);
}

QString clockText(const QTime &time)
{
    if (!time.isValid())
        return QString();
    const int fields[3] = {time.hour(), time.minute(), time.second()};
    QString text(8, Qt::Uninitialized);
    QChar *out = text.data();
    for (int i = 0; i < 3; ++i) {
        if (i > 0)
            *out++ = QLatin1Char(':');
        *out++ = QLatin1Char(char('0' + fields[i] / 10));
        *out++ = QLatin1Char(char('0' + fields[i] % 10));
    }
    return text;
}

bool lessThanOneSecondLeft(quint32 totalTime, float seconds)
{
    return float(totalTime) - seconds * 1000.0f < 1000.0f;
}

quint32 totalTimeMsecs(const QTime &length)
{
    // A text that does not parse is no length at all.
    if (!length.isValid())
        return 0;
    return quint32(length.hour() * 3600000 + length.minute() * 60000 + length.second() * 1000
                   + length.msec());
}

int progressStepFor(const QTime &length, int barWidth)
{
    if (!length.isValid())
        return 0;
    const int seconds = length.hour() * 3600 + length.minute() * 60 + length.second();
    if (seconds <= 0)
        return 0;
    return truncated(float(barWidth) / float(seconds));
}

int progressWidth(int lead, int barWidth, quint32 currentMsecs, quint32 totalTime)
{
    if (totalTime == 0)
        return 0;
    const float share = float(currentMsecs) / float(totalTime);
    return truncated(float(lead) + float(barWidth) * share);
}

quint32 nextAnimationFrame(quint32 frame)
{
    const quint32 next = (frame + 1) % 5;
    return next == 0 ? 1 : next;
}

QRect videoWindowRect(playScreenType type)
{
    switch (type) {
    case SmallVodScreen:
    case SmallPushScreen:
        return QRect(8, 39, 256, 194);
    case FullVodScreen:
    case FullPushScreen:
        return QRect(0, 0, 363, 272);
    case WideVodScreen:
    case WidePushScreen:
        // One line short of the display, as the video manager expects.
        return QRect(0, 0, 480, 271);
    }
    return QRect();
}

QByteArray videoWindowRequest(playScreenType type)
{
    const QRect r = videoWindowRect(type);
    if (r.isNull())
        return QByteArray();
    return messageData(qint32(r.x()), qint32(r.y()), qint32(r.width()), qint32(r.height()));
}

QString volumePointImage(int index)
{
    return QStringLiteral(":image/vod/volume_bar_point_%1").arg(index, 2, 10, QLatin1Char('0'));
}

int volumePointX(int index)
{
    // The first point sits at the bar's left edge, the others 13 apart from 286.
    return index <= 1 ? 274 : 286 + 13 * (index - 2);
}

QString overlayPointImage(int index)
{
    if (index == 1)
        return QStringLiteral(":image/vod/volume_bar_point_01_full");
    if (index == 16)
        return QStringLiteral(":image/vod/volume_bar_point_16_full");
    return volumePointImage(index);
}

} // namespace PlayerLogic
