#include "testdisplay.h"

#include "entry/frameexports.h"
#include "framehooks.h"
#include "keydelivery.h"
#include "launcherscreen.h"
#include "screencompositor.h"
#include "windowmanager.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QWidget>

TestDisplay::TestDisplay()
    : display(std::make_unique<LauncherScreen>())
{
    usePhoneResolution();
    display->setFrameHooks(FrameHooks(&videophone_soft_keys, &videophone_listen));
}

TestDisplay::~TestDisplay() = default;

void usePhoneResolution()
{
    // QTEST_MAIN asks for 96 dpi whatever the platform says.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, false);
    if (QGuiApplication::primaryScreen()->logicalDotsPerInch() != 72)
        qFatal("the phone's texts are measured at 72 dpi: run with QT_FONT_DPI=72");
}

void settle()
{
    // Updates are posted; a paint may post further ones (a layout, a repaint
    // asked for while painting).
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

QStringList staleWindows()
{
    settle();
    QStringList stale;
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (!w->isVisible() || w->objectName() == QLatin1String("LauncherScreen"))
            continue;
        const QImage held = ScreenCompositor::paintedImage(w);
        QImage fresh = w->grab().toImage();
        if (fresh.format() == QImage::Format_RGB32)
            fresh.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
        fresh = fresh.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        const QString name = QString::fromLatin1(w->metaObject()->className());
        if (held.isNull()) {
            stale.append(name + QLatin1String(": nothing flushed"));
            continue;
        }
        if (held.size() != fresh.size()) {
            stale.append(QStringLiteral("%1: %2x%3 flushed, %4x%5 drawn")
                             .arg(name)
                             .arg(held.width())
                             .arg(held.height())
                             .arg(fresh.width())
                             .arg(fresh.height()));
            continue;
        }
        int differing = 0;
        QPoint first;
        for (int y = 0; y < held.height(); ++y) {
            const auto *a = reinterpret_cast<const QRgb *>(held.constScanLine(y));
            const auto *b = reinterpret_cast<const QRgb *>(fresh.constScanLine(y));
            for (int x = 0; x < held.width(); ++x) {
                if (a[x] != b[x] && differing++ == 0)
                    first = QPoint(x, y);
            }
        }
        if (differing)
            stale.append(QStringLiteral("%1: %2 pixels differ, first at (%3, %4)")
                             .arg(name)
                             .arg(differing)
                             .arg(first.x())
                             .arg(first.y()));
    }
    return stale;
}

QObject *typeKey(int key, Qt::KeyboardModifiers modifiers)
{
    QObject *receiver = deliverKeyStroke(KeyStroke{key, modifiers});
    settle();
    return receiver;
}
