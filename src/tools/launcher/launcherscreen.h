#pragma once

#include "framehooks.h"

#include <QImage>
#include <QRect>
#include <QWidget>

class ScreenCompositor;
class WindowManager;
class QTimer;

// The stand-in for the device's 480 x 272 display and its window manager. The
// window manager places the process's windows on the display; the display
// shows what they painted (ScreenCompositor), with the platform's title and
// soft-key bars, over the video manager's picture. On a real display this
// widget is the frame a person looks at; it never takes the keyboard, which
// stays with the module's windows. Offscreen nobody looks, and it is not shown.
class LauncherScreen : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Width = 480;
    static constexpr int Height = 272;

    explicit LauncherScreen(QWidget *parent = nullptr);
    ~LauncherScreen() override;

    // Shows the frame where someone can look at it.
    void showFrame();
    // The display in the window system's coordinates.
    QRect area() const;

    // Where the soft-key labels and the video manager's messages come from.
    void setFrameHooks(const FrameHooks &hooks);
    // Shows the video plane of that name under the windows whenever a video
    // manager holds it.
    void watchVideoPlane(const QString &name);
    ScreenCompositor *compositor() const { return screenCompositor; }
    WindowManager *windowManager() const { return manager; }

    // What the display shows now.
    QImage screenImage() const;

signals:
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void followVideoPlane();

    WindowManager *manager;
    ScreenCompositor *screenCompositor = nullptr;
    QTimer *refresh;
    QString videoPlane;
    // On a real display the frame follows the picture, and the module's windows
    // (made see-through) only lend their pixels to it.
    bool liveDisplay;
};
