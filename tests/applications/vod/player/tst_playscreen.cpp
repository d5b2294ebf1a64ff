#include "player/emptybg.h"
#include "player/playscreen.h"
#include "player/vodplayview.h"
#include "testenvironment.h"

#include <QApplication>
#include <QGridLayout>
#include <QIcon>
#include <QPainter>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(playScreenType)

namespace {

const QColor dark(10, 10, 10);
const QColor tileGrey(46, 46, 46);
const QColor frameGrey(85, 85, 85);
const QRgb transparent = 0;

// A player whose volume overlay can be switched on, and which shows where the
// play screen draws it.
class OverlayPlayer : public VodPlayView
{
public:
    using VodPlayView::VodPlayView;

    void drawVolumeRect(QPainter *painter) override
    {
        ++overlayPaints;
        painter->fillRect(QRect(27, 207, 309, 34), Qt::red);
    }

    int overlayPaints = 0;
};

// A dialog that paints itself red, to see whether a child paints over it.
class RedDialog : public QDialog
{
protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(rect(), Qt::red); }
};

// The widget as it composes onto the display, alpha included.
QImage shot(QWidget *widget)
{
    return widget->grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

// The play screen as it composes over its player: the dialog paints its
// background, and what the play screen clears must come out transparent.
QImage shot(VodPlayView &view)
{
    view.resize(view.size().expandedTo(view.playScreen->size()));
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    view.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    return image.convertToFormat(QImage::Format_ARGB32).copy(view.playScreen->geometry());
}

QColor background(const VodPlayView &view)
{
    return view.palette().color(view.backgroundRole());
}

// `image` drawn over `under`, as the play screen draws it.
QImage composed(const QPixmap &pixmap, const QSize &size, const QColor &under)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(under);
    QPainter p(&image);
    p.drawPixmap(QRect(QPoint(), size), pixmap);
    p.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

QImage playIcon(const QSize &size, const QColor &under)
{
    const QIcon icon(QStringLiteral(":image/vod/vod_player_botton01.png"));
    return composed(icon.pixmap(size, QIcon::Normal, QIcon::Off), size, under);
}

QImage keyIcon(const QString &name, const QColor &under)
{
    const QPixmap pixmap(name);
    return composed(pixmap, pixmap.size(), under);
}

bool uniform(const QImage &image, const QRect &rect, QRgb color)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            if (image.pixel(x, y) != color)
                return false;
    return true;
}

} // namespace

class tst_PlayScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void layout_data();
    void layout();
    void area_data();
    void area();
    void held_data();
    void held();
    void phoneScreen_data();
    void phoneScreen();
    void widePausedWithHints();
    void overlay();
    void emptyBackground();

private:
    std::unique_ptr<TestEnvironment> env;
};

void tst_PlayScreen::initTestCase()
{
    env = std::make_unique<TestEnvironment>();
    // The pictures must be there, or the icon checks below would compare nothing.
    QVERIFY(!QPixmap(QStringLiteral(":image/vod/vod_player_botton01.png")).isNull());
}

void tst_PlayScreen::cleanup()
{
    env->remove(QStringLiteral("/tmp/status/PhoneStatus.conf"));
    QTRY_VERIFY(!PlayScreen::phoneScreenUp());
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_PlayScreen::layout_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("iconRect");
    QTest::addColumn<bool>("framed");
    QTest::addColumn<bool>("icon");

    QTest::newRow("small vod") << SmallVodScreen << QSize(272, 210) << QRect(100, 69, 71, 70) << true << true;
    QTest::newRow("small push") << SmallPushScreen << QSize(272, 210) << QRect(100, 69, 71, 70) << true << true;
    QTest::newRow("full vod") << FullVodScreen << QSize(363, 272) << QRect(135, 107, 71, 70) << false << false;
    QTest::newRow("full push") << FullPushScreen << QSize(363, 272) << QRect(135, 107, 71, 70) << false << false;
    QTest::newRow("wide vod") << WideVodScreen << QSize(480, 272) << QRect(193, 107, 71, 70) << false << false;
}

void tst_PlayScreen::layout()
{
    QFETCH(playScreenType, type);
    QFETCH(QSize, size);
    QFETCH(QRect, iconRect);
    QFETCH(bool, framed);
    QFETCH(bool, icon);

    VodPlayView view(nullptr, VodPlayView::isSmallKind(type) ? type : FullVodScreen, nullptr);
    PlayScreen *screen = view.playScreen;
    if (type == WideVodScreen) {
        screen->showPlayIcon = true;
        screen->setWideLayout(FullVodScreen); // not a wide kind: nothing changes
        QVERIFY(screen->showPlayIcon);
        screen->setWideLayout(type);
        QVERIFY(screen->outerFrameRect.isNull());
    }
    QCOMPARE(screen->geometry(), QRect(QPoint(0, 0), size));
    QCOMPARE(screen->iconRect, iconRect);
    QCOMPARE(screen->showPlayIcon, icon);
    QCOMPARE(screen->screenRect, framed ? QRect(8, 8, 256, 194) : QRect());
}

void tst_PlayScreen::area_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<bool>("ready");
    QTest::addColumn<bool>("focusLost");
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QRgb>("color");

    const QRect video(8, 8, 256, 194);
    QTest::newRow("small open") << SmallVodScreen << true << false << video << transparent;
    QTest::newRow("small waiting") << SmallVodScreen << false << false << video << dark.rgb();
    QTest::newRow("full open") << FullVodScreen << true << false << QRect(0, 0, 363, 272) << transparent;
    QTest::newRow("full, focus lost") << FullVodScreen << true << true << QRect(0, 0, 363, 272) << dark.rgb();
    // The dark rectangle is moved up by the title bar: the bottom rows are the dialog's.
    QTest::newRow("full waiting") << FullVodScreen << false << false << QRect(0, 0, 363, 241) << dark.rgb();
}

void tst_PlayScreen::area()
{
    QFETCH(playScreenType, type);
    QFETCH(bool, ready);
    QFETCH(bool, focusLost);
    QFETCH(QRect, area);
    QFETCH(QRgb, color);

    OverlayPlayer view(nullptr, type, nullptr); // overlay off: it must not be drawn
    view.screenStatus = VodPlayView::Playing;
    view.playScreenReady = ready;
    view.focusLost = focusLost;
    view.playScreen->showPlayIcon = false;

    const QImage image = shot(view);
    QVERIFY(uniform(image, area, color));
    if (type == SmallVodScreen) {
        // Outer frame, then inner frame, on both sides.
        for (const QPoint &p : {QPoint(2, 100), QPoint(269, 100), QPoint(136, 2)})
            QCOMPARE(image.pixelColor(p), tileGrey);
        for (const QPoint &p : {QPoint(6, 100), QPoint(265, 100), QPoint(136, 205)})
            QCOMPARE(image.pixelColor(p), frameGrey);
    } else if (!ready) {
        QVERIFY(uniform(image, QRect(0, 241, 363, 31), background(view).rgb()));
    }
}

void tst_PlayScreen::held_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<VodPlayView::playScreenStatus>("status");
    QTest::addColumn<bool>("showPlayIcon");

    QTest::newRow("interrupted, icon flag clear") << SmallVodScreen << VodPlayView::Interrupted << false;
    QTest::newRow("interrupted, icon flag set") << SmallVodScreen << VodPlayView::Interrupted << true;
    QTest::newRow("paused for push") << SmallVodScreen << VodPlayView::PausedForPush << false;
    QTest::newRow("push, interrupted") << SmallPushScreen << VodPlayView::Interrupted << true;
}

void tst_PlayScreen::held()
{
    QFETCH(playScreenType, type);
    QFETCH(VodPlayView::playScreenStatus, status);
    QFETCH(bool, showPlayIcon);

    VodPlayView view(nullptr, type, nullptr);
    view.screenStatus = status;
    view.playScreenReady = true;
    view.playScreen->showPlayIcon = showPlayIcon;

    const QImage image = shot(view);
    // Held screens show the icon and leave the flag alone.
    QCOMPARE(view.playScreen->showPlayIcon, showPlayIcon);
    const QRect iconRect(100, 69, 71, 70);
    QCOMPARE(image.copy(iconRect), playIcon(iconRect.size(), dark));
    QVERIFY(image.copy(iconRect) != composed(QPixmap(), iconRect.size(), dark));
    QVERIFY(uniform(image, QRect(8, 8, 256, 60), dark.rgb()));
    QVERIFY(uniform(image, QRect(8, 140, 256, 62), dark.rgb()));
    QCOMPARE(image.pixelColor(6, 100), frameGrey);
}

void tst_PlayScreen::phoneScreen_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<VodPlayView::playScreenStatus>("status");
    QTest::addColumn<bool>("darkArea");
    QTest::addColumn<bool>("icon");

    // Each file differs in size from the others: QSettings keeps a read file
    // and rereads it only when its size or time stamp changed, and two rows
    // may write within one time-stamp tick.
    const QByteArray call = "[Phone]\nCallWindowStatus=1\n";
    const QByteArray dialer = "[Phone]\nCallWindowStatus=0\nDialerWindowStatus=2\n";
    const QByteArray down = "[Phone]\nCallWindowStatus=0\nDialerWindowStatus=0\nLine=down\n";
    QTest::newRow("call window") << call << VodPlayView::Stopped << true << false;
    QTest::newRow("dialer window") << dialer << VodPlayView::Paused << true << false;
    QTest::newRow("both down") << down << VodPlayView::Stopped << false << true;
    QTest::newRow("no status file") << QByteArray() << VodPlayView::Paused << false << true;
    QTest::newRow("call window while interrupted") << call << VodPlayView::Interrupted << true << true;
}

void tst_PlayScreen::phoneScreen()
{
    QFETCH(QByteArray, file);
    QFETCH(VodPlayView::playScreenStatus, status);
    QFETCH(bool, darkArea);
    QFETCH(bool, icon);

    if (!file.isEmpty())
        env->writeFile(QStringLiteral("/tmp/status/PhoneStatus.conf"), file);
    else
        env->remove(QStringLiteral("/tmp/status/PhoneStatus.conf"));
    // The status file is read when it changes.
    QTRY_COMPARE(PlayScreen::phoneScreenUp(), file.contains("Status=1") || file.contains("Status=2"));
    VodPlayView view(nullptr, SmallVodScreen, nullptr);
    view.screenStatus = status;
    view.playScreenReady = true;
    view.playScreen->showPlayIcon = true;

    const QImage image = shot(view);
    const QRect iconRect(100, 69, 71, 70);
    const QColor under = darkArea ? dark : background(view);
    QCOMPARE(image.pixelColor(20, 20), under);
    if (icon)
        QCOMPARE(image.copy(iconRect), playIcon(iconRect.size(), under));
    else
        QVERIFY(uniform(image, iconRect, dark.rgb()));
}

void tst_PlayScreen::widePausedWithHints()
{
    VodPlayView view(nullptr, FullVodScreen, nullptr);
    view.screenType = WideVodScreen;
    view.playScreen->setWideLayout(WideVodScreen);
    view.screenStatus = VodPlayView::Paused;
    view.playScreenReady = true;
    view.playScreen->showPlayIcon = true;

    const QImage image = shot(view);
    QCOMPARE(image.size(), QSize(480, 272));
    const QColor under = background(view);
    QVERIFY(under.alpha() == 255 && under != dark && under != tileGrey);
    QCOMPARE(image.copy(QRect(193, 107, 71, 70)), playIcon(QSize(71, 70), under));
    // Two grey hint tiles in the columns 458 to 479, each with its key icon.
    for (const QRect &tile : {QRect(458, 115, 22, 41), QRect(458, 157, 22, 41)}) {
        QCOMPARE(image.pixelColor(tile.topLeft()), tileGrey);
        QCOMPARE(image.pixelColor(tile.bottomRight()), tileGrey);
        QCOMPARE(image.pixelColor(tile.left(), tile.center().y()), tileGrey);
    }
    const QImage play = keyIcon(QStringLiteral(":image/vod/vod_icon_botton02.png"), tileGrey);
    const QImage stop = keyIcon(QStringLiteral(":image/vod/vod_icon_botton05.png"), tileGrey);
    QCOMPARE(image.copy(QRect(QPoint(460, 126), play.size())), play);
    QCOMPARE(image.copy(QRect(QPoint(460, 168), stop.size())), stop);
    // Nothing else is drawn over the dialog.
    QCOMPARE(image.pixelColor(457, 130), under);
    QCOMPARE(image.pixelColor(470, 110), under);
    QCOMPARE(image.pixelColor(20, 20), under);
}

void tst_PlayScreen::overlay()
{
    OverlayPlayer view(nullptr, FullVodScreen, nullptr);
    view.screenStatus = VodPlayView::Playing;
    view.playScreenReady = true;
    view.volumeRectShown = true;

    const QImage image = shot(view);
    QVERIFY(view.overlayPaints > 0);
    QCOMPARE(image.pixelColor(27, 207), QColor(Qt::red));
    QCOMPARE(image.pixelColor(335, 240), QColor(Qt::red));
    QCOMPARE(image.pixel(26, 207), transparent);
    QCOMPARE(image.pixel(362, 0), transparent);

    // A push screen never shows the icon while paused, and clears the flag.
    VodPlayView push(nullptr, SmallPushScreen, nullptr);
    push.screenStatus = VodPlayView::Paused;
    push.playScreenReady = true;
    push.playScreen->showPlayIcon = true;
    QVERIFY(uniform(shot(push), QRect(8, 8, 256, 194), transparent));
    QVERIFY(!push.playScreen->showPlayIcon);
}

void tst_PlayScreen::emptyBackground()
{
    RedDialog dialog;
    auto *layout = new QGridLayout(&dialog);
    auto *background = new EmptyBg(nullptr, Qt::WindowFlags());
    layout->addWidget(background, 0, 0);
    dialog.resize(480, 272);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    // It paints nothing: the dialog's own painting shows through it.
    QVERIFY(!background->geometry().isEmpty());
    QVERIFY(uniform(shot(&dialog), background->geometry(), QColor(Qt::red).rgb()));
}

QTEST_MAIN(tst_PlayScreen)
#include "tst_playscreen.moc"
