#pragma once

#include <QProcessEnvironment>
#include <QStringList>

// Whether the launcher must fall back to the offscreen platform: no display
// (DISPLAY, WAYLAND_DISPLAY), no platform chosen (QT_QPA_PLATFORM, -platform).
bool needsOffscreenPlatform(const QProcessEnvironment &environment, const QStringList &arguments);
