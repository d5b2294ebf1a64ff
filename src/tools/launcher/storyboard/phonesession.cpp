#include "phonesession.h"

#include "framehooks.h"
#include "keydelivery.h"
#include "keymap.h"
#include "launcherscreen.h"
#include "screencompositor.h"
#include "storyboard.h"
#include "videofeed.h"
#include "videomanagersimulator.h"

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "entry/applicationimpl.h"
#include "entry/frameexports.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "push/videopushfullview.h"
#include "push/videopushview.h"
#include "qnoticedialog.h"
#include "qtopiaipcenvelope.h"
#include "qwaitwidget.h"
#include "vod.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

namespace {
// Long enough for the module's 500 ms video-area timer after a move.
constexpr int AfterMoveMsecs = 800;
// Simulated seconds the video manager takes to write a catalogue or set a title up.
constexpr int AnswerSeconds = 5;

bool visible(const QWidget *w)
{
    return w && w->isVisible();
}

QString titleOf(const QWidget *w)
{
    return w ? w->windowTitle() : QString();
}

QNoticeDialog *shownNotice()
{
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (auto *notice = qobject_cast<QNoticeDialog *>(w); notice && notice->isVisible())
            return notice;
    }
    return nullptr;
}

void notify(const char *channel, const char *message)
{
    QtopiaIpcEnvelope envelope{QString::fromLatin1(channel), QString::fromLatin1(message)};
}
}

PhoneSession::PhoneSession(QObject *parent)
    : QObject(parent)
    , display(new LauncherScreen)
{
    // The same functions the plugin library exports to the launcher.
    display->setFrameHooks(FrameHooks(&videophone_soft_keys, &videophone_listen));
    display->showFrame();

    // The simulated time passes when a step says so: every run shows the same
    // positions, and the wait pop-up while a catalogue is written.
    SimulatorOptions options;
    options.manualClock = true;
    options.answerDelay = AnswerSeconds;
    simulator = std::make_unique<VideoManagerSimulator>(options);
}

PhoneSession::~PhoneSession()
{
    end();
    delete display;
}

void PhoneSession::end()
{
    delete push;
    delete browser;
    simulator.reset();
}

void PhoneSession::play(int seconds)
{
    // The video manager hears what was sent before each second passes.
    for (int i = 0; i < seconds; ++i) {
        QCoreApplication::sendPostedEvents();
        simulator->advance(1);
    }
    QCoreApplication::sendPostedEvents();
}

void PhoneSession::holdAnimations()
{
    // The play animation runs on the module's own clock: held on its first
    // frame, every run draws the same pictures.
    for (QWidget *w : QApplication::topLevelWidgets()) {
        auto *player = qobject_cast<VodPlayView *>(w);
        if (!player || !player->animationTimer)
            continue;
        player->animationTimer->stop();
        if (player->animationFrame != 1) {
            player->animationFrame = 1;
            player->update();
        }
    }
}

void PhoneSession::press(const QString &keyName)
{
    // Typed as a person would: to whatever has the keyboard now. A key that
    // reaches nobody leaves the step's condition unmet.
    if (!deliverKeyStroke(KeyMap::fromName(keyName)))
        qWarning("storyboard: no window has the keyboard for %s", qPrintable(keyName));
}

void PhoneSession::script(Storyboard *board)
{
    using Step = Storyboard::Step;
    const auto pushFull = [this]() -> VodPlayView * { return push ? push->fullScreenView : nullptr; };
    const auto player = [this]() -> VodPlaySmallScreenView * {
        return browser && browser->infoView ? browser->infoView->playView : nullptr;
    };
    const auto vodFull = [player]() -> VodPlayView * { return player() ? player()->fullScreenView : nullptr; };
    const auto titled = [this](const QString &end) {
        return [this, end] {
            return titleOf(browser).endsWith(end) && !visible(browser ? browser->waitWidget : nullptr);
        };
    };
    const auto add = [this, board](Step step) {
        // Every step holds the animations before it acts and before its picture.
        const auto action = step.action;
        step.action = [this, action] {
            holdAnimations();
            if (action)
                action();
            holdAnimations();
        };
        const auto ready = step.ready;
        step.ready = [this, ready] {
            holdAnimations();
            return !ready || ready();
        };
        board->add(step);
    };
    const auto noticeUp = [] {
        QNoticeDialog *notice = shownNotice();
        return notice && !ScreenCompositor::paintedImage(notice).isNull();
    };
    const auto dismissNotice = [] {
        if (QNoticeDialog *notice = shownNotice())
            notice->accept();
    };

    // The push viewer.
    add(Step{QStringLiteral("01-push-playing"),
             tr("Push broadcast playing in the small player: the picture shows through the cleared video "
                "area; title bar and soft keys of the platform"),
             [this] {
                 ApplicationImpl factory;
                 push = qobject_cast<VideoPushView *>(
                     factory.createMainWindow(QStringLiteral("videoPush"), display, Qt::WindowFlags()));
                 play(7);
             },
             [this] { return push && push->screenStatus == VodPlayView::Playing && push->playScreenReady; },
             AfterMoveMsecs});
    add(Step{QStringLiteral("02-push-full"), tr("Full key (Video4): the 4:3 full-screen push view"),
             [this] {
                 press(QStringLiteral("Video4"));
                 play(8);
             },
             [pushFull] { return visible(pushFull()) && pushFull()->playScreenReady; }, AfterMoveMsecs});
    add(Step{QStringLiteral("03-push-wide"), tr("Video4 again: the wide picture"),
             [this] {
                 press(QStringLiteral("Video4"));
                 play(8);
             },
             nullptr, AfterMoveMsecs});
    add(Step{QStringLiteral("04-push-volume"), tr("Volume up: the volume overlay over the picture"),
             [this] { press(QStringLiteral("VolumeUp")); }, nullptr, 150});
    add(Step{QStringLiteral("05-push-call"),
             tr("A call comes in (\"startcall()\"): the broadcast is held; the player darkens its video area "
                "and shows the play icon"),
             [] { notify(VodChannel::PushApplication, VodMessage::StartCall); }, nullptr, 1200});
    add(Step{QString(), tr("the call ends"),
             [this] {
                 notify(VodChannel::PushApplication, VodMessage::StopCall);
                 play(3);
             },
             nullptr, AfterMoveMsecs});
    add(Step{QStringLiteral("06-push-server-silent"),
             tr("The call is over and the broadcast back; then no time report for 30 seconds (the watchdog is "
                "fired early): the server-silence notice"),
             [this] {
                 // Posted: the notice is modal, and the session goes on inside it.
                 QTimer::singleShot(0, push, [this] {
                     if (push && push->serverWatchdog)
                         QMetaObject::invokeMethod(push->serverWatchdog, "timeout");
                 });
             },
             noticeUp, 200});
    add(Step{QString(), tr("the notice goes; the user stops the broadcast"),
             [this, dismissNotice] {
                 dismissNotice();
                 QTimer::singleShot(0, push, [this] {
                     if (push)
                         push->requestStopUI();
                 });
             },
             [this] { return !visible(push) && !visible(push ? push->fullScreenView : nullptr); }, 0});

    // The VOD browser.
    add(Step{QStringLiteral("07-vod-groups"), tr("VOD browser: the content groups"),
             [this] {
                 delete push;
                 browser = new vod;
                 browser->showMaximized();
                 play(AnswerSeconds);
             },
             [this, titled] { return browser->listView->count() > 0 && titled(QStringLiteral("VOD Contents"))(); },
             300});
    add(Step{QStringLiteral("08-vod-parts"), tr("Select on a group: its parts"),
             [this] { press(QStringLiteral("Select")); }, titled(QStringLiteral("VOD List")), 200});
    add(Step{QStringLiteral("09-vod-wait"),
             tr("Select on a part: the wait pop-up while the video manager writes the title list"),
             [this] { press(QStringLiteral("Select")); },
             [this] {
                 const QWidget *wait = browser->waitWidget;
                 return visible(wait) && !ScreenCompositor::paintedImage(wait).isNull();
             },
             100});
    add(Step{QStringLiteral("10-vod-titles-korean"), tr("The titles of a Korean part"),
             [this] { play(AnswerSeconds); }, titled(QStringLiteral("VOD Title")), 200});
    add(Step{QString(), tr("back to the parts"), [this] { press(QStringLiteral("Back")); },
             titled(QStringLiteral("VOD List")), 100});
    add(Step{QString(), tr("back to the groups"),
             [this] {
                 press(QStringLiteral("Back"));
                 play(AnswerSeconds);
             },
             titled(QStringLiteral("VOD Contents")), 100});
    add(Step{QString(), tr("the parts of the third group"),
             [this] {
                 press(QStringLiteral("Down"));
                 press(QStringLiteral("Down"));
                 press(QStringLiteral("Select"));
             },
             titled(QStringLiteral("VOD List")), 100});
    add(Step{QStringLiteral("11-vod-titles-english"), tr("The titles of an English part"),
             [this] {
                 press(QStringLiteral("Select"));
                 play(AnswerSeconds);
             },
             titled(QStringLiteral("VOD Title")), 200});
    add(Step{QStringLiteral("12-vod-info"), tr("Select on a title: its information page"),
             [this] {
                 press(QStringLiteral("Down"));
                 press(QStringLiteral("Select"));
                 play(AnswerSeconds);
             },
             [this] { return visible(browser->infoView.data()) && browser->infoView->isActiveWindow(); }, 400});
    add(Step{QStringLiteral("13-vod-small-playing"), tr("Play (Context1): the small player plays"),
             [this] {
                 press(QStringLiteral("Context1"));
                 play(7);
             },
             [player] { return visible(player()) && player()->playScreenReady; }, AfterMoveMsecs});
    add(Step{QStringLiteral("14-vod-small-paused"), tr("Select: paused, the play icon over the video area"),
             [this] { press(QStringLiteral("Select")); },
             [player] { return player() && player()->screenStatus == VodPlayView::Paused; }, 400});
    add(Step{QString(), tr("Select again: playing"),
             [this] {
                 press(QStringLiteral("Select"));
                 play(3);
             },
             [player] { return player() && player()->screenStatus == VodPlayView::Playing; }, AfterMoveMsecs});
    add(Step{QStringLiteral("15-vod-full"), tr("Full key (Video4): the full-screen player with its panel"),
             [this] {
                 press(QStringLiteral("Video4"));
                 play(8);
             },
             [vodFull] { return visible(vodFull()) && vodFull()->playScreenReady; }, AfterMoveMsecs});
    add(Step{QStringLiteral("16-vod-wide"), tr("Video4 again: the wide picture"),
             [this] {
                 press(QStringLiteral("Video4"));
                 play(8);
             },
             nullptr, AfterMoveMsecs});
    add(Step{QStringLiteral("17-vod-volume"), tr("Volume up: the volume overlay"),
             [this] { press(QStringLiteral("VolumeUp")); }, nullptr, 150});
    add(Step{QStringLiteral("18-vod-wide-paused"),
             tr("Select (keypad): paused in the wide picture, with the key hints at the right"),
             [this, vodFull] {
                 // The overlay goes first, as it does a second after the volume key.
                 if (VodPlayView *full = vodFull(); full && full->volumeRectTimer)
                     QMetaObject::invokeMethod(full->volumeRectTimer, "timeout");
                 press(QStringLiteral("Select"));
             },
             [vodFull] { return vodFull() && vodFull()->screenStatus == VodPlayView::Paused; }, 200});
    add(Step{QString(), tr("Select again: playing"),
             [this] {
                 press(QStringLiteral("Select"));
                 play(3);
             },
             [vodFull] { return vodFull() && vodFull()->screenStatus == VodPlayView::Playing; }, 200});
    add(Step{QStringLiteral("19-vod-held"),
             tr("The broadcast application starts (\"startVideoPushApp()\"): the video is held for it"),
             [] { notify(VodChannel::VideoApplication, VodMessage::StartVideoPushApp); },
             [vodFull] { return vodFull() && vodFull()->screenStatus == VodPlayView::PausedForPush; }, 200});
    add(Step{QStringLiteral("20-vod-resume-notice"),
             tr("The broadcast application ends (\"stopVideoPushApp()\"): the notice \"Video will be resumed\""),
             [] {
                 QTimer::singleShot(0, qApp, [] { notify(VodChannel::VideoApplication, VodMessage::StopVideoPushApp); });
             },
             noticeUp, 200});
    add(Step{QString(), tr("the notice goes; the video plays on"),
             [this, dismissNotice] {
                 dismissNotice();
                 play(2);
             },
             [vodFull] { return vodFull() && vodFull()->screenStatus == VodPlayView::Playing; }, 200});
    add(Step{QStringLiteral("21-vod-end"),
             tr("The video reaches its end (a time report of its last second): the players stop and close "
                "with the information page, back to the titles"),
             [] {
                 // The title lasts 312.5 seconds.
                 const QByteArray end = messageData(313.0f);
                 QtopiaIpcEnvelope envelope{QString::fromLatin1(VodChannel::VideoApplication),
                                            QString::fromLatin1(VodMessage::CurrentTime)};
                 envelope.writeRawData(end.constData(), int(end.size()));
             },
             [this, player] { return !visible(player()) && !visible(browser->infoView.data()); }, 500});
}
