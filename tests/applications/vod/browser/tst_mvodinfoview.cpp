#include "browser/mvodinfoview.h"

#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "qsoftmenubar.h"
#include "testenvironment.h"
#include "vod.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QFontMetrics>
#include <QStringDecoder>
#include <QTest>

#include <memory>

namespace {

const QString manager = QLatin1String(VodChannel::VideoManager);

// Pixels of a rectangle that are (nearly) white: drawn text.
int whitePixels(const QImage &image, const QRect &r)
{
    int count = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            if (qGray(image.pixel(x, y)) > 200)
                ++count;
    return count;
}

} // namespace

// A page as the browser creates it: no parent, the browser as owner.
struct Rig
{
    vod browser;
    MVodInfoView page;

    explicit Rig(const QString &title = QStringLiteral("Title"), const QTime &time = QTime(1, 2, 3))
        : page(title, time, &browser, nullptr)
    {
        flushEvents();
        QtopiaIpcTransport::clearTraffic();
    }
};

class tst_MVodInfoView : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init() { QtopiaIpcTransport::clearTraffic(); }
    void cleanup() { QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void construction()
    {
        Rig rig;
        const MVodInfoView &page = rig.page;
        QCOMPARE(page.windowTitle(), QStringLiteral("Video Contents;Media Information"));
        QCOMPARE(page.windowIconText(), QStringLiteral("title_icon_vod"));
        QCOMPARE(page.minimumSize(), QSize(480, 272));
        QCOMPARE(page.maximumSize(), QSize(480, 272));

        const QMap<int, QSoftMenuBar::Label> labels = QSoftMenuBar::labels(&page);
        QCOMPARE(labels.value(Qt::Key_Select), (QSoftMenuBar::Label{"select", QString(), QSoftMenuBar::AnyFocus}));
        QCOMPARE(labels.value(Qt::Key_Context1), (QSoftMenuBar::Label{"Play", "Play", QSoftMenuBar::AnyFocus}));
        QCOMPARE(labels.value(Qt::Key_Back), (QSoftMenuBar::Label{"back", "Back", QSoftMenuBar::AnyFocus}));

        // The player exists from the start, hidden, sending through the browser.
        QVERIFY(page.playView);
        QVERIFY(!page.playView->isVisible());
        QCOMPARE(page.playView->requestSender, &rig.browser);
        QCOMPARE(page.playView->parentWidget(), nullptr);
        QCOMPARE(page.playView->screenStatus, VodPlayView::Stopped);
    }

    void playerSharesThePagesParent()
    {
        QWidget parent;
        MVodInfoView page(QStringLiteral("Title"), QTime(0, 1, 0), nullptr, &parent);
        QCOMPARE(page.playView->parentWidget(), &parent);
        QVERIFY(page.playView->parent() != &page);
    }

    void titleIsDecodedFromEucKr()
    {
        if (!QStringDecoder("EUC-KR").isValid())
            QSKIP("no EUC-KR codec in this Qt build");
        const QString raw = QString::fromLatin1("\xc7\xd1\xb1\xb9 \xbf\xb5\xc8\xad");
        MVodInfoView page(raw, QTime(0, 1, 0), nullptr, nullptr);
        QCOMPARE(page.title, QString::fromUtf8("한국 영화"));
    }

    void longTitlesAreElided_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("cut");
        QTest::newRow("short") << "A short title" << false;
        QTest::newRow("wraps but fits") << QString(60, QLatin1Char('x')) << false;
        QTest::newRow("too long") << QString(300, QLatin1Char('W')) << true;
    }
    void longTitlesAreElided()
    {
        QFETCH(QString, title);
        QFETCH(bool, cut);
        MVodInfoView page(title, QTime(0, 1, 0), nullptr, nullptr);
        const QFont font = page.titleFont();
        QCOMPARE(font.pixelSize(), 24);
        const QFontMetrics metrics(font);
        // The rows are chosen by their width at pixel size 24.
        QCOMPARE(metrics.horizontalAdvance(title) > 1346, cut);

        const QString shown = MVodInfoView::elidedTitle(page.title, font);
        if (!cut) {
            QCOMPARE(shown, title);
            return;
        }
        QVERIFY(shown.endsWith(QChar(0x2026)));
        QVERIFY(metrics.horizontalAdvance(shown) <= 1346);
        // Cut at four rectangle widths less 10 pixels, not at one line or so.
        const int oneMore = metrics.horizontalAdvance(QLatin1Char('W'));
        QVERIFY(metrics.horizontalAdvance(shown) > 1346 - oneMore);
    }

    void playTimeText_data()
    {
        QTest::addColumn<QTime>("time");
        QTest::addColumn<QString>("text");
        QTest::newRow("1 h 2 min 3.5 s") << QTime(1, 2, 3, 500) << "01:02:03";
        QTest::newRow("zero") << QTime(0, 0, 0) << "00:00:00";
        QTest::newRow("invalid") << QTime() << QString();
    }
    void playTimeText()
    {
        QFETCH(QTime, time);
        QFETCH(QString, text);
        Rig rig(QStringLiteral("Title"), time);
        QCOMPARE(rig.page.playTimeText(), text);
        QCOMPARE(rig.page.playTimeFont().pixelSize(), 30);

        // Play hands the same text to the player as the content's length.
        pressKey(&rig.page, Qt::Key_Context1);
        QCOMPARE(rig.page.playView->totalTimeText, text);
    }

    void leavingLowersTheBrowsersLevel_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("levelBefore");
        QTest::addColumn<int>("levelAfter");
        QTest::newRow("Back at the media information") << "back" << int(MediaInfoLevel) << int(ContentsLevel);
        QTest::newRow("Back at level 0") << "back" << int(GroupLevel) << int(GroupLevel);
        QTest::newRow("player finished") << "finished" << int(MediaInfoLevel) << int(ContentsLevel);
        QTest::newRow("player finished at level 0") << "finished" << int(GroupLevel) << int(GroupLevel);
        QTest::newRow("content ended") << "endOKVod" << int(MediaInfoLevel) << int(ContentsLevel);
    }
    void leavingLowersTheBrowsersLevel()
    {
        QFETCH(QString, how);
        QFETCH(int, levelBefore);
        QFETCH(int, levelAfter);
        Rig rig;
        rig.page.showMaximized();
        rig.browser.currentLevel = levelBefore;

        if (how == QLatin1String("back"))
            pressKey(&rig.page, Qt::Key_Back);
        else if (how == QLatin1String("finished"))
            emit rig.page.playView->notifyStopPlay();
        else
            rig.page.playView->messageHandle(QLatin1String(VodMessage::EndOKVod), QByteArray());

        QCOMPARE(rig.browser.currentLevel, levelAfter);
        QVERIFY(!rig.page.isVisible());
        // Closed, not deleted: the browser deletes its pages.
        QVERIFY(rig.page.playView);
    }

    void playTwiceReusesThePlayer()
    {
        Rig rig(QStringLiteral("My title"), QTime(1, 2, 3));
        rig.page.showMaximized();
        VodPlaySmallScreenView *player = rig.page.playView;

        pressKey(&rig.page, Qt::Key_Context1);
        QCOMPARE(signaturesOn(manager), QStringList{QStringLiteral("startVod(QString)")});
        QCOMPARE(sentOn(manager).first().data, messageData(QStringLiteral("0")));
        QVERIFY(player->isVisible());
        QCOMPARE(player->contentTitle, QStringLiteral("My title"));
        QCOMPARE(player->totalTime, 3723000u);

        // A hang-up left the player dropping the next notification: Play clears that.
        player->ignoreNextNotification = true;
        player->close();
        pressKey(&rig.page, Qt::Key_Context1);
        QCOMPARE(rig.page.playView, player);
        QCOMPARE(sentOn(manager, QStringLiteral("startVod(QString)")).size(), 2);
        QVERIFY(!player->ignoreNextNotification);
        QVERIFY(player->isVisible());
    }

    void showMaximizedAnnouncesTheShownPage()
    {
        Rig rig;
        QList<bool> visibleAtSignal;
        connect(&rig.page, &MVodInfoView::showFinished, this,
                [&rig, &visibleAtSignal]() { visibleAtSignal << rig.page.isVisible(); });
        rig.page.showMaximized();
        QCOMPARE(visibleAtSignal, QList<bool>{true});
    }

    void paint_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QTime>("time");
        QTest::newRow("title and time") << "Title" << QTime(1, 2, 3);
        QTest::newRow("neither") << QString() << QTime();
    }
    void paint()
    {
        QFETCH(QString, title);
        QFETCH(QTime, time);
        MVodInfoView page(title, time, nullptr, nullptr);
        const QImage image = page.grab().toImage();
        QCOMPARE(image.size(), QSize(480, 272));
        QCOMPARE(image.pixelColor(470, 110), QColor(35, 35, 35));
        QCOMPARE(image.pixelColor(470, 230), QColor(46, 46, 46));
        // White is the title and the time.
        QCOMPARE(whitePixels(image, QRect(110, 4, 339, 40)) > 0, !title.isEmpty());
        QCOMPARE(whitePixels(image, QRect(110, 124, 339, 40)) > 0, time.isValid());
    }
};

QTEST_MAIN(tst_MVodInfoView)
#include "tst_mvodinfoview.moc"
