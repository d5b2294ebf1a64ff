// The VOD browser, its players and the broadcast viewer against the simulated
// video manager in one process: keys typed as on the phone, the simulator's
// clock moved by hand, so that each road runs the same every time.
#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "devicekeys.h"
#include "entry/applicationimpl.h"
#include "launcherscreen.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "noticewatcher.h"
#include "push/videopushfullview.h"
#include "push/videopushview.h"
#include "qwaitwidget.h"
#include "testdisplay.h"
#include "testenvironment.h"
#include "videomanagersimulator.h"
#include "vod.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QPointer>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace VodMessage;

namespace {

SimulatorOptions options()
{
    SimulatorOptions o;
    o.manualClock = true;
    // The answer comes a while after the request, as from a process of its own.
    o.answerDelay = 0.5;
    o.catalogue.groups = {
        SimGroup{"News", {SimPart{"Today", {SimTitle{"Noon", 60}}}}},
        SimGroup{"Drama",
                 {SimPart{"Season 1", {SimTitle{"Pilot", 40}}},
                  // The simulator answers 100 and 100 + length: 01:02:03 and 500 ms.
                  SimPart{"Season 2", {SimTitle{"Opening", 3}, SimTitle{"Finale", 3723.5}, SimTitle{"Short", 4}}}}},
    };
    return o;
}

QStringList rows(const vod &w)
{
    QStringList texts;
    for (int i = 0; i < w.listView->count(); ++i)
        texts << w.listView->item(i)->text();
    return texts;
}

// Moves the list to a row and opens it, as the user does.
void open(vod &w, int row)
{
    while (w.listView->currentRow() < row)
        typeKey(Qt::Key_Down);
    while (w.listView->currentRow() > row)
        typeKey(Qt::Key_Up);
    typeKey(Qt::Key_Select, Qt::KeypadModifier);
    flushEvents();
}

void tick(VideoManagerSimulator &simulator, int seconds)
{
    for (int i = 0; i < seconds; ++i) {
        flushEvents();
        simulator.advance(1);
        flushEvents();
    }
}

// Lets the video manager answer once the browser's wait pop-up is up.
void answer(vod &w, VideoManagerSimulator &simulator)
{
    QTRY_VERIFY(w.waitWidget && w.waitWidget->isActiveWindow());
    tick(simulator, 1);
    QVERIFY(!w.waitWidget->isVisible());
}

// The window a key reached.
QWidget *windowOf(QObject *receiver)
{
    return receiver && receiver->isWidgetType() ? static_cast<QWidget *>(receiver)->window() : nullptr;
}

// What the module sent since the traffic log held `mark` messages.
QStringList sentSince(qsizetype mark)
{
    return sentMessages().mid(mark);
}

} // namespace

class tst_Roads : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

    // The browser at the titles of "Drama", "Season 2".
    struct Road
    {
        TestDisplay display;
        NoticeWatcher notices;
        std::unique_ptr<VideoManagerSimulator> simulator;
        std::unique_ptr<vod> browser;
    };
    void walkToTitles(Road &road, const SimulatorOptions &o = options());
    // Sets up a title, plays it from its page; returns its player.
    VodPlaySmallScreenView *play(Road &road, int row);

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init() { QtopiaIpcTransport::clearTraffic(); }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void vodRoad();
    void endGuardThroughACallAndAResume();
    void serverLoss_data();
    void serverLoss();
    void handOverAndBack_data();
    void handOverAndBack();
    void keysAfterNotices_data();
    void keysAfterNotices();
    void keysAfterThePageCloses_data();
    void keysAfterThePageCloses();
    void listShowsWhatItOffers();
};

void tst_Roads::walkToTitles(Road &road, const SimulatorOptions &o)
{
    road.simulator = std::make_unique<VideoManagerSimulator>(o);
    road.browser = std::make_unique<vod>();
    road.browser->showMaximized();
    answer(*road.browser, *road.simulator);
    QCOMPARE(rows(*road.browser), (QStringList{"News", "Drama"}));
    QTRY_VERIFY(road.browser->isActiveWindow());
    open(*road.browser, 1);
    QCOMPARE(rows(*road.browser), (QStringList{"Season 1", "Season 2"}));
    open(*road.browser, 1);
    answer(*road.browser, *road.simulator);
    QCOMPARE(road.browser->currentLevel, int(ContentsLevel));
    QCOMPARE(rows(*road.browser), (QStringList{"Opening", "Finale", "Short"}));
}

VodPlaySmallScreenView *tst_Roads::play(Road &road, int row)
{
    open(*road.browser, row);
    answer(*road.browser, *road.simulator);
    MVodInfoView *page = road.browser->infoView;
    if (!page)
        return nullptr;
    [&] { QTRY_VERIFY(page->isActiveWindow()); }();
    typeKey(Qt::Key_Context1);
    flushEvents();
    VodPlaySmallScreenView *player = page->playView;
    [&] { QTRY_VERIFY(player->isActiveWindow()); }();
    return player;
}

// Down to a title, play, pause, resume and stop it; a second title played to
// its end. The end the player asks for and the one the video manager sends by
// itself close the player and its page once: the browser stays at the titles.
void tst_Roads::vodRoad()
{
    Road road;
    walkToTitles(road);
    QPointer<VodPlaySmallScreenView> player = play(road, 1);
    QVERIFY(player);
    QCOMPARE(road.browser->infoView->playTimeText(), QStringLiteral("01:02:03"));
    QCOMPARE(player->totalTimeText, QStringLiteral("01:02:03"));
    QCOMPARE(player->screenStatus, VodPlayView::Playing);
    tick(*road.simulator, 3);
    QCOMPARE(player->flowingTime(), QStringLiteral("00:00:03"));
    typeKey(Qt::Key_Select);
    flushEvents();
    QCOMPARE(player->screenStatus, VodPlayView::Paused);
    typeKey(Qt::Key_Select);
    flushEvents();
    QCOMPARE(player->screenStatus, VodPlayView::Playing);
    typeKey(Qt::Key_Back);
    flushEvents();
    QVERIFY(!player->isVisible() && !road.browser->infoView->isVisible());
    QCOMPARE(road.browser->currentLevel, int(ContentsLevel));
    QTRY_VERIFY(road.browser->isActiveWindow());

    player = play(road, 0);
    QVERIFY(player);
    tick(*road.simulator, 4);
    QCOMPARE(player->screenStatus, VodPlayView::Stopped);
    QVERIFY(!player->isVisible());
    QVERIFY(!road.browser->infoView->isVisible());
    QCOMPARE(road.browser->currentLevel, int(ContentsLevel));
    QTRY_VERIFY(road.browser->isActiveWindow());

    QCOMPARE(sentMessages().filter(QRegularExpression("^(?!changeVodWindow|QPE/)")),
             (QStringList{"requestGroupList()",
                          "requestContents(int,int) 0000000100000001",
                          "setupVod(int) 00000002",
                          "startVod(QString) 000000020030",
                          "pauseVod(int) 00000000",
                          // The position of the pause, as text.
                          "resumeVod(QString) 000000020033",
                          "stopVod()",
                          "setupVod(int) 00000001",
                          "startVod(QString) 000000020030",
                          // The report of the last second asks for the end the video manager sends anyway.
                          "stopVod()"}));
}

// A report that leaves less than a second starts the end guard; a call stops
// it, the resume after the call starts it again: with the video manager gone,
// the guard alone ends the title.
void tst_Roads::endGuardThroughACallAndAResume()
{
    Road road;
    walkToTitles(road);
    QPointer<VodPlaySmallScreenView> player = play(road, 2);
    QVERIFY(player);
    tick(*road.simulator, 3);
    QVERIFY(!player->frameSliderTimer);
    deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(CurrentTime), messageData(3.5f));
    QVERIFY(player->frameSliderTimer && player->frameSliderTimer->isActive());

    deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(StartCall));
    flushEvents();
    QCOMPARE(player->screenStatus, VodPlayView::Interrupted);
    QVERIFY(!player->frameSliderTimer->isActive());
    deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(StopCall));
    QTRY_VERIFY(player->isActiveWindow());
    typeKey(Qt::Key_Select);
    flushEvents();
    QCOMPARE(player->screenStatus, VodPlayView::Playing);
    QVERIFY(player->frameSliderTimer->isActive());

    road.simulator.reset();
    QtopiaIpcTransport::clearTraffic();
    QMetaObject::invokeMethod(player->frameSliderTimer, "timeout");
    QCOMPARE(sentMessages(), QStringList{"stopVod()"});
}

void tst_Roads::serverLoss_data()
{
    QTest::addColumn<bool>("broadcast");
    QTest::addColumn<bool>("killed");
    QTest::newRow("VOD, video manager killed") << false << true;
    QTest::newRow("VOD, video manager silent") << false << false;
    QTest::newRow("broadcast, video manager killed") << true << true;
    QTest::newRow("broadcast, video manager silent") << true << false;
}

// The video manager goes away while something plays. The VOD player's
// watchdog (fired here rather than awaited) tells the user, asks for a stop
// that nobody answers and closes, leaving its page; the broadcast's only tells,
// and the user's Back closes it.
void tst_Roads::serverLoss()
{
    QFETCH(bool, broadcast);
    QFETCH(bool, killed);
    SimulatorOptions o = options();
    if (!killed)
        o.silentAfter = 2;
    Road road;
    QPointer<VodPlayView> player;
    QTimer *watchdog = nullptr;
    std::unique_ptr<VideoPushView> view;
    if (broadcast) {
        road.simulator = std::make_unique<VideoManagerSimulator>(o);
        ApplicationImpl factory;
        view.reset(qobject_cast<VideoPushView *>(
            factory.createMainWindow(QStringLiteral("videoPush"), road.display.screen(), {})));
        tick(*road.simulator, 1);
        QCOMPARE(view->screenStatus, VodPlayView::Playing);
        // The view asks for the picture once its video area is open.
        QTRY_VERIFY(view->playScreenReady);
        player = view.get();
        watchdog = view->serverWatchdog;
    } else {
        walkToTitles(road, o);
        VodPlaySmallScreenView *small = play(road, 1);
        QVERIFY(small);
        player = small;
        watchdog = small->serverWatchdog;
    }
    QVERIFY(watchdog);
    tick(*road.simulator, 1);
    QVERIFY(!sentMessages().filter("currentTime(float)").isEmpty());
    if (killed)
        road.simulator.reset();
    else
        tick(*road.simulator, 3);
    QVERIFY(!killed || !road.simulator);
    QVERIFY(killed || road.simulator->isSilent());
    QVERIFY(watchdog->isActive());
    QVERIFY(road.notices.seen.isEmpty());

    QtopiaIpcTransport::clearTraffic();
    QMetaObject::invokeMethod(watchdog, "timeout");
    QCOMPARE(road.notices.seen.size(), 1);
    QVERIFY(!watchdog->isActive());
    if (broadcast) {
        QCOMPARE(road.notices.seen.at(0).text, QStringLiteral("Temporary disconnection from VCS server"));
        QCOMPARE(sentMessages(), QStringList());
        QVERIFY(view->isVisible());
        QTRY_VERIFY(view->isActiveWindow());
        // No end will come: Back or Hangup closes the view at once.
        typeKey(killed ? Qt::Key_Back : Qt::Key_Hangup);
        QCOMPARE(sentMessages(), (QStringList{"stopUIPush()", "QPE/VideoApplication showVodFullScreen()"}));
        QVERIFY(!view->isVisible());
    } else {
        QCOMPARE(road.notices.seen.at(0).text, QStringLiteral("A video has been stopped by the VCS server."));
        QCOMPARE(sentMessages(), QStringList{"stopVod()"});
        QCOMPARE(player->screenStatus, VodPlayView::Stopped);
        QVERIFY(!player->isVisible());
        QTRY_VERIFY(road.browser->infoView->isActiveWindow());
        QtopiaIpcTransport::clearTraffic();
        QCOMPARE(windowOf(typeKey(Qt::Key_Back)), road.browser->infoView.data());
        QCOMPARE(sentMessages(), QStringList());
        QCOMPARE(road.browser->currentLevel, int(ContentsLevel));
        QTRY_VERIFY(road.browser->isActiveWindow());
        QCOMPARE(typeKey(Qt::Key_Select, Qt::KeypadModifier), road.browser->listView);
        QVERIFY(sentMessages().constLast().startsWith("setupVod(int)"));
    }
}

void tst_Roads::handOverAndBack_data()
{
    QTest::addColumn<bool>("broadcast");
    QTest::newRow("VOD") << false;
    QTest::newRow("broadcast") << true;
}

// Video4 hands the picture to the full-screen view, Video4 widens it, Video4
// hands it back: the small view has the keyboard again, its video area open.
void tst_Roads::handOverAndBack()
{
    QFETCH(bool, broadcast);
    Road road;
    std::unique_ptr<VideoPushView> view;
    VodPlayView *small = nullptr;
    if (broadcast) {
        road.simulator = std::make_unique<VideoManagerSimulator>(options());
        ApplicationImpl factory;
        view.reset(qobject_cast<VideoPushView *>(
            factory.createMainWindow(QStringLiteral("videoPush"), road.display.screen(), {})));
        tick(*road.simulator, 1);
        small = view.get();
    } else {
        walkToTitles(road);
        small = play(road, 1);
    }
    QVERIFY(small);
    QTRY_VERIFY(small->playScreenReady && small->isActiveWindow());
    QCOMPARE(windowOf(typeKey(Key_Video4)), small);
    VodPlayView *full = broadcast ? static_cast<VodPlayView *>(view->fullScreenView)
                                  : static_cast<VodPlaySmallScreenView *>(small)->fullScreenView;
    QVERIFY(full && full->isVisible());
    QTRY_VERIFY(full->isActiveWindow() && full->playScreenReady);
    QCOMPARE(windowOf(typeKey(Key_Video4)), full);
    QTRY_VERIFY(full->playScreenReady);
    QCOMPARE(windowOf(typeKey(Key_Video4)), full);
    QVERIFY(!full->isVisible());

    QTRY_VERIFY(small->isActiveWindow());
    QVERIFY(!small->focusLost);
    const qsizetype mark = sentMessages().size();
    QCOMPARE(windowOf(typeKey(Qt::Key_VolumeUp)), small);
    QCOMPARE(sentSince(mark).filter("setVolume_vod(int)").size(), 1);
}

void tst_Roads::keysAfterNotices_data()
{
    QTest::addColumn<bool>("connecting");
    QTest::newRow("video will be resumed") << false;
    QTest::newRow("now connecting server") << true;
}

// The player has the keyboard again once its notice has gone.
void tst_Roads::keysAfterNotices()
{
    QFETCH(bool, connecting);
    Road road;
    walkToTitles(road);
    VodPlaySmallScreenView *player = play(road, 1);
    QVERIFY(player);
    if (connecting) {
        // A resume while the video manager is still connecting is refused with a notice.
        env->writeFile(QStringLiteral("/tmp/status/vod_setup_status"), QByteArray());
        typeKey(Qt::Key_Select);
        flushEvents();
        QCOMPARE(player->screenStatus, VodPlayView::Paused);
        typeKey(Qt::Key_Select);
        env->remove(QStringLiteral("/tmp/status/vod_setup_status"));
    } else {
        deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(StartVideoPushApp));
        flushEvents();
        QCOMPARE(player->screenStatus, VodPlayView::PausedForPush);
        deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(StopVideoPushApp));
    }
    QCOMPARE(road.notices.seen.size(), 1);
    QTRY_VERIFY(player->isActiveWindow());
    const qsizetype mark = sentMessages().size();
    QCOMPARE(windowOf(typeKey(Qt::Key_VolumeDown)), player);
    QVERIFY(sentSince(mark).constFirst().startsWith("QPE/CallManager setVolume_vod(int)"));
}

void tst_Roads::keysAfterThePageCloses_data()
{
    QTest::addColumn<bool>("setUpFails");
    QTest::newRow("page closed") << false;
    QTest::newRow("the next set-up fails") << true;
}

// Back from a playing title closes its player and page: the list has the
// keyboard. So it has after a failed set-up's result has gone.
void tst_Roads::keysAfterThePageCloses()
{
    QFETCH(bool, setUpFails);
    Road road;
    SimulatorOptions o = options();
    if (setUpFails)
        o.failSetupVod = 3;
    walkToTitles(road, o);
    if (setUpFails) {
        open(*road.browser, 1);
        QTRY_VERIFY(road.browser->waitWidget->isActiveWindow());
        tick(*road.simulator, 1);
        QVERIFY(road.browser->waitWidget->isShowingResult());
        const auto timers = road.browser->waitWidget->findChildren<QTimer *>();
        for (QTimer *t : timers) {
            if (t->isActive())
                QMetaObject::invokeMethod(t, "timeout");
        }
        QVERIFY(!road.browser->waitWidget->isVisible());
    } else {
        VodPlaySmallScreenView *player = play(road, 1);
        QVERIFY(player);
        QCOMPARE(windowOf(typeKey(Qt::Key_Back)), player);
        flushEvents();
        QVERIFY(!player->isVisible() && !road.browser->infoView->isVisible());
    }
    QTRY_VERIFY(road.browser->isActiveWindow());
    QCOMPARE(typeKey(Qt::Key_Up), road.browser->listView);
    QCOMPARE(road.browser->listView->currentRow(), 0);
}

// Between the title bar and the soft-key bar: five rows of 42 pixels; the
// row keys pick the rows the user sees.
void tst_Roads::listShowsWhatItOffers()
{
    Road road;
    SimulatorOptions o = options();
    o.catalogue.groups.clear();
    for (int g = 0; g < 8; ++g)
        o.catalogue.groups.append(SimGroup{QStringLiteral("Group %1").arg(g), {}});
    road.simulator = std::make_unique<VideoManagerSimulator>(o);
    vod browser;
    browser.showMaximized();
    answer(browser, *road.simulator);
    QCOMPARE(browser.listView->count(), 8);
    QTRY_VERIFY(browser.isActiveWindow());
    QCOMPARE(browser.listView->viewport()->height(), 210);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(typeKey(Qt::Key_Down), browser.listView);
    const QRect current = browser.listView->visualItemRect(browser.listView->currentItem());
    QVERIFY(current.top() >= 0 && current.bottom() < 210);
    const int firstShown = browser.listView->indexAt(QPoint(0, 0)).row();
    QCOMPARE(firstShown, 2);
    typeKey(Key_Video0);
    QCOMPARE(browser.partRow, 0);
    QCOMPARE(browser.groupRow, firstShown);
}

QTEST_MAIN(tst_Roads)
#include "tst_roads.moc"
