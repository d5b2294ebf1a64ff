// Hostile peers and files: whatever another process sends or leaves in the
// device's folders, and however much of it, the module neither crashes nor
// hangs nor grows without bound, and the user always has a way out. Notices are the real dialog with
// its own modal loop.

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "devicekeys.h"
#include "messaging/messagecatalogue.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "noticewatcher.h"
#include "player/playscreen.h"
#include "push/videopushfullview.h"
#include "push/videopushview.h"
#include "qwaitwidget.h"
#include "testdisplay.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodcatalogue.h"
#include "vodcataloguefixture.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <memory>

using namespace VodCatalogueFixture;
using namespace VodMessage;

namespace {

const QString application = QLatin1String(VodChannel::VideoApplication);
const QString push = QLatin1String(VodChannel::PushApplication);

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

class tst_Hostile : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

    // The browser with a playing title's page and player.
    struct Playing
    {
        std::unique_ptr<vod> browser;
        QPointer<VodPlaySmallScreenView> player;
    };
    void playTitle(Playing &p);

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init()
    {
        QtopiaIpcTransport::clearTraffic();
        for (const char *file : {VodCatalogue::GroupFile, VodCatalogue::ContentsFile, "/tmp/status/PhoneStatus.conf"})
            env->remove(QLatin1String(file));
    }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void notificationUnderANotice_data();
    void notificationUnderANotice();
    void noticesDoNotNest_data();
    void noticesDoNotNest();
    void fifoInPlaceOfAFile_data();
    void fifoInPlaceOfAFile();
    void catalogueCostsStayLinear_data();
    void catalogueCostsStayLinear();
    void unchangedCatalogueIsNotReadAgain();
    void handedBackViewStaysClosed_data();
    void handedBackViewStaysClosed();
    void anythingAnytime_data();
    void anythingAnytime();
};

void tst_Hostile::playTitle(Playing &p)
{
    p.browser = std::make_unique<vod>();
    p.browser->showMaximized();
    deliver(application, QLatin1String(SetupOKVod), messageData(qint32(0), qint32(0), qint32(1), 0.0f, 600.0f, 0.0f));
    QVERIFY(p.browser->infoView);
    p.player = p.browser->infoView->playView;
    p.player->playVod();
    p.player->showMaximized();
    deliver(application, QLatin1String(StartOKVod));
    QCOMPARE(p.player->screenStatus, VodPlayView::Playing);
}

void tst_Hostile::notificationUnderANotice_data()
{
    QTest::addColumn<QString>("notice");
    QTest::addColumn<QString>("during");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<bool>("playerKept");

    const QString server = QStringLiteral("server"), resumed = QStringLiteral("resumed");
    // A title set up meanwhile replaces the page and its player: the notice
    // goes with them, and nothing is stopped or resumed for the player gone.
    QTest::newRow("new page, server lost") << server << QString(SetupOKVod) << QStringList() << false;
    QTest::newRow("new page, video will be resumed") << resumed << QString(SetupOKVod) << QStringList() << false;
    // The content ends meanwhile: nothing is left to stop or resume.
    QTest::newRow("end, server lost") << server << QString(EndOKVod) << QStringList() << true;
    QTest::newRow("end, video will be resumed") << resumed << QString(EndOKVod) << QStringList() << true;
    // A time report changes nothing: the lost server's content is stopped.
    QTest::newRow("time, server lost") << server << QString(CurrentTime) << QStringList{"stopVod()"} << true;
}

// A notification that arrives while a player's notice runs its modal loop.
void tst_Hostile::notificationUnderANotice()
{
    QFETCH(QString, notice);
    QFETCH(QString, during);
    QFETCH(QStringList, sent);
    QFETCH(bool, playerKept);
    NoticeWatcher notices(playerKept ? 30 : 5000);
    Playing p;
    playTitle(p);
    if (QTest::currentTestFailed())
        return;

    whileNextNoticeIsUp([during] {
        QtopiaIpcTransport::clearTraffic();
        const QByteArray data = during == QLatin1String(SetupOKVod)
                                    ? messageData(qint32(0), qint32(0), qint32(2), 0.0f, 60.0f, 0.0f)
                                    : during == QLatin1String(CurrentTime) ? messageData(12.0f) : QByteArray();
        deliver(application, during, data);
    });
    QElapsedTimer clock;
    clock.start();
    if (notice == QLatin1String("server")) {
        QMetaObject::invokeMethod(p.player->serverWatchdog, "timeout");
    } else {
        deliver(application, QLatin1String(StartVideoPushApp));
        deliver(application, QLatin1String(StopVideoPushApp));
    }
    flushEvents();
    QCOMPARE(notices.seen.size(), 1);
    QCOMPARE(bool(p.player), playerKept);
    QCOMPARE(sentMessages().filter(QRegularExpression("^(stop|resume|pause)Vod")), sent);
    if (p.player) {
        QCOMPARE(p.player->screenStatus, VodPlayView::Stopped);
        QVERIFY(!p.player->isVisible());
        QVERIFY(!p.player->serverWatchdog || !p.player->serverWatchdog->isActive());
    } else {
        // The notice closed with its player, long before it would time out.
        QVERIFY(clock.elapsed() < 2000 * Slowdown);
        QVERIFY(p.browser->infoView);
        QCOMPARE(p.browser->infoView->playView->screenStatus, VodPlayView::Stopped);
    }
}

void tst_Hostile::noticesDoNotNest_data()
{
    QTest::addColumn<bool>("vodPlayer");
    QTest::newRow("set-up failures to the push view") << false;
    QTest::newRow("push application ends to a held VOD player") << true;
}

// A thousand notices asked for while one is up leave that one notice: no
// nesting without bound, no stack to overflow.
void tst_Hostile::noticesDoNotNest()
{
    QFETCH(bool, vodPlayer);
    NoticeWatcher notices(2000);
    Playing p;
    std::unique_ptr<VideoPushView> view;
    std::function<void()> one;
    if (vodPlayer) {
        playTitle(p);
        if (QTest::currentTestFailed())
            return;
        deliver(application, QLatin1String(StartVideoPushApp));
        one = [] { deliver(application, QLatin1String(StopVideoPushApp)); };
    } else {
        view = std::make_unique<VideoPushView>(nullptr, Qt::WindowFlags());
        one = [] { deliver(push, QLatin1String(SetupFailPush), messageData(7)); };
    }
    int asked = 0;
    whileNextNoticeIsUp([&] {
        for (; asked < 1000; ++asked)
            one();
        // Enough said: the user dismisses the notice.
        QTest::sendKeyEvent(QTest::Click, QApplication::activeModalWidget(), Qt::Key_Select, QString(), {});
    });
    one();
    QCOMPARE(asked, 1000);
    QCOMPARE(notices.deepest, 1);
    QTRY_VERIFY(!QApplication::activeModalWidget());
}

void tst_Hostile::fifoInPlaceOfAFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("group catalogue") << QString::fromLatin1(VodCatalogue::GroupFile);
    QTest::newRow("contents catalogue") << QString::fromLatin1(VodCatalogue::ContentsFile);
    QTest::newRow("phone status") << QStringLiteral("/tmp/status/PhoneStatus.conf");
}

// A FIFO that no one writes blocks whoever opens it: the module never does,
// and goes on answering keys.
void tst_Hostile::fifoInPlaceOfAFile()
{
    QFETCH(QString, file);
    QVERIFY(::mkfifo(QFile::encodeName(env->path(file)).constData(), 0600) == 0);
    TestDisplay display;
    vod browser;
    browser.showMaximized();
    // The announcement comes once the wait pop-up is up, as from another process.
    QTRY_VERIFY(browser.waitWidget->isActiveWindow());
    QElapsedTimer clock;
    clock.start();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("stat error"));
    deliver(application, QLatin1String(file.endsWith("vod_list.bin") ? GetContentsList : GetGroupList));
    if (file.endsWith(".conf")) {
        VodPlaySmallScreenView player(&browser, nullptr);
        player.showMaximized();
        QVERIFY(!PlayScreen::phoneScreenUp());
        settle();
    }
    QVERIFY2(clock.elapsed() < 1000 * Slowdown, qPrintable(QString::number(clock.elapsed())));
    // Nothing could be read: the wait pop-up stays up and takes the keys.
    QTRY_VERIFY(browser.waitWidget->isActiveWindow());
    QObject *receiver = typeKey(Qt::Key_Back);
    QVERIFY(receiver && receiver->isWidgetType());
    QCOMPARE(static_cast<QWidget *>(receiver)->window(), browser.waitWidget);
}

void tst_Hostile::catalogueCostsStayLinear_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<int>("titles");
    QTest::addColumn<QString>("line");
    // 1 MiB without a NUL: every name runs on, but no further than a name may.
    QTest::newRow("no NUL in a MiB") << QByteArray(8, 'A') + int32le(0x7fffffff) + QByteArray((1 << 20) - 12, 'A')
                                     << ((1 << 20) - 16) / 240 << QString();
    // A count of INT_MAX over 100,000 empty titles: the titles the file holds.
    QTest::newRow("huge count") << contentsFile({}, 0x7fffffff) + QByteArray(240 * 100000, '\0') << 100000
                                << QString();
    // Larger than any catalogue: refused.
    QTest::newRow("65 MiB") << QByteArray() << 0 << "size error";
}

void tst_Hostile::catalogueCostsStayLinear()
{
    QFETCH(QByteArray, contents);
    QFETCH(int, titles);
    QFETCH(QString, line);
    const QString path = env->path(QLatin1String(VodCatalogue::ContentsFile));
    if (contents.isEmpty()) {
        // Sparse: the size is there, the disk is not used.
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly) && f.resize(65 << 20));
    } else {
        env->writeFile(QLatin1String(VodCatalogue::ContentsFile), contents);
    }
    contents.clear();
    contents.squeeze();

    vod browser;
    browser.showMaximized();
    settle();
    if (!line.isEmpty())
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(line));
    const qint64 before = residentBytes();
    QElapsedTimer clock;
    clock.start();
    deliver(application, QLatin1String(GetContentsList));
    const qint64 took = clock.elapsed();
    const qint64 grew = residentBytes() - before;
    QCOMPARE(browser.listView->count(), titles);
    // A list of 100,000 rows takes its time, in proportion to its rows.
    QVERIFY2(took < (titles == 100000 ? 1500 : 500) * Slowdown, qPrintable(QStringLiteral("%1 ms").arg(took)));
#ifndef VOD_ASAN
    // Freed memory stays in AddressSanitizer's quarantine: no measure there.
    QVERIFY2(grew < (50 << 20), qPrintable(QStringLiteral("%1 MB").arg(grew >> 20)));
#else
    Q_UNUSED(grew);
#endif
}

// A file announced again without a change (same size, time and inode) is not
// read again: rewritten in place behind the module's back, it still lists what
// was read first.
void tst_Hostile::unchangedCatalogueIsNotReadAgain()
{
    const QString path = env->path(QLatin1String(VodCatalogue::ContentsFile));
    env->writeFile(QLatin1String(VodCatalogue::ContentsFile), contentsFile({"one", "two"}));
    vod browser;
    deliver(application, QLatin1String(GetContentsList));
    QCOMPARE(browser.listView->count(), 2);

    struct stat info;
    QVERIFY(::stat(QFile::encodeName(path).constData(), &info) == 0);
    QFile f(path);
    QVERIFY(f.open(QIODevice::ReadWrite));
    f.seek(16);
    f.write("uno");
    f.close();
    const timespec times[2] = {info.st_atim, info.st_mtim};
    QVERIFY(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0) == 0);
    deliver(application, QLatin1String(GetContentsList));
    QCOMPARE(browser.listView->item(0)->text(), QStringLiteral("one"));

    // A real change is read.
    env->writeFile(QLatin1String(VodCatalogue::ContentsFile), contentsFile({"uno", "dos", "tres"}));
    deliver(application, QLatin1String(GetContentsList));
    QCOMPARE(browser.listView->count(), 3);
}

void tst_Hostile::handedBackViewStaysClosed_data()
{
    QTest::addColumn<QString>("away");
    QTest::addColumn<QString>("back");
    QTest::newRow("call") << QString(StartCall) << QString(StopCall);
    QTest::newRow("other screen") << QString(HideVodFullScreen) << QString(ShowVodFullScreen);
}

// A full-screen view that handed back never comes back with a call's end or
// the screen's return, nor takes the keys.
void tst_Hostile::handedBackViewStaysClosed()
{
    QFETCH(QString, away);
    QFETCH(QString, back);
    TestDisplay display;
    VideoPushView view(nullptr, Qt::WindowFlags());
    deliver(push, QLatin1String(StartPush));
    QTRY_VERIFY(view.playScreenReady && view.isActiveWindow());
    QVERIFY(typeKey(Key_Video4));
    QTRY_VERIFY(view.fullScreenView->playScreenReady && view.fullScreenView->isActiveWindow());
    typeKey(Key_Video4);
    typeKey(Key_Video4);
    QVERIFY(!view.fullScreenView->isVisible());

    deliver(push, away);
    deliver(push, back);
    QVERIFY(!view.fullScreenView->isVisible());
    QTRY_VERIFY(view.isActiveWindow());
    QCOMPARE(typeKey(Qt::Key_VolumeUp), &view);
}

void tst_Hostile::anythingAnytime_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed : {1u, 7u, 20261123u, 0xdeadbeefu})
        QTest::addRow("seed %u", seed) << seed;
}

// 10,000 random notifications of both notification channels, any arguments,
// to the browser with a playing title and to the push viewer, each delivered
// from the event loop as the transport does, so that many arrive while a
// notice is up, and the windows they would close or replace go meanwhile.
// Nothing may crash (the sanitizer build looks), and the notices stay one per
// window at the most.
void tst_Hostile::anythingAnytime()
{
    QFETCH(quint32, seed);
    NoticeWatcher notices(1);
    Playing rig;
    playTitle(rig);
    if (QTest::currentTestFailed())
        return;
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
    QVERIFY(notices.deepest <= 2);
    // What the windows sent on their way out reaches nobody later.
    delete push.data();
    flushEvents();
}

QTEST_MAIN(tst_Hostile)
#include "tst_hostile.moc"
