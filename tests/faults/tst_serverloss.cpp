// The video manager goes away while something plays: the players' server
// watchdogs take over. The simulator runs in-process; its loss is either its
// destruction (the process was killed) or its silence (it hangs).
#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "messaging/vodmessages.h"
#include "push/videopushview.h"
#include "testenvironment.h"
#include "videomanagersimulator.h"
#include "vod.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

const QString manager = QLatin1String(VodChannel::VideoManager);

// Simulated seconds last 5 ms; the simulator reports the position every
// simulated second.
SimulatorOptions fastOptions()
{
    SimulatorOptions options;
    options.timeScale = 0.005;
    options.pushStartDelay = 0.1;
    return options;
}

void select(vod &w, int row)
{
    w.listView->setCurrentRow(row);
    pressKey(w.listView, Qt::Key_Select, Qt::KeypadModifier);
}

} // namespace

class tst_ServerLoss : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init()
    {
        // Requests still queued from the previous test must not reach this
        // test's simulator.
        flushEvents();
        env->remove(QStringLiteral("/tmp/status/vod_setup_status"));
        QtopiaIpcTransport::clearTraffic();
    }
    void cleanup() { QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void vodContent_data();
    void vodContent();
    void broadcast_data();
    void broadcast();
};

void tst_ServerLoss::vodContent_data()
{
    QTest::addColumn<bool>("killed");
    QTest::newRow("simulator killed") << true;
    QTest::newRow("simulator silent") << false;
}

// A content plays in the small player; the video manager disappears. The
// ten-second watchdog (fired here rather than awaited) shows its notice, asks
// for a stop that nobody answers, and closes the player; the browser stays.
void tst_ServerLoss::vodContent()
{
    QFETCH(bool, killed);
    SimulatorOptions options = fastOptions();
    if (!killed)
        options.silentAfter = 8; // simulated seconds after the start
    auto simulator = std::make_unique<VideoManagerSimulator>(options);
    NoticeRecorder notices;

    vod browser;
    browser.show();
    QVERIFY(QTest::qWaitForWindowExposed(&browser));
    QTRY_VERIFY(browser.listView->count() > 0);
    select(browser, 0);
    QCOMPARE(browser.currentLevel, int(PartLevel));
    select(browser, 0);
    QTRY_COMPARE(browser.currentLevel, int(ContentsLevel));
    select(browser, 0);
    QTRY_VERIFY(browser.infoView);
    QPointer<VodPlaySmallScreenView> player = browser.infoView->playView;
    QVERIFY(player);
    QTRY_VERIFY(browser.infoView->isActiveWindow());

    pressKey(browser.infoView, Qt::Key_Context1);
    QTRY_COMPARE(player->screenStatus, VodPlayView::Playing);
    QTRY_VERIFY(player->serverWatchdog && player->serverWatchdog->isActive());
    // The position reports arrive.
    QTRY_VERIFY(player->currentMsecs > 0);

    if (killed)
        simulator.reset();
    else
        QTRY_VERIFY(simulator->isSilent());
    flushEvents();
    QVERIFY(player->isVisible());
    QVERIFY(player->serverWatchdog->isActive());
    QVERIFY(notices.notices.isEmpty());

    QtopiaIpcTransport::clearTraffic();
    QMetaObject::invokeMethod(player->serverWatchdog, "timeout");
    QVERIFY(player);
    QCOMPARE(notices.notices.size(), 1);
    QCOMPARE(notices.notices.at(0).text, QStringLiteral("A video has been stopped by the VCS server."));
    QCOMPARE(signaturesOn(manager), QStringList({QLatin1String(VodMessage::StopVod)}));
    QCOMPARE(player->screenStatus, VodPlayView::Stopped);
    QVERIFY(!player->serverWatchdog->isActive());
    QVERIFY(!player->isVisible());
    // Nothing answers the stop; the page and the browser are still usable.
    flushEvents();
    QVERIFY(browser.isVisible());
    QVERIFY(browser.infoView);
    pressKey(browser.infoView, Qt::Key_Back);
    QCOMPARE(browser.currentLevel, int(ContentsLevel));
    QTRY_VERIFY(!browser.infoView->isVisible());
    browser.close();
}

void tst_ServerLoss::broadcast_data()
{
    vodContent_data();
}

// A broadcast plays; the video manager disappears. The 30-second watchdog
// (fired) only tells the user: the broadcast view stays open and playing until
// the user stops it.
void tst_ServerLoss::broadcast()
{
    QFETCH(bool, killed);
    SimulatorOptions options = fastOptions();
    if (!killed)
        options.silentAfter = 8;
    auto simulator = std::make_unique<VideoManagerSimulator>(options);
    NoticeRecorder notices;

    VideoPushView view(nullptr, Qt::WindowFlags());
    QTRY_COMPARE(view.screenStatus, VodPlayView::Playing);
    QTRY_VERIFY(view.serverWatchdog && view.serverWatchdog->isActive());

    if (killed)
        simulator.reset();
    else
        QTRY_VERIFY(simulator->isSilent());
    flushEvents();
    QVERIFY(view.serverWatchdog->isActive());

    QtopiaIpcTransport::clearTraffic();
    QMetaObject::invokeMethod(view.serverWatchdog, "timeout");
    QCOMPARE(notices.notices.size(), 1);
    QCOMPARE(notices.notices.at(0).text, QStringLiteral("Temporary disconnection from VCS server"));
    QCOMPARE(notices.notices.at(0).detail,
             QStringLiteral("If you want to quit this broadcast, Please push 'stop' button"));
    QCOMPARE(view.screenStatus, VodPlayView::Playing);
    QVERIFY(view.isVisible());
    QVERIFY(!view.serverWatchdog->isActive());
    QCOMPARE(signaturesOn(manager), QStringList());

    // The user gives up: the stop request goes out although nobody hears it.
    pressKey(&view, Qt::Key_Back);
    QCOMPARE(signaturesOn(manager), QStringList({QLatin1String(VodMessage::StopUIPush)}));
    view.close();
}

QTEST_MAIN(tst_ServerLoss)
#include "tst_serverloss.moc"
