#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include <gst/app/gstappsink.h>
#include <gst/gst.h>

class VideoPlaneWriter;

// One GStreamer pipeline whose pictures go to the video plane: a media file
// (decoded, with its sound) or an RTP/VP8 stream received over UDP. The
// pipeline's bus messages arrive as signals in the thread that made it; the
// frames are copied to the plane from GStreamer's streaming thread.
class MediaPipeline : public QObject
{
    Q_OBJECT

public:
    ~MediaPipeline() override;

    // Plays `path`; its sound goes to the sink made from `audioSink` (a
    // gst-launch description such as "autoaudiosink"; "none" leaves the sound out).
    static std::unique_ptr<MediaPipeline> forFile(const QString &path, const QString &audioSink,
                                                  VideoPlaneWriter *plane, QString *error);
    // Receives RTP/VP8 (payload 96) on address:port; a multicast address is
    // joined. After `timeoutSeconds` without a packet the signal silent() comes,
    // and again after each such stretch.
    static std::unique_ptr<MediaPipeline> forRtp(const QString &address, int port, double timeoutSeconds,
                                                 VideoPlaneWriter *plane, QString *error);
    // The GStreamer elements these pipelines need that this system lacks.
    static QStringList missingElements();

    // State changes; false when GStreamer refuses at once. A change that takes
    // time (prerolling a file) ends with settled().
    bool pause();
    bool play();
    // Lets go of the source (a stream's socket) until the next play().
    bool halt();
    // Jumps to `seconds` exactly (not to the nearest key frame); settled() follows.
    bool seek(double seconds);

    std::optional<double> position() const;
    std::optional<double> duration() const;
    // Frames that reached the plane so far.
    std::uint64_t frames() const { return frameCount.load(); }
    // 0 (silent) to 1 (as recorded); the stream pipeline has no sound.
    void setVolume(double volume);

signals:
    // The pipeline reached the state asked for (prerolled, or a seek done).
    void settled();
    // The end of the media.
    void finished();
    void failed(const QString &why);
    // No packet came for the time given to forRtp().
    void silent();

private:
    MediaPipeline(GstElement *pipeline, GstElement *videoSink, VideoPlaneWriter *plane);

    static GstBusSyncReply onBusMessage(GstBus *bus, GstMessage *message, gpointer self);
    static GstFlowReturn onSample(GstAppSink *sink, gpointer self);
    static GstFlowReturn onPreroll(GstAppSink *sink, gpointer self);
    void showSample(GstSample *sample);
    void handle(GstMessage *message);

    GstElement *pipeline;
    VideoPlaneWriter *plane;
    std::atomic<std::uint64_t> frameCount{0};
};
