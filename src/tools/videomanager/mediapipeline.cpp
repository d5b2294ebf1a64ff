#include "mediapipeline.h"

#include "videoplanelayout.h"
#include "videoplanewriter.h"

#include <QFileInfo>

#include <gst/video/video.h>

namespace {
// Frames leave GStreamer as 0xffRRGGBB words, no larger than the plane holds;
// the display scales them into the video window.
const QString VideoSinkDescription =
    QStringLiteral("videoconvert ! videoscale ! video/x-raw,format=BGRx,width=[1,%1],height=[1,%2] "
                   "! appsink name=plane")
        .arg(VideoPlaneLayout::MaxWidth)
        .arg(VideoPlaneLayout::MaxHeight);

const QString RtpCaps =
    QStringLiteral("application/x-rtp,media=video,clock-rate=90000,encoding-name=VP8,payload=96");

// playbin's "flags": what it plays.
constexpr guint PlayAudio = 1u << 1;
constexpr guint PlayText = 1u << 2;

QString takeError(GError *error)
{
    const QString text = error ? QString::fromUtf8(error->message) : QStringLiteral("unknown error");
    g_clear_error(&error);
    return text;
}

GstElement *parseBin(const QString &description, QString *error)
{
    GError *parseError = nullptr;
    GstElement *bin = gst_parse_bin_from_description(description.toUtf8().constData(), TRUE, &parseError);
    if (parseError) {
        *error = QStringLiteral("\"%1\": %2").arg(description, takeError(parseError));
        if (bin)
            gst_object_unref(gst_object_ref_sink(bin));
        return nullptr;
    }
    return bin;
}
}

MediaPipeline::MediaPipeline(GstElement *pipeline, GstElement *videoSink, VideoPlaneWriter *plane)
    : pipeline(GST_ELEMENT(gst_object_ref_sink(pipeline)))
    , plane(plane)
{
    GstAppSinkCallbacks callbacks{};
    callbacks.new_sample = &MediaPipeline::onSample;
    callbacks.new_preroll = &MediaPipeline::onPreroll;
    gst_app_sink_set_callbacks(GST_APP_SINK(videoSink), &callbacks, this, nullptr);
    // A late frame is worth nothing: keep the newest only.
    g_object_set(videoSink, "max-buffers", 1u, "drop", TRUE, "enable-last-sample", FALSE, nullptr);
    gst_object_unref(videoSink);

    // Messages are taken in GStreamer's threads and handed to this object's
    // thread, so that no GLib main loop is needed beside Qt's.
    GstBus *bus = gst_element_get_bus(this->pipeline);
    gst_bus_set_sync_handler(bus, &MediaPipeline::onBusMessage, this, nullptr);
    gst_object_unref(bus);
}

MediaPipeline::~MediaPipeline()
{
    // Stopping joins the streaming threads: no callback runs after this.
    gst_element_set_state(pipeline, GST_STATE_NULL);
    GstBus *bus = gst_element_get_bus(pipeline);
    gst_bus_set_sync_handler(bus, nullptr, nullptr, nullptr);
    gst_object_unref(bus);
    gst_object_unref(pipeline);
}

std::unique_ptr<MediaPipeline> MediaPipeline::forFile(const QString &path, const QString &audioSink,
                                                      VideoPlaneWriter *plane, QString *error)
{
    if (!QFileInfo(path).isFile()) {
        *error = QStringLiteral("%1: no such file").arg(path);
        return nullptr;
    }
    GstElement *playbin = gst_element_factory_make("playbin", nullptr);
    if (!playbin) {
        *error = QStringLiteral("GStreamer has no playbin element");
        return nullptr;
    }
    gst_object_ref_sink(playbin);
    GError *uriError = nullptr;
    gchar *uri = gst_filename_to_uri(QFileInfo(path).absoluteFilePath().toLocal8Bit().constData(), &uriError);
    if (!uri) {
        *error = QStringLiteral("%1: %2").arg(path, takeError(uriError));
        gst_object_unref(playbin);
        return nullptr;
    }
    g_object_set(playbin, "uri", uri, nullptr);
    g_free(uri);

    guint flags = 0;
    g_object_get(playbin, "flags", &flags, nullptr);
    flags &= ~PlayText;
    if (audioSink == QLatin1String("none")) {
        flags &= ~PlayAudio;
    } else {
        GstElement *sound = parseBin(audioSink, error);
        if (!sound) {
            gst_object_unref(playbin);
            return nullptr;
        }
        g_object_set(playbin, "audio-sink", sound, nullptr);
    }
    g_object_set(playbin, "flags", flags, nullptr);

    GstElement *video = parseBin(VideoSinkDescription, error);
    if (!video) {
        gst_object_unref(playbin);
        return nullptr;
    }
    GstElement *appSink = gst_bin_get_by_name(GST_BIN(video), "plane");
    g_object_set(playbin, "video-sink", video, nullptr);
    std::unique_ptr<MediaPipeline> made(new MediaPipeline(playbin, appSink, plane));
    gst_object_unref(playbin);
    return made;
}

std::unique_ptr<MediaPipeline> MediaPipeline::forRtp(const QString &address, int port, double timeoutSeconds,
                                                     VideoPlaneWriter *plane, QString *error)
{
    // The jitter buffer waits a little for reordered packets; the depayloader
    // drops what follows a loss until the next key frame, so that a resumed
    // stream shows no smeared pictures.
    const QString description =
        QStringLiteral("udpsrc name=source caps=\"%1\" ! rtpjitterbuffer latency=100 "
                       "! rtpvp8depay wait-for-keyframe=true request-keyframe=true ! vp8dec ! %2")
            .arg(RtpCaps, VideoSinkDescription);
    GError *parseError = nullptr;
    GstElement *made = gst_parse_launch(description.toUtf8().constData(), &parseError);
    if (parseError) {
        *error = takeError(parseError);
        if (made)
            gst_object_unref(gst_object_ref_sink(made));
        return nullptr;
    }
    gst_object_ref_sink(made);
    // Set as properties, never pasted into the description: the address is
    // whatever the command line said.
    GstElement *source = gst_bin_get_by_name(GST_BIN(made), "source");
    g_object_set(source, "address", address.toUtf8().constData(), "port", gint(port), "timeout",
                 guint64(timeoutSeconds * GST_SECOND), nullptr);
    gst_object_unref(source);
    GstElement *appSink = gst_bin_get_by_name(GST_BIN(made), "plane");
    std::unique_ptr<MediaPipeline> pipeline(new MediaPipeline(made, appSink, plane));
    gst_object_unref(made);
    return pipeline;
}

QStringList MediaPipeline::missingElements()
{
    // A file: playbin finds the demuxers and decoders of the sample media
    // (Ogg/Theora/Vorbis, WebM/VP8). A stream: RTP/VP8 over UDP.
    static const char *const needed[] = {"playbin", "uridecodebin", "videoconvert", "videoscale", "appsink",
                                         "oggdemux", "theoradec", "vorbisdec", "matroskademux", "vp8dec",
                                         "audioconvert", "audioresample", "autoaudiosink", "fakesink",
                                         "udpsrc", "rtpjitterbuffer", "rtpvp8depay"};
    QStringList missing;
    for (const char *name : needed) {
        if (GstElementFactory *factory = gst_element_factory_find(name))
            gst_object_unref(factory);
        else
            missing.append(QLatin1String(name));
    }
    return missing;
}

bool MediaPipeline::pause()
{
    return gst_element_set_state(pipeline, GST_STATE_PAUSED) != GST_STATE_CHANGE_FAILURE;
}

bool MediaPipeline::play()
{
    return gst_element_set_state(pipeline, GST_STATE_PLAYING) != GST_STATE_CHANGE_FAILURE;
}

bool MediaPipeline::halt()
{
    return gst_element_set_state(pipeline, GST_STATE_NULL) != GST_STATE_CHANGE_FAILURE;
}

bool MediaPipeline::seek(double seconds)
{
    return gst_element_seek_simple(pipeline, GST_FORMAT_TIME,
                                   GstSeekFlags(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE),
                                   gint64(qMax(0.0, seconds) * GST_SECOND));
}

std::optional<double> MediaPipeline::position() const
{
    gint64 nanoseconds = 0;
    if (!gst_element_query_position(pipeline, GST_FORMAT_TIME, &nanoseconds) || nanoseconds < 0)
        return std::nullopt;
    return double(nanoseconds) / GST_SECOND;
}

std::optional<double> MediaPipeline::duration() const
{
    gint64 nanoseconds = 0;
    if (!gst_element_query_duration(pipeline, GST_FORMAT_TIME, &nanoseconds) || nanoseconds <= 0)
        return std::nullopt;
    return double(nanoseconds) / GST_SECOND;
}

void MediaPipeline::setVolume(double volume)
{
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(pipeline), "volume"))
        g_object_set(pipeline, "volume", qBound(0.0, volume, 1.0), nullptr);
}

GstBusSyncReply MediaPipeline::onBusMessage(GstBus *, GstMessage *message, gpointer self)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_EOS:
    case GST_MESSAGE_ERROR:
    case GST_MESSAGE_ASYNC_DONE:
        break;
    case GST_MESSAGE_ELEMENT:
        if (gst_message_has_name(message, "GstUDPSrcTimeout"))
            break;
        return GST_BUS_DROP;
    default:
        return GST_BUS_DROP;
    }
    // The message travels with the queued call and is released with it, also
    // when the pipeline is gone before the call runs.
    auto *pipeline = static_cast<MediaPipeline *>(self);
    std::shared_ptr<GstMessage> held(gst_message_ref(message), &gst_message_unref);
    QMetaObject::invokeMethod(
        pipeline, [pipeline, held] { pipeline->handle(held.get()); }, Qt::QueuedConnection);
    return GST_BUS_DROP;
}

void MediaPipeline::handle(GstMessage *message)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_EOS:
        emit finished();
        break;
    case GST_MESSAGE_ERROR: {
        GError *error = nullptr;
        gchar *debug = nullptr;
        gst_message_parse_error(message, &error, &debug);
        g_free(debug);
        emit failed(QStringLiteral("%1: %2").arg(QString::fromUtf8(GST_OBJECT_NAME(GST_MESSAGE_SRC(message))),
                                                 takeError(error)));
        break;
    }
    case GST_MESSAGE_ASYNC_DONE:
        emit settled();
        break;
    case GST_MESSAGE_ELEMENT:
        emit silent();
        break;
    default:
        break;
    }
}

GstFlowReturn MediaPipeline::onSample(GstAppSink *sink, gpointer self)
{
    auto *pipeline = static_cast<MediaPipeline *>(self);
    if (GstSample *sample = gst_app_sink_pull_sample(sink)) {
        pipeline->showSample(sample);
        gst_sample_unref(sample);
        ++pipeline->frameCount;
    }
    return GST_FLOW_OK;
}

GstFlowReturn MediaPipeline::onPreroll(GstAppSink *sink, gpointer self)
{
    // The first picture of a title, and the one a seek lands on while paused.
    if (GstSample *sample = gst_app_sink_pull_preroll(sink)) {
        static_cast<MediaPipeline *>(self)->showSample(sample);
        gst_sample_unref(sample);
    }
    return GST_FLOW_OK;
}

void MediaPipeline::showSample(GstSample *sample)
{
    GstVideoInfo info;
    GstCaps *caps = gst_sample_get_caps(sample);
    GstBuffer *buffer = gst_sample_get_buffer(sample);
    if (!caps || !buffer || !gst_video_info_from_caps(&info, caps))
        return;
    GstVideoFrame frame;
    if (!gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ))
        return;
    plane->write(static_cast<const std::uint8_t *>(GST_VIDEO_FRAME_PLANE_DATA(&frame, 0)),
                 GST_VIDEO_FRAME_WIDTH(&frame), GST_VIDEO_FRAME_HEIGHT(&frame),
                 GST_VIDEO_FRAME_PLANE_STRIDE(&frame, 0));
    gst_video_frame_unmap(&frame);
}
