#include "vod.h"

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "devicekeys.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "qsoftmenubar.h"
#include "qtopiaipctransport.h"
#include "qwaitwidget.h"
#include "testenvironment.h"
#include "vodcatalogue.h"
#include "vodcataloguefixture.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <limits>
#include <memory>

using namespace VodCatalogueFixture;

#define REACH(w, level)                                                                            \
    do {                                                                                           \
        reach(w, level);                                                                           \
        if (QTest::currentTestFailed())                                                            \
            return;                                                                                \
    } while (false)

class tst_Vod : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void groupListArrives();
    void waitExpires_data();
    void waitExpires();
    void navigate_data();
    void navigate();
    void selectTwiceAtPartLevel();
    void selectNeedsKeypad();
    void keyRoutingInList();
    void rowKeys_data();
    void rowKeys();
    void contentsList();
    void setupOK_data();
    void setupOK();
    void setupOKReplacesPage();
    void setupFail_data();
    void setupFail();
    void playerMessagesLeaveWindow();
    void playTime_data();
    void playTime();

private:
    void writeGroups(const QList<Group> &groups);
    void writeContents(const QList<QByteArray> &titles);
    void reach(vod &w, int level);
    static QStringList rows(const vod &w);

    std::unique_ptr<TestEnvironment> env;
};

namespace {

const QList<Group> groups = {
    Group{"news", {"n0", "n1"}},
    Group{"drama", {"d0", "d1", "d2"}},
    Group{"\xb0\xa1", {"k0"}},
};
const QList<QByteArray> titles = {"t0", "t1", "t2"};
enum Action { Back = -1, Next = -2 };

QString hangulGa()
{
    return QString(QChar(0xAC00));
}

// What the window sent to the video manager since the traffic was cleared.
QStringList sentRequests()
{
    QStringList lines;
    for (const QtopiaIpcMessage &m : sentOn(QLatin1String(VodChannel::VideoManager)))
        lines << m.message + QLatin1Char(' ') + QString::fromLatin1(m.data.toHex(' '));
    return lines;
}

QString request(const char *message, const QByteArray &data = QByteArray())
{
    return QLatin1String(message) + QLatin1Char(' ') + QString::fromLatin1(data.toHex(' '));
}

void notify(const char *message, const QByteArray &data = QByteArray())
{
    deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(message), data);
}

void select(vod &w, int row)
{
    w.listView->setCurrentRow(row);
    pressKey(w.listView, Qt::Key_Select, Qt::KeypadModifier);
}

// Runs the wait pop-up's own expiry, as if its 5000 ms had passed.
void expire(QWaitWidget *wait)
{
    QTimer *expiry = nullptr;
    const QList<QTimer *> timers = wait->findChildren<QTimer *>();
    for (QTimer *t : timers)
        if (t->isActive() && t->interval() == 5000)
            expiry = t;
    QVERIFY2(expiry, "the wait pop-up's expiry is not running");
    QMetaObject::invokeMethod(expiry, "timeout");
}

// Records the keys that reach the window's own key handler.
class KeyProbeVod : public vod
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *e) override
    {
        keys << e->key();
        vod::keyPressEvent(e);
    }
};

}

void tst_Vod::initTestCase()
{
    env = std::make_unique<TestEnvironment>();
}

void tst_Vod::init()
{
    writeGroups(groups);
    writeContents(titles);
    QtopiaIpcTransport::clearTraffic();
}

void tst_Vod::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_Vod::writeGroups(const QList<Group> &g)
{
    env->writeFile(VodCatalogue::GroupFile, groupFile(g));
}

void tst_Vod::writeContents(const QList<QByteArray> &t)
{
    env->writeFile(VodCatalogue::ContentsFile, contentsFile(t));
}

QStringList tst_Vod::rows(const vod &w)
{
    QStringList texts;
    for (int i = 0; i < w.listView->count(); ++i)
        texts << w.listView->item(i)->text();
    return texts;
}

// Walks a shown window to a level the way the user and the video manager do:
// group 1, its part 2, its title 1.
void tst_Vod::reach(vod &w, int level)
{
    w.resize(480, 272);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    notify(VodMessage::GetGroupList);
    QCOMPARE(w.currentLevel, int(GroupLevel));
    if (level >= PartLevel) {
        select(w, 1);
        QCOMPARE(w.currentLevel, int(PartLevel));
    }
    if (level >= ContentsLevel) {
        select(w, 2);
        notify(VodMessage::GetContentsList);
        QCOMPARE(w.currentLevel, int(ContentsLevel));
    }
    if (level >= MediaInfoLevel) {
        select(w, 1);
        QCOMPARE(w.currentLevel, int(MediaInfoLevel));
        QTRY_VERIFY(w.waitWidget->isActiveWindow());
    }
    QtopiaIpcTransport::clearTraffic();
}

void tst_Vod::groupListArrives()
{
    vod w;
    QCOMPARE(sentRequests(), QStringList({request(VodMessage::RequestGroupList)}));
    QCOMPARE(w.waitWidget->text(), QStringLiteral("Getting contents"));
    QVERIFY(w.waitWidget->isVisible());
    w.show();

    notify(VodMessage::GetGroupList);
    QCOMPARE(w.currentLevel, int(GroupLevel));
    // The third name is the EUC-KR bytes B0 A1, one Hangul syllable.
    QCOMPARE(rows(w), QStringList({"news", "drama", hangulGa()}));
    QCOMPARE(w.listView->currentRow(), 0);
    QCOMPARE(w.listView->item(2)->sizeHint(), QSize(480, 42));
    QVERIFY(!w.waitWidget->isVisible());
    QCOMPARE(w.windowTitle(), QStringLiteral("Video Contents;VOD Contents"));
    QCOMPARE(QSoftMenuBar::label(&w, Qt::Key_Select), (QSoftMenuBar::Label{"select", QString()}));
    QCOMPARE(QSoftMenuBar::label(&w, Qt::Key_Context1), (QSoftMenuBar::Label{"none", QString()}));
    QCOMPARE(QSoftMenuBar::label(&w, Qt::Key_Back), (QSoftMenuBar::Label{"back", "Back"}));

    // A second announcement replaces the list rather than adding to it.
    writeGroups({Group{"only", {"o0"}}});
    notify(VodMessage::GetGroupList);
    QCOMPARE(rows(w), QStringList({"only"}));
}

void tst_Vod::waitExpires_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("groupFileMissing");
    QTest::addColumn<bool>("windowStays");
    QTest::addColumn<int>("levelAfter");
    QTest::addColumn<QString>("resultText");

    QTest::newRow("group list never came") << -1 << false << false << int(GroupLevel) << QString();
    // The answer came, so the expiry no longer closes the window.
    QTest::newRow("group file missing") << -1 << true << true << int(GroupLevel) << QString();
    QTest::newRow("contents") << int(PartLevel) << false << true << int(PartLevel)
                              << "Fail to Get List";
    QTest::newRow("media information") << int(MediaInfoLevel) << false << true
                                       << int(ContentsLevel) << QString();
}

void tst_Vod::waitExpires()
{
    QFETCH(int, level);
    QFETCH(bool, groupFileMissing);
    QFETCH(bool, windowStays);
    QFETCH(int, levelAfter);
    QFETCH(QString, resultText);

    if (groupFileMissing)
        env->remove(VodCatalogue::GroupFile);
    vod w;
    if (level < 0) {
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        if (groupFileMissing) {
            QTest::ignoreMessage(QtDebugMsg, QRegularExpression("vodMessageHandle \\d+ stat error$"));
            notify(VodMessage::GetGroupList);
            QCOMPARE(w.listView->count(), 0);
            QVERIFY(w.listStrings.isEmpty());
        }
    } else {
        REACH(w, level);
        if (level == PartLevel) {
            select(w, 0);
            QTRY_VERIFY(w.waitWidget->isActiveWindow());
        }
    }
    QVERIFY(w.waitWidget->isVisible());

    expire(w.waitWidget);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(w.isVisible(), windowStays);
    QCOMPARE(w.currentLevel, levelAfter);
    if (!resultText.isEmpty()) {
        QVERIFY(w.waitWidget->isShowingResult());
        QCOMPARE(w.waitWidget->resultText(), resultText);
    } else if (level == MediaInfoLevel) {
        QVERIFY(!w.waitWidget->isVisible());
    }
}

void tst_Vod::navigate_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("action"); // a row to select, Back or Next
    QTest::addColumn<QStringList>("requests");
    QTest::addColumn<int>("level");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("waitText"); // empty: no pop-up shown
    QTest::addColumn<bool>("open");

    const QStringList parts{"d0", "d1", "d2"};
    const QStringList titles{"t0", "t1", "t2"};
    const QString contents = request(VodMessage::RequestContents, messageData(qint32(1), qint32(2)));
    const QString listTitle = QStringLiteral("Video Contents;VOD List");
    const QString titleTitle = QStringLiteral("Video Contents;VOD Title");
    const QString mediaWait = QStringLiteral("Getting Media Information");

    // Parts come from the loaded catalogue; contents and media information are asked.
    QTest::newRow("group to parts") << int(GroupLevel) << 1 << QStringList() << int(PartLevel) << parts
                                    << listTitle << QString() << true;
    QTest::newRow("part asks contents") << int(PartLevel) << 2 << QStringList{contents} << int(PartLevel)
                                        << parts << listTitle << "Getting List" << true;
    // The 1-based number of the title.
    QTest::newRow("title asks media information")
        << int(ContentsLevel) << 2 << QStringList{request(VodMessage::SetupVod, messageData(qint32(3)))}
        << int(MediaInfoLevel) << titles << titleTitle << mediaWait << true;
    QTest::newRow("nothing lies deeper") << int(MediaInfoLevel) << int(Next) << QStringList()
                                         << int(MediaInfoLevel) << titles << titleTitle << mediaWait << true;
    QTest::newRow("contents back to parts") << int(ContentsLevel) << int(Back) << QStringList()
                                            << int(PartLevel) << parts << listTitle << QString() << true;
    QTest::newRow("parts back to groups, asked again")
        << int(PartLevel) << int(Back) << QStringList{request(VodMessage::RequestGroupList)}
        << int(GroupLevel) << QStringList() << "Video Contents;VOD Contents" << "Getting contents" << true;
    QTest::newRow("groups back closes") << int(GroupLevel) << int(Back) << QStringList() << int(GroupLevel)
                                        << QStringList({"news", "drama", hangulGa()})
                                        << "Video Contents;VOD Contents" << QString() << false;
    // The list still shows the titles, but Back asks for them again.
    QTest::newRow("media information back asks contents")
        << int(MediaInfoLevel) << int(Back) << QStringList{contents} << int(MediaInfoLevel) << titles
        << titleTitle << "Getting List" << true;
}

void tst_Vod::navigate()
{
    QFETCH(int, from);
    QFETCH(int, action);
    QFETCH(QStringList, requests);
    QFETCH(int, level);
    QFETCH(QStringList, shown);
    QFETCH(QString, title);
    QFETCH(QString, waitText);
    QFETCH(bool, open);

    vod w;
    REACH(w, from);
    if (action == Back)
        pressKey(w.listView, Qt::Key_Back);
    else if (action == Next)
        QMetaObject::invokeMethod(&w, "setNextView");
    else
        select(w, action);

    QCOMPARE(sentRequests(), requests);
    QCOMPARE(w.currentLevel, level);
    QCOMPARE(rows(w), shown);
    QCOMPARE(w.windowTitle(), title);
    QCOMPARE(w.isVisible(), open);
    QCOMPARE(w.waitWidget->isVisible(), !waitText.isEmpty());
    if (!waitText.isEmpty())
        QCOMPARE(w.waitWidget->text(), waitText);
    if (from == GroupLevel && level == PartLevel)
        QCOMPARE(w.listView->currentRow(), 0);
    if (requests.size() == 1 && requests.first().startsWith(QLatin1String(VodMessage::RequestContents))) {
        // The asked contents arrive, read again from the file.
        writeContents({"fresh"});
        notify(VodMessage::GetContentsList);
        QCOMPARE(w.currentLevel, int(ContentsLevel));
        QCOMPARE(rows(w), QStringList({"fresh"}));
        QCOMPARE(w.windowTitle(), QStringLiteral("Video Contents;VOD Title"));
        QVERIFY(!w.waitWidget->isVisible());
    }
}

void tst_Vod::selectTwiceAtPartLevel()
{
    vod w;
    REACH(w, PartLevel);

    select(w, 1);
    QPointer<QWaitWidget> first = w.waitWidget;
    select(w, 1);
    const QString contents = request(VodMessage::RequestContents, messageData(qint32(1), qint32(1)));
    QCOMPARE(sentRequests(), QStringList({contents, contents}));
    QVERIFY(first.isNull());
    QVERIFY(w.waitWidget && w.waitWidget->isVisible());
    QCOMPARE(w.currentLevel, int(PartLevel));
}

void tst_Vod::selectNeedsKeypad()
{
    vod w;
    REACH(w, PartLevel);

    // Not from the keypad: swallowed.
    w.listView->setCurrentRow(1);
    pressKey(w.listView, Qt::Key_Select);
    QCOMPARE(sentRequests(), QStringList());

    // The same row pressed on the screen opens it.
    QTest::mousePress(w.listView->viewport(), Qt::LeftButton, {},
                      w.listView->visualItemRect(w.listView->item(1)).center());
    QCOMPARE(sentRequests(), QStringList({request(VodMessage::RequestContents,
                                                  messageData(qint32(1), qint32(1)))}));

    // At the information level Select does nothing, keypad or not.
    notify(VodMessage::GetContentsList);
    select(w, 0);
    QCOMPARE(w.currentLevel, int(MediaInfoLevel));
    QtopiaIpcTransport::clearTraffic();
    pressKey(w.listView, Qt::Key_Select, Qt::KeypadModifier);
    pressKey(&w, Qt::Key_Select, Qt::KeypadModifier);
    QCOMPARE(sentRequests(), QStringList());
    QCOMPARE(w.currentLevel, int(MediaInfoLevel));
}

// The window's keys reach the window's handler, Context2 included, and do not
// move the list; the others go to the list and not to the window.
void tst_Vod::keyRoutingInList()
{
    KeyProbeVod w;
    REACH(w, GroupLevel);
    w.listView->setCurrentRow(1);

    pressKey(w.listView, Qt::Key_Context2);
    pressKey(w.listView, Qt::Key_Context1);
    QCOMPARE(w.keys, QList<int>({Qt::Key_Context2, Qt::Key_Context1}));
    QCOMPARE(w.listView->currentRow(), 1);
    QVERIFY(w.isVisible());

    pressKey(w.listView, Qt::Key_Down);
    QCOMPARE(w.listView->currentRow(), 2);
    QCOMPARE(w.keys.size(), 2);
}

void tst_Vod::rowKeys_data()
{
    QTest::addColumn<int>("groupCount");
    QTest::addColumn<int>("topRow");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("opened"); // -1: none

    QTest::newRow("three rows, fifth key") << 3 << 0 << int(Key_Video4) << -1;
    QTest::newRow("row 7 on top, fifth key") << 20 << 7 << int(Key_Video4) << 11;
}

void tst_Vod::rowKeys()
{
    QFETCH(int, groupCount);
    QFETCH(int, topRow);
    QFETCH(int, key);
    QFETCH(int, opened);

    QList<Group> many;
    for (int g = 0; g < groupCount; ++g)
        many << Group{"group " + QByteArray::number(g), {"part of " + QByteArray::number(g)}};
    writeGroups(many);

    vod w;
    REACH(w, GroupLevel);
    w.listView->scrollToItem(w.listView->item(topRow), QAbstractItemView::PositionAtTop);
    QCOMPARE(w.listView->indexAt(QPoint(0, 0)).row(), topRow);

    pressKey(w.listView, key);
    if (opened < 0) {
        QCOMPARE(w.currentLevel, int(GroupLevel));
        QCOMPARE(w.listView->count(), groupCount);
    } else {
        QCOMPARE(w.currentLevel, int(PartLevel));
        QCOMPARE(w.groupRow, opened);
        QCOMPARE(rows(w), QStringList({QStringLiteral("part of %1").arg(opened)}));
    }
    QCOMPARE(sentRequests(), QStringList());
}

void tst_Vod::contentsList()
{
    vod w;
    REACH(w, PartLevel);

    // EUC-KR titles are decoded for the list only.
    writeContents({QByteArray("\xb0\xa1"), "plain"});
    select(w, 0);
    notify(VodMessage::GetContentsList);
    QCOMPARE(rows(w), QStringList({hangulGa(), "plain"}));
    QCOMPARE(w.listStrings, QStringList({QString::fromLatin1("\xb0\xa1"), "plain"}));

    // A missing file: the list is emptied, the level and the pop-up stay.
    pressKey(w.listView, Qt::Key_Back);
    select(w, 0);
    env->remove(VodCatalogue::ContentsFile);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("vodMessageHandle \\d+ stat error$"));
    notify(VodMessage::GetContentsList);
    QCOMPARE(w.listView->count(), 0);
    QCOMPARE(w.currentLevel, int(PartLevel));
    QVERIFY(w.waitWidget->isVisible());
}

void tst_Vod::setupOK_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("contentRow");
    QTest::addColumn<QTime>("playTime");
    QTest::addColumn<QString>("title");

    auto setup = [](float a, float b) {
        return messageData(qint32(1), qint32(2), qint32(3), a, b, 99.0f);
    };
    QTest::newRow("1:02:03.500") << setup(10.0f, 3733.5f) << 1 << QTime(1, 2, 3, 500) << "t1";
    QTest::newRow("no arguments") << QByteArray() << 1 << QTime(0, 0, 0, 0) << "t1";
    QTest::newRow("a day") << setup(0.0f, 86400.0f) << 1 << QTime() << "t1";
    QTest::newRow("negative") << setup(5.0f, 4.5f) << 1 << QTime() << "t1";
    // The list changed after the request: no title rather than a read outside the list.
    QTest::newRow("title outside the list") << setup(0.0f, 61.0f) << 3 << QTime(0, 1, 1) << QString();
}

void tst_Vod::setupOK()
{
    QFETCH(QByteArray, data);
    QFETCH(int, contentRow);
    QFETCH(QTime, playTime);
    QFETCH(QString, title);

    vod w;
    REACH(w, MediaInfoLevel);
    w.contentRow = contentRow;

    notify(VodMessage::SetupOKVod, data);
    QVERIFY(w.infoView);
    QCOMPARE(w.infoView->playTime, playTime);
    QCOMPARE(w.infoView->playTime.isValid(), playTime.isValid());
    QCOMPARE(w.infoView->title, title);
    QCOMPARE(w.infoView->owner, &w);
    QVERIFY(!w.infoView->parentWidget());
    QCOMPARE(w.currentLevel, int(MediaInfoLevel));
}

void tst_Vod::setupOKReplacesPage()
{
    vod w;
    REACH(w, MediaInfoLevel);

    notify(VodMessage::SetupOKVod);
    QPointer<MVodInfoView> first = w.infoView.data();
    QVERIFY(first);
    notify(VodMessage::SetupOKVod);
    QVERIFY(first.isNull());
    QVERIFY(w.infoView);

    // Asking for media information again drops the page as well.
    QPointer<MVodInfoView> second = w.infoView.data();
    w.currentLevel = ContentsLevel;
    QVERIFY(w.changeView(MediaInfoLevel));
    QVERIFY(second.isNull());
    QVERIFY(!w.infoView);
}

void tst_Vod::setupFail_data()
{
    QTest::addColumn<bool>("waitActive");

    QTest::newRow("wait pop-up active") << true;
    QTest::newRow("another window active") << false;
}

void tst_Vod::setupFail()
{
    QFETCH(bool, waitActive);

    vod w;
    REACH(w, MediaInfoLevel);
    QWidget other;
    if (!waitActive) {
        other.show();
        other.activateWindow();
        QTRY_VERIFY(other.isActiveWindow());
    }

    notify(VodMessage::SetupFailVod, messageData(qint32(4)));
    QCOMPARE(w.currentLevel, int(waitActive ? ContentsLevel : MediaInfoLevel));
    QCOMPARE(w.waitWidget->isShowingResult(), waitActive);
    if (waitActive) {
        QCOMPARE(w.waitWidget->resultText(), QStringLiteral("Can not be played"));
        // Its expiry no longer reaches closeInfoWithTimeOut(), which would
        // hide the result at once.
        emit w.waitWidget->timeOut();
    }
    QVERIFY(w.waitWidget->isVisible());
    QCOMPARE(sentRequests(), QStringList());
}

// Messages for the player change nothing in the window.
void tst_Vod::playerMessagesLeaveWindow()
{
    vod w;
    REACH(w, ContentsLevel);
    const QStringList before = rows(w);
    const QString title = w.windowTitle();

    const char *messages[] = {VodMessage::EndOKVod,           VodMessage::StartOKVod,
                              VodMessage::HideVodFullScreen,  VodMessage::ShowVodFullScreen,
                              VodMessage::StartVideoPushApp,  VodMessage::HangUpBySmallScreen,
                              VodMessage::Error,              "getgrouplist()",
                              "getContentsList( )"};
    for (const char *message : messages)
        notify(message, messageData(qint32(1)));

    QCOMPARE(w.currentLevel, int(ContentsLevel));
    QCOMPARE(rows(w), before);
    QCOMPARE(w.windowTitle(), title);
    QVERIFY(!w.infoView);
    QCOMPARE(sentRequests(), QStringList());
}

void tst_Vod::playTime_data()
{
    QTest::addColumn<float>("start");
    QTest::addColumn<float>("end");
    QTest::addColumn<QList<int>>("parts");

    QTest::newRow("a day") << 0.0f << 86400.0f << QList<int>({24, 0, 0, 0});
    // Truncation toward zero, remainders with the sign of the length.
    QTest::newRow("minus 1.25 s") << 5.0f << 3.75f << QList<int>({0, 0, -1, -250});
    QTest::newRow("minus an hour") << 3600.0f << 0.0f << QList<int>({-1, 0, 0, 0});
    // Beyond int: held at the limit instead of undefined behaviour.
    QTest::newRow("huge") << 0.0f << 1e30f << QList<int>({596523, 14, 7, 647});
    QTest::newRow("not a number") << 0.0f << std::numeric_limits<float>::quiet_NaN() << QList<int>({0, 0, 0, 0});
}

void tst_Vod::playTime()
{
    QFETCH(float, start);
    QFETCH(float, end);
    QFETCH(QList<int>, parts);

    const PlayerLogic::Clock t = vod::playTimeOf(start, end);
    QCOMPARE(QList<int>({t.hours, t.minutes, t.seconds, t.msecs}), parts);
}

QTEST_MAIN(tst_Vod)
#include "tst_vod.moc"
