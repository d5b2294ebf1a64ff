#include "videomanager.h"

#include "mediapipeline.h"
#include "messaging/messagedata.h"
#include "messaging/messagereader.h"
#include "messaging/vodmessages.h"
#include "playbackposition.h"
#include "videoplanewriter.h"

#include <QTimer>

using namespace VodMessage;

namespace {
constexpr int ReportMsecs = 1000;

QString seconds(double value)
{
    return QString::number(value, 'f', 3);
}
}

VideoManager::VideoManager(const VideoManagerOptions &options, VideoPlaneWriter *plane, QObject *parent)
    : VideoManagerEndpoint(parent)
    , settings(options)
    , plane(plane)
    , vodTicker(new QTimer(this))
    , pushTicker(new QTimer(this))
{
    // Reports once a real second, not roughly so.
    vodTicker->setTimerType(Qt::PreciseTimer);
    pushTicker->setTimerType(Qt::PreciseTimer);
    vodTicker->setInterval(ReportMsecs);
    pushTicker->setInterval(ReportMsecs);
    connect(vodTicker, &QTimer::timeout, this, &VideoManager::vodTick);
    connect(pushTicker, &QTimer::timeout, this, &VideoManager::pushTick);
}

VideoManager::~VideoManager() = default;

void VideoManager::onCallManager(const QString &message, const QByteArray &data)
{
    log(QStringLiteral("<-"), QLatin1String(VodChannel::CallManager), message, data);
    if (isMessage(message, SetVolumeVod)) {
        // The module sends its level 1 to 16 minus one.
        const int level = qBound(0, MessageReader(data).readInt(), 15) + 1;
        volume = level / 16.0;
        if (vod)
            vod->setVolume(volume);
        note(QStringLiteral("volume now %1 of 16").arg(level));
    }
}

bool VideoManager::answerPush(const QString &message)
{
    if (isMessage(message, PushAppExecuted)) {
        QTimer::singleShot(qRound(settings.pushStartDelay * 1000), this,
                           [this] { send(VodChannel::PushApplication, StartPush); });
    } else if (isMessage(message, PlayPush)) {
        playPush();
    } else if (isMessage(message, PausePush)) {
        // A live stream cannot wait: let go of it, and take it up again later.
        pushTicker->stop();
        if (push)
            push->halt();
        send(VodChannel::PushApplication, PauseOKPush);
    } else if (isMessage(message, ResumePush)) {
        if (push && !pushEnded) {
            pushFrames = push->frames();
            if (push->play())
                pushTicker->start();
        }
    } else if (isMessage(message, StopUIPush)) {
        send(VodChannel::PushApplication, EndOKPush);
    } else if (isMessage(message, StopPush) || isMessage(message, StopMulticastPush)) {
        closePush();
    } else {
        return false;
    }
    return true;
}

void VideoManager::answerVod(const QString &message, const QByteArray &data)
{
    MessageReader in(data);
    if (isMessage(message, RequestGroupList)) {
        writeGroupList(settings.catalogue);
    } else if (isMessage(message, RequestContents)) {
        selectedGroup = in.readInt();
        selectedPart = in.readInt();
        writeContents(settings.catalogue, selectedGroup, selectedPart);
    } else if (isMessage(message, SetupVod)) {
        setupVod(in.readInt());
    } else if (isMessage(message, StartVod)) {
        startVod(in.readString());
    } else if (isMessage(message, PauseVod)) {
        pauseVod();
    } else if (isMessage(message, ResumeVod)) {
        resumeVod(in.readString());
    } else if (isMessage(message, ForwardVod) || isMessage(message, ReverseVod)) {
        seekVod(message, in.readString());
    } else if (isMessage(message, StopVod)) {
        closeVod();
        send(VodChannel::VideoApplication, EndOKVod);
    }
}

void VideoManager::setupVod(int number)
{
    const char *const app = VodChannel::VideoApplication;
    closeVod();
    const SimTitle *title = settings.catalogue.title(selectedGroup, selectedPart, number - 1);
    if (!title) {
        note(QStringLiteral("group %1 part %2 has no title number %3").arg(selectedGroup).arg(selectedPart).arg(number));
        send(app, SetupFailVod, messageData(qint32(NoSuchTitle)));
        return;
    }
    if (title->file.isEmpty()) {
        note(QStringLiteral("\"%1\" names no media file").arg(title->name));
        send(app, SetupFailVod, messageData(qint32(NoMediaFile)));
        return;
    }
    QString error;
    vod = MediaPipeline::forFile(title->file, settings.audioSink, plane, &error);
    if (!vod) {
        note(error);
        send(app, SetupFailVod, messageData(qint32(MediaError)));
        return;
    }
    connect(vod.get(), &MediaPipeline::settled, this, &VideoManager::vodSettled);
    connect(vod.get(), &MediaPipeline::finished, this, &VideoManager::vodFinished);
    connect(vod.get(), &MediaPipeline::failed, this, &VideoManager::vodFailed);
    vod->setVolume(volume);
    vodState = Vod::SettingUp;
    setupNumber = number;
    note(QStringLiteral("opening \"%1\": %2").arg(title->name, title->file));
    // The answer waits for the first picture, when the duration is known.
    if (!vod->pause())
        vodFailed(QStringLiteral("%1 cannot be played").arg(title->file));
}

void VideoManager::vodSettled()
{
    if (vodState == Vod::SettingUp) {
        const std::optional<double> duration = vod->duration();
        if (!duration) {
            vodFailed(QStringLiteral("the title's duration is unknown"));
            return;
        }
        vodState = Vod::Ready;
        note(QStringLiteral("set up, %1 s").arg(seconds(*duration)));
        send(VodChannel::VideoApplication, SetupOKVod,
             messageData(qint32(selectedGroup), qint32(selectedPart), qint32(setupNumber), SetupStartMark,
                         float(SetupStartMark + *duration), 0.0f));
    } else if (vodSeeking) {
        vodSeeking = false;
        if (const std::optional<double> at = vod->position())
            note(QStringLiteral("position now %1").arg(seconds(*at)));
    }
}

void VideoManager::startVod(const QString &position)
{
    playVod(position, true, StartOKVod, StartFailVod);
}

void VideoManager::pauseVod()
{
    const char *const app = VodChannel::VideoApplication;
    if (vodState != Vod::Playing || !vod->pause()) {
        send(app, PauseFailVod);
        return;
    }
    vodTicker->stop();
    vodState = Vod::Paused;
    send(app, PauseOKVod, messageData(float(vod->position().value_or(0.0))));
}

void VideoManager::resumeVod(const QString &position)
{
    playVod(position, false, ResumedOKVod, Error);
}

void VideoManager::playVod(const QString &position, bool fromStart, const char *answer, const char *failure)
{
    const char *const app = VodChannel::VideoApplication;
    if (!vod || vodState == Vod::SettingUp) {
        note(QStringLiteral("no content set up"));
        send(app, failure, messageData(qint32(NoContentSetUp)));
        return;
    }
    std::optional<double> at = parsePositionText(position);
    if (!at && fromStart)
        at = 0.0;
    if (at)
        vodSeeking = vod->seek(*at);
    else
        note(QStringLiteral("\"%1\" is no position: going on from where it is").arg(position));
    if (!vod->play()) {
        send(app, failure, messageData(qint32(MediaError)));
        return;
    }
    vodState = Vod::Playing;
    send(app, answer);
    vodTicker->start();
}

void VideoManager::seekVod(const QString &message, const QString &position)
{
    const std::optional<double> at = parsePositionText(position);
    if (!vod || vodState == Vod::SettingUp || !at) {
        note(QStringLiteral("%1 ignored: %2").arg(message, at ? QStringLiteral("no content set up")
                                                              : QStringLiteral("no position")));
        return;
    }
    vodSeeking = vod->seek(*at);
    if (!vodSeeking)
        note(QStringLiteral("the title cannot go to %1 s").arg(seconds(*at)));
}

void VideoManager::vodTick()
{
    if (const std::optional<double> at = vod ? vod->position() : std::nullopt)
        send(VodChannel::VideoApplication, CurrentTime, messageData(float(*at)));
}

void VideoManager::vodFinished()
{
    const double end = vod->duration().value_or(vod->position().value_or(0.0));
    const bool playing = vodState == Vod::Playing;
    closeVod();
    if (!playing)
        return;
    note(QStringLiteral("end of the title"));
    send(VodChannel::VideoApplication, CurrentTime, messageData(float(end)));
    send(VodChannel::VideoApplication, EndOKVod);
}

void VideoManager::vodFailed(const QString &why)
{
    const Vod state = vodState;
    note(QStringLiteral("the title fails: %1").arg(why));
    closeVod();
    // A title that cannot be set up says so; one that breaks while it plays ends.
    if (state == Vod::SettingUp)
        send(VodChannel::VideoApplication, SetupFailVod, messageData(qint32(MediaError)));
    else if (state != Vod::None)
        send(VodChannel::VideoApplication, EndOKVod);
}

void VideoManager::closeVod()
{
    vodTicker->stop();
    vodSeeking = false;
    vodState = Vod::None;
    if (vod) {
        retire(std::move(vod));
        plane->clear();
    }
}

void VideoManager::playPush()
{
    closePush();
    QString error;
    push = MediaPipeline::forRtp(settings.pushAddress, settings.pushPort, settings.pushTimeout, plane, &error);
    if (!push || !push->play()) {
        note(QStringLiteral("cannot receive the broadcast: %1").arg(push ? QStringLiteral("refused") : error));
        retire(std::move(push));
        send(VodChannel::PushApplication, Error, messageData(qint32(MediaError)));
        return;
    }
    connect(push.get(), &MediaPipeline::silent, this, &VideoManager::pushSilent);
    connect(push.get(), &MediaPipeline::failed, this, [this](const QString &why) {
        note(QStringLiteral("the broadcast fails: %1").arg(why));
        pushSilent();
    });
    note(QStringLiteral("receiving the broadcast on %1 port %2").arg(settings.pushAddress).arg(settings.pushPort));
    pushTicker->start();
}

void VideoManager::pushTick()
{
    // A sign of life only while pictures come.
    const std::uint64_t frames = push ? push->frames() : 0;
    if (frames == pushFrames)
        return;
    if (pushFrames == 0)
        note(QStringLiteral("the broadcast's pictures arrive"));
    pushFrames = frames;
    ++pushSeconds;
    send(VodChannel::PushApplication, CurrentTime, messageData(float(pushSeconds)));
}

void VideoManager::pushSilent()
{
    // Before its first picture a broadcast has not begun, so it cannot end.
    if (!push || pushEnded || push->frames() == 0 || !pushTicker->isActive())
        return;
    pushEnded = true;
    pushTicker->stop();
    note(QStringLiteral("the broadcast stopped"));
    send(VodChannel::PushApplication, EndOKMulticastPush);
}

void VideoManager::closePush()
{
    pushTicker->stop();
    pushFrames = 0;
    pushSeconds = 0;
    pushEnded = false;
    if (push) {
        retire(std::move(push));
        plane->clear();
    }
}

void VideoManager::retire(std::unique_ptr<MediaPipeline> pipeline)
{
    if (!pipeline)
        return;
    // Stopped now, so that no picture reaches the plane any more; deleted
    // later, as this may run inside one of its own signals.
    pipeline->halt();
    pipeline->disconnect(this);
    pipeline->setParent(this);
    pipeline.release()->deleteLater();
}
