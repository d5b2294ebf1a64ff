#include "videomanagersimulator.h"

#include "messaging/messagedata.h"
#include "messaging/messagereader.h"
#include "messaging/vodmessages.h"

#include <QTimer>

#include <algorithm>
#include <limits>

using namespace VodMessage;

VideoManagerSimulator::VideoManagerSimulator(const SimulatorOptions &options, QObject *parent)
    : VideoManagerEndpoint(parent), settings(options), pushTicker(new QTimer(this)), vodTicker(new QTimer(this))
{
    pushTicker->setInterval(secondMs());
    vodTicker->setInterval(secondMs());
    connect(pushTicker, &QTimer::timeout, this, &VideoManagerSimulator::pushTick);
    connect(vodTicker, &QTimer::timeout, this, &VideoManagerSimulator::vodTick);

    for (const ScheduledMessage &m : std::as_const(settings.scheduled))
        after(m.at, [this, m] { sendRaw(m.channel, m.message, m.data); });
}

VideoManagerSimulator::~VideoManagerSimulator() = default;

int VideoManagerSimulator::secondMs() const
{
    // A manual clock's reports come from advance() alone.
    if (settings.manualClock)
        return std::numeric_limits<int>::max();
    return qMax(1, qRound(1000.0 * settings.timeScale));
}

void VideoManagerSimulator::advance(int seconds)
{
    for (int i = 0; i < seconds; ++i) {
        ++now;
        while (!silent) {
            const auto next = std::find_if(due.begin(), due.end(), [this](const auto &d) { return d.first <= now; });
            if (next == due.end())
                break;
            const std::function<void()> action = next->second;
            due.erase(next);
            action();
        }
        if (pushTicker->isActive())
            pushTick();
        if (vodTicker->isActive())
            vodTick();
    }
}

void VideoManagerSimulator::onCallManager(const QString &message, const QByteArray &data)
{
    const QString channel = QLatin1String(VodChannel::CallManager);
    log(QStringLiteral("<-"), channel, message, data, silent ? QStringLiteral("silent") : QString());
    if (silent)
        return;
    if (isMessage(message, SetVolumeVod)) {
        note(QStringLiteral("volume now %1").arg(MessageReader(data).readInt()));
    } else if (isMessage(message, SetHeadsetOnOff)) {
        headset = !headset;
        note(headset ? QStringLiteral("headset on") : QStringLiteral("headset off"));
    }
}

bool VideoManagerSimulator::answerPush(const QString &message)
{
    const char *const push = VodChannel::PushApplication;
    if (isMessage(message, PushAppExecuted)) {
        after(settings.pushStartDelay, [this, push] {
            if (settings.failSetupPush)
                send(push, SetupFailPush, messageData(qint32(*settings.failSetupPush)));
            else
                send(push, StartPush);
        });
    } else if (isMessage(message, PlayPush)) {
        pushSeconds = 0;
        pushTicker->start();
        playbackStarted(true);
    } else if (isMessage(message, PausePush)) {
        pushTicker->stop();
        send(push, PauseOKPush);
    } else if (isMessage(message, ResumePush)) {
        pushTicker->start();
    } else if (isMessage(message, StopUIPush)) {
        send(push, EndOKPush);
    } else if (isMessage(message, StopPush) || isMessage(message, StopMulticastPush)) {
        pushTicker->stop();
    } else {
        return false;
    }
    return true;
}

void VideoManagerSimulator::answerVod(const QString &message, const QByteArray &data)
{
    MessageReader in(data);
    if (isMessage(message, RequestGroupList)) {
        // Writing a catalogue or setting a title up may take the video manager a while.
        afterAnswerDelay([this] { writeGroupList(settings.catalogue); });
    } else if (isMessage(message, RequestContents)) {
        selectedGroup = in.readInt();
        selectedPart = in.readInt();
        afterAnswerDelay(
            [this, group = selectedGroup, part = selectedPart] { writeContents(settings.catalogue, group, part); });
    } else if (isMessage(message, SetupVod)) {
        afterAnswerDelay([this, number = in.readInt()] { setupVod(number); });
    } else if (isMessage(message, StartVod)) {
        startVod(in.readString());
    } else if (isMessage(message, PauseVod)) {
        pauseVod();
    } else if (isMessage(message, ResumeVod)) {
        resumeVod(in.readString());
    } else if (isMessage(message, ForwardVod) || isMessage(message, ReverseVod)) {
        seekVod(message, in.readString());
    } else if (isMessage(message, StopVod)) {
        vodTicker->stop();
        send(VodChannel::VideoApplication, EndOKVod);
    }
}

void VideoManagerSimulator::setupVod(int number)
{
    const char *const app = VodChannel::VideoApplication;
    if (settings.failSetupVod) {
        send(app, SetupFailVod, messageData(qint32(*settings.failSetupVod)));
        return;
    }
    const SimTitle *title = settings.catalogue.title(selectedGroup, selectedPart, number - 1);
    if (!title) {
        note(QStringLiteral("group %1 part %2 has no title number %3").arg(selectedGroup).arg(selectedPart).arg(number));
        send(app, SetupFailVod, messageData(qint32(NoSuchTitle)));
        return;
    }
    vodTicker->stop();
    vod = PlaybackPosition(title->length);
    vodSetUp = true;
    note(QStringLiteral("set up \"%1\", %2 s").arg(title->name).arg(title->length));
    send(app, SetupOKVod,
         messageData(qint32(selectedGroup), qint32(selectedPart), qint32(number), SetupStartMark,
                     float(SetupStartMark + title->length), 0.0f));
}

void VideoManagerSimulator::startVod(const QString &position)
{
    const char *const app = VodChannel::VideoApplication;
    if (settings.failStartVod) {
        send(app, StartFailVod, messageData(qint32(*settings.failStartVod)));
        return;
    }
    if (!vodSetUp) {
        note(QStringLiteral("no content set up"));
        send(app, StartFailVod, messageData(qint32(NoContentSetUp)));
        return;
    }
    vod.moveTo(parsePositionText(position).value_or(0.0));
    send(app, StartOKVod);
    vodTicker->start();
    playbackStarted(false);
}

void VideoManagerSimulator::pauseVod()
{
    const char *const app = VodChannel::VideoApplication;
    if (!vodTicker->isActive()) {
        send(app, PauseFailVod);
        return;
    }
    vodTicker->stop();
    send(app, PauseOKVod, messageData(float(vod.seconds())));
}

void VideoManagerSimulator::resumeVod(const QString &position)
{
    const char *const app = VodChannel::VideoApplication;
    if (!vodSetUp) {
        note(QStringLiteral("no content set up"));
        send(app, Error, messageData(qint32(NoContentSetUp)));
        return;
    }
    if (const std::optional<double> seconds = parsePositionText(position))
        vod.moveTo(*seconds);
    else
        note(QStringLiteral("\"%1\" is no position: going on from %2").arg(position).arg(vod.seconds()));
    send(app, ResumedOKVod);
    vodTicker->start();
}

void VideoManagerSimulator::seekVod(const QString &message, const QString &position)
{
    const std::optional<double> seconds = parsePositionText(position);
    if (!vodSetUp || !seconds) {
        note(QStringLiteral("%1 ignored: %2").arg(message, vodSetUp ? QStringLiteral("no position")
                                                                    : QStringLiteral("no content set up")));
        return;
    }
    vod.moveTo(*seconds);
    // Reports count whole seconds: the next comes a second after the jump, as
    // a player's clock would have it, not at the old rhythm.
    if (vodTicker->isActive())
        vodTicker->start();
    note(QStringLiteral("position now %1 of %2").arg(vod.seconds()).arg(vod.length()));
}

void VideoManagerSimulator::pushTick()
{
    pushSeconds += 1;
    send(VodChannel::PushApplication, CurrentTime, messageData(float(pushSeconds)));
}

void VideoManagerSimulator::vodTick()
{
    vod.advance(1);
    send(VodChannel::VideoApplication, CurrentTime, messageData(float(vod.seconds())));
    if (vod.atEnd()) {
        vodTicker->stop();
        note(QStringLiteral("end of the title"));
        send(VodChannel::VideoApplication, EndOKVod);
    }
}

void VideoManagerSimulator::playbackStarted(bool push)
{
    if (!anyPlaybackStarted) {
        anyPlaybackStarted = true;
        if (settings.silentAfter >= 0)
            after(settings.silentAfter, [this] { goSilent(); });
        if (settings.callAt >= 0) {
            after(settings.callAt, [this] {
                send(VodChannel::PushApplication, StartCall);
                send(VodChannel::VideoApplication, StartCall);
                after(settings.callLength, [this] {
                    send(VodChannel::PushApplication, StopCall);
                    send(VodChannel::VideoApplication, StopCall);
                });
            });
        }
    }
    if (push && !pushPlaybackStarted) {
        pushPlaybackStarted = true;
        if (settings.multicastEndAt >= 0) {
            after(settings.multicastEndAt, [this] {
                pushTicker->stop();
                send(VodChannel::PushApplication, EndOKMulticastPush);
            });
        }
    }
    if (!push && !vodPlaybackStarted) {
        vodPlaybackStarted = true;
        if (settings.serverPauseAt >= 0)
            after(settings.serverPauseAt, [this] { serverPause(); });
    }
}

void VideoManagerSimulator::serverPause()
{
    if (!vodTicker->isActive()) {
        note(QStringLiteral("no VOD playing: no server pause"));
        return;
    }
    vodTicker->stop();
    send(VodChannel::VideoApplication, PauseVodByServer, messageData(float(vod.seconds())));
}

void VideoManagerSimulator::goSilent()
{
    silent = true;
    pushTicker->stop();
    vodTicker->stop();
    for (QTimer *timer : std::as_const(pending))
        timer->stop();
    due.clear();
    note(QStringLiteral("silent from now on: no answers, no reports"));
}

void VideoManagerSimulator::afterAnswerDelay(std::function<void()> action)
{
    if (settings.answerDelay > 0)
        after(settings.answerDelay, std::move(action));
    else
        action();
}

void VideoManagerSimulator::after(double seconds, std::function<void()> action)
{
    if (settings.manualClock) {
        due.append({now + seconds, std::move(action)});
        return;
    }
    auto *timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->setInterval(qMax(0, qRound(seconds * 1000.0 * settings.timeScale)));
    connect(timer, &QTimer::timeout, this, [this, timer, action = std::move(action)] {
        pending.removeOne(timer);
        timer->deleteLater();
        if (!silent)
            action();
    });
    pending.append(timer);
    timer->start();
}
