#pragma once

#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>

class QWidget;

// The phone's window manager, as the launcher plays it. Every top-level window
// of the process, but the frame, is placed on the 480 x 272 display the way
// the platform places it: a full-screen window over the whole display, a
// maximized one between the title bar and the soft-key bar (a window of fixed
// size keeps its size, from the top of that area), any other one centred.
// Windows stack in the order they come up; when the active window closes or
// hides, the topmost window left is activated, as on the phone. Nothing else
// moves the keyboard focus.
class WindowManager : public QObject
{
    Q_OBJECT

public:
    static constexpr int Width = 480;
    static constexpr int Height = 272;
    static constexpr int BarHeight = 31;
    // Between the title bar and the soft-key bar.
    static constexpr QRect WorkArea{0, BarHeight, Width, Height - 2 * BarHeight};

    enum Placement { Centred, Maximized, FullScreen };

    explicit WindowManager(QObject *parent = nullptr);
    ~WindowManager() override;

    // Where the display's top left corner lies in the window system.
    void setOrigin(const QPoint &origin) { displayOrigin = origin; }
    QPoint origin() const { return displayOrigin; }
    // A window that is not managed (the launcher's own frame).
    void exclude(QWidget *window) { excluded = window; }

    // The visible managed windows, bottom first.
    QList<QWidget *> stack() const;
    // How the window asked to be placed when it was last shown.
    static Placement placementOf(const QWidget *window);
    // The window's rectangle on the display.
    QRect displayRect(const QWidget *window) const;
    // Where a window of that placement and size goes on the display.
    static QRect placementRect(Placement placement, const QSize &size, bool fixedSize);

signals:
    // A window came up, went, or was activated: what the display shows may differ.
    void stackChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isManaged(const QObject *object) const;
    void place(QWidget *window);
    // Puts the window on top, and over it the windows it owns that are shown
    // (a pop-up shown before its parent stays above it).
    void raise(QWidget *window);
    void scheduleActivation();
    void activateTopmost();

    QPoint displayOrigin;
    QPointer<QWidget> excluded;
    QList<QPointer<QWidget>> order;
    bool activationPending = false;
    // A window shown under a window it owns: the keyboard goes to the topmost.
    bool activateCovered = false;
};
