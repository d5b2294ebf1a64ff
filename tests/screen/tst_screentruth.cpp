// What the display holds after any notification or key equals a fresh
// rendering of every window: no window may leave stale pixels behind (a
// progress bar that a time report did not repaint, an overlay that went
// without a repaint).

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "devicekeys.h"
#include "entry/applicationimpl.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "noticewatcher.h"
#include "push/videopushfullview.h"
#include "push/videopushview.h"
#include "launcherscreen.h"
#include "testdisplay.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodcatalogue.h"
#include "vodcataloguefixture.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

using namespace VodMessage;

// How deep a road goes before the common steps: the small player, its 4:3
// full-screen player, or the wide picture.
enum Depth { Small, Full, Wide };

struct Step
{
    const char *what;
    std::function<void()> act;
};

// Types a key to the player that is up: after a notice or a hand-over the
// keyboard must be a player's again, never the browser's, a page's or a notice's.
void keyToPlayer(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTRY_VERIFY(qobject_cast<VodPlayView *>(QApplication::activeWindow()));
    QVERIFY(typeKey(key, modifiers));
}

void fire(QTimer *timer)
{
    QVERIFY(timer);
    QMetaObject::invokeMethod(timer, "timeout");
}

// Runs the steps, comparing the display with a fresh rendering after each.
void runChecked(const QList<Step> &steps)
{
    for (const Step &step : steps) {
        step.act();
        if (QTest::currentTestFailed())
            return;
        const QStringList stale = staleWindows();
        QVERIFY2(stale.isEmpty(), qPrintable(QStringLiteral("after %1: %2")
                                                 .arg(QLatin1String(step.what), stale.join(QLatin1String("; ")))));
    }
}

} // namespace

// Runs the steps and leaves the test function at the first stale display.
#define RUN_CHECKED(...)                                                                                        \
    do {                                                                                                        \
        runChecked(__VA_ARGS__);                                                                                \
        if (QTest::currentTestFailed())                                                                         \
            return;                                                                                             \
    } while (false)

class tst_ScreenTruth : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void pushViews_data();
    void pushViews();
    void vodPlayers_data();
    void vodPlayers();
};

void tst_ScreenTruth::pushViews_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("small") << int(Small);
    QTest::newRow("full") << int(Full);
    QTest::newRow("wide") << int(Wide);
}

void tst_ScreenTruth::pushViews()
{
    QFETCH(int, depth);
    TestDisplay display;
    NoticeWatcher notices;
    ApplicationImpl factory;
    std::unique_ptr<VideoPushView> push(
        qobject_cast<VideoPushView *>(factory.createMainWindow(QStringLiteral("videoPush"), display.screen(), {})));
    const auto on = [](const char *message, const QByteArray &data = QByteArray()) {
        return [message, data] { deliver(VodChannel::PushApplication, message, data); };
    };
    const auto key = [](int k) { return [k] { keyToPlayer(k); }; };

    RUN_CHECKED({{"start", on(StartPush)}, {"time", on(CurrentTime, messageData(3.0f))}});
    QTRY_VERIFY(push->playScreenReady);
    if (depth >= Full) {
        RUN_CHECKED({{"full screen", key(Key_Video4)}});
        QVERIFY(push->fullScreenView && push->fullScreenView->isVisible());
        QTRY_VERIFY(push->fullScreenView->playScreenReady);
    }
    if (depth == Wide) {
        RUN_CHECKED({{"wide", key(Key_Video4)}});
        QCOMPARE(push->fullScreenView->screenType, WidePushScreen);
    }
    RUN_CHECKED({
        {"volume up", key(Qt::Key_VolumeUp)},
        {"volume down", key(Qt::Key_VolumeDown)},
        {"muted", on(VodSoundMute, messageData(1))},
        {"time", on(CurrentTime, messageData(4.0f))},
        {"overlay gone",
         [&] {
             if (push->fullScreenView && push->fullScreenView->volumeRectTimer)
                 fire(push->fullScreenView->volumeRectTimer);
         }},
        {"call", on(StartCall)},
        {"call over", on(StopCall)},
        {"other screen", on(HideVodFullScreen)},
        {"screen back", on(ShowVodFullScreen)},
        {"paused", on(PauseOKPush)},
        {"server silent", [&] { fire(push->serverWatchdog); }},
        {"stopped", key(Qt::Key_Back)},
    });
}

void tst_ScreenTruth::vodPlayers_data()
{
    pushViews_data();
}

void tst_ScreenTruth::vodPlayers()
{
    QFETCH(int, depth);
    TestDisplay display;
    NoticeWatcher notices;
    env->writeFile(QLatin1String(VodCatalogue::ContentsFile), VodCatalogueFixture::contentsFile({"t0", "t1"}));
    auto browser = std::make_unique<vod>();
    browser->showMaximized();
    // The browser at the titles asks for the set-up of the second.
    deliver(VodChannel::VideoApplication, GetContentsList);
    openRow(*browser, 1);
    QCOMPARE(browser->currentLevel, int(MediaInfoLevel));
    const auto on = [](const char *message, const QByteArray &data = QByteArray()) {
        return [message, data] { deliver(VodChannel::VideoApplication, message, data); };
    };
    const auto key = [](int k, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return [k, modifiers] { keyToPlayer(k, modifiers); };
    };
    // A title of 312.5 s: long enough (207 s or more) that the progress bar
    // draws the exact proportion, which does not change from paint to paint.
    RUN_CHECKED({{"set up", on(SetupOKVod, messageData(qint32(0), qint32(0), qint32(1), 100.0f, 412.5f, 0.0f))},
                {"play", [] { QVERIFY(typeKey(Qt::Key_Context1)); }},
                {"started", on(StartOKVod)},
                {"time 10 s", on(CurrentTime, messageData(10.0f))},
                {"time 60 s", on(CurrentTime, messageData(60.0f))}});
    VodPlaySmallScreenView *player = browser->infoView->playView;
    QVERIFY(player->isVisible());
    QTRY_VERIFY(player->playScreenReady);
    if (depth >= Full) {
        RUN_CHECKED({{"full screen", key(Key_Video4)}, {"time 70 s", on(CurrentTime, messageData(70.0f))}});
        QVERIFY(player->fullScreenView && player->fullScreenView->isVisible());
        QTRY_VERIFY(player->fullScreenView->playScreenReady);
    }
    if (depth == Wide) {
        RUN_CHECKED({{"wide", key(Key_Video4)}});
        QCOMPARE(player->fullScreenView->screenType, WideVodScreen);
    }
    RUN_CHECKED({
        {"time 120 s", on(CurrentTime, messageData(120.0f))},
        {"volume up", key(Qt::Key_VolumeUp)},
        {"overlay gone",
         [&] {
             if (player->fullScreenView && player->fullScreenView->volumeRectTimer)
                 fire(player->fullScreenView->volumeRectTimer);
         }},
        {"muted", on(VodSoundMute, messageData(1))},
        {"pause key", key(Qt::Key_Select, Qt::KeypadModifier)},
        {"paused", on(PauseOKVod, messageData(121.0f))},
        {"resume key", key(Qt::Key_Select, Qt::KeypadModifier)},
        {"resumed", on(ResumedOKVod)},
        {"time 150 s", on(CurrentTime, messageData(150.0f))},
        {"call", on(StartCall)},
        {"call over", on(StopCall)},
        {"resume after the call", key(Qt::Key_Select, Qt::KeypadModifier)},
        {"resumed", on(ResumedOKVod)},
        {"broadcast starts", on(StartVideoPushApp)},
        {"paused for it", on(PauseOKVod, messageData(151.0f))},
        {"broadcast over", on(StopVideoPushApp)},
        {"volume down after the notice", key(Qt::Key_VolumeDown)},
        {"resumed", on(ResumedOKVod)},
        {"time 311 s", on(CurrentTime, messageData(311.9f))},
        {"server paused", on(PauseVodByServer, messageData(312.0f))},
    });
    if (depth != Small)
        return;
    // The player's own stop may cross the video manager's end: a second end
    // finds the player and its page closed and steps back no further.
    RUN_CHECKED({{"ended", on(EndOKVod)}, {"ended again", on(EndOKVod)}});
    QCOMPARE(browser->currentLevel, int(ContentsLevel));
    QTRY_VERIFY(browser->isActiveWindow());
    QCOMPARE(typeKey(Qt::Key_Up), browser->listView);
}

QTEST_MAIN(tst_ScreenTruth)
#include "tst_screentruth.moc"
