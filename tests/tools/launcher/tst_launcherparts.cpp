// The launcher's pieces: how it plays the phone's display and window manager,
// and the video it shows. What it checks before loading a plugin shows in the
// program's own tests.
#include "entry/frameexports.h"
#include "framehooks.h"
#include "launcherscreen.h"
#include "screencompositor.h"
#include "testenvironment.h"
#include "testpicture.h"
#include "videofeed.h"
#include "videoplanewriter.h"
#include "windowmanager.h"

#include "messaging/vodmessages.h"

#include <QDialog>
#include <QPainter>
#include <QtTest>

#include <memory>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A window whose whole area is a clear video area.
class ClearWindow : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(rect(), Qt::transparent);
    }
};

std::unique_ptr<QDialog> colouredWindow(QRgb colour, const QSize &size)
{
    auto window = std::make_unique<QDialog>();
    QPalette palette = window->palette();
    palette.setColor(QPalette::Window, QColor::fromRgb(colour));
    window->setPalette(palette);
    window->resize(size);
    return window;
}

} // namespace

class tst_LauncherParts : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void stackingAndPopUps();
    void ownedPopUpShownFirstStaysOnTop();
    void videoPlaneFillsTheVideoWindow();
};

// The window shown last is on top, a pop-up centred; the bars are the frame's
// where no window covers them.
void tst_LauncherParts::stackingAndPopUps()
{
    LauncherScreen screen;
    screen.show();
    const auto window = colouredWindow(0xff0000ff, QSize(100, 100));
    const auto popUp = colouredWindow(0xffff0000, QSize(200, 100));
    window->showMaximized();
    popUp->show();
    QTRY_VERIFY(!ScreenCompositor::paintedImage(popUp.get()).isNull());
    QTRY_VERIFY(!ScreenCompositor::paintedImage(window.get()).isNull());

    QImage shot = screen.screenImage();
    QCOMPARE(shot.pixel(140, 86), 0xffff0000u);
    QCOMPARE(shot.pixel(339, 185), 0xffff0000u);
    QCOMPARE(shot.pixel(139, 86), 0xff0000ffu);
    QCOMPARE(shot.pixel(0, 31), 0xff0000ffu);
    QCOMPARE(shot.pixel(0, 240), 0xff0000ffu);
    QCOMPARE(shot.pixel(0, 30), ScreenCompositor::TitleBarColour);
    QCOMPARE(shot.pixel(0, 241), ScreenCompositor::SoftKeyBarColour);

    window->hide();
    window->showMaximized();
    flushEvents();
    QCOMPARE(screen.screenImage().pixel(140, 86), 0xff0000ffu);
}

// A window's pop-up shown before the window itself (a wait pop-up opened by a
// constructor) stays above it and keeps the keyboard.
void tst_LauncherParts::ownedPopUpShownFirstStaysOnTop()
{
    LauncherScreen screen;
    screen.show();
    const auto owner = colouredWindow(0xff0000ff, QSize(100, 100));
    auto *popUp = new QDialog(owner.get());
    popUp->resize(200, 100);
    popUp->show();
    QTRY_VERIFY(popUp->isActiveWindow());
    owner->showMaximized();
    QCOMPARE(screen.windowManager()->stack(), (QList<QWidget *>{owner.get(), popUp}));
    QTRY_VERIFY(popUp->isActiveWindow());
    popUp->hide();
    QTRY_VERIFY(owner->isActiveWindow());
}

// A video manager's frames fill the window the module asked for, scaled,
// where a window leaves its video area clear; a plane without a picture is
// black, and without a plane (none, or one whose writer died) the test
// picture is back.
void tst_LauncherParts::videoPlaneFillsTheVideoWindow()
{
    constexpr QRgb left = 0xff20c040;
    constexpr QRgb right = 0xffc02080;
    const QString name = QStringLiteral("/tst-launcherparts-%1").arg(getpid());
    auto writer = std::make_unique<VideoPlaneWriter>(name);
    QString error;
    QVERIFY2(writer->open(&error), qPrintable(error));
    QImage picture(4, 2, QImage::Format_RGB32);
    picture.fill(left);
    for (int y = 0; y < 2; ++y)
        for (int x = 2; x < 4; ++x)
            picture.setPixel(x, y, right);
    QVERIFY(writer->write(picture.constBits(), 4, 2, int(picture.bytesPerLine())));

    LauncherScreen screen;
    screen.setFrameHooks(FrameHooks(&videophone_soft_keys, &videophone_listen));
    screen.watchVideoPlane(name);
    screen.show();
    // Without a window nothing shows the picture.
    QCOMPARE(screen.screenImage().pixel(100, 100), 0xff000000u);
    ClearWindow window;
    window.showFullScreen();
    QTRY_VERIFY(!ScreenCompositor::paintedImage(&window).isNull());
    const QRect video(8, 39, 256, 194);
    deliver(VodChannel::VideoManager, VodMessage::ChangeVodWindow, QByteArray::fromHex("0000000800000027" "00000100000000c2"));
    QCOMPARE(screen.compositor()->videoFeed()->window(), video);
    // A window whose far edge lies beyond int, or an empty one, leaves it as it was.
    for (const char *hex : {"7fffff000000000000001000000000ff", "0000000000000000000000000000010f"})
        deliver(VodChannel::VideoManager, VodMessage::ChangeVodWindow, QByteArray::fromHex(hex));
    QCOMPARE(screen.compositor()->videoFeed()->window(), video);

    QImage shot = screen.screenImage();
    QCOMPARE(shot.pixel(video.left(), video.top()), left);
    QCOMPARE(shot.pixel(video.left() + 63, video.center().y()), left);
    QCOMPARE(shot.pixel(video.right() - 63, video.center().y()), right);
    QCOMPARE(shot.pixel(video.right(), video.bottom()), right);
    QVERIFY(shot.pixel(video.right() + 1, video.center().y()) != right);

    writer->clear();
    QCOMPARE(screen.screenImage().pixel(video.center()), 0xff000000u);
    writer.reset();

    // A writer that died left its plane behind: no plane for the display.
    const pid_t child = fork();
    if (child == 0) {
        VideoPlaneWriter dying(name);
        QString lost;
        _exit(dying.open(&lost) && dying.write(picture.constBits(), 4, 2, int(picture.bytesPerLine())) ? 0 : 1);
    }
    int status = 0;
    QVERIFY(child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0);
    QImage reference(shot.size(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&reference);
    TestPicture::paint(&painter, video, 0);
    QCOMPARE(screen.screenImage().pixel(video.center()), reference.pixel(video.center()));
    shm_unlink(name.toLocal8Bit().constData());
}

QTEST_MAIN(tst_LauncherParts)
#include "tst_launcherparts.moc"
