#include "videofeed.h"

#include "messaging/vodmessages.h"
#include "videoplanereader.h"

#include <QTimer>
#include <QtEndian>

#include <climits>
#include <cstring>

namespace {
// How often the plane is looked at: a little faster than the frames come.
constexpr int PlanePollMsecs = 20;
}

VideoFeed::VideoFeed(const FrameHooks &hooks, QObject *parent)
    : QObject(parent)
{
    for (const char *channel : {VodChannel::VideoManager, VodChannel::PushApplication, VodChannel::VideoApplication}) {
        if (QObject *listener = hooks.listen(channel, &VideoFeed::receive, this))
            listeners.append(listener);
    }
}

VideoFeed::~VideoFeed()
{
    qDeleteAll(listeners);
}

void VideoFeed::watchPlane(const QString &name, bool announceFrames)
{
    plane = std::make_unique<VideoPlaneReader>(name);
    if (!announceFrames)
        return;
    planeSequence = plane->sequence();
    if (!planePoll) {
        planePoll = new QTimer(this);
        planePoll->setInterval(PlanePollMsecs);
        connect(planePoll, &QTimer::timeout, this, &VideoFeed::pollPlane);
    }
    planePoll->start();
}

void VideoFeed::pollPlane()
{
    // The plane appearing, changing or going away all change the picture.
    const std::uint32_t sequence = plane->sequence();
    if (sequence != planeSequence) {
        planeSequence = sequence;
        emit changed();
    }
}

std::optional<QImage> VideoFeed::planePicture() const
{
    return plane ? plane->frame() : std::nullopt;
}

void VideoFeed::receive(void *context, const QString &message, const QByteArray &data)
{
    static_cast<VideoFeed *>(context)->take(message, data);
}

void VideoFeed::take(const QString &message, const QByteArray &data)
{
    if (message == QLatin1String(VodMessage::PlayPush) || message == QLatin1String(VodMessage::StartVod)) {
        // A new playback starts in the small window, from its beginning.
        rect = SmallWindow;
        position = 0;
        emit changed();
    } else if (message == QLatin1String(VodMessage::ChangeVodWindow)) {
        if (const auto window = windowFrom(data)) {
            rect = *window;
            emit changed();
        }
    } else if (message == QLatin1String(VodMessage::CurrentTime)) {
        if (const auto time = timeFrom(data)) {
            position = *time;
            ++reports;
            emit changed();
        }
    }
}

std::optional<QRect> VideoFeed::windowFrom(const QByteArray &data)
{
    if (data.size() < 16)
        return std::nullopt;
    qint32 values[4];
    for (int i = 0; i < 4; ++i)
        values[i] = qFromBigEndian<qint32>(data.constData() + 4 * i);
    if (values[2] <= 0 || values[3] <= 0)
        return std::nullopt;
    // A rectangle whose far edge lies beyond the range of int is none.
    if (qint64(values[0]) + values[2] - 1 > INT_MAX || qint64(values[1]) + values[3] - 1 > INT_MAX)
        return std::nullopt;
    return QRect(values[0], values[1], values[2], values[3]);
}

std::optional<float> VideoFeed::timeFrom(const QByteArray &data)
{
    if (data.size() < 4)
        return std::nullopt;
    const quint32 bits = qFromBigEndian<quint32>(data.constData());
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}
