#pragma once

#include "framehooks.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QObject>
#include <QRect>

#include <cstdint>
#include <memory>
#include <optional>

class QTimer;
class VideoPlaneReader;

// What the video manager would be showing: the rectangle the module last asked
// for with "changeVodWindow(int,int,int,int)" and the position of the last
// "currentTime(float)" report, followed through the plugin's transport; and,
// once asked to watch it, the picture of a video manager's video plane.
class VideoFeed : public QObject
{
    Q_OBJECT

public:
    // The small players' video window, where the picture is before any request.
    static constexpr QRect SmallWindow{8, 39, 256, 194};

    explicit VideoFeed(const FrameHooks &hooks, QObject *parent = nullptr);
    ~VideoFeed() override;

    QRect window() const { return rect; }
    double seconds() const { return position; }
    // How many time reports have come so far.
    int reportCount() const { return reports; }

    // Shows the video plane of that name; with `announceFrames` its new frames
    // are changes (a live display wants each; a composed picture reads the plane).
    void watchPlane(const QString &name, bool announceFrames);
    // The picture of the video plane: none while no video manager holds one (the
    // display shows its test picture then), a null image while the plane shows nothing.
    std::optional<QImage> planePicture() const;

    // Takes one message of "QPE/VideoManager", "QPE/PushApplication" or "QPE/VideoApplication".
    void take(const QString &message, const QByteArray &data);

    // The four ints of "changeVodWindow(int,int,int,int)" as x, y, width, height.
    static std::optional<QRect> windowFrom(const QByteArray &data);
    // The float of "currentTime(float)": four bytes, big-endian.
    static std::optional<float> timeFrom(const QByteArray &data);

signals:
    void changed();

private:
    static void receive(void *context, const QString &message, const QByteArray &data);

    void pollPlane();

    QList<QObject *> listeners;
    std::unique_ptr<VideoPlaneReader> plane;
    QTimer *planePoll = nullptr;
    std::uint32_t planeSequence = 0;
    QRect rect = SmallWindow;
    double position = 0;
    int reports = 0;
};
