#include "launcherscreen.h"

#include "screencompositor.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QTimer>

namespace {
constexpr Qt::WindowStates WholeScreen = Qt::WindowMaximized | Qt::WindowFullScreen;
// The frame follows the moving picture and the module's drawing at this pace.
constexpr int RefreshMsecs = 100;
}

LauncherScreen::LauncherScreen(QWidget *parent)
    : QWidget(parent)
    , refresh(new QTimer(this))
    , liveDisplay(!QGuiApplication::platformName().startsWith(QLatin1String("offscreen")) &&
                        !QGuiApplication::platformName().startsWith(QLatin1String("minimal")))
{
    setObjectName(QStringLiteral("LauncherScreen"));
    setWindowTitle(QStringLiteral("qpe-launcher"));
    setFixedSize(Width, Height);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setFrameHooks(FrameHooks());
    refresh->setInterval(RefreshMsecs);
    connect(refresh, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    // Offscreen nobody looks: the display is drawn when it is grabbed, and the
    // module's windows get no paint events beyond their own.
    if (liveDisplay)
        refresh->start();
    // Where the window system cannot make the module's windows see-through,
    // the frame stays above them; they keep the keyboard (and the frame hands
    // on the keys it gets).
    if (liveDisplay)
        setWindowFlag(Qt::WindowStaysOnTopHint);
    qApp->installEventFilter(this);
}

QRect LauncherScreen::area() const
{
    return QRect(mapToGlobal(QPoint(0, 0)), QSize(Width, Height));
}

void LauncherScreen::setFrameHooks(const FrameHooks &hooks)
{
    auto *replacement = new ScreenCompositor(hooks, this);
    replacement->exclude(this);
    if (screenCompositor) {
        for (QWidget *window : screenCompositor->stack())
            replacement->raise(window);
        delete screenCompositor;
    }
    screenCompositor = replacement;
}

QImage LauncherScreen::screenImage() const
{
    return screenCompositor->compose();
}

bool LauncherScreen::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WindowStateChange || event->type() == QEvent::Show) {
        if (watched->isWidgetType() && watched != this) {
            auto *window = static_cast<QWidget *>(watched);
            if (window->isWindow()) {
                if (window->windowState() & WholeScreen)
                    place(window);
                if (event->type() == QEvent::Show) {
                    screenCompositor->raise(window);
                    if (liveDisplay)
                        window->setWindowOpacity(0.0);
                }
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}

void LauncherScreen::place(QWidget *window)
{
    // The frame draws the window where the device shows it: full screen over
    // the whole display, maximized between the title and soft-key bars.
    window->setProperty(ScreenCompositor::placementProperty(),
                        (window->windowState() & Qt::WindowFullScreen) ? ScreenCompositor::FullScreen
                                                                        : ScreenCompositor::Maximized);
    // The desktop's maximized state would cover the desktop: the window keeps
    // a normal state and takes the display's rectangle.
    window->setWindowState(window->windowState() & ~WholeScreen);
    window->setGeometry(area());
}

void LauncherScreen::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawImage(0, 0, screenCompositor->compose());
}

void LauncherScreen::forwardKey(QKeyEvent *event)
{
    // A click on the frame takes the keyboard from the module's windows: the
    // keys typed on it go to the window on top, as on the device.
    const QList<QWidget *> windows = screenCompositor->stack();
    if (windows.isEmpty())
        return;
    QWidget *top = windows.constLast();
    QPointer<QWidget> target = top->focusWidget() ? top->focusWidget() : top;
    QKeyEvent copy(event->type(), event->key(), event->modifiers(), event->text(), event->isAutoRepeat());
    QCoreApplication::sendEvent(target, &copy);
}

void LauncherScreen::keyPressEvent(QKeyEvent *event)
{
    forwardKey(event);
}

void LauncherScreen::keyReleaseEvent(QKeyEvent *event)
{
    forwardKey(event);
}

void LauncherScreen::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    emit closed();
}
