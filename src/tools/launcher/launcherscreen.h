#pragma once

#include "framehooks.h"

#include <QImage>
#include <QRect>
#include <QWidget>

class ScreenCompositor;
class QTimer;

// The stand-in for the device's 480 x 272 display: a fixed-size window. Every
// top-level window that asks to be maximized or full screen is laid over it
// instead of over the desktop. The window shows the display as the device
// would (ScreenCompositor): the module's windows over the video picture, with
// the platform's title and soft-key bars.
class LauncherScreen : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Width = 480;
    static constexpr int Height = 272;

    explicit LauncherScreen(QWidget *parent = nullptr);

    // The display in global coordinates.
    QRect area() const;

    // Where the soft-key labels and the video manager's messages come from.
    void setFrameHooks(const FrameHooks &hooks);
    ScreenCompositor *compositor() const { return screenCompositor; }

    // What the display shows now.
    QImage screenImage() const;

signals:
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    void place(QWidget *window);
    void forwardKey(QKeyEvent *event);

    ScreenCompositor *screenCompositor = nullptr;
    QTimer *refresh;
    // On a real display the frame follows the picture, and the module's windows
    // (made see-through) only lend their pixels to it.
    bool liveDisplay;
};
