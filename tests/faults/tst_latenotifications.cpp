// Notifications that arrive for a window that is already closing: repeated end
// notifications, and notifications delivered while a notice's modal loop runs
// (the recorder's hook stands in for the events that loop would process).
#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "push/videopushview.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodcatalogue.h"
#include "vodcataloguefixture.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace VodCatalogueFixture;

namespace {

const QString manager = QLatin1String(VodChannel::VideoManager);
const QString application = QLatin1String(VodChannel::VideoApplication);
const QString push = QLatin1String(VodChannel::PushApplication);

void toVod(const char *message, const QByteArray &data = QByteArray())
{
    deliver(application, QLatin1String(message), data);
}

void toPush(const char *message, const QByteArray &data = QByteArray())
{
    deliver(push, QLatin1String(message), data);
}

QByteArray setupOK()
{
    return messageData(qint32(1), qint32(1), qint32(1), 100.0f, 190.0f, 0.0f);
}

// A browser at its information page, the page's player playing.
struct PlayingBrowser
{
    vod browser;
    QPointer<MVodInfoView> page;
    QPointer<VodPlaySmallScreenView> player;

    bool open()
    {
        browser.show();
        toVod(VodMessage::GetGroupList);
        browser.listView->setCurrentRow(0);
        pressKey(browser.listView, Qt::Key_Select, Qt::KeypadModifier);
        pressKey(browser.listView, Qt::Key_Select, Qt::KeypadModifier);
        toVod(VodMessage::GetContentsList);
        pressKey(browser.listView, Qt::Key_Select, Qt::KeypadModifier);
        toVod(VodMessage::SetupOKVod, setupOK());
        page = browser.infoView;
        if (!page)
            return false;
        player = page->playView;
        pressKey(page, Qt::Key_Context1);
        toVod(VodMessage::StartOKVod);
        flushEvents();
        QtopiaIpcTransport::clearTraffic();
        return browser.currentLevel == MediaInfoLevel && player->screenStatus == VodPlayView::Playing;
    }
};

} // namespace

class tst_LateNotifications : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase()
    {
        env = std::make_unique<TestEnvironment>();
        env->writeFile(VodCatalogue::GroupFile, groupFile({Group{"g0", {"p0"}}}));
        env->writeFile(VodCatalogue::ContentsFile, contentsFile({"t0", "t1"}));
    }
    void init() { QtopiaIpcTransport::clearTraffic(); }
    void cleanup() { QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void endOKVodTwice();
    void endOKPushTwice();
    void notificationDuringVodNotice_data();
    void notificationDuringVodNotice();
    void notificationDuringPushNotice_data();
    void notificationDuringPushNotice();
};

// The second end finds the player and its page closed: the browser steps back
// one level only, and nothing is asked of the video manager.
void tst_LateNotifications::endOKVodTwice()
{
    PlayingBrowser rig;
    QVERIFY(rig.open());
    QSignalSpy stopped(rig.player.data(), &VodPlayView::notifyStopPlay);

    toVod(VodMessage::EndOKVod);
    QCOMPARE(rig.browser.currentLevel, int(ContentsLevel));
    QVERIFY(!rig.player->isVisible());
    QVERIFY(!rig.page->isVisible());
    toVod(VodMessage::EndOKVod);
    flushEvents();
    QCOMPARE(rig.browser.currentLevel, int(ContentsLevel));
    QVERIFY(rig.player);
    QCOMPARE(rig.player->screenStatus, VodPlayView::Stopped);
    QCOMPARE(signaturesOn(manager), QStringList());

    // The browser still walks on from the contents it shows.
    rig.browser.listView->setCurrentRow(1);
    pressKey(rig.browser.listView, Qt::Key_Select, Qt::KeypadModifier);
    QCOMPARE(sentOn(manager, QLatin1String(VodMessage::SetupVod)).size(), 1);
    QCOMPARE(sentOn(manager, QLatin1String(VodMessage::SetupVod)).at(0).data, messageData(qint32(2)));
}

// The broadcast ends twice: each end is answered, the view closes once and
// stays closed.
void tst_LateNotifications::endOKPushTwice()
{
    VideoPushView view(nullptr, Qt::WindowFlags());
    toPush(VodMessage::StartPush);
    QCOMPARE(view.screenStatus, VodPlayView::Playing);
    QtopiaIpcTransport::clearTraffic();

    toPush(VodMessage::EndOKPush);
    QVERIFY(!view.isVisible());
    toPush(VodMessage::EndOKPush);
    flushEvents();
    QVERIFY(!view.isVisible());
    QCOMPARE(signaturesOn(manager), QStringList({QLatin1String(VodMessage::StopPush),
                                                 QLatin1String(VodMessage::StopPush)}));
    QCOMPARE(sentOn(application, QLatin1String(VodMessage::ShowVodFullScreen)).size(), 1);
}

void tst_LateNotifications::notificationDuringVodNotice_data()
{
    QTest::addColumn<QString>("notice");
    QTest::addColumn<QByteArray>("during");
    QTest::addColumn<QStringList>("requests");
    QTest::addColumn<bool>("playerKept");

    // The content ends while "Video will be resumed" is up: nothing to resume.
    QTest::newRow("end during resume notice") << "resume" << QByteArray(VodMessage::EndOKVod)
                                              << QStringList() << true;
    // Another title's page replaces this one, player and all, during the notice.
    QTest::newRow("new page during resume notice")
        << "resume" << QByteArray(VodMessage::SetupOKVod) << QStringList() << false;
    // The content ends while the server notice is up: nothing left to stop.
    QTest::newRow("end during server notice") << "server" << QByteArray(VodMessage::EndOKVod)
                                              << QStringList() << true;
    QTest::newRow("new page during server notice")
        << "server" << QByteArray(VodMessage::SetupOKVod) << QStringList() << false;
    // A time report changes nothing: the server notice still stops the content.
    QTest::newRow("time during server notice")
        << "server" << QByteArray(VodMessage::CurrentTime) << QStringList{VodMessage::StopVod} << true;
}

void tst_LateNotifications::notificationDuringVodNotice()
{
    QFETCH(QString, notice);
    QFETCH(QByteArray, during);
    QFETCH(QStringList, requests);
    QFETCH(bool, playerKept);

    PlayingBrowser rig;
    QVERIFY(rig.open());
    int hooked = 0;
    NoticeRecorder recorder([&](const QNoticeDialog::Notice &) {
        if (hooked++)
            return;
        QtopiaIpcTransport::clearTraffic();
        const QByteArray data = during == VodMessage::SetupOKVod    ? setupOK()
                                : during == VodMessage::CurrentTime ? messageData(12.0f)
                                                                    : QByteArray();
        toVod(during.constData(), data);
    });

    if (notice == QLatin1String("resume")) {
        toVod(VodMessage::StartVideoPushApp);
        QCOMPARE(rig.player->screenStatus, VodPlayView::PausedForPush);
        toVod(VodMessage::StopVideoPushApp);
    } else {
        QVERIFY(rig.player->serverWatchdog);
        QMetaObject::invokeMethod(rig.player->serverWatchdog, "timeout");
    }
    flushEvents();
    QCOMPARE(hooked, 1);
    QCOMPARE(bool(rig.player), playerKept);
    QStringList sent = signaturesOn(manager);
    sent.removeAll(QLatin1String(VodMessage::SetupVod));
    QCOMPARE(sent, requests);
    if (rig.player) {
        QCOMPARE(rig.player->screenStatus, VodPlayView::Stopped);
        QVERIFY(!rig.player->isVisible());
        // No watchdog is left to fire at the closed player.
        QVERIFY(!rig.player->serverWatchdog || !rig.player->serverWatchdog->isActive());
    } else {
        // The new page is up, its player ready to play.
        QVERIFY(rig.browser.infoView);
        QCOMPARE(rig.browser.infoView->playView->screenStatus, VodPlayView::Stopped);
    }
}

void tst_LateNotifications::notificationDuringPushNotice_data()
{
    QTest::addColumn<QByteArray>("notice");
    QTest::addColumn<QByteArray>("during");

    // The broadcast ends while the server notice is up.
    QTest::newRow("end during server notice") << QByteArray("server") << QByteArray(VodMessage::EndOKPush);
    // A failed set-up notice, and the broadcast starts meanwhile: the view closes
    // anyway, and no watchdog is left to fire at a closed view.
    QTest::newRow("start during set-up failure")
        << QByteArray("setupFail") << QByteArray(VodMessage::StartPush);
}

void tst_LateNotifications::notificationDuringPushNotice()
{
    QFETCH(QByteArray, notice);
    QFETCH(QByteArray, during);

    VideoPushView view(nullptr, Qt::WindowFlags());
    if (notice == "server")
        toPush(VodMessage::StartPush);
    int hooked = 0;
    NoticeRecorder recorder([&](const QNoticeDialog::Notice &) {
        if (!hooked++)
            toPush(during.constData());
    });
    if (notice == "server")
        QMetaObject::invokeMethod(view.serverWatchdog, "timeout");
    else
        toPush(VodMessage::SetupFailPush, messageData(qint32(3)));
    flushEvents();
    QCOMPARE(hooked, 1);
    QVERIFY(!view.isVisible());
    QVERIFY(!view.serverWatchdog || !view.serverWatchdog->isActive());
}

QTEST_MAIN(tst_LateNotifications)
#include "tst_latenotifications.moc"
