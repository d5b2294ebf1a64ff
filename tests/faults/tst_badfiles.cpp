// Files written by other processes, changed or broken under the module: the
// catalogues between their announcement and their reading, the phone status
// file, and the marker of a video manager still connecting.
#include "browser/mvodlistview.h"
#include "messaging/vodmessages.h"
#include "player/playscreen.h"
#include "noticewatcher.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodcatalogue.h"
#include "vodcataloguefixture.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QDir>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace VodCatalogueFixture;

namespace {

const QString marker = QStringLiteral("/tmp/status/vod_setup_status");
const QString phoneStatus = QStringLiteral("/tmp/status/PhoneStatus.conf");

QByteArray junk(int size)
{
    QByteArray bytes(size, '\0');
    QRandomGenerator generator(4711);
    for (char &c : bytes)
        c = char(generator.bounded(256));
    return bytes;
}

} // namespace

class tst_BadFiles : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init()
    {
        env->remove(marker);
        env->remove(phoneStatus);
        env->writeFile(VodCatalogue::GroupFile, groupFile({Group{"g0", {"p0"}}, Group{"g1", {"p1"}}}));
        env->writeFile(VodCatalogue::ContentsFile, contentsFile({"t0", "t1"}));
        QtopiaIpcTransport::clearTraffic();
    }
    void cleanup()
    {
        QDir(env->path(VodCatalogue::GroupFile)).removeRecursively();
        QDir(env->path(VodCatalogue::ContentsFile)).removeRecursively();
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void catalogueChanged_data();
    void catalogueChanged();
    void phoneStatusFile_data();
    void phoneStatusFile();
    void markerBetweenResumes_data();
    void markerBetweenResumes();
};

void tst_BadFiles::catalogueChanged_data()
{
    QTest::addColumn<bool>("groups"); // the group file, else the contents file
    QTest::addColumn<QByteArray>("replacement"); // "-": removed, "/": a directory in its place
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<int>("level");
    // Choosing the last row: the parts it lists, or the request it sends.
    QTest::addColumn<QStringList>("chosen");

    const QByteArray two = groupFile({Group{"n0", {"q0", "q1"}}, Group{"n1", {}}});
    const QByteArray three = contentsFile({"u0", "u1", "u2"});
    const int groupLevel = GroupLevel, partLevel = PartLevel, contentsLevel = ContentsLevel;
    // Removed: the group rows on screen stay, but the catalogue behind them is gone.
    QTest::newRow("groups removed") << true << QByteArray("-") << QStringList{"g0", "g1"} << groupLevel
                                    << QStringList();
    QTest::newRow("groups half written") << true << two.left(4 + 1772 + 900) << QStringList{"n0"} << groupLevel
                                         << QStringList{"q0", "q1"};
    // Not a regular file: refused as a missing one is.
    QTest::newRow("groups: a directory") << true << QByteArray("/") << QStringList{"g0", "g1"} << groupLevel
                                         << QStringList();
    // Removed: the contents are emptied, the level stays at the parts.
    QTest::newRow("contents removed") << false << QByteArray("-") << QStringList() << partLevel << QStringList();
    // Title numbers count from 1.
    QTest::newRow("contents half written") << false << three.left(16 + 2 * 240 + 10) << QStringList{"u0", "u1"}
                                           << contentsLevel << QStringList{"setupVod(int) 00000002"};
    QTest::newRow("contents replaced") << false << three << QStringList{"u0", "u1", "u2"} << contentsLevel
                                       << QStringList{"setupVod(int) 00000003"};
    QTest::newRow("contents: a directory") << false << QByteArray("/") << QStringList() << partLevel
                                           << QStringList();
}

// The video manager announces a catalogue, but the file changed before it is
// read: the browser shows what it can read, never more, and what a row
// offers is what the file holds.
void tst_BadFiles::catalogueChanged()
{
    QFETCH(bool, groups);
    QFETCH(QByteArray, replacement);
    QFETCH(QStringList, shown);
    QFETCH(int, level);
    QFETCH(QStringList, chosen);

    vod w;
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    deliver(VodChannel::VideoApplication, VodMessage::GetGroupList);
    if (!groups) {
        openRow(w, 1);
        openRow(w, 0);
    }
    const QString file = QLatin1String(groups ? VodCatalogue::GroupFile : VodCatalogue::ContentsFile);
    env->remove(file);
    if (replacement == "-")
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("vodMessageHandle \\d+ stat error$"));
    else if (replacement == "/")
        QDir().mkpath(env->path(file));
    else
        env->writeFile(file, replacement);
    deliver(VodChannel::VideoApplication, groups ? VodMessage::GetGroupList : VodMessage::GetContentsList);
    QCOMPARE(listRows(w), shown);
    QCOMPARE(w.currentLevel, level);

    QtopiaIpcTransport::clearTraffic();
    openRow(w, shown.size() - 1);
    QCOMPARE(groups ? listRows(w) : sentMessages(), chosen);
}

void tst_BadFiles::phoneStatusFile_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("up");
    QTest::newRow("call screen up (control)") << QByteArray("[Phone]\nCallWindowStatus=1\n") << true;
    QTest::newRow("dialer up, call negative")
        << QByteArray("[Phone]\nCallWindowStatus=-5\nDialerWindowStatus=2\n") << true;
    QTest::newRow("not a number") << QByteArray("[Phone]\nCallWindowStatus=abc\nDialerWindowStatus=\n")
                                  << false;
    QTest::newRow("binary junk") << junk(4096) << false;
    QTest::newRow("huge") << QByteArray(8 << 20, '[') << false;
}

// The phone application's status file: anything that is not a positive integer
// reads as "no phone screen".
void tst_BadFiles::phoneStatusFile()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, up);
    // A file that says the opposite first, so that the row's own is seen read.
    env->writeFile(phoneStatus, up ? QByteArray() : QByteArray("[Phone]\nCallWindowStatus=1\n"));
    QTRY_COMPARE(PlayScreen::phoneScreenUp(), !up);
    env->writeFile(phoneStatus, contents);
    QTRY_COMPARE(PlayScreen::phoneScreenUp(), up);
}

void tst_BadFiles::markerBetweenResumes_data()
{
    QTest::addColumn<bool>("fullScreen");
    QTest::newRow("small player") << false;
    QTest::newRow("full-screen player") << true;
}

// The marker of a video manager still connecting comes and goes between two
// resumes: each resume looks again. While it is there the resume is refused
// with a notice (a full-screen player is hidden while the notice is up), and
// the status stays.
void tst_BadFiles::markerBetweenResumes()
{
    QFETCH(bool, fullScreen);
    vod browser;
    std::unique_ptr<VodPlayView> player;
    if (fullScreen)
        player = std::make_unique<VodPlayFullScreenView>(&browser, nullptr);
    else
        player = std::make_unique<VodPlaySmallScreenView>(&browser, nullptr);
    player->screenStatus = VodPlayView::Paused;
    player->pausedTime = 42.0f;
    player->show();
    QVERIFY(QTest::qWaitForWindowExposed(player.get()));

    NoticeWatcher notices;
    QList<bool> visibleDuringNotice;
    const QList<bool> markerSteps = {true, false, true, true, false};
    int refused = 0;
    for (bool markerThere : markerSteps) {
        if (markerThere)
            env->writeFile(marker, QByteArray());
        else
            env->remove(marker);
        QtopiaIpcTransport::clearTraffic();
        if (markerThere)
            whileNextNoticeIsUp([&] { visibleDuringNotice << player->isVisible(); });
        player->resumeVod();
        if (markerThere) {
            ++refused;
            QCOMPARE(sentMessages(), QStringList());
            QCOMPARE(notices.seen.constLast().text, QStringLiteral("Now connecting server"));
            QCOMPARE(notices.seen.constLast().detail, QStringLiteral("Please try agian"));
        } else {
            QCOMPARE(sentMessages().value(0).section(' ', 0, 0), QLatin1String(VodMessage::ResumeVod));
        }
        QCOMPARE(notices.seen.size(), refused);
        QCOMPARE(player->screenStatus, VodPlayView::Paused);
        QVERIFY(player->isVisible());
    }
    QCOMPARE(visibleDuringNotice, QList<bool>(refused, !fullScreen));
}

QTEST_MAIN(tst_BadFiles)
#include "tst_badfiles.moc"
