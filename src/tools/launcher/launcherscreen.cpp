#include "launcherscreen.h"

#include <QApplication>
#include <QCloseEvent>

namespace {
constexpr Qt::WindowStates WholeScreen = Qt::WindowMaximized | Qt::WindowFullScreen;
}

LauncherScreen::LauncherScreen(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("LauncherScreen"));
    setWindowTitle(QStringLiteral("qpe-launcher"));
    setFixedSize(Width, Height);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, Qt::black);
    setPalette(p);
    qApp->installEventFilter(this);
}

QRect LauncherScreen::area() const
{
    return QRect(mapToGlobal(QPoint(0, 0)), QSize(Width, Height));
}

bool LauncherScreen::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WindowStateChange || event->type() == QEvent::Show) {
        if (watched->isWidgetType() && watched != this) {
            auto *window = static_cast<QWidget *>(watched);
            if (window->isWindow() && (window->windowState() & WholeScreen))
                place(window);
        }
    }
    return QWidget::eventFilter(watched, event);
}

void LauncherScreen::place(QWidget *window)
{
    // The desktop's maximized state would cover the desktop: the window keeps
    // a normal state and takes the display's rectangle.
    window->setWindowState(window->windowState() & ~WholeScreen);
    window->setGeometry(area());
}

void LauncherScreen::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    emit closed();
}
