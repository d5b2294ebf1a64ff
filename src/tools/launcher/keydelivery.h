#pragma once

#include "keymap.h"

class QObject;

// Sends a key press and its release the way the platform delivers a device
// key: to the focus widget of the active window, or to that window itself when
// nothing in it has the focus. Returns the receiver, or null when no window
// has the keyboard and the key reaches nobody.
QObject *deliverKeyStroke(const KeyStroke &stroke);
