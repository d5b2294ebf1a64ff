#pragma once

#include "framehooks.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSize>

class QPainter;
class QWidget;
class VideoFeed;

// Draws the device's 480 x 272 display as the phone would show it: the video
// manager's picture at the bottom, the module's windows over it at their
// places on the display (their cleared video areas stay see-through), the
// platform's title bar and soft-key bar where no full-screen window covers
// them, and pop-ups centred on top.
class ScreenCompositor : public QObject
{
    Q_OBJECT

public:
    static constexpr int Width = 480;
    static constexpr int Height = 272;
    static constexpr int BarHeight = 31;
    static constexpr QRgb TitleBarColour = 0xff142442;
    static constexpr QRgb SoftKeyBarColour = 0xff1c1c1c;

    // How the platform places a window on the display.
    enum Placement { Centred, Maximized, FullScreen };

    // The name of the window property that records a window's placement.
    static const char *placementProperty();

    explicit ScreenCompositor(const FrameHooks &hooks, QObject *parent = nullptr);

    // The window's rectangle on the display.
    static QRect deviceRect(Placement placement, const QSize &windowSize);
    static Placement placementOf(const QWidget *window);

    // Puts the window on top of the others (it has just been shown).
    void raise(QWidget *window);
    // A window that is never drawn (the launcher's own).
    void exclude(QWidget *window) { excluded = window; }

    // The visible module windows, bottom first.
    QList<QWidget *> stack() const;

    VideoFeed *videoFeed() const { return feed; }
    FrameHooks frameHooks() const { return hooks; }

    QImage compose() const;

private:
    void drawWindow(QPainter *painter, QWidget *window, const QImage &video) const;
    void drawTitleBar(QPainter *painter, const QList<QWidget *> &windows) const;
    void drawSoftKeyBar(QPainter *painter, const QList<QWidget *> &windows) const;
    QList<FrameHooks::SoftKey> currentSoftKeys(const QList<QWidget *> &windows) const;

    FrameHooks hooks;
    VideoFeed *feed;
    QList<QPointer<QWidget>> order;
    QPointer<QWidget> excluded;
};
