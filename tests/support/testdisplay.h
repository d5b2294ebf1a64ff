#pragma once

#include <QStringList>
#include <Qt>

#include <memory>

class LauncherScreen;
class QObject;

// The phone's display and window manager for a test program, as the launcher
// plays them: windows are placed, stacked and activated as on the phone, keys
// go where the phone would send them, and what the display shows is composed
// from what the windows flushed, never from a fresh rendering.
class TestDisplay
{
public:
    TestDisplay();
    ~TestDisplay();

    LauncherScreen *screen() const { return display.get(); }

private:
    std::unique_ptr<LauncherScreen> display;
};

// Measures texts at the phone's 72 dots per inch (QT_FONT_DPI=72 must be set).
void usePhoneResolution();

// Lets every window repaint and flush what is pending.
void settle();

// The visible windows whose backing store differs from a fresh rendering of
// the same window, as "ClassName: N pixels differ, first at (x, y)"; empty
// when what the display holds is what the windows would draw now.
QStringList staleWindows();

// Types a device key as a person would: to the focus widget of the active
// window, or to that window. Returns the object that received it (null: nobody).
QObject *typeKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
