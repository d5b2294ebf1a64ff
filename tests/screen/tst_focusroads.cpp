// After each way a window goes (the full-screen hand-back, a notice, the
// server-loss close, a page closing, a failed set-up) the next key that the
// user types reaches the window the design says, with the phone's window
// manager doing what it does when a window closes and nothing more.

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "devicekeys.h"
#include "entry/applicationimpl.h"
#include "launcherscreen.h"
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

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

// The window a key reached.
QWidget *windowOf(QObject *receiver)
{
    return receiver && receiver->isWidgetType() ? static_cast<QWidget *>(receiver)->window() : nullptr;
}

// Whether the module sent that message since the traffic log held `mark` messages.
bool sentSince(qsizetype mark, const char *message)
{
    const QList<QtopiaIpcMessage> &traffic = QtopiaIpcTransport::traffic();
    for (qsizetype i = mark; i < traffic.size(); ++i) {
        if (traffic.at(i).message == QLatin1String(message))
            return true;
    }
    return false;
}

qsizetype mark()
{
    return QtopiaIpcTransport::traffic().size();
}

} // namespace

class tst_FocusRoads : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

    // The VOD browser against the simulated video manager, typed to a playing title.
    struct VodRoad
    {
        TestDisplay display;
        NoticeWatcher notices;
        std::unique_ptr<VideoManagerSimulator> simulator;
        std::unique_ptr<vod> browser;
        VodPlaySmallScreenView *player = nullptr;
    };
    void openTitle(VodRoad &road);

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init() { QtopiaIpcTransport::clearTraffic(); }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void fullScreenHandBack();
    void afterNotices_data();
    void afterNotices();
    void serverLossLeavesThePage();
    void pageCloseGivesTheList();
    void failedSetUpGivesTheList();
    void pushHandBackAndNotice();
    void listShowsWhatItOffers();
};

void tst_FocusRoads::openTitle(VodRoad &road)
{
    SimulatorOptions options;
    options.timeScale = 0.2;
    // The video manager answers after a while, as a process of its own does.
    options.answerDelay = 0.5;
    road.simulator = std::make_unique<VideoManagerSimulator>(options);
    road.browser = std::make_unique<vod>();
    road.browser->showMaximized();
    // "Music", "Live", "Concert highlights" (312.5 s).
    for (int k : {Qt::Key_Down, Qt::Key_Down}) {
        QTRY_VERIFY_WITH_TIMEOUT(road.browser->listView->count() == 3, 5000);
        QVERIFY(typeKey(k));
    }
    QVERIFY(typeKey(Qt::Key_Select, Qt::KeypadModifier));
    QTRY_COMPARE_WITH_TIMEOUT(road.browser->currentLevel, int(PartLevel), 5000);
    QVERIFY(typeKey(Qt::Key_Select, Qt::KeypadModifier));
    QTRY_COMPARE_WITH_TIMEOUT(road.browser->currentLevel, int(ContentsLevel), 5000);
    QTRY_VERIFY(!road.browser->waitWidget->isVisible());
    typeKey(Qt::Key_Down);
    typeKey(Qt::Key_Select, Qt::KeypadModifier);
    QTRY_VERIFY_WITH_TIMEOUT(road.browser->infoView && road.browser->infoView->isVisible(), 5000);
    QTRY_VERIFY(road.browser->infoView->isActiveWindow());
    QCOMPARE(windowOf(typeKey(Qt::Key_Context1)), road.browser->infoView.data());
    road.player = road.browser->infoView->playView;
    QTRY_COMPARE_WITH_TIMEOUT(road.player->screenStatus, VodPlayView::Playing, 5000);
    QTRY_VERIFY(road.player->isActiveWindow() && road.player->playScreenReady);
}

void tst_FocusRoads::fullScreenHandBack()
{
    VodRoad road;
    openTitle(road);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(typeKey(Key_Video4));
    VodPlayFullScreenView *full = road.player->fullScreenView;
    QVERIFY(full && full->isVisible());
    QTRY_VERIFY(full->playScreenReady && full->isActiveWindow());
    QCOMPARE(windowOf(typeKey(Key_Video4)), full);
    QCOMPARE(full->screenType, WideVodScreen);
    QCOMPARE(windowOf(typeKey(Key_Video4)), full);
    QVERIFY(!full->isVisible());

    // The small player has the keyboard again, and its video area is open.
    QTRY_VERIFY(road.player->isActiveWindow());
    QVERIFY(!road.player->focusLost);
    qsizetype before = mark();
    QCOMPARE(windowOf(typeKey(Qt::Key_VolumeUp)), road.player);
    QVERIFY(sentSince(before, VodMessage::SetVolumeVod));
    before = mark();
    QCOMPARE(windowOf(typeKey(Qt::Key_Select)), road.player);
    QVERIFY(sentSince(before, VodMessage::PauseVod));
}

void tst_FocusRoads::afterNotices_data()
{
    QTest::addColumn<bool>("connecting");
    QTest::newRow("video will be resumed") << false;
    QTest::newRow("now connecting server") << true;
}

void tst_FocusRoads::afterNotices()
{
    QFETCH(bool, connecting);
    VodRoad road;
    openTitle(road);
    if (QTest::currentTestFailed())
        return;
    if (connecting) {
        // A resume while the video manager is still connecting is refused with a notice.
        env->writeFile(QStringLiteral("/tmp/status/vod_setup_status"), QByteArray());
        QCOMPARE(windowOf(typeKey(Qt::Key_Select)), road.player);
        QTRY_COMPARE(road.player->screenStatus, VodPlayView::Paused);
        typeKey(Qt::Key_Select);
        env->remove(QStringLiteral("/tmp/status/vod_setup_status"));
    } else {
        deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(VodMessage::StartVideoPushApp));
        QTRY_COMPARE(road.player->screenStatus, VodPlayView::PausedForPush);
        deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(VodMessage::StopVideoPushApp));
    }
    QCOMPARE(road.notices.seen.size(), 1);
    QTRY_VERIFY(road.player->isActiveWindow());
    const qsizetype before = mark();
    QCOMPARE(windowOf(typeKey(Qt::Key_VolumeDown)), road.player);
    QVERIFY(sentSince(before, VodMessage::SetVolumeVod));
}

void tst_FocusRoads::serverLossLeavesThePage()
{
    VodRoad road;
    openTitle(road);
    if (QTest::currentTestFailed())
        return;
    // The video manager is gone: nothing answers the stop request.
    road.simulator.reset();
    QMetaObject::invokeMethod(road.player->serverWatchdog, "timeout");
    QCOMPARE(road.notices.seen.size(), 1);
    QTRY_VERIFY(!road.player->isVisible());

    // The page is on top: Back closes it, and asks for nothing.
    MVodInfoView *page = road.browser->infoView;
    QTRY_VERIFY(page->isActiveWindow());
    QtopiaIpcTransport::clearTraffic();
    QCOMPARE(windowOf(typeKey(Qt::Key_Back)), page);
    QVERIFY(!page->isVisible());
    QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
    QCOMPARE(road.browser->currentLevel, int(ContentsLevel));
    QTRY_VERIFY(road.browser->isActiveWindow());
    const qsizetype before = mark();
    QCOMPARE(typeKey(Qt::Key_Select, Qt::KeypadModifier), road.browser->listView);
    QVERIFY(sentSince(before, VodMessage::SetupVod));
}

void tst_FocusRoads::pageCloseGivesTheList()
{
    VodRoad road;
    openTitle(road);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(windowOf(typeKey(Qt::Key_Back)), road.player);
    QTRY_VERIFY(!road.player->isVisible());
    QTRY_VERIFY(!road.browser->infoView->isVisible());
    QTRY_VERIFY(road.browser->isActiveWindow());
    QCOMPARE(typeKey(Qt::Key_Up), road.browser->listView);
    QCOMPARE(road.browser->listView->currentRow(), 0);
}

void tst_FocusRoads::failedSetUpGivesTheList()
{
    VodRoad road;
    openTitle(road);
    if (QTest::currentTestFailed())
        return;
    road.simulator.reset();
    SimulatorOptions options;
    options.failSetupVod = 3;
    options.answerDelay = 0.1;
    road.simulator = std::make_unique<VideoManagerSimulator>(options);
    typeKey(Qt::Key_Back);
    QTRY_VERIFY(road.browser->isActiveWindow());
    QCOMPARE(typeKey(Qt::Key_Select, Qt::KeypadModifier), road.browser->listView);
    QWaitWidget *wait = road.browser->waitWidget;
    QTRY_VERIFY(wait->isShowingResult());
    const auto timers = wait->findChildren<QTimer *>();
    for (QTimer *t : timers) {
        if (t->isActive())
            QMetaObject::invokeMethod(t, "timeout");
    }
    QTRY_VERIFY(!wait->isVisible());
    QTRY_VERIFY(road.browser->isActiveWindow());
    QCOMPARE(typeKey(Qt::Key_Up), road.browser->listView);
}

void tst_FocusRoads::pushHandBackAndNotice()
{
    TestDisplay display;
    NoticeWatcher notices;
    ApplicationImpl factory;
    std::unique_ptr<VideoPushView> push(
        qobject_cast<VideoPushView *>(factory.createMainWindow(QStringLiteral("videoPush"), display.screen(), {})));
    deliver(QLatin1String(VodChannel::PushApplication), QLatin1String(VodMessage::StartPush));
    QTRY_VERIFY(push->playScreenReady && push->isActiveWindow());
    QCOMPARE(windowOf(typeKey(Key_Video4)), push.get());
    VideoPushFullView *full = push->fullScreenView;
    QTRY_VERIFY(full->isActiveWindow() && full->playScreenReady);
    typeKey(Key_Video4);
    QCOMPARE(windowOf(typeKey(Key_Video4)), full);
    QTRY_VERIFY(push->isActiveWindow());
    qsizetype before = mark();
    QCOMPARE(windowOf(typeKey(Qt::Key_VolumeUp)), push.get());
    QVERIFY(sentSince(before, VodMessage::SetVolumeVod));

    QMetaObject::invokeMethod(push->serverWatchdog, "timeout");
    QCOMPARE(notices.seen.size(), 1);
    QTRY_VERIFY(push->isActiveWindow());
    before = mark();
    QCOMPARE(windowOf(typeKey(Qt::Key_Back)), push.get());
    QVERIFY(sentSince(before, VodMessage::StopUIPush));
}

void tst_FocusRoads::listShowsWhatItOffers()
{
    TestDisplay display;
    SimulatorOptions options;
    options.catalogue.groups.clear();
    for (int g = 0; g < 8; ++g)
        options.catalogue.groups.append(SimGroup{QStringLiteral("Group %1").arg(g), {}});
    VideoManagerSimulator simulator(options);
    vod browser;
    browser.showMaximized();
    QTRY_COMPARE(browser.listView->count(), 8);
    QTRY_VERIFY(browser.isActiveWindow());

    // Between the title bar and the soft-key bar: five rows of 42 pixels.
    QCOMPARE(browser.listView->viewport()->height(), 210);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(typeKey(Qt::Key_Down), browser.listView);
    QCOMPARE(browser.listView->currentRow(), 6);
    const QRect current = browser.listView->visualItemRect(browser.listView->currentItem());
    QVERIFY(current.top() >= 0 && current.bottom() < browser.listView->viewport()->height());
    // The first row key picks the first row the user sees.
    const int firstShown = browser.listView->indexAt(QPoint(0, 0)).row();
    QCOMPARE(firstShown, 2);
    typeKey(Key_Video0);
    QCOMPARE(browser.partRow, 0);
    QCOMPARE(browser.groupRow, firstShown);
}

QTEST_MAIN(tst_FocusRoads)
#include "tst_focusroads.moc"
