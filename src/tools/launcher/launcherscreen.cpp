#include "launcherscreen.h"

#include "screencompositor.h"
#include "videofeed.h"
#include "windowmanager.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QTimer>

namespace {
// The frame follows the moving picture and the module's drawing at this pace.
constexpr int RefreshMsecs = 100;

bool isLiveDisplay()
{
    const QString platform = QGuiApplication::platformName();
    return !platform.startsWith(QLatin1String("offscreen")) && !platform.startsWith(QLatin1String("minimal"));
}
}

LauncherScreen::LauncherScreen(QWidget *parent)
    : QWidget(parent)
    , manager(new WindowManager(this))
    , refresh(new QTimer(this))
    , liveDisplay(isLiveDisplay())
{
    setObjectName(QStringLiteral("LauncherScreen"));
    setWindowTitle(QStringLiteral("qpe-launcher"));
    setFixedSize(Width, Height);
    setAttribute(Qt::WA_OpaquePaintEvent);
    // The frame is only looked at: the keyboard stays with the module's windows.
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    manager->exclude(this);
    setFrameHooks(FrameHooks());
    refresh->setInterval(RefreshMsecs);
    connect(refresh, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    // Where the window system cannot make the module's windows see-through,
    // the frame stays above them.
    if (liveDisplay)
        setWindowFlag(Qt::WindowStaysOnTopHint);
    connect(manager, &WindowManager::stackChanged, this, [this] {
        if (liveDisplay) {
            for (QWidget *window : manager->stack())
                window->setWindowOpacity(0.0);
        }
    });
}

LauncherScreen::~LauncherScreen() = default;

void LauncherScreen::showFrame()
{
    if (!liveDisplay)
        return;
    show();
    refresh->start();
}

QRect LauncherScreen::area() const
{
    return QRect(manager->origin(), QSize(Width, Height));
}

void LauncherScreen::moveEvent(QMoveEvent *)
{
    manager->setOrigin(liveDisplay ? mapToGlobal(QPoint(0, 0)) : QPoint(0, 0));
}

void LauncherScreen::setFrameHooks(const FrameHooks &hooks)
{
    delete screenCompositor;
    screenCompositor = new ScreenCompositor(hooks, manager, this);
    followVideoPlane();
}

void LauncherScreen::watchVideoPlane(const QString &name)
{
    videoPlane = name;
    followVideoPlane();
}

void LauncherScreen::followVideoPlane()
{
    if (videoPlane.isEmpty())
        return;
    VideoFeed *feed = screenCompositor->videoFeed();
    feed->watchPlane(videoPlane, liveDisplay);
    // A live frame shows each video frame as it comes, not at the refresh's pace.
    if (liveDisplay)
        connect(feed, &VideoFeed::changed, this, qOverload<>(&QWidget::update));
}

QImage LauncherScreen::screenImage() const
{
    return screenCompositor->compose();
}

void LauncherScreen::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawImage(0, 0, screenCompositor->compose());
}

void LauncherScreen::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    emit closed();
}
