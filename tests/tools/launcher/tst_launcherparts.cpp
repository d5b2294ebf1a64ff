#include "displaychoice.h"
#include "keynamereader.h"
#include "launcherscreen.h"
#include "mainwindowwatcher.h"
#include "pluginlocator.h"
#include "pluginverification.h"
#include "trafficprinter.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <unistd.h>

// The launcher's pieces that work without a plugin.
class tst_LauncherParts : public QObject
{
    Q_OBJECT

private slots:
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
    QTest::newRow("this module") << pattern + "version=4.2.3\ndebug=false\nbuildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK"
                                 << QString();
    QTest::newRow("trailing line end")
        << pattern + "version=4.2.3\ndebug=false\nbuildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK\n" << QString();
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
    QTest::newRow("no pattern") << QByteArray("version=4.2.3\ndebug=false\nbuildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK")
                                << QStringLiteral("the verification data has no pattern line");
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
    QTest::newRow("unrelated") << QStringList{QStringLiteral("HOME=/root")} << program << true;
    QTest::newRow("X11") << QStringList{QStringLiteral("DISPLAY=:0")} << program << false;
    QTest::newRow("Wayland") << QStringList{QStringLiteral("WAYLAND_DISPLAY=wayland-0")} << program << false;
    QTest::newRow("platform chosen") << QStringList{QStringLiteral("QT_QPA_PLATFORM=vnc")} << program << false;
    QTest::newRow("-platform") << QStringList() << (program + QStringList{"-platform", "vnc"}) << false;
    QTest::newRow("--platform") << QStringList() << (program + QStringList{"--platform", "vnc"}) << false;
    QTest::newRow("other option") << QStringList() << (program + QStringList{"--list"}) << true;
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
        QCOMPARE(window.geometry(), screen.area());
        QCOMPARE(window.geometry().topLeft(), screen.mapToGlobal(QPoint(0, 0)));
        QVERIFY(!(window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)));
    } else {
        QCOMPARE(window.size(), QSize(200, 100));
    }
}

QTEST_MAIN(tst_LauncherParts)
#include "tst_launcherparts.moc"
