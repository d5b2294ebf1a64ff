#include "vod.h"

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "qwaitwidget.h"
#include "testenvironment.h"
#include "vodcatalogue.h"
#include "vodcataloguefixture.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QPointer>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace VodCatalogueFixture;

class tst_VodFocus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void paintWithoutFocusRecords();
    void focusInRecords();
    void checkFocus_data();
    void checkFocus();
    void deletedPageIsNeverFocused();

private:
    std::unique_ptr<TestEnvironment> env;
};

namespace {

const char Warning[] = "VOD is processing, but Focus widget isn't Founded !!";

void notify(const char *message, const QByteArray &data = QByteArray())
{
    deliver(QLatin1String(VodChannel::VideoApplication), QLatin1String(message), data);
}

// A "VOD" line: the location header of the function, then the items.
QRegularExpression vodLine(const char *function, const QString &rest)
{
    return QRegularExpression(QStringLiteral("^\"[^\"]*vod\\.cpp:\\d+:%1\" %2$")
                                  .arg(QLatin1String(function), rest));
}

QRegularExpression receivedLine(const char *message)
{
    return vodLine("vodMessageHandle", QStringLiteral(" : message\\[ \"%1\" \\] received")
                                           .arg(QRegularExpression::escape(QLatin1String(message))));
}

// A browser window shown with its group list, the pop-up gone.
void showBrowser(vod &w)
{
    w.resize(480, 272);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    notify(VodMessage::GetGroupList);
    QVERIFY(!w.waitWidget->isVisible());
}

}

void tst_VodFocus::initTestCase()
{
    env = std::make_unique<TestEnvironment>();
    env->writeFile(VodCatalogue::GroupFile, groupFile({Group{"g0", {"p0"}}, Group{"g1", {"p1"}}}));
    env->writeFile(VodCatalogue::ContentsFile, contentsFile({"t0", "t1"}));
    // Before any window asks whether the category is on.
    QLoggingCategory::setFilterRules(QStringLiteral("VOD.debug=true"));
}

void tst_VodFocus::init()
{
    QtopiaIpcTransport::clearTraffic();
}

void tst_VodFocus::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

// A list that never takes the focus is still recorded when it is painted.
void tst_VodFocus::paintWithoutFocusRecords()
{
    vod w;
    w.listView->setFocusPolicy(Qt::NoFocus);
    QTest::ignoreMessage(QtDebugMsg,
                         vodLine("setVodFocusedWidget", QStringLiteral(" : VOD Focus In Widget Class\\[ MVodListView \\]")));
    w.resize(480, 272);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QTRY_COMPARE(w.focusedWidget.data(), static_cast<QWidget *>(w.listView));
    QVERIFY(!w.listView->hasFocus());
}

void tst_VodFocus::focusInRecords()
{
    vod w;
    showBrowser(w);
    QWidget other;
    w.setVodFocusedWidget(&other);

    w.activateWindow();
    QTRY_VERIFY(w.isActiveWindow());
    w.listView->clearFocus();
    QVERIFY(!w.listView->hasFocus());
    QCOMPARE(w.focusedWidget.data(), &other);
    w.listView->setFocus();
    QVERIFY(w.listView->hasFocus());
    QCOMPARE(w.focusedWidget.data(), static_cast<QWidget *>(w.listView));

    // A repaint while it holds the focus records nothing; without it, it does.
    w.setVodFocusedWidget(&other);
    w.listView->viewport()->repaint();
    QCOMPARE(w.focusedWidget.data(), &other);
    w.listView->clearFocus();
    w.listView->viewport()->repaint();
    QCOMPARE(w.focusedWidget.data(), static_cast<QWidget *>(w.listView));
}

void tst_VodFocus::checkFocus_data()
{
    QTest::addColumn<bool>("clearFirst");
    QTest::addColumn<QString>("checkLine");

    QTest::newRow("focus lost: restored")
        << true << " : Find VOD Focus Widget Failed, Set Previous known widget \\[ MVodListView \\]";
    QTest::newRow("focus held: nothing changes") << false << " : Find VOD Focus Widget\\[ MVodListView \\]";
}

void tst_VodFocus::checkFocus()
{
    QFETCH(bool, clearFirst);
    QFETCH(QString, checkLine);

    vod w;
    showBrowser(w);
    w.activateWindow();
    w.listView->setFocus();
    QTRY_VERIFY(w.listView->hasFocus());
    QWidget other;
    if (clearFirst) {
        QTest::ignoreMessage(QtDebugMsg, receivedLine(VodMessage::ClearFocus));
        QTest::ignoreMessage(QtDebugMsg,
                             vodLine("vodMessageHandle",
                                     QStringLiteral(" : Current Focus Widget\\[ MVodListView \\] will be lost Focus !!")));
        notify(VodMessage::ClearFocus);
        QVERIFY(!QApplication::focusWidget());
        QCOMPARE(w.focusedWidget.data(), static_cast<QWidget *>(w.listView));
    } else {
        w.setVodFocusedWidget(&other);
    }

    QTest::ignoreMessage(QtDebugMsg, receivedLine(VodMessage::CheckFocus));
    QTest::ignoreMessage(QtDebugMsg, vodLine("vodMessageHandle", checkLine));
    notify(VodMessage::CheckFocus);
    QTRY_VERIFY(w.listView->hasFocus());
    if (!clearFirst)
        QCOMPARE(w.focusedWidget.data(), &other);
}

// The recorded information page is deleted when the media information is asked
// again: it is never given the focus, and the check warns instead.
void tst_VodFocus::deletedPageIsNeverFocused()
{
    vod w;
    showBrowser(w);
    w.listView->setCurrentRow(0);
    pressKey(w.listView, Qt::Key_Select, Qt::KeypadModifier);
    notify(VodMessage::GetContentsList);
    pressKey(w.listView, Qt::Key_Select, Qt::KeypadModifier);
    QCOMPARE(w.currentLevel, int(MediaInfoLevel));
    notify(VodMessage::SetupOKVod);
    QVERIFY(w.infoView);

    // The page's events reach the window's filter.
    QPointer<MVodInfoView> page = w.infoView.data();
    QFocusEvent focusIn(QEvent::FocusIn);
    QApplication::sendEvent(page, &focusIn);
    QCOMPARE(w.focusedWidget.data(), static_cast<QWidget *>(page.data()));

    w.currentLevel = ContentsLevel;
    w.changeView(MediaInfoLevel);
    QVERIFY(page.isNull());
    QVERIFY(w.focusedWidget.isNull());

    notify(VodMessage::ClearFocus);
    QVERIFY(!QApplication::focusWidget());
    QTest::ignoreMessage(QtWarningMsg, Warning);
    notify(VodMessage::CheckFocus);
    QVERIFY(!QApplication::focusWidget());
}

QTEST_MAIN(tst_VodFocus)
#include "tst_vodfocus.moc"
