#pragma once

#include <QString>
#include <QStringList>
#include <Qt>

// A key as the device sends it: its code and the modifiers it carries.
struct KeyStroke
{
    int key = 0;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;

    bool isValid() const { return key != 0; }
    bool operator==(const KeyStroke &other) const { return key == other.key && modifiers == other.modifiers; }
};

// The launcher's two ways of producing device keys: keys of a desktop keyboard
// that stand in for the device's keys, and the key names read with --keys.
class KeyMap
{
public:
    // The device key that a keyboard key stands for; invalid for keys that
    // pass through unchanged (arrows, letters other than H, ...).
    static KeyStroke translate(int keyboardKey);

    // The device key of a name such as "Select" or "Video4" (case does not
    // matter); invalid for an unknown name.
    static KeyStroke fromName(const QString &name);
    // Every known name, in the order of the help text.
    static QStringList names();

    // Lines for the help text: which keyboard key gives which device key.
    static QStringList keyboardHelp();
};
