#pragma once

#include <QRect>
#include <QString>
#include <QTime>

#include <optional>

#include "vodplayview.h"

// The arithmetic of the players, kept apart from the widgets so that each rule
// can be checked on its own. Positions are unsigned 32-bit milliseconds, as the
// players keep them; the wrap-around of that type is part of the rules.
namespace PlayerLogic {

enum class SeekDirection { Forward, Reverse };

// Truncation toward zero, as a cast does, but defined for every value (a
// notification may carry any float): held at the limits of int, 0 for NaN.
int truncated(double value);

// A time split as the players and the browser show it.
struct Clock
{
    int hours;
    int minutes;
    int seconds;
    int msecs;
};
// Whole seconds split into hours, minutes and seconds (integer division toward
// zero, so a negative time gives negative parts), with `msecs` taken modulo
// 1000. Nothing is range-checked: a day or more makes parts no QTime accepts.
Clock splitClock(int wholeSeconds, int msecs);

// The level after a volume key (up or down), kept within 1 ... 16.
int steppedVolume(int level, bool up);

// The position a seek of `seconds` from `currentMsecs` goes to, or nothing when
// no target can be formed (no length known, or content shorter than a second).
// A target never lies at or past the end (it falls back to one second before
// it) and never at 0 (it becomes one second).
std::optional<quint32> seekTarget(SeekDirection direction, quint32 currentMsecs, quint32 seconds,
                                  quint32 totalTime);

// The position, in milliseconds, that a pause reported at `pausedTime` seconds
// stands for when playback resumes.
quint32 pausedPositionMsecs(float pausedTime);

// The time of a "currentTime(float)" report.
QTime reportedTime(float seconds);

// The time as QTime::toString("hh:mm:ss") gives it (empty for an invalid time),
// without the locale's formatter, which costs more than the rest of a time report.
QString clockText(const QTime &time);

// Whether a time report at `seconds` leaves less than one second of content.
bool lessThanOneSecondLeft(quint32 totalTime, float seconds);

// Content length in milliseconds and progress-bar pixels per second, from the
// "hh:mm:ss" length text. A length of zero seconds gives no step.
quint32 totalTimeMsecs(const QTime &length);
int progressStepFor(const QTime &length, int barWidth);

// Width of the filled part of a bar `barWidth` wide, `lead` pixels ahead of the
// exact proportion. Nothing is filled while no length is known.
int progressWidth(int lead, int barWidth, quint32 currentMsecs, quint32 totalTime);

// The animation frame that follows `frame` (1, 2, 3, 4, 1, ...).
quint32 nextAnimationFrame(quint32 frame);

// The video-manager window of a screen kind, in screen pixels; a null rectangle
// for a value outside the kinds.
QRect videoWindowRect(playScreenType type);
// The argument block of "changeVodWindow(int,int,int,int)" for that window:
// x, y, width and height; empty for a value outside the kinds.
QByteArray videoWindowRequest(playScreenType type);

// The image of volume bar point `index` in the small layouts.
QString volumePointImage(int index);
// Left edge of volume bar point `index` (1 ... 16) in the small layouts.
int volumePointX(int index);
// Image of point `index` (1 ... 16) of the full-screen overlay's bar: the two end
// points have images of their own.
QString overlayPointImage(int index);

} // namespace PlayerLogic
