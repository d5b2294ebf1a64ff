#pragma once

#include "videomanagerendpoint.h"
#include "videomanageroptions.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>

class MediaPipeline;
class QTimer;
class VideoPlaneWriter;

// The module's video manager: listens on "QPE/VideoManager" and
// "QPE/CallManager" and plays what is asked for with GStreamer, the VOD titles
// from their files, the push broadcast from the network, its pictures into the
// video plane. Answers go out on "QPE/VideoApplication" and
// "QPE/PushApplication" as the simulated video manager gives them, with the
// real durations and positions.
class VideoManager : public VideoManagerEndpoint
{
    Q_OBJECT

public:
    VideoManager(const VideoManagerOptions &options, VideoPlaneWriter *plane, QObject *parent = nullptr);
    ~VideoManager() override;

protected:
    bool answerPush(const QString &message) override;
    void answerVod(const QString &message, const QByteArray &data) override;
    void onCallManager(const QString &message, const QByteArray &data) override;

private:
    enum class Vod { None, SettingUp, Ready, Playing, Paused };

    void setupVod(int number);
    void vodSettled();
    void startVod(const QString &position);
    void pauseVod();
    void resumeVod(const QString &position);
    // Plays from `position` (the start when it is none and `fromStart`, else
    // from where it is) and answers `answer`, or `failure` with its code.
    void playVod(const QString &position, bool fromStart, const char *answer, const char *failure);
    void seekVod(const QString &message, const QString &position);
    void vodFinished();
    void vodFailed(const QString &why);
    void vodTick();
    void closeVod();

    void playPush();
    void pushTick();
    void pushSilent();
    void closePush();

    void retire(std::unique_ptr<MediaPipeline> pipeline);

    VideoManagerOptions settings;
    VideoPlaneWriter *plane;
    double volume = 1.0;
    int selectedGroup = 0;
    int selectedPart = 0;

    std::unique_ptr<MediaPipeline> vod;
    Vod vodState = Vod::None;
    int setupNumber = 0;
    bool vodSeeking = false;
    QTimer *vodTicker;

    std::unique_ptr<MediaPipeline> push;
    QTimer *pushTicker;
    std::uint64_t pushFrames = 0; // frames seen at the last report
    int pushSeconds = 0;
    bool pushEnded = false;
};
