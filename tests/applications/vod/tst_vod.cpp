// The VOD browser: its levels, keys and wait pop-ups on the way from the
// groups to a title's information page and back, set-up failures, the
// information page, and the focus procedures with their log lines.

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "devicekeys.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "qwaitwidget.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodcatalogue.h"
#include "vodcataloguefixture.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace VodCatalogueFixture;
using namespace VodMessage;

namespace {

const QString application = QLatin1String(VodChannel::VideoApplication);

void expire(QWaitWidget *wait)
{
    for (QTimer *timer : wait->findChildren<QTimer *>()) {
        if (timer->isActive())
            QMetaObject::invokeMethod(timer, "timeout");
    }
}

} // namespace

class tst_Vod : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase()
    {
        env = std::make_unique<TestEnvironment>();
        // The platform is asked once whether the "VOD" lines are wanted.
        QLoggingCategory::setFilterRules(QStringLiteral("VOD.debug=true"));
    }
    void init()
    {
        // The second group's name is EUC-KR: B0 A1 is one Hangul syllable.
        env->writeFile(QLatin1String(VodCatalogue::GroupFile),
                       groupFile({Group{"g0", {"p00"}}, Group{"\xb0\xa1", {"p10", "p11"}}}));
        env->writeFile(QLatin1String(VodCatalogue::ContentsFile), contentsFile({"t0", "t1", "t2"}));
        QtopiaIpcTransport::clearTraffic();
    }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void walkThere();
    void walkBack();
    void keysInTheList_data();
    void keysInTheList();
    void waitExpires_data();
    void waitExpires();
    void setupFailure_data();
    void setupFailure();
    void informationPage_data();
    void informationPage();
    void focusProcedures();
};

// From the groups to a title's page: the requests, the wait pop-ups and the
// titles of each level.
void tst_Vod::walkThere()
{
    vod browser;
    browser.show();
    QCOMPARE(sentMessages(), QStringList{QStringLiteral("requestGroupList()")});
    QCOMPARE(browser.waitWidget->text(), QStringLiteral("Getting contents"));
    QVERIFY(browser.waitWidget->isVisible());

    deliver(application, GetGroupList);
    QCOMPARE(listRows(browser), (QStringList{QStringLiteral("g0"), QStringLiteral("가")}));
    QCOMPARE(browser.windowTitle(), QStringLiteral("Video Contents;VOD Contents"));
    QVERIFY(!browser.waitWidget->isVisible());
    QCOMPARE(browser.listView->currentRow(), 0);
    QCOMPARE(browser.listView->item(0)->sizeHint(), QSize(480, 42));

    QtopiaIpcTransport::clearTraffic();
    openRow(browser, 1);
    QCOMPARE(browser.currentLevel, int(PartLevel));
    QCOMPARE(listRows(browser), (QStringList{QStringLiteral("p10"), QStringLiteral("p11")}));
    QCOMPARE(browser.windowTitle(), QStringLiteral("Video Contents;VOD List"));
    QVERIFY(sentMessages().isEmpty());

    // Asked twice before the answer: two requests, the second pop-up replaces the first.
    openRow(browser, 1);
    const QPointer<QWaitWidget> first = browser.waitWidget;
    openRow(browser, 1);
    QVERIFY(!first && browser.waitWidget);
    QCOMPARE(sentMessages(), QStringList(2, QStringLiteral("requestContents(int,int) 0000000100000001")));
    QCOMPARE(browser.waitWidget->text(), QStringLiteral("Getting List"));
    QCOMPARE(browser.currentLevel, int(PartLevel));

    deliver(application, GetContentsList);
    QCOMPARE(browser.currentLevel, int(ContentsLevel));
    QCOMPARE(listRows(browser), (QStringList{QStringLiteral("t0"), QStringLiteral("t1"), QStringLiteral("t2")}));
    QCOMPARE(browser.windowTitle(), QStringLiteral("Video Contents;VOD Title"));

    QtopiaIpcTransport::clearTraffic();
    openRow(browser, 2);
    QCOMPARE(browser.currentLevel, int(MediaInfoLevel));
    QCOMPARE(sentMessages(), QStringList{QStringLiteral("setupVod(int) 00000003")});
    QCOMPARE(browser.waitWidget->text(), QStringLiteral("Getting Media Information"));
    QTRY_VERIFY(browser.waitWidget->isActiveWindow());

    // From 10 s to 3733.5 s: 01:02:03 and 500 ms.
    deliver(application, SetupOKVod, messageData(qint32(0), qint32(1), qint32(3), 10.0f, 3733.5f, 0.0f));
    MVodInfoView *page = browser.infoView;
    QVERIFY(page && page->isVisible());
    QCOMPARE(page->title, QStringLiteral("t2"));
    QCOMPARE(page->playTime, QTime(1, 2, 3, 500));
    QVERIFY(!browser.waitWidget->isVisible());
    QCOMPARE(browser.currentLevel, int(MediaInfoLevel));
}

// Back from the page to the groups, and out.
void tst_Vod::walkBack()
{
    vod browser;
    deliver(application, GetGroupList);
    openRow(browser, 1);
    openRow(browser, 0);
    deliver(application, GetContentsList);
    openRow(browser, 0);
    deliver(application, SetupOKVod, messageData(qint32(0), qint32(0), qint32(1), 0.0f, 60.0f, 0.0f));
    QPointer<MVodInfoView> page = browser.infoView.data();
    browser.show();

    QtopiaIpcTransport::clearTraffic();
    pressKey(page, Qt::Key_Back);
    QVERIFY(!page->isVisible());
    QCOMPARE(browser.currentLevel, int(ContentsLevel));
    pressKey(page, Qt::Key_Back); // a second time: the level stays
    QCOMPARE(browser.currentLevel, int(ContentsLevel));

    openRow(browser, 1); // the page goes, the next one comes with the answer
    QVERIFY(!page);
    pressKey(browser.listView, Qt::Key_Back); // at the page's level: the contents again
    QCOMPARE(sentMessages().constLast(), QStringLiteral("requestContents(int,int) 0000000100000000"));
    deliver(application, GetContentsList);
    QtopiaIpcTransport::clearTraffic();
    pressKey(browser.listView, Qt::Key_Back);
    QCOMPARE(browser.currentLevel, int(PartLevel));
    QCOMPARE(listRows(browser), (QStringList{QStringLiteral("p10"), QStringLiteral("p11")}));
    QVERIFY(sentMessages().isEmpty());
    pressKey(browser.listView, Qt::Key_Back);
    QCOMPARE(browser.currentLevel, int(GroupLevel));
    QVERIFY(listRows(browser).isEmpty());
    QCOMPARE(sentMessages(), QStringList{QStringLiteral("requestGroupList()")});
    deliver(application, GetGroupList);
    pressKey(browser.listView, Qt::Key_Back);
    QVERIFY(!browser.isVisible());
}

void tst_Vod::keysInTheList_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("groups");
    QTest::addColumn<bool>("scrolled"); // to the end
    QTest::addColumn<int>("opened"); // the group row opened, -1: none
    QTest::addColumn<int>("current");

    const int keypad = int(Qt::KeypadModifier);
    QTest::newRow("Select from the keypad") << int(Qt::Key_Select) << keypad << 10 << false << 3 << 3;
    QTest::newRow("Select from elsewhere") << int(Qt::Key_Select) << 0 << 10 << false << -1 << 3;
    QTest::newRow("Down moves") << int(Qt::Key_Down) << 0 << 10 << false << -1 << 4;
    QTest::newRow("Video0: the first row shown") << int(Key_Video0) << 0 << 10 << false << 0 << 0;
    QTest::newRow("Video4: the fifth") << int(Key_Video4) << 0 << 10 << false << 4 << 4;
    QTest::newRow("Video0 scrolled") << int(Key_Video0) << 0 << 10 << true << 5 << 5;
    QTest::newRow("Video4 past the last row") << int(Key_Video4) << 0 << 3 << false << -1 << 2;
}

// Keys in the list: Select opens a row only from the keypad, the row keys
// pick the rows the user sees, other keys go to the list.
void tst_Vod::keysInTheList()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(int, groups);
    QFETCH(bool, scrolled);
    QFETCH(int, opened);
    QFETCH(int, current);

    QList<Group> catalogue;
    for (int g = 0; g < groups; ++g)
        catalogue.append(Group{"g" + QByteArray::number(g), {"p"}});
    env->writeFile(QLatin1String(VodCatalogue::GroupFile), groupFile(catalogue));
    vod browser;
    browser.resize(480, 210);
    browser.show();
    QVERIFY(QTest::qWaitForWindowExposed(&browser));
    deliver(application, GetGroupList);
    browser.listView->setCurrentRow(qMin(3, groups - 1));
    if (scrolled)
        browser.listView->scrollToBottom();
    pressKey(browser.listView, key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(browser.currentLevel, opened < 0 ? int(GroupLevel) : int(PartLevel));
    if (opened >= 0)
        QCOMPARE(browser.groupRow, opened);
    else
        QCOMPARE(browser.listView->currentRow(), current);
}

void tst_Vod::waitExpires_data()
{
    QTest::addColumn<int>("level"); // where the browser waits
    QTest::addColumn<bool>("open");
    QTest::addColumn<int>("after");
    QTest::addColumn<QString>("result");
    QTest::newRow("group list: the window closes") << int(GroupLevel) << false << int(GroupLevel) << QString();
    QTest::newRow("contents: the result text") << int(PartLevel) << true << int(PartLevel) << "Fail to Get List";
    QTest::newRow("media information: back to the titles") << int(ContentsLevel) << true << int(ContentsLevel)
                                                           << QString();
}

void tst_Vod::waitExpires()
{
    QFETCH(int, level);
    QFETCH(bool, open);
    QFETCH(int, after);
    QFETCH(QString, result);

    vod browser;
    browser.show();
    if (level > GroupLevel) {
        deliver(application, GetGroupList);
        openRow(browser, 0);
    }
    if (level > PartLevel) {
        openRow(browser, 0);
        deliver(application, GetContentsList);
    }
    QWaitWidget *wait = browser.waitWidget;
    if (level > GroupLevel) {
        openRow(browser, 0);
        wait = browser.waitWidget;
        QTRY_VERIFY(wait->isActiveWindow());
    }
    expire(wait);
    QCOMPARE(browser.isVisible(), open);
    QCOMPARE(browser.currentLevel, after);
    QCOMPARE(wait->isShowingResult(), !result.isEmpty());
    if (!result.isEmpty())
        QCOMPARE(wait->resultText(), result);
}

void tst_Vod::setupFailure_data()
{
    QTest::addColumn<bool>("waiting");
    QTest::newRow("while the pop-up is up") << true;
    QTest::newRow("while another window is up") << false;
}

void tst_Vod::setupFailure()
{
    QFETCH(bool, waiting);
    vod browser;
    browser.show();
    deliver(application, GetGroupList);
    openRow(browser, 0);
    openRow(browser, 0);
    deliver(application, GetContentsList);
    openRow(browser, 1);
    QTRY_VERIFY(browser.waitWidget->isActiveWindow());
    QWidget other;
    if (!waiting) {
        other.show();
        QTRY_VERIFY(other.isActiveWindow());
    }
    deliver(application, SetupFailVod, messageData(5));
    QCOMPARE(browser.waitWidget->isShowingResult(), waiting);
    QCOMPARE(browser.currentLevel, waiting ? int(ContentsLevel) : int(MediaInfoLevel));
    if (waiting) {
        QCOMPARE(browser.waitWidget->resultText(), QStringLiteral("Can not be played"));
        // The pop-up's own expiry no longer lowers the level.
        browser.currentLevel = MediaInfoLevel;
        expire(browser.waitWidget);
        QCOMPARE(browser.currentLevel, int(MediaInfoLevel));
    }
}

void tst_Vod::informationPage_data()
{
    QTest::addColumn<float>("start");
    QTest::addColumn<float>("end");
    QTest::addColumn<QString>("shown");
    QTest::newRow("an hour and more") << 10.0f << 3733.5f << "01:02:03";
    QTest::newRow("a day") << 0.0f << 86400.0f << "";
    QTest::newRow("negative") << 5.0f << 4.9f << "";
    QTest::newRow("no arguments") << -1.0f << -1.0f << "00:00:00";
}

// The page of a set-up title: its play time, a second set-up's page in its
// place, Play starting the player (the same one each time), the player's end
// closing the page.
void tst_Vod::informationPage()
{
    QFETCH(float, start);
    QFETCH(float, end);
    QFETCH(QString, shown);

    vod browser;
    deliver(application, GetGroupList);
    openRow(browser, 0);
    openRow(browser, 0);
    deliver(application, GetContentsList);
    openRow(browser, 1);
    deliver(application, SetupOKVod,
            start < 0 ? QByteArray() : messageData(qint32(0), qint32(0), qint32(2), start, end, 0.0f));
    QPointer<MVodInfoView> first = browser.infoView.data();
    QCOMPARE(first->playTime.toString(QStringLiteral("hh:mm:ss")), shown);
    QCOMPARE(first->windowTitle(), QStringLiteral("Video Contents;Media Information"));
    QCOMPARE(first->size(), QSize(480, 272));

    deliver(application, SetupOKVod, messageData(qint32(0), qint32(0), qint32(2), 0.0f, 100.0f, 0.0f));
    QVERIFY(!first && browser.infoView);
    MVodInfoView *page = browser.infoView;
    VodPlaySmallScreenView *player = page->playView;
    QtopiaIpcTransport::clearTraffic();
    pressKey(page, Qt::Key_Context1);
    pressKey(page, Qt::Key_Context1);
    QCOMPARE(page->playView, player);
    QCOMPARE(sentMessages(), QStringList(2, QStringLiteral("startVod(QString) 000000020030")));
    QVERIFY(player->isVisible());
    QCOMPARE(player->totalTimeText, QStringLiteral("00:01:40"));
    QCOMPARE(player->windowTitle(), QStringLiteral("Video Contents;t1"));
    deliver(application, EndOKVod);
    QVERIFY(!player->isVisible() && !page->isVisible());
    QCOMPARE(browser.currentLevel, int(ContentsLevel));
}

// "clearFocus()" drops the keyboard, "checkFocus()" gives it back to the last
// widget seen worth it, never to one deleted since; each says so in the "VOD" log.
void tst_Vod::focusProcedures()
{
    vod browser;
    browser.show();
    QTRY_VERIFY(browser.listView->hasFocus() || QApplication::activeWindow() == browser.waitWidget);
    deliver(application, GetGroupList);
    QTRY_VERIFY(browser.listView->hasFocus());
    QCOMPARE(browser.focusedWidget.data(), browser.listView);

    deliver(application, ClearFocus);
    QVERIFY(!browser.listView->hasFocus());

    // The one pin of the design's debug texts: where the "VOD" lines come from.
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(R"re(^"[^"]*/vod\.cpp:\d+:vodMessageHandle"  : message\[ "checkFocus\(\)" \] received$)re"));
    deliver(application, CheckFocus);
    QTRY_VERIFY(browser.listView->hasFocus());

    // A page painted without the keyboard is recorded; once deleted, it is forgotten.
    deliver(application, SetupOKVod, messageData(qint32(0), qint32(0), qint32(1), 0.0f, 60.0f, 0.0f));
    QVERIFY(QTest::qWaitForWindowExposed(browser.infoView));
    browser.listView->setFocus();
    browser.infoView->repaint();
    QCOMPARE(browser.focusedWidget.data(), browser.infoView.data());
    delete browser.infoView.data();
    browser.listView->clearFocus();
    QTest::ignoreMessage(QtWarningMsg, "VOD is processing, but Focus widget isn't Founded !!");
    deliver(application, CheckFocus);
    QVERIFY(!browser.listView->hasFocus());
}

QTEST_MAIN(tst_Vod)
#include "tst_vod.moc"
