// What a time report costs on its way from the channel to the player that
// shows it, what it repaints, and what a full paint of each window costs.

#include "entry/applicationimpl.h"
#include "devicekeys.h"
#include "messaging/messagedata.h"
#include "browser/mvodinfoview.h"
#include "qtopiachannel.h"
#include "testenvironment.h"
#include "push/videopushfullview.h"
#include "push/videopushview.h"
#include "vod.h"
#include "messaging/vodmessages.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QtTest>

#include <memory>

#ifdef VOD_HAVE_CALLGRIND
#include <valgrind/callgrind.h>
#endif

namespace {

// Under callgrind (scripts/bench.sh), counts the instructions of exactly
// VOD_CALLGRIND_DELIVERIES runs of `deliver` after a warm-up: the statistics
// are zeroed before them and dumped, under `label`, right after. Nothing else
// runs in between, so the dump holds those runs and the two client requests.
template <typename Deliver>
void countInstructions(const char *label, Deliver deliver)
{
#ifdef VOD_HAVE_CALLGRIND
    const int runs = qEnvironmentVariableIntValue("VOD_CALLGRIND_DELIVERIES");
    if (!RUNNING_ON_VALGRIND || runs <= 0)
        return;
    for (int i = 0; i < 100; ++i)
        deliver();
    CALLGRIND_ZERO_STATS;
    for (int i = 0; i < runs; ++i)
        deliver();
    CALLGRIND_DUMP_STATS_AT(label);
#else
    Q_UNUSED(label);
    Q_UNUSED(deliver);
#endif
}

const QString application = QLatin1String(VodChannel::VideoApplication);

// The browser with the information page of a title open and its small player
// playing, as after the user pressed Play and the video manager confirmed.
struct PlayingBrowser
{
    vod browser;
    QPointer<MVodInfoView> page;
    VodPlaySmallScreenView *player = nullptr;

    PlayingBrowser()
    {
        deliver(application, QLatin1String(VodMessage::SetupOKVod),
                messageData(qint32(0), qint32(0), qint32(1), 100.0f, 3700.0f, 0.0f));
        page = browser.infoView.data();
        QVERIFY(page);
        pressKey(page, Qt::Key_Context1);
        player = page->playView;
        deliver(application, QLatin1String(VodMessage::StartOKVod));
        QCOMPARE(player->screenStatus, VodPlayView::Playing);
        QVERIFY(QTest::qWaitForWindowExposed(player));
        settle();
    }

    VodPlayFullScreenView *openFullScreen()
    {
        player->playScreenReady = true;
        pressKey(player, Key_Video4);
        VodPlayFullScreenView *full = player->fullScreenView;
        if (full && QTest::qWaitForWindowExposed(full))
            settle();
        return full;
    }

    // Lets the single shots of the video window run and every pending paint happen.
    static void settle()
    {
        QTest::qWait(700);
        flushEvents();
    }
};

// Collects the paint events of one window and of the widgets inside it, in the
// window's coordinates.
class PaintRecorder : public QObject
{
public:
    explicit PaintRecorder(QWidget *window) : window(window) { qApp->installEventFilter(this); }
    ~PaintRecorder() override { qApp->removeEventFilter(this); }

    QRegion region;
    int paints = 0;

    static qint64 area(const QRegion &region)
    {
        qint64 pixels = 0;
        for (const QRect &r : region)
            pixels += qint64(r.width()) * r.height();
        return pixels;
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType()) {
            auto *widget = static_cast<QWidget *>(watched);
            if (widget == window || window->isAncestorOf(widget)) {
                region += static_cast<QPaintEvent *>(event)->region().translated(widget->mapTo(window, QPoint()));
                ++paints;
            }
        }
        return false;
    }

private:
    QWidget *window;
};

class Receiver : public QObject
{
public:
    void received(const QString &, const QByteArray &) {}
};

} // namespace

class BenchDispatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        environment = std::make_unique<TestEnvironment>();
        // The figures are about the work, not about the debug output.
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    }

    // Reference: an empty slot reached through the same channel delivery.
    void bareDispatch()
    {
        Receiver receiver;
        QtopiaChannel channel(QStringLiteral("QPE/BenchBare"), &receiver);
        QObject::connect(&channel, &QtopiaChannel::received, &receiver, &Receiver::received);
        const QString message = QLatin1String(VodMessage::CurrentTime);
        const QByteArray data = messageData(61.0f);
        const auto deliver = [&] { QtopiaChannel::deliver(channel.channel(), message, data); };
        countInstructions("bareDispatch", deliver);
        QBENCHMARK {
            deliver();
        }
    }

    // Browser, small player, full player; no event-loop turn, so no paint.
    void timeReportToFullPlayer()
    {
        VodPlayFullScreenView *full = fullScreenRig().player->fullScreenView;
        QVERIFY(full && full->isVisible());
        const QString message = QLatin1String(VodMessage::CurrentTime);
        const QByteArray data = messageData(61.0f);
        const auto deliver = [&] { QtopiaChannel::deliver(application, message, data); };
        countInstructions("timeReportToFullPlayer", deliver);
        QBENCHMARK {
            deliver();
        }
        QCOMPARE(full->flowingTimeText, QStringLiteral("00:01:01"));
    }

    // The same, with the repaint of the read-out that each report causes.
    void timeReportToFullPlayerPainted()
    {
        VodPlayFullScreenView *full = fullScreenRig().player->fullScreenView;
        QVERIFY(full && full->isVisible());
        PaintRecorder recorder(full);
        const QString message = QLatin1String(VodMessage::CurrentTime);
        const QByteArray first = messageData(61.0f);
        const QByteArray second = messageData(62.0f);
        bool odd = false;
        QBENCHMARK {
            QtopiaChannel::deliver(application, message, (odd = !odd) ? first : second);
            QCoreApplication::sendPostedEvents();
        }
        QVERIFY(recorder.paints > 0);
    }

    // What one time report repaints in the small player: only the read-out.
    void timeReportRepaintArea()
    {
        // Every browser hears the set-up: the kept one must not be around.
        rig.reset();
        PlayingBrowser rig;
        rig.player->animationTimer->stop();
        rig.settle();
        PaintRecorder recorder(rig.player);
        deliver(application, QLatin1String(VodMessage::CurrentTime), messageData(61.0f));
        flushEvents();
        // Reported whatever it is: a larger area is the finding, not a failure to
        // measure. The dialog is 480 wide, so 82 of the read-out's 100 columns show.
        if (recorder.region != (QRegion(398, 91, 100, 40) & rig.player->rect()))
            qWarning() << "a time report repainted" << recorder.region;
        QTest::setBenchmarkResult(PaintRecorder::area(recorder.region), QTest::Events);
    }

    // What one animation tick repaints in the small player.
    void animationTickRepaintArea()
    {
        rig.reset();
        PlayingBrowser rig;
        rig.player->animationTimer->stop();
        rig.settle();
        PaintRecorder recorder(rig.player);
        QMetaObject::invokeMethod(rig.player->animationTimer, "timeout");
        flushEvents();
        if (recorder.region != QRegion(QRect(348, 8, 406, 107) & rig.player->rect()))
            qWarning() << "an animation tick repainted" << recorder.region;
        QTest::setBenchmarkResult(PaintRecorder::area(recorder.region), QTest::Events);
    }

    // Reference: filling the whole display once.
    void plainFill()
    {
        QImage image(480, 272, QImage::Format_ARGB32_Premultiplied);
        QBENCHMARK {
            QPainter painter(&image);
            painter.fillRect(image.rect(), QColor(35, 35, 35));
        }
    }

    void fullPaint_data()
    {
        QTest::addColumn<QString>("window");
        // The push view tells a VOD player to give up the display: VOD windows first.
        QTest::newRow("small player") << "small";
        QTest::newRow("full player") << "full";
        QTest::newRow("info page") << "info";
        QTest::newRow("push view") << "push";
        QTest::newRow("push full view") << "pushfull";
    }
    // One whole window rendered on the raster engine into a display-sized image.
    void fullPaint()
    {
        QFETCH(QString, window);
        QWidget *widget = paintedWindow(window);
        QVERIFY(widget);
        QImage image(480, 272, QImage::Format_ARGB32_Premultiplied);
        QBENCHMARK {
            widget->render(&image);
        }
    }

    void cleanupTestCase()
    {
        pushFull.reset();
        push.reset();
        rig.reset();
    }

private:
    // A benchmark function runs several times over; the windows it measures are
    // built at its first run and kept.
    PlayingBrowser &fullScreenRig()
    {
        if (!rig) {
            rig = std::make_unique<PlayingBrowser>();
            rig->openFullScreen();
        }
        return *rig;
    }

    QWidget *paintedWindow(const QString &window)
    {
        if (window == QLatin1String("small") || window == QLatin1String("full") || window == QLatin1String("info")) {
            PlayingBrowser &playing = fullScreenRig();
            return window == QLatin1String("small") ? static_cast<QWidget *>(playing.player)
                 : window == QLatin1String("full")  ? static_cast<QWidget *>(playing.player->fullScreenView)
                                                    : static_cast<QWidget *>(playing.page);
        }
        if (!push) {
            rig.reset();
            push.reset(ApplicationImpl().createMainWindow(QStringLiteral("videoPush"), nullptr, Qt::WindowFlags()));
            pushFull = std::make_unique<VideoPushFullView>(static_cast<VideoPushView *>(push.get()), nullptr);
            PlayingBrowser::settle();
        }
        return window == QLatin1String("push") ? push.get() : static_cast<QWidget *>(pushFull.get());
    }

    std::unique_ptr<TestEnvironment> environment;
    std::unique_ptr<PlayingBrowser> rig;
    std::unique_ptr<QWidget> push;
    std::unique_ptr<QWidget> pushFull;
};

QTEST_MAIN(BenchDispatch)
#include "bench_dispatch.moc"
