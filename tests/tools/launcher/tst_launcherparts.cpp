#include "devicekeys.h"
#include "displaychoice.h"
#include "entry/applicationimpl.h"
#include "entry/frameexports.h"
#include "framehooks.h"
#include "keynamereader.h"
#include "launcherscreen.h"
#include "mainwindowwatcher.h"
#include "pluginlocator.h"
#include "pluginverification.h"
#include "push/videopushfullview.h"
#include "push/videopushview.h"
#include "screencompositor.h"
#include "windowmanager.h"
#include "testenvironment.h"
#include "testpicture.h"
#include "trafficprinter.h"
#include "videofeed.h"
#include "videoplanewriter.h"

#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <QPainter>

#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {
// The frame's view of the module, through the functions the plugin exports.
FrameHooks moduleHooks()
{
    return FrameHooks(&videophone_soft_keys, &videophone_listen);
}

// The test picture alone, as the frame paints it under the windows.
QImage referencePicture(const QRect &rect, double seconds)
{
    QImage image(ScreenCompositor::Width, ScreenCompositor::Height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    TestPicture::paint(&painter, rect, seconds);
    return image;
}
}

// The launcher's pieces that work without a plugin.
class tst_LauncherParts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void cleanup();

    void verification_data();
    void verification();
    void offscreenFallback_data();
    void offscreenFallback();
    void locator();
    void traceLine_data();
    void traceLine();
    void traceFlushPrintsOnlyNewMessages();
    void readerSplitsLines();
    void watcherReportsClose();
    void watcherIgnoresHideAndRefusedClose();
    void watcherReportsDeletion();
    void screenTakesMaximizedWindows_data();
    void screenTakesMaximizedWindows();
    void videoFeedFollowsTheWire_data();
    void videoFeedFollowsTheWire();
    void frameShowsPushPlayer_data();
    void frameShowsPushPlayer();
    void frameShowsVideoPlane_data() { frameShowsPushPlayer_data(); }
    void frameShowsVideoPlane();
    void frameCentresPopUpsOverWindows();

private:
    std::unique_ptr<TestEnvironment> env;
};

void tst_LauncherParts::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_LauncherParts::verification_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("problem");

    const QByteArray pattern("pattern=QT_PLUGIN_VERIFICATION_DATA\n");
    const QByteArray fits("version=4.2.3\ndebug=false\nbuildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK");
    QTest::newRow("this module") << pattern + fits << QString();
    QTest::newRow("trailing line end") << pattern + fits + "\n" << QString();
    QTest::newRow("other order")
        << pattern + "buildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK\ndebug=false\nversion=4.2.3" << QString();
    QTest::newRow("other version") << pattern + "version=4.3.0\ndebug=false\nbuildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK"
                                   << QStringLiteral("version is \"4.3.0\", expected \"4.2.3\"");
    QTest::newRow("debug build") << pattern + "version=4.2.3\ndebug=true\nbuildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK"
                                 << QStringLiteral("debug is \"true\", expected \"false\"");
    QTest::newRow("other build key") << pattern + "version=4.2.3\ndebug=false\nbuildkey=arm Linux g++-4 full-config"
                                     << QStringLiteral(
                                            "buildkey is \"arm Linux g++-4 full-config\", expected \"i686 Linux no-stl "
                                            "QT_NO_PLUGIN_CHECK\"");
    QTest::newRow("no build key") << pattern + "version=4.2.3\ndebug=false"
                                  << QStringLiteral("the verification data has no buildkey");
    QTest::newRow("no pattern") << fits << QStringLiteral("the verification data has no pattern line");
    QTest::newRow("empty") << QByteArray("") << QStringLiteral("the verification data has no pattern line");
}

void tst_LauncherParts::verification()
{
    QFETCH(QByteArray, record);
    QFETCH(QString, problem);
    QCOMPARE(PluginVerification::problem(record.constData()), problem);
}

void tst_LauncherParts::offscreenFallback_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("offscreen");

    const QStringList program{QStringLiteral("qpe-launcher")};
    QTest::newRow("nothing") << QStringList() << program << true;
    QTest::newRow("empty DISPLAY") << QStringList{QStringLiteral("DISPLAY=")} << program << true;
    QTest::newRow("X11") << QStringList{QStringLiteral("DISPLAY=:0")} << program << false;
    QTest::newRow("Wayland") << QStringList{QStringLiteral("WAYLAND_DISPLAY=wayland-0")} << program << false;
    QTest::newRow("platform chosen") << QStringList{QStringLiteral("QT_QPA_PLATFORM=vnc")} << program << false;
    QTest::newRow("-platform") << QStringList() << (program + QStringList{"-platform", "vnc"}) << false;
    QTest::newRow("--platform") << QStringList() << (program + QStringList{"--platform", "vnc"}) << false;
}

void tst_LauncherParts::offscreenFallback()
{
    QFETCH(QStringList, variables);
    QFETCH(QStringList, arguments);
    QFETCH(bool, offscreen);

    QProcessEnvironment environment;
    for (const QString &variable : variables)
        environment.insert(variable.section(QLatin1Char('='), 0, 0), variable.section(QLatin1Char('='), 1));
    QCOMPARE(needsOffscreenPlatform(environment, arguments), offscreen);
}

void tst_LauncherParts::locator()
{
    QTemporaryDir root;
    QVERIFY(root.isValid());
    QDir(root.path()).mkpath(QStringLiteral("bin"));
    QDir(root.path()).mkpath(QStringLiteral("lib/videophone/plugins"));
    QDir(root.path()).mkpath(QStringLiteral("build/entry"));
    const QString bin = root.filePath(QStringLiteral("bin"));
    const QStringList dirs{QStringLiteral("../lib/videophone/plugins"), QStringLiteral("../build/entry"),
                           QStringLiteral("../lib/videophone/plugins/")};
    // Duplicates go; the order stays.
    const QStringList candidates = PluginLocator::candidates(bin, dirs, QStringLiteral("libvod.so"));
    QCOMPARE(candidates, (QStringList{root.filePath(QStringLiteral("lib/videophone/plugins/libvod.so")),
                                      root.filePath(QStringLiteral("build/entry/libvod.so"))}));

    // Nothing there: the first candidate, for the message.
    QCOMPARE(PluginLocator::locate(bin, dirs, QStringLiteral("libvod.so")), candidates.at(0));

    // Only the build tree has it.
    QFile built(candidates.at(1));
    QVERIFY(built.open(QIODevice::WriteOnly));
    built.close();
    QCOMPARE(PluginLocator::locate(bin, dirs, QStringLiteral("libvod.so")), candidates.at(1));

    // The installed one comes first.
    QFile installed(candidates.at(0));
    QVERIFY(installed.open(QIODevice::WriteOnly));
    installed.close();
    QCOMPARE(PluginLocator::locate(bin, dirs, QStringLiteral("libvod.so")), candidates.at(0));

    // A directory of that name is no library.
    QVERIFY(QFile::remove(candidates.at(0)));
    QVERIFY(QDir().mkpath(candidates.at(0)));
    QCOMPARE(PluginLocator::locate(bin, dirs, QStringLiteral("libvod.so")), candidates.at(1));

    QCOMPARE(PluginLocator::locate(bin, QStringList(), QStringLiteral("libvod.so")), QString());
}

void tst_LauncherParts::traceLine_data()
{
    QTest::addColumn<QString>("channel");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("no arguments") << "QPE/VideoManager" << "pushAppExecuted()" << QByteArray()
                                  << QByteArray("QPE/VideoManager pushAppExecuted()");
    QTest::newRow("int") << "QPE/CallManager" << "setVolume_vod(int)" << QByteArray("\x00\x00\x00\x01", 4)
                         << QByteArray("QPE/CallManager setVolume_vod(int) 00000001");
    QTest::newRow("bytes") << "QPE/VideoManager" << "playPush(QString)" << QByteArray("\xff\x10 a", 4)
                           << QByteArray("QPE/VideoManager playPush(QString) ff102061");
}

void tst_LauncherParts::traceLine()
{
    QFETCH(QString, channel);
    QFETCH(QString, message);
    QFETCH(QByteArray, data);
    QFETCH(QByteArray, line);
    QCOMPARE(TrafficPrinter::line(QtopiaIpcMessage{channel, message, data}), line);
}

namespace {
QByteArray contents(FILE *file)
{
    std::fflush(file);
    std::rewind(file);
    QByteArray bytes;
    char buffer[256];
    size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        bytes.append(buffer, qsizetype(n));
    return bytes;
}
}

void tst_LauncherParts::traceFlushPrintsOnlyNewMessages()
{
    FILE *out = std::tmpfile();
    QVERIFY(out);
    QList<QtopiaIpcMessage> log{{QStringLiteral("A"), QStringLiteral("one()"), QByteArray()}};
    TrafficPrinter printer(&log, out);

    printer.flush();
    printer.flush();
    QCOMPARE(contents(out), QByteArray("A one()\n"));

    std::fseek(out, 0, SEEK_END);
    log.append({QStringLiteral("B"), QStringLiteral("two(int)"), QByteArray("\x00\x00\x00\x02", 4)});
    log.append({QStringLiteral("C"), QStringLiteral("three()"), QByteArray()});
    printer.flush();
    QCOMPARE(contents(out), QByteArray("A one()\nB two(int) 00000002\nC three()\n"));

    // A cleared log is printed again from its start.
    std::fseek(out, 0, SEEK_END);
    log.clear();
    log.append({QStringLiteral("D"), QStringLiteral("four()"), QByteArray()});
    printer.flush();
    QCOMPARE(contents(out), QByteArray("A one()\nB two(int) 00000002\nC three()\nD four()\n"));
    std::fclose(out);
}

void tst_LauncherParts::readerSplitsLines()
{
    int fds[2];
    QCOMPARE(::pipe(fds), 0);
    KeyNameReader reader(fds[0]);
    QSignalSpy lines(&reader, &KeyNameReader::lineRead);
    QSignalSpy finished(&reader, &KeyNameReader::finished);

    // A line may come in pieces; blank lines, comments and line-end blanks go.
    const QByteArray first("Select\n  Vol");
    QCOMPARE(::write(fds[1], first.constData(), size_t(first.size())), ssize_t(first.size()));
    QTRY_COMPARE(lines.size(), 1);
    const QByteArray second("umeUp \r\n\n# comment\nBack");
    QCOMPARE(::write(fds[1], second.constData(), size_t(second.size())), ssize_t(second.size()));
    QTRY_COMPARE(lines.size(), 2);
    QCOMPARE(finished.size(), 0);

    // The last line needs no line end.
    ::close(fds[1]);
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0).at(0).toString(), QStringLiteral("Select"));
    QCOMPARE(lines.at(1).at(0).toString(), QStringLiteral("VolumeUp"));
    QCOMPARE(lines.at(2).at(0).toString(), QStringLiteral("Back"));
    ::close(fds[0]);
}

void tst_LauncherParts::watcherReportsClose()
{
    QWidget window;
    window.show();
    MainWindowWatcher watcher(&window);
    QSignalSpy gone(&watcher, &MainWindowWatcher::gone);

    window.close();
    QTRY_COMPARE(gone.size(), 1);
    // Once only.
    window.show();
    window.close();
    QTest::qWait(10);
    QCOMPARE(gone.size(), 1);
}

namespace {
class StubbornWidget : public QWidget
{
protected:
    void closeEvent(QCloseEvent *e) override { e->ignore(); }
};
}

void tst_LauncherParts::watcherIgnoresHideAndRefusedClose()
{
    StubbornWidget window;
    window.show();
    MainWindowWatcher watcher(&window);
    QSignalSpy gone(&watcher, &MainWindowWatcher::gone);

    window.close();
    QVERIFY(window.isVisible());
    // A player hides its window while its full-screen view is up.
    QWidget other;
    MainWindowWatcher otherWatcher(&other);
    QSignalSpy otherGone(&otherWatcher, &MainWindowWatcher::gone);
    other.show();
    other.hide();
    QTest::qWait(20);
    QCOMPARE(gone.size(), 0);
    QCOMPARE(otherGone.size(), 0);
}

void tst_LauncherParts::watcherReportsDeletion()
{
    auto *window = new QWidget;
    MainWindowWatcher watcher(window);
    QSignalSpy gone(&watcher, &MainWindowWatcher::gone);
    delete window;
    QCOMPARE(gone.size(), 1);
}

void tst_LauncherParts::screenTakesMaximizedWindows_data()
{
    QTest::addColumn<int>("how");
    QTest::addColumn<bool>("placed");
    QTest::newRow("maximized") << 0 << true;
    QTest::newRow("full screen") << 1 << true;
    QTest::newRow("normal") << 2 << false;
}

void tst_LauncherParts::screenTakesMaximizedWindows()
{
    QFETCH(int, how);
    QFETCH(bool, placed);

    LauncherScreen screen;
    screen.move(40, 30);
    screen.show();
    QVERIFY(QTest::qWaitForWindowExposed(&screen));
    QCOMPARE(screen.size(), QSize(480, 272));

    QDialog window;
    window.resize(200, 100);
    switch (how) {
    case 0:
        window.showMaximized();
        break;
    case 1:
        window.showFullScreen();
        break;
    default:
        window.show();
    }
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (placed) {
        QCOMPARE(screen.windowManager()->displayRect(&window),
                 how == 0 ? WindowManager::WorkArea : QRect(0, 0, 480, 272));
        QVERIFY(!(window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)));
    } else {
        QCOMPARE(window.size(), QSize(200, 100));
    }
}

void tst_LauncherParts::videoFeedFollowsTheWire_data()
{
    QTest::addColumn<QString>("channel");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QRect>("window");
    QTest::addColumn<double>("seconds");

    const QRect small = VideoFeed::SmallWindow;
    QTest::newRow("wide window") << VodChannel::VideoManager << VodMessage::ChangeVodWindow
                                 << QByteArray::fromHex("0000000000000000000001e00000010f") << QRect(0, 0, 480, 271)
                                 << 0.0;
    QTest::newRow("short window block") << VodChannel::VideoManager << VodMessage::ChangeVodWindow
                                        << QByteArray::fromHex("000000000000000000000100") << small << 0.0;
    QTest::newRow("far edge beyond int") << VodChannel::VideoManager << VodMessage::ChangeVodWindow
                                         << QByteArray::fromHex("7fffff000000000000001000000000ff") << small << 0.0;
    QTest::newRow("empty window") << VodChannel::VideoManager << VodMessage::ChangeVodWindow
                                  << QByteArray::fromHex("0000000000000000000000000000010f") << small << 0.0;
    QTest::newRow("push time") << VodChannel::PushApplication << VodMessage::CurrentTime
                               << QByteArray::fromHex("41480000") << small << 12.5;
    QTest::newRow("VOD time") << VodChannel::VideoApplication << VodMessage::CurrentTime
                              << QByteArray::fromHex("43200000") << small << 160.0;
    QTest::newRow("short time block") << VodChannel::VideoApplication << VodMessage::CurrentTime
                                      << QByteArray::fromHex("414800") << small << 0.0;
    QTest::newRow("time on another channel")
        << VodChannel::CallManager << VodMessage::CurrentTime << QByteArray::fromHex("41480000") << small << 0.0;
}

void tst_LauncherParts::videoFeedFollowsTheWire()
{
    QFETCH(QString, channel);
    QFETCH(QString, message);
    QFETCH(QByteArray, data);
    QFETCH(QRect, window);
    QFETCH(double, seconds);

    VideoFeed feed(moduleHooks());
    deliver(channel, message, data);
    QCOMPARE(feed.window(), window);
    QCOMPARE(feed.seconds(), seconds);
}

void tst_LauncherParts::frameShowsPushPlayer_data()
{
    QTest::addColumn<bool>("full");
    QTest::addColumn<QRect>("video");
    QTest::newRow("small player") << false << QRect(8, 39, 256, 194);
    // The 4:3 full-screen view: the picture's window, over the whole height.
    QTest::newRow("full screen") << true << QRect(0, 0, 363, 272);
}

void tst_LauncherParts::frameShowsPushPlayer()
{
    QFETCH(bool, full);
    QFETCH(QRect, video);

    LauncherScreen screen;
    screen.setFrameHooks(moduleHooks());
    screen.show();
    ApplicationImpl factory;
    std::unique_ptr<VideoPushView> push(
        qobject_cast<VideoPushView *>(factory.createMainWindow(QStringLiteral("videoPush"), &screen, {})));
    QVERIFY(push);
    deliver(VodChannel::PushApplication, VodMessage::StartPush);
    QTRY_VERIFY(push->screenStatus == VodPlayView::Playing && push->playScreenReady);
    if (full) {
        pressKey(push.get(), Key_Video4);
        QVERIFY(push->fullScreenView);
        QTRY_VERIFY(push->fullScreenView->isVisible() && push->fullScreenView->playScreenReady);
    }
    // The window that the module asked the video manager for, through the plugin's transport.
    QTRY_COMPARE(screen.compositor()->videoFeed()->window(), video);
    deliver(VodChannel::PushApplication, VodMessage::CurrentTime, messageData(42.0f));

    const QImage shot = screen.screenImage();
    QCOMPARE(shot.size(), QSize(480, 272));
    const QImage reference = referencePicture(video, 42.0);
    QVERIFY(reference != referencePicture(video, 41.0));

    // Inside the video window the picture shows through; just outside it, the window's own drawing.
    const QList<QPoint> inside{video.topLeft(), video.topRight(), video.bottomLeft(), video.bottomRight(),
                               video.center()};
    for (const QPoint &p : inside)
        QVERIFY2(shot.pixel(p) == reference.pixel(p), qPrintable(QStringLiteral("at %1,%2").arg(p.x()).arg(p.y())));
    const QPoint right = video.topRight() + QPoint(1, 0);
    QVERIFY(shot.pixel(right) != reference.pixel(right));
    if (!full) {
        for (const QPoint &p : {video.topLeft() - QPoint(1, 0), video.topLeft() - QPoint(0, 1),
                                video.bottomLeft() + QPoint(0, 1)})
            QVERIFY2(shot.pixel(p) != reference.pixel(p), qPrintable(QStringLiteral("at %1,%2").arg(p.x()).arg(p.y())));
    }

    // The title bar fills rows 0 to 30 and the soft-key bar rows 241 to 271,
    // unless the full-screen view covers the display.
    for (int x : {0, 240, 479}) {
        for (int y : {0, 30})
            QCOMPARE(shot.pixel(x, y) == ScreenCompositor::TitleBarColour, !full);
        for (int y : {241, 271})
            QCOMPARE(shot.pixel(x, y) == ScreenCompositor::SoftKeyBarColour, !full);
        QVERIFY(shot.pixel(x, 31) != ScreenCompositor::TitleBarColour);
        QVERIFY(shot.pixel(x, 240) != ScreenCompositor::SoftKeyBarColour);
    }
    // The push view's Back label: its image, drawn in the soft-key bar's right cell.
    bool drawn = full;
    for (int x = 360; x < 480 && !drawn; ++x)
        drawn = shot.pixel(x, 256) != ScreenCompositor::SoftKeyBarColour;
    QVERIFY(drawn);
}

void tst_LauncherParts::frameShowsVideoPlane()
{
    QFETCH(bool, full);
    QFETCH(QRect, video);

    // A video manager's plane holding a 4 x 2 picture: green on the left, purple on the right.
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
    screen.setFrameHooks(moduleHooks());
    screen.watchVideoPlane(name);
    screen.show();
    ApplicationImpl factory;
    std::unique_ptr<VideoPushView> push(
        qobject_cast<VideoPushView *>(factory.createMainWindow(QStringLiteral("videoPush"), &screen, {})));
    QVERIFY(push);
    deliver(VodChannel::PushApplication, VodMessage::StartPush);
    QTRY_VERIFY(push->screenStatus == VodPlayView::Playing && push->playScreenReady);
    if (full) {
        pressKey(push.get(), Key_Video4);
        QTRY_VERIFY(push->fullScreenView && push->fullScreenView->isVisible()
                    && push->fullScreenView->playScreenReady);
    }
    QTRY_COMPARE(screen.compositor()->videoFeed()->window(), video);

    // The picture fills the window the module asked for: each half of it one half.
    QImage shot = screen.screenImage();
    const int middle = video.center().y();
    QCOMPARE(shot.pixel(video.left() + video.width() / 4, middle), left);
    QCOMPARE(shot.pixel(video.right() - video.width() / 4, middle), right);
    QCOMPARE(shot.pixel(video.left(), video.top()), left);
    QCOMPARE(shot.pixel(video.right(), video.bottom()), right);
    QVERIFY(shot.pixel(video.right() + 1, middle) != right);

    // A plane without a picture is black; without a plane the test picture is back.
    writer->clear();
    shot = screen.screenImage();
    QCOMPARE(shot.pixel(video.center()), 0xff000000u);
    writer.reset();
    shot = screen.screenImage();
    QCOMPARE(shot.pixel(video.center()), referencePicture(video, 0).pixel(video.center()));
}

void tst_LauncherParts::frameCentresPopUpsOverWindows()
{
    LauncherScreen screen;
    screen.show();
    const auto coloured = [](QRgb colour, const QSize &size) {
        auto *w = new QDialog;
        QPalette p = w->palette();
        p.setColor(QPalette::Window, QColor::fromRgb(colour));
        w->setPalette(p);
        w->resize(size);
        return std::unique_ptr<QDialog>(w);
    };
    const auto window = coloured(0xff0000ff, QSize(100, 100));
    const auto popUp = coloured(0xffff0000, QSize(200, 100));
    window->showMaximized();
    popUp->show();
    QTRY_VERIFY(!ScreenCompositor::paintedImage(popUp.get()).isNull());
    QTRY_VERIFY(!ScreenCompositor::paintedImage(window.get()).isNull());

    QImage shot = screen.screenImage();
    QCOMPARE(shot.pixel(140, 86), 0xffff0000u);
    QCOMPARE(shot.pixel(339, 185), 0xffff0000u);
    QCOMPARE(shot.pixel(139, 86), 0xff0000ffu);
    QCOMPARE(shot.pixel(140, 186), 0xff0000ffu);
    QCOMPARE(shot.pixel(0, 31), 0xff0000ffu);
    QCOMPARE(shot.pixel(0, 240), 0xff0000ffu);
    QCOMPARE(shot.pixel(0, 30), ScreenCompositor::TitleBarColour);

    // Shown again, the maximized window comes over the pop-up.
    window->hide();
    window->showMaximized();
    flushEvents();
    shot = screen.screenImage();
    QCOMPARE(shot.pixel(140, 86), 0xff0000ffu);
}

QTEST_MAIN(tst_LauncherParts)
#include "tst_launcherparts.moc"
