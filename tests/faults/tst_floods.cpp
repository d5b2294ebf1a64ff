// Floods of notifications: the players must neither grow (memory, objects,
// timers) nor lose their state however many arrive.
#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "devicekeys.h"
#include "messaging/messagecatalogue.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "noticewatcher.h"
#include "push/videopushview.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodcatalogue.h"
#include "vodcataloguefixture.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QFile>
#include <QPointer>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

#include <malloc.h>
#include <unistd.h>

#include <memory>

using namespace VodCatalogueFixture;

#if defined(__SANITIZE_ADDRESS__)
#define VOD_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VOD_ASAN 1
#endif
#endif

namespace {

const QString application = QLatin1String(VodChannel::VideoApplication);

// What the process holds: memory freed but kept by the allocator is given back first.
qint64 residentBytes()
{
    malloc_trim(0);
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields.at(1).toLongLong() * sysconf(_SC_PAGESIZE) : -1;
}

struct Census
{
    qsizetype objects = 0;
    qsizetype timers = 0;
    qsizetype windows = 0;
    bool operator==(const Census &o) const
    {
        return objects == o.objects && timers == o.timers && windows == o.windows;
    }
};

// Every object and timer below the browser and the player (a sibling window).
Census census(const vod &browser, const QWidget &player)
{
    return Census{browser.findChildren<QObject *>().size() + player.findChildren<QObject *>().size(),
                  browser.findChildren<QTimer *>().size() + player.findChildren<QTimer *>().size(),
                  QApplication::topLevelWidgets().size()};
}

char *toString(const Census &c)
{
    return QTest::toString(QStringLiteral("%1 objects, %2 timers, %3 windows")
                               .arg(c.objects).arg(c.timers).arg(c.windows));
}

QByteArray randomArguments(const MessageEntry &entry, QRandomGenerator &random)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (MessageEntry::ArgType type : entry.arguments) {
        switch (type) {
        case MessageEntry::Int:
            stream << qint32(random.bounded(-2, 20));
            break;
        case MessageEntry::Float:
            stream << float(random.bounded(200.0));
            break;
        case MessageEntry::String:
            stream << QString::number(random.bounded(200.0));
            break;
        case MessageEntry::CString:
            stream << "0.0";
            break;
        }
    }
    return data;
}

} // namespace

// The browser at the information page of a 01:40 title, its player playing.
struct Rig
{
    // Real notices, gone a moment after they came.
    NoticeWatcher notices{1};
    vod browser;
    QPointer<VodPlaySmallScreenView> player;

    bool open()
    {
        browser.show();
        notify(VodMessage::GetGroupList);
        browser.listView->setCurrentRow(0);
        pressKey(browser.listView, Qt::Key_Select, Qt::KeypadModifier);
        pressKey(browser.listView, Qt::Key_Select, Qt::KeypadModifier);
        notify(VodMessage::GetContentsList);
        pressKey(browser.listView, Qt::Key_Select, Qt::KeypadModifier);
        notify(VodMessage::SetupOKVod, messageData(qint32(1), qint32(1), qint32(1), 0.0f, 100.0f, 0.0f));
        if (!browser.infoView)
            return false;
        player = browser.infoView->playView;
        pressKey(browser.infoView, Qt::Key_Context1);
        notify(VodMessage::StartOKVod);
        if (!QTest::qWaitForWindowExposed(player))
            return false;
        flushEvents();
        return player->screenStatus == VodPlayView::Playing;
    }

    void notify(const char *message, const QByteArray &data = QByteArray())
    {
        deliver(application, QLatin1String(message), data);
    }

    // count time reports of 0.5 to 98.5 s (the last of a run of 20,000 is
    // 1.5 s), the transport's queue and the traffic log kept short as a running
    // event loop would.
    void reportTimes(int count)
    {
        for (int i = 0; i < count; ++i) {
            notify(VodMessage::CurrentTime, messageData(float(i % 99) + 0.5f));
            if (i % 1000 == 999)
                settle();
        }
        settle();
    }

    static void settle()
    {
        flushEvents();
        QtopiaIpcTransport::clearTraffic();
    }
};

class tst_Floods : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase()
    {
        env = std::make_unique<TestEnvironment>();
        env->writeFile(VodCatalogue::GroupFile, groupFile({Group{"g0", {"p0"}}}));
        env->writeFile(VodCatalogue::ContentsFile, contentsFile({"t0"}));
    }
    void cleanup() { QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void nothingGrows_data();
    void nothingGrows();
    void anythingAnytime_data();
    void anythingAnytime();
};

void tst_Floods::nothingGrows_data()
{
    QTest::addColumn<bool>("fullScreen");
    QTest::addColumn<bool>("random");
    QTest::newRow("time reports, small player") << false << false;
    QTest::newRow("time reports, full-screen player") << true << false;
    QTest::newRow("random notifications") << false << true;
}

// 20,000 time reports, or 10,000 random valid notifications of the player's
// channel (the ones that end the player or change the browser's level left
// out): nothing grows (memory, objects, timers, windows), and the player
// still follows the reports, or the next start and end.
void tst_Floods::nothingGrows()
{
    QFETCH(bool, fullScreen);
    QFETCH(bool, random);
    Rig rig;
    QVERIFY(rig.open());
    rig.player->setTotalTime(QStringLiteral("00:01:40"));
    if (fullScreen) {
        rig.player->playScreenReady = true;
        pressKey(rig.player, Key_Video4);
        QVERIFY(QTest::qWaitForWindowExposed(rig.player->fullScreenView));
    }
    VodPlayView *target = fullScreen ? static_cast<VodPlayView *>(rig.player->fullScreenView) : rig.player.data();

    QList<MessageEntry> entries;
    const QList<QByteArray> excluded = {VodMessage::EndOKVod,      VodMessage::SetupOKVod,
                                        VodMessage::SetupFailVod,  VodMessage::StartFailVod,
                                        VodMessage::GetGroupList,  VodMessage::GetContentsList,
                                        VodMessage::HangUpBySmallScreen};
    for (const MessageEntry &e : messageCatalogue())
        if (e.channel == application && !excluded.contains(e.signature))
            entries.append(e);
    QRandomGenerator generator(20261123);
    const auto flood = [&](int count) {
        if (!random)
            return rig.reportTimes(count);
        for (int i = 0; i < count; ++i) {
            const MessageEntry &e = entries.at(generator.bounded(int(entries.size())));
            rig.notify(e.signature, randomArguments(e, generator));
            if (i % 500 == 499)
                Rig::settle();
        }
        Rig::settle();
    };

    flood(2000); // warm-up: the timers that come late exist from here on
    const Census before = census(rig.browser, *rig.player);
    const qint64 rss = residentBytes();
    flood(random ? 10000 : 20000);
    QVERIFY(rig.player);
    QCOMPARE(census(rig.browser, *rig.player), before);
#ifndef VOD_ASAN
    // Freed memory stays in AddressSanitizer's quarantine: no measure there.
    QVERIFY2(residentBytes() - rss < 1024 * 1024,
             qPrintable(QStringLiteral("%1 bytes more").arg(residentBytes() - rss)));
#else
    Q_UNUSED(rss);
#endif
    QCOMPARE(rig.browser.currentLevel, int(MediaInfoLevel));
    if (!random) {
        QCOMPARE(target->screenStatus, VodPlayView::Playing);
        QCOMPARE(target->flowingTime(), QStringLiteral("00:00:01"));
        QVERIFY(rig.player->serverWatchdog->isActive());
        QVERIFY(target->isVisible());
        QVERIFY(rig.notices.seen.isEmpty());
        return;
    }
    // Calls counted by the flood are over; the player starts and ends as ever.
    rig.player->callCount = 0;
    rig.notify(VodMessage::StartOKVod);
    QCOMPARE(rig.player->screenStatus, VodPlayView::Playing);
    rig.notify(VodMessage::EndOKVod);
    QCOMPARE(rig.player->screenStatus, VodPlayView::Stopped);
    QVERIFY(!rig.player->isVisible());
    QCOMPARE(rig.browser.currentLevel, int(ContentsLevel));
}

void tst_Floods::anythingAnytime_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed : {1u, 20261123u, 0xdeadbeefu})
        QTest::addRow("seed %u", seed) << seed;
}

// 10,000 random notifications of both notification channels, any arguments,
// to the browser with a playing title and to the push viewer, each delivered
// from the event loop as the transport does, so that many arrive while a
// notice is up, and the windows they would close or replace go meanwhile.
// Nothing may crash (the sanitizer build looks), and the notices stay one per
// window at the most.
void tst_Floods::anythingAnytime()
{
    QFETCH(quint32, seed);
    Rig rig;
    QVERIFY(rig.open());
    QPointer<VideoPushView> push = new VideoPushView(nullptr, Qt::WindowFlags());
    push->setAttribute(Qt::WA_DeleteOnClose);
    QRandomGenerator random(seed);
    const QList<MessageEntry> &catalogue = messageCatalogue();
    int left = 10000;
    for (int i = 0; i < 10000; ++i) {
        const MessageEntry &e = catalogue.at(random.bounded(int(catalogue.size())));
        const QByteArray data = random.bounded(4) ? randomArguments(e, random) : QByteArray(random.bounded(9), '\xff');
        const QString channel = random.bounded(2) ? application : QLatin1String(VodChannel::PushApplication);
        QMetaObject::invokeMethod(
            qApp, [channel, message = QString::fromLatin1(e.signature), data, &left] {
                deliver(channel, message, data);
                --left;
            },
            Qt::QueuedConnection);
    }
    QTRY_COMPARE_WITH_TIMEOUT(left, 0, 60000);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QVERIFY(rig.notices.deepest <= 2);
    // What the windows sent on their way out reaches nobody later.
    delete push.data();
    Rig::settle();
}

QTEST_MAIN(tst_Floods)
#include "tst_floods.moc"
