// The launcher's pieces: how it turns the keyboard into device keys, and how
// it plays the phone's display and window manager. What it checks before
// loading a plugin shows in the program's own tests.
#include "entry/frameexports.h"
#include "framehooks.h"
#include "keymap.h"
#include "keytranslator.h"
#include "launcherscreen.h"
#include "screencompositor.h"
#include "testenvironment.h"
#include "testpicture.h"
#include "videofeed.h"
#include "videoplanewriter.h"
#include "windowmanager.h"

#include "messaging/vodmessages.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPainter>
#include <QtTest>

#include <memory>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class KeyRecorder : public QWidget
{
public:
    QList<QPair<int, Qt::KeyboardModifiers>> keys;

protected:
    void keyPressEvent(QKeyEvent *e) override { keys.append({e->key(), e->modifiers()}); }
    void keyReleaseEvent(QKeyEvent *e) override { keys.append({e->key(), e->modifiers()}); }
};

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

    void keys_data();
    void keys();
    void stackingAndPopUps();
    void ownedPopUpShownFirstStaysOnTop();
    void videoFeedFollowsTheWire_data();
    void videoFeedFollowsTheWire();
    void videoPlaneFillsTheVideoWindow();
};







void tst_LauncherParts::keys_data()
{
    QTest::addColumn<int>("keyboardKey");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("deviceKey");
    QTest::addColumn<bool>("keypad");

    QTest::newRow("Return") << int(Qt::Key_Return) << "Select" << int(Qt::Key_Select) << true;
    QTest::newRow("Enter") << int(Qt::Key_Enter) << "select" << int(Qt::Key_Select) << true;
    QTest::newRow("Escape") << int(Qt::Key_Escape) << "Back" << int(Qt::Key_Back) << false;
    QTest::newRow("Backspace") << int(Qt::Key_Backspace) << "Back" << int(Qt::Key_Back) << false;
    QTest::newRow("F1") << int(Qt::Key_F1) << "Context1" << int(Qt::Key_Context1) << false;
    QTest::newRow("F2") << int(Qt::Key_F2) << "Context2" << int(Qt::Key_Context2) << false;
    QTest::newRow("End") << int(Qt::Key_End) << "Hangup" << int(Qt::Key_Hangup) << false;
    QTest::newRow("+") << int(Qt::Key_Plus) << "VolumeUp" << int(Qt::Key_VolumeUp) << false;
    QTest::newRow("-") << int(Qt::Key_Minus) << "VolumeDown" << int(Qt::Key_VolumeDown) << false;
    QTest::newRow("0") << int(Qt::Key_0) << "Video0" << 0x01200010 << false;
    QTest::newRow("1") << int(Qt::Key_1) << "Video1" << 0x01200011 << false;
    QTest::newRow("4") << int(Qt::Key_4) << "Video4" << 0x01200014 << false;
    QTest::newRow("H") << int(Qt::Key_H) << "Headset" << 0x01200008 << false;
    // Keys the device does not have pass as they are; names it does not know are none.
    QTest::newRow("Right") << int(Qt::Key_Right) << "Video5" << 0 << false;
    QTest::newRow("5") << int(Qt::Key_5) << "Return" << 0 << false;
    QTest::newRow("Select itself") << int(Qt::Key_Select) << "" << 0 << false;
}

// A keyboard key becomes the device's key on its way to the focused window;
// a key name read from standard input names the same.
void tst_LauncherParts::keys()
{
    QFETCH(int, keyboardKey);
    QFETCH(QString, name);
    QFETCH(int, deviceKey);
    QFETCH(bool, keypad);
    const Qt::KeyboardModifiers modifiers = keypad ? Qt::KeypadModifier : Qt::NoModifier;

    const KeyStroke named = KeyMap::fromName(name);
    QCOMPARE(named.key, deviceKey);
    QCOMPARE(named.modifiers, deviceKey ? modifiers : Qt::NoModifier);
    if (deviceKey && name != QLatin1String("select"))
        QVERIFY(KeyMap::keyboardHelp().join('\n').contains(name));

    KeyTranslator translator;
    qApp->installEventFilter(&translator);
    KeyRecorder recorder;
    recorder.show();
    QVERIFY(QTest::qWaitForWindowActive(&recorder));
    QTest::keyClick(&recorder, Qt::Key(keyboardKey));
    const QPair<int, Qt::KeyboardModifiers> expected{deviceKey ? deviceKey : keyboardKey, modifiers};
    QCOMPARE(recorder.keys, (QList<QPair<int, Qt::KeyboardModifiers>>{expected, expected}));

    // Keys the program sends itself are not the keyboard's.
    recorder.keys.clear();
    QKeyEvent own(QEvent::KeyPress, keyboardKey, Qt::NoModifier);
    QApplication::sendEvent(&recorder, &own);
    QCOMPARE(recorder.keys.value(0).first, keyboardKey);
}





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

void tst_LauncherParts::videoFeedFollowsTheWire_data()
{
    QTest::addColumn<QString>("channel");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QRect>("window");
    QTest::addColumn<double>("seconds");

    const QRect small = VideoFeed::SmallWindow;
    const QString manager = VodChannel::VideoManager;
    QTest::newRow("wide window") << manager << VodMessage::ChangeVodWindow
                                 << QByteArray::fromHex("0000000000000000000001e00000010f") << QRect(0, 0, 480, 271)
                                 << 0.0;
    QTest::newRow("far edge beyond int") << manager << VodMessage::ChangeVodWindow
                                         << QByteArray::fromHex("7fffff000000000000001000000000ff") << small << 0.0;
    QTest::newRow("empty window") << manager << VodMessage::ChangeVodWindow
                                  << QByteArray::fromHex("0000000000000000000000000000010f") << small << 0.0;
    QTest::newRow("VOD time") << VodChannel::VideoApplication << VodMessage::CurrentTime
                              << QByteArray::fromHex("43200000") << small << 160.0;
    QTest::newRow("time elsewhere") << VodChannel::CallManager << VodMessage::CurrentTime
                                    << QByteArray::fromHex("41480000") << small << 0.0;
}

// What the frame paints as the video follows what the module asked for.
void tst_LauncherParts::videoFeedFollowsTheWire()
{
    QFETCH(QString, channel);
    QFETCH(QString, message);
    QFETCH(QByteArray, data);
    QFETCH(QRect, window);
    QFETCH(double, seconds);

    VideoFeed feed(FrameHooks(&videophone_soft_keys, &videophone_listen));
    deliver(channel, message, data);
    QCOMPARE(feed.window(), window);
    QCOMPARE(feed.seconds(), seconds);
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
