#pragma once

#include <QString>

#include <optional>

// Where a title's playback stands, in seconds, always within [0, length].
class PlaybackPosition
{
public:
    explicit PlaybackPosition(double length = 0);

    double length() const { return total; }
    double seconds() const { return position; }
    bool atEnd() const { return position >= total; }

    // Moves on by `seconds`, stopping at the end.
    void advance(double seconds);
    // Jumps to `seconds`, clamped into [0, length].
    void moveTo(double seconds);

private:
    double total;
    double position = 0;
};

// The position that a request carries as text ("0", "83.5", as
// QString::setNum(value, 'g', 6) makes it); empty for text that is no finite number.
std::optional<double> parsePositionText(const QString &text);
