#pragma once

#include <QFont>
#include <QPalette>

// The phone's look, as the platform gives it to every application it runs: a
// dark palette, so that nothing a window leaves to its background shows up
// light, and a face whose figures fit the fixed boxes that the applications
// draw their texts in at the display's 72 dots per inch ("00:00:00" at 20
// points in the 82 pixels between a read-out's left edge and the display's).
namespace PhoneTheme {

// The face of the phone's texts. Hangul comes from the fallback fonts.
inline constexpr char FontFamily[] = "DejaVu Sans Condensed";

QPalette palette();
QFont font();

// Makes the phone's look the application's (QApplication's palette and font).
void install();

} // namespace PhoneTheme
