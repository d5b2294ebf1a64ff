#pragma once

#include <QProcessEnvironment>
#include <QStringList>

// Whether the launcher must fall back to the offscreen platform: no display
// (DISPLAY, WAYLAND_DISPLAY), no platform chosen (QT_QPA_PLATFORM, -platform).
bool needsOffscreenPlatform(const QProcessEnvironment &environment, const QStringList &arguments);

// The phone's display has 72 logical dots per inch, so the module's point sizes
// are pixel sizes there; a desktop's 96 would make its texts a third larger than
// the boxes drawn for them. Sets QT_FONT_DPI unless the user chose one.
void useDeviceFontResolution();
