#include "keymap.h"

#include "devicekeys.h"

#include <QCoreApplication>
#include <QKeySequence>

namespace {
struct Translation
{
    int keyboardKey;
    int deviceKey;
    Qt::KeyboardModifiers modifiers;
};

// The device's keypad sends Select with the keypad modifier; some views act on
// Select only when it carries it.
const Translation translations[] = {
    {Qt::Key_Return, Qt::Key_Select, Qt::KeypadModifier},
    {Qt::Key_Enter, Qt::Key_Select, Qt::KeypadModifier},
    {Qt::Key_Escape, Qt::Key_Back, Qt::NoModifier},
    {Qt::Key_Backspace, Qt::Key_Back, Qt::NoModifier},
    {Qt::Key_F1, Qt::Key_Context1, Qt::NoModifier},
    {Qt::Key_F2, Qt::Key_Context2, Qt::NoModifier},
    {Qt::Key_End, Qt::Key_Hangup, Qt::NoModifier},
    {Qt::Key_Plus, Qt::Key_VolumeUp, Qt::NoModifier},
    {Qt::Key_Minus, Qt::Key_VolumeDown, Qt::NoModifier},
    {Qt::Key_0, Key_Video0, Qt::NoModifier},
    {Qt::Key_1, Key_Video1, Qt::NoModifier},
    {Qt::Key_2, Key_Video2, Qt::NoModifier},
    {Qt::Key_3, Key_Video3, Qt::NoModifier},
    {Qt::Key_4, Key_Video4, Qt::NoModifier},
    {Qt::Key_H, Key_Headset, Qt::NoModifier},
};

struct Name
{
    const char *name;
    int key;
    Qt::KeyboardModifiers modifiers;
};

const Name names_[] = {
    {"Select", Qt::Key_Select, Qt::KeypadModifier},
    {"Back", Qt::Key_Back, Qt::NoModifier},
    {"Context1", Qt::Key_Context1, Qt::NoModifier},
    {"Context2", Qt::Key_Context2, Qt::NoModifier},
    {"Hangup", Qt::Key_Hangup, Qt::NoModifier},
    {"VolumeUp", Qt::Key_VolumeUp, Qt::NoModifier},
    {"VolumeDown", Qt::Key_VolumeDown, Qt::NoModifier},
    {"Video0", Key_Video0, Qt::NoModifier},
    {"Video1", Key_Video1, Qt::NoModifier},
    {"Video2", Key_Video2, Qt::NoModifier},
    {"Video3", Key_Video3, Qt::NoModifier},
    {"Video4", Key_Video4, Qt::NoModifier},
    {"Headset", Key_Headset, Qt::NoModifier},
    {"Up", Qt::Key_Up, Qt::NoModifier},
    {"Down", Qt::Key_Down, Qt::NoModifier},
};

QString nameOf(int deviceKey)
{
    for (const Name &n : names_) {
        if (n.key == deviceKey)
            return QLatin1String(n.name);
    }
    return QString();
}
}

KeyStroke KeyMap::translate(int keyboardKey)
{
    for (const Translation &t : translations) {
        if (t.keyboardKey == keyboardKey)
            return KeyStroke{t.deviceKey, t.modifiers};
    }
    return KeyStroke();
}

KeyStroke KeyMap::fromName(const QString &name)
{
    for (const Name &n : names_) {
        if (name.compare(QLatin1String(n.name), Qt::CaseInsensitive) == 0)
            return KeyStroke{n.key, n.modifiers};
    }
    return KeyStroke();
}

QStringList KeyMap::names()
{
    QStringList result;
    for (const Name &n : names_)
        result.append(QLatin1String(n.name));
    return result;
}

QStringList KeyMap::keyboardHelp()
{
    // One line per device key, listing the keyboard keys that give it.
    QStringList lines;
    QList<int> done;
    for (const Translation &t : translations) {
        if (done.contains(t.deviceKey))
            continue;
        done.append(t.deviceKey);
        QStringList keyboardKeys;
        for (const Translation &u : translations) {
            if (u.deviceKey == t.deviceKey)
                keyboardKeys.append(QKeySequence(u.keyboardKey).toString(QKeySequence::NativeText));
        }
        lines.append(QStringLiteral("  %1 %2").arg(keyboardKeys.join(QLatin1String(", ")), -16).arg(nameOf(t.deviceKey)));
    }
    lines.append(QStringLiteral("  %1 %2")
                     .arg(QCoreApplication::translate("KeyMap", "Arrows"), -16)
                     .arg(QCoreApplication::translate("KeyMap", "unchanged")));
    return lines;
}
