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
// One simulated second lasts this many real seconds: reports come ten times a
// second, and the module's own timers (500 ms) keep their real length.
constexpr double TimeScale = 0.1;
// Long enough for the module's 500 ms video-area timer after a move.
constexpr int AfterMoveMsecs = 800;

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

    SimulatorOptions options;
    options.timeScale = TimeScale;
    // Long enough to see the wait pop-up while a catalogue is written.
    options.answerDelay = 5;
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

int PhoneSession::reports() const
{
    return display->compositor()->videoFeed()->reportCount();
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
    const auto markReports = [this] { reportMark = reports(); };
    const auto reportsSinceMark = [this](int count) { return [this, count] { return reports() >= reportMark + count; }; };
    const auto pushFull = [this]() -> VodPlayView * { return push ? push->fullScreenView : nullptr; };
    const auto player = [this]() -> VodPlaySmallScreenView * {
        return browser && browser->infoView ? browser->infoView->playView : nullptr;
    };
    const auto vodFull = [player]() -> VodPlayView * { return player() ? player()->fullScreenView : nullptr; };
    const auto list = [this]() -> QWidget * { return browser ? browser->listView : nullptr; };
    const auto titled = [this](const QString &end) {
        return [this, end] {
            return titleOf(browser).endsWith(end) && !visible(browser ? browser->waitWidget : nullptr);
        };
    };

    // The push viewer.
    board->add(Step{QStringLiteral("01-push-playing"),
                    tr("Push broadcast playing in the small player: the picture shows through the cleared video "
                       "area; title bar and soft keys of the platform"),
                    [this, markReports] {
                        markReports();
                        ApplicationImpl factory;
                        push = qobject_cast<VideoPushView *>(
                            factory.createMainWindow(QStringLiteral("videoPush"), display, Qt::WindowFlags()));
                    },
                    reportsSinceMark(4), AfterMoveMsecs});
    board->add(Step{QStringLiteral("02-push-full"), tr("Full key (Video4): the 4:3 full-screen push view"),
                    [this] { press(QStringLiteral("Video4")); },
                    [pushFull] { return visible(pushFull()); }, AfterMoveMsecs});
    board->add(Step{QStringLiteral("03-push-wide"), tr("Video4 again: the wide picture"),
                    [this] { press(QStringLiteral("Video4")); }, nullptr, AfterMoveMsecs});
    board->add(Step{QStringLiteral("04-push-volume"), tr("Volume up: the volume overlay over the picture"),
                    [this] { press(QStringLiteral("VolumeUp")); }, nullptr, 150});
    board->add(Step{QStringLiteral("05-push-call"),
                    tr("A call comes in (\"startcall()\"): the broadcast is held; the player darkens its video area "
                       "and shows the play icon"),
                    [] { notify(VodChannel::PushApplication, VodMessage::StartCall); }, nullptr, 1200});
    board->add(Step{QString(), tr("the call ends"),
                    [this, markReports] {
                        markReports();
                        notify(VodChannel::PushApplication, VodMessage::StopCall);
                    },
                    reportsSinceMark(3), AfterMoveMsecs});
    board->add(Step{QStringLiteral("06-push-server-silent"),
                    tr("The call is over and the broadcast back; then no time report for 30 seconds (the watchdog is "
                       "fired early): the server-silence notice"),
                    [this] {
                        // Posted: the notice is modal, and the session goes on inside it.
                        QTimer::singleShot(0, push, [this] {
                            if (push && push->serverWatchdog)
                                QMetaObject::invokeMethod(push->serverWatchdog, "timeout");
                        });
                    },
                    [] { return shownNotice() != nullptr; }, 200});
    board->add(Step{QString(), tr("the notice goes; the user stops the broadcast"),
                    [this] {
                        if (QNoticeDialog *notice = shownNotice())
                            notice->accept();
                        QTimer::singleShot(0, push, [this] {
                            if (push)
                                push->requestStopUI();
                        });
                    },
                    [this] { return !visible(push) && !visible(push ? push->fullScreenView : nullptr); }, 0});

    // The VOD browser.
    board->add(Step{QStringLiteral("07-vod-groups"), tr("VOD browser: the content groups"),
                    [this] {
                        delete push;
                        browser = new vod;
                        browser->showMaximized();
                    },
                    [this, list, titled] {
                        auto *l = qobject_cast<QListWidget *>(list());
                        return l && l->count() > 0 && titled(QStringLiteral("VOD Contents"))();
                    },
                    300});
    board->add(Step{QStringLiteral("08-vod-parts"), tr("Select on a group: its parts"),
                    [this] { press(QStringLiteral("Select")); }, titled(QStringLiteral("VOD List")),
                    200});
    board->add(Step{QStringLiteral("09-vod-wait"),
                    tr("Select on a part: the wait pop-up while the video manager writes the title list"),
                    [this] { press(QStringLiteral("Select")); },
                    [this] {
                        const QWidget *wait = browser ? browser->waitWidget : nullptr;
                        return visible(wait) && !ScreenCompositor::paintedImage(wait).isNull();
                    },
                    0});
    board->add(Step{QStringLiteral("10-vod-titles-korean"), tr("The titles of a Korean part"), nullptr,
                    titled(QStringLiteral("VOD Title")), 200});
    board->add(Step{QString(), tr("back to the parts"), [this] { press(QStringLiteral("Back")); },
                    titled(QStringLiteral("VOD List")), 100});
    board->add(Step{QString(), tr("back to the groups"), [this] { press(QStringLiteral("Back")); },
                    titled(QStringLiteral("VOD Contents")), 100});
    board->add(Step{QString(), tr("down to the third group"),
                    [this] {
                        press(QStringLiteral("Down"));
                        press(QStringLiteral("Down"));
                    },
                    nullptr, 100});
    board->add(Step{QString(), tr("its parts"), [this] { press(QStringLiteral("Select")); },
                    titled(QStringLiteral("VOD List")), 100});
    board->add(Step{QStringLiteral("11-vod-titles-english"), tr("The titles of an English part"),
                    [this] { press(QStringLiteral("Select")); }, titled(QStringLiteral("VOD Title")),
                    200});
    board->add(Step{QStringLiteral("12-vod-info"), tr("Select on a title: its information page"),
                    [this] {
                        press(QStringLiteral("Down"));
                        press(QStringLiteral("Select"));
                    },
                    [this] { return browser && visible(browser->infoView.data()); }, 400});
    board->add(Step{QStringLiteral("13-vod-small-playing"), tr("Play (Context1): the small player plays"),
                    [this, markReports] {
                        markReports();
                        press(QStringLiteral("Context1"));
                    },
                    [player, reportsSinceMark] { return visible(player()) && reportsSinceMark(4)(); },
                    AfterMoveMsecs});
    board->add(Step{QStringLiteral("14-vod-small-paused"), tr("Select: paused, the play icon over the video area"),
                    [this] { press(QStringLiteral("Select")); },
                    [player] { return player() && player()->screenStatus == VodPlayView::Paused; }, 400});
    board->add(Step{QString(), tr("Select again: playing"),
                    [this, markReports] {
                        markReports();
                        press(QStringLiteral("Select"));
                    },
                    [player, reportsSinceMark] {
                        return player() && player()->screenStatus == VodPlayView::Playing && reportsSinceMark(3)();
                    },
                    AfterMoveMsecs});
    board->add(Step{QStringLiteral("15-vod-full"), tr("Full key (Video4): the full-screen player with its panel"),
                    [this] { press(QStringLiteral("Video4")); },
                    [vodFull] { return visible(vodFull()); }, AfterMoveMsecs});
    board->add(Step{QStringLiteral("16-vod-wide"), tr("Video4 again: the wide picture"),
                    [this] { press(QStringLiteral("Video4")); }, nullptr, AfterMoveMsecs});
    board->add(Step{QStringLiteral("17-vod-volume"), tr("Volume up: the volume overlay"),
                    [this] { press(QStringLiteral("VolumeUp")); }, nullptr, 150});
    board->add(Step{QStringLiteral("18-vod-end"),
                    tr("The video reaches its end (a time report of its last second): the players stop and close "
                       "with the information page, back to the titles"),
                    [] {
                        // The title lasts 312.5 seconds.
                        const QByteArray end = messageData(313.0f);
                        QtopiaIpcEnvelope envelope{QString::fromLatin1(VodChannel::VideoApplication),
                                                   QString::fromLatin1(VodMessage::CurrentTime)};
                        envelope.writeRawData(end.constData(), int(end.size()));
                    },
                    [this, player] { return !visible(player()) && !(browser && visible(browser->infoView.data())); },
                    500});
}
