#pragma once

#include "framehooks.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QRect>
#include <QSize>

class QPainter;
class QWidget;
class VideoFeed;
class WindowManager;

// Draws the device's 480 x 272 display as the phone shows it: the video
// manager's picture at the bottom (its video plane, or a test picture), over
// it what each window of the window manager's stack has painted and flushed
// (its backing store, never a fresh rendering: a window that failed to repaint
// shows stale pixels, as on the phone), the platform's title bar and soft-key
// bar where no full-screen window covers them, and pop-ups on top. What a
// window cleared stays see-through, so the picture shows there.
class ScreenCompositor : public QObject
{
    Q_OBJECT

public:
    static constexpr int Width = 480;
    static constexpr int Height = 272;
    static constexpr int BarHeight = 31;
    static constexpr QRgb TitleBarColour = 0xff142442;
    static constexpr QRgb SoftKeyBarColour = 0xff1c1c1c;

    ScreenCompositor(const FrameHooks &hooks, const WindowManager *windows, QObject *parent = nullptr);

    VideoFeed *videoFeed() const { return feed; }
    FrameHooks frameHooks() const { return hooks; }

    // What the window's backing store holds as last flushed, with the pixels
    // it cleared transparent; null before its first flush.
    static QImage paintedImage(const QWidget *window);

    QImage compose() const;

private:
    void drawTitleBar(QPainter *painter, const QList<QWidget *> &windows) const;
    void drawSoftKeyBar(QPainter *painter, const QList<QWidget *> &windows) const;
    QList<FrameHooks::SoftKey> currentSoftKeys(const QList<QWidget *> &windows) const;

    FrameHooks hooks;
    const WindowManager *manager;
    VideoFeed *feed;
};
