#include "windowmanager.h"

#include <QApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>
#include <QWidget>

#include <utility>

namespace {
constexpr Qt::WindowStates WholeScreen = Qt::WindowMaximized | Qt::WindowFullScreen;
constexpr char PlacementProperty[] = "devicePlacement";
constexpr char RectProperty[] = "deviceRect";
}

WindowManager::WindowManager(QObject *parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
    // A window system may still hand the keyboard to a window that has just
    // gone (its activation was under way): nothing on screen has it then.
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow *focus) {
        if (focus && !focus->isVisible())
            scheduleActivation();
    });
}

void WindowManager::scheduleActivation()
{
    if (activationPending)
        return;
    activationPending = true;
    QTimer::singleShot(0, this, &WindowManager::activateTopmost);
}

WindowManager::~WindowManager()
{
    qApp->removeEventFilter(this);
}

bool WindowManager::isManaged(const QObject *object) const
{
    if (!object->isWidgetType())
        return false;
    const auto *widget = static_cast<const QWidget *>(object);
    return widget->isWindow() && widget != excluded && widget->windowType() != Qt::ToolTip
           && widget->windowType() != Qt::Popup && widget->windowType() != Qt::Desktop;
}

QList<QWidget *> WindowManager::stack() const
{
    QList<QWidget *> result;
    for (const QPointer<QWidget> &w : order) {
        if (w && w->isVisible())
            result.append(w);
    }
    return result;
}

WindowManager::Placement WindowManager::placementOf(const QWidget *window)
{
    const QVariant value = window->property(PlacementProperty);
    return value.isValid() ? Placement(value.toInt()) : Centred;
}

QRect WindowManager::displayRect(const QWidget *window) const
{
    // Where the window was placed: a window system may nudge the window itself
    // (the offscreen one keeps a frame's width off the screen's edges), but
    // the phone's display has no frames.
    const QRect placed = window->property(RectProperty).toRect();
    return placed.isValid() ? QRect(placed.topLeft(), window->size()) : window->geometry().translated(-displayOrigin);
}

QRect WindowManager::placementRect(Placement placement, const QSize &size, bool fixedSize)
{
    switch (placement) {
    case FullScreen:
        return fixedSize ? QRect(QPoint(0, 0), size) : QRect(0, 0, Width, Height);
    case Maximized:
        return fixedSize ? QRect(WorkArea.topLeft(), size) : WorkArea;
    case Centred:
        break;
    }
    const QSize bounded = size.boundedTo(QSize(Width, Height));
    return QRect(QPoint((Width - bounded.width()) / 2, (Height - bounded.height()) / 2), bounded);
}

void WindowManager::place(QWidget *window)
{
    const Qt::WindowStates state = window->windowState();
    Placement placement;
    if (state & Qt::WindowFullScreen)
        placement = FullScreen;
    else if (state & Qt::WindowMaximized)
        placement = Maximized;
    else if (window->property(PlacementProperty).isValid())
        return; // shown again where it was
    else
        placement = Centred;

    window->setProperty(PlacementProperty, int(placement));
    // The window system's own maximized or full-screen state would cover its
    // screen, not the phone's display: the window keeps a normal state and
    // takes the display's rectangle.
    if (state & WholeScreen)
        window->setWindowState(state & ~WholeScreen);
    const bool fixedSize = window->minimumSize() == window->maximumSize();
    const QRect rect = placementRect(placement, window->size(), fixedSize);
    window->setProperty(RectProperty, rect);
    window->setGeometry(rect.translated(displayOrigin));
}

void WindowManager::raise(QWidget *window)
{
    order.removeAll(QPointer<QWidget>(window));
    order.removeAll(QPointer<QWidget>());
    order.append(window);
    for (QObject *child : window->children()) {
        if (isManaged(child) && static_cast<QWidget *>(child)->isVisible())
            raise(static_cast<QWidget *>(child));
    }
}

void WindowManager::activateTopmost()
{
    activationPending = false;
    emit stackChanged();
    // Qt may have made a parent the active widget window while the window
    // system's focus stays with the window that went: both must be on screen.
    const QWidget *active = QApplication::activeWindow();
    const QWindow *focus = QGuiApplication::focusWindow();
    const bool covered = std::exchange(activateCovered, false);
    if (!covered && active && active->isVisible() && focus && focus->isVisible())
        return;
    const QList<QWidget *> windows = stack();
    if (!windows.isEmpty())
        windows.constLast()->activateWindow();
}

bool WindowManager::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        if (isManaged(watched)) {
            auto *window = static_cast<QWidget *>(watched);
            place(window);
            raise(window);
            emit stackChanged();
            if (stack().constLast() != window) {
                activateCovered = true;
                scheduleActivation();
            }
        }
        break;
    case QEvent::WindowStateChange:
        if (isManaged(watched) && (static_cast<QWidget *>(watched)->windowState() & WholeScreen))
            place(static_cast<QWidget *>(watched));
        break;
    case QEvent::Hide:
        // The window goes (closed, hidden or deleted): if it had the keyboard,
        // the window on top gets it once the window has gone.
        if (isManaged(watched))
            scheduleActivation();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
