#include "vod.h"

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "devicepath.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "qwaitwidget.h"
#include "testenvironment.h"
#include "vodcatalogue.h"
#include "videomanagersimulator.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QFile>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

// The VOD browser and its players against the simulated video manager in the
// same process, over the in-process transport: the catalogue files the
// simulator writes, the numbers it is asked for and the answers it gives must
// fit what the browser reads and sends, key by key.
class tst_VodRoad : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void wholeRoad();
    void secondSetupAndEndOfTitle();
    void setupFailure();
    void playTimeBeyondADay_data();
    void playTimeBeyondADay();
    void groupFileGone();

private:
    void walkToContents(vod &w, int group, int part);
    void setUp(vod &w, int row);

    std::unique_ptr<TestEnvironment> env;
};

namespace {

// One simulated second lasts 10 ms.
constexpr double TimeScale = 0.01;

SimCatalogue catalogue()
{
    SimCatalogue c;
    c.groups = {
        SimGroup{QStringLiteral("News"), {SimPart{QStringLiteral("Today"), {SimTitle{QStringLiteral("Noon"), 60}}}}},
        SimGroup{QStringLiteral("Drama"),
                 {SimPart{QStringLiteral("Season 1"), {SimTitle{QStringLiteral("Pilot"), 40}}},
                  SimPart{QStringLiteral("Season 2"),
                          {SimTitle{QStringLiteral("Opening"), 3},
                           // The simulator answers 100 and 100 + length: 01:02:03 and 500 ms.
                           SimTitle{QStringLiteral("Finale"), 3723.5},
                           SimTitle{QStringLiteral("Marathon"), 86400},
                           SimTitle{QStringLiteral("Longer"), 90000},
                           SimTitle{QStringLiteral("Almost"), 86399.5}}}}},
    };
    return c;
}

SimulatorOptions options()
{
    SimulatorOptions o;
    o.catalogue = catalogue();
    o.timeScale = TimeScale;
    return o;
}

QStringList rows(const vod &w)
{
    QStringList texts;
    for (int i = 0; i < w.listView->count(); ++i)
        texts << w.listView->item(i)->text();
    return texts;
}

void select(vod &w, int row)
{
    w.listView->setCurrentRow(row);
    pressKey(w.listView, Qt::Key_Select, Qt::KeypadModifier);
}

QString request(const char *message, const QByteArray &data = QByteArray())
{
    return QLatin1String(message) + QLatin1Char(' ') + QString::fromLatin1(data.toHex(' '));
}

QStringList sentRequests()
{
    QStringList lines;
    for (const QtopiaIpcMessage &m : sentOn(QLatin1String(VodChannel::VideoManager)))
        lines << m.message + QLatin1Char(' ') + QString::fromLatin1(m.data.toHex(' '));
    return lines;
}

QStringList logged(const QSignalSpy &spy)
{
    QStringList lines;
    for (const QList<QVariant> &args : spy)
        lines << args.at(0).toString();
    return lines;
}

// The simulator's log line for a notification it sent to the browser.
QString answer(const QString &text)
{
    return QLatin1String("-> QPE/VideoApplication ") + text;
}

} // namespace

void tst_VodRoad::initTestCase()
{
    env = std::make_unique<TestEnvironment>();
}

void tst_VodRoad::init()
{
    env->remove(QLatin1String(VodCatalogue::GroupFile));
    env->remove(QLatin1String(VodCatalogue::ContentsFile));
    QtopiaIpcTransport::clearTraffic();
}

void tst_VodRoad::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

// Groups from the simulator's group file, then the parts of a group, then the
// titles the simulator writes for that part.
void tst_VodRoad::walkToContents(vod &w, int group, int part)
{
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QTRY_COMPARE(rows(w), (QStringList{QStringLiteral("News"), QStringLiteral("Drama")}));
    QCOMPARE(w.currentLevel, int(GroupLevel));
    QTRY_VERIFY(!w.waitWidget->isVisible());

    select(w, group);
    QCOMPARE(w.currentLevel, int(PartLevel));
    select(w, part);
    QTRY_COMPARE(w.currentLevel, int(ContentsLevel));
    QCOMPARE(rows(w).size(), catalogue().groups.at(group).parts.at(part).titles.size());
    QTRY_VERIFY(!w.waitWidget->isVisible());
}

// Chooses a title and waits for the information page of the answer.
void tst_VodRoad::setUp(vod &w, int row)
{
    QPointer<MVodInfoView> before = w.infoView;
    select(w, row);
    QCOMPARE(w.currentLevel, int(MediaInfoLevel));
    QTRY_VERIFY(w.infoView && w.infoView != before);
    QTRY_VERIFY(w.infoView->isActiveWindow());
}

void tst_VodRoad::wholeRoad()
{
    VideoManagerSimulator sim(options());
    QSignalSpy simLog(&sim, &VideoManagerSimulator::logLine);
    vod w;

    walkToContents(w, 1, 1);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(rows(w), (QStringList{"Opening", "Finale", "Marathon", "Longer", "Almost"}));

    // Row 1 is title number 2.
    setUp(w, 1);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(logged(simLog).contains(answer("setupOKVod(int,int,int,float,float,float) 1, 1, 2, 100, 3823.5, 0")));
    QPointer<MVodInfoView> page = w.infoView;
    QCOMPARE(page->title, QStringLiteral("Finale"));
    QCOMPARE(page->playTimeText(), QStringLiteral("01:02:03"));
    QCOMPARE(w.playMsecs, 500);
    QVERIFY(!w.waitWidget->isVisible());

    // Play: the player takes the page's title and length and asks to start at 0.
    QPointer<VodPlaySmallScreenView> player = page->playView;
    pressKey(page, Qt::Key_Context1);
    QVERIFY(player->isVisible());
    QCOMPARE(player->totalTimeText, QStringLiteral("01:02:03"));
    QTRY_COMPARE(player->screenStatus, VodPlayView::Playing);
    QVERIFY(logged(simLog).contains(QStringLiteral("<- QPE/VideoManager startVod(QString) \"0\"")));

    // The reports move the elapsed time on.
    QTRY_VERIFY(player->currentMsecs >= 3000);
    QCOMPARE(player->flowingTime().left(7), QStringLiteral("00:00:0"));

    // Back stops the content; its end closes the player and the page.
    QSignalSpy stopped(player.data(), &VodPlayView::notifyStopPlay);
    pressKey(player, Qt::Key_Back);
    QTRY_COMPARE(stopped.count(), 1);
    QVERIFY(logged(simLog).contains(answer("endOKVod()")));
    QVERIFY(!player->isVisible());
    QVERIFY(!page->isVisible());
    QCOMPARE(w.currentLevel, int(ContentsLevel));

    QCOMPARE(sentRequests(), (QStringList{
                                 request(VodMessage::RequestGroupList),
                                 request(VodMessage::RequestContents, messageData(qint32(1), qint32(1))),
                                 request(VodMessage::SetupVod, messageData(qint32(2))),
                                 request(VodMessage::StartVod, messageData(QStringLiteral("0"))),
                                 request(VodMessage::StopVod),
                             }));
}

// A second title set up from the same list replaces the first page and its
// player; a title played to its end closes its player and page by itself.
void tst_VodRoad::secondSetupAndEndOfTitle()
{
    VideoManagerSimulator sim(options());
    vod w;
    walkToContents(w, 1, 1);
    if (QTest::currentTestFailed())
        return;

    setUp(w, 1);
    if (QTest::currentTestFailed())
        return;
    QPointer<MVodInfoView> first = w.infoView;
    QPointer<VodPlaySmallScreenView> firstPlayer = first->playView;
    pressKey(first, Qt::Key_Back);
    QCOMPARE(w.currentLevel, int(ContentsLevel));

    setUp(w, 0);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(first.isNull());
    QVERIFY(firstPlayer.isNull());
    MVodInfoView *page = w.infoView;
    QCOMPARE(page->title, QStringLiteral("Opening"));
    QCOMPARE(page->playTimeText(), QStringLiteral("00:00:03"));

    QPointer<VodPlaySmallScreenView> player = page->playView;
    QSignalSpy stopped(player.data(), &VodPlayView::notifyStopPlay);
    pressKey(page, Qt::Key_Context1);
    QTRY_VERIFY(!page->isVisible());
    QVERIFY(!player->isVisible());
    QTRY_VERIFY(!sim.isReportingVod());
    // The report of the last second makes the player ask to stop while the end
    // is on its way; the answer is a second end of the same content, which must
    // not take the browser back another level.
    QCOMPARE(sentOn(QLatin1String(VodChannel::VideoManager), QLatin1String(VodMessage::StopVod)).size(), 1);
    QTRY_COMPARE(sentOn(QLatin1String(VodChannel::VideoApplication), QLatin1String(VodMessage::EndOKVod)).size(), 2);
    QTRY_COMPARE(stopped.count(), 2);
    QCOMPARE(w.currentLevel, int(ContentsLevel));
}

void tst_VodRoad::setupFailure()
{
    SimulatorOptions o = options();
    o.failSetupVod = 7;
    VideoManagerSimulator sim(o);
    vod w;
    walkToContents(w, 1, 1);
    if (QTest::currentTestFailed())
        return;

    select(w, 1);
    QCOMPARE(w.currentLevel, int(MediaInfoLevel));
    QTRY_VERIFY(w.waitWidget->isShowingResult());
    QCOMPARE(w.waitWidget->resultText(), QStringLiteral("Can not be played"));
    QCOMPARE(w.currentLevel, int(ContentsLevel));
    QVERIFY(!w.infoView);
    QVERIFY(w.isVisible());
}

void tst_VodRoad::playTimeBeyondADay_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("shown");
    QTest::newRow("24 h") << 2 << QString();
    QTest::newRow("25 h") << 3 << QString();
    QTest::newRow("half a second less than 24 h") << 4 << QStringLiteral("23:59:59");
}

void tst_VodRoad::playTimeBeyondADay()
{
    QFETCH(int, row);
    QFETCH(QString, shown);
    VideoManagerSimulator sim(options());
    vod w;
    walkToContents(w, 1, 1);
    if (QTest::currentTestFailed())
        return;
    setUp(w, row);
    if (QTest::currentTestFailed())
        return;

    MVodInfoView *page = w.infoView;
    QCOMPARE(page->playTimeText(), shown);
    pressKey(page, Qt::Key_Context1);
    QCOMPARE(page->playView->totalTimeText, shown);
    QTRY_COMPARE(page->playView->screenStatus, VodPlayView::Playing);
    pressKey(page->playView, Qt::Key_Back);
    QTRY_VERIFY(!page->isVisible());
}

// The video manager announces a group file that is gone by the time the
// browser reads it: nothing is listed and the wait pop-up, whose expiry no
// longer closes the window, goes on its own.
void tst_VodRoad::groupFileGone()
{
    VideoManagerSimulator sim(options());
    connect(&sim, &VideoManagerSimulator::logLine, this, [](const QString &line) {
        if (line.startsWith(QLatin1String("-- wrote")))
            QFile::remove(devicePath(QLatin1String(VodCatalogue::GroupFile)));
    });
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("vodMessageHandle \\d+ stat error$")));
    vod w;
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QTRY_VERIFY(!sentOn(QLatin1String(VodChannel::VideoApplication), QLatin1String(VodMessage::GetGroupList)).isEmpty());
    flushEvents();
    QCOMPARE(w.listView->count(), 0);
    QVERIFY(w.waitWidget->isVisible());

    QTimer *expiry = nullptr;
    const QList<QTimer *> timers = w.waitWidget->findChildren<QTimer *>();
    for (QTimer *t : timers)
        if (t->isActive() && t->interval() == 5000)
            expiry = t;
    QVERIFY2(expiry, "the wait pop-up's expiry is not running");
    QMetaObject::invokeMethod(expiry, "timeout");
    QVERIFY(w.isVisible());
    QCOMPARE(w.listView->count(), 0);
}

QTEST_MAIN(tst_VodRoad)
#include "tst_vodroad.moc"
