#include "videomanageroptions.h"

#include "commandlineparts.h"
#include "videoplanelayout.h"

#include <QCommandLineParser>

namespace {
const char Description[] =
    "The video manager of the video module, playing real media with GStreamer. It\n"
    "answers the module's requests on \"QPE/VideoManager\" as the phone's video manager\n"
    "does, reports the real playing position once a second, writes the VOD catalogue\n"
    "files (\"/tmp/systemdb/vod_partlist.bin\", \"/tmp/systemdb/vod_list.bin\", under\n"
    "$QPE_ROOT) and logs every message it receives (<-) and sends (->) on stdout.\n"
    "\n"
    "VOD: the titles of the catalogue name their media \"file\"; setupVod(int) opens it\n"
    "and reports its duration in setupOKVod(group,part,number,100,100+duration,0);\n"
    "startVod, pauseVod, resumeVod, forwardVod, reverseVod and stopVod drive the\n"
    "playback, with exact seeks to the positions asked for; endOKVod() at the end.\n"
    "Push: playPush(QString) starts receiving RTP/VP8 (payload 96) on --push-address\n"
    "and --push-port (a multicast group is joined); currentTime(float) every second\n"
    "while pictures arrive; endOKMulticastPush() when none came for --push-timeout.\n"
    "pausePush()/resumePush() release and take up the stream again.\n"
    "\n"
    "Pictures go to the video plane, a shared memory frame buffer (RGB32) that the\n"
    "launcher shows under the module's windows, scaled into the rectangle of the last\n"
    "changeVodWindow(int,int,int,int). Its name: --video-plane, else $QPE_VIDEO_PLANE,\n"
    "else one per user and $QPE_ROOT, as the launcher chooses it.\n"
    "\n"
    "It talks over the D-Bus session bus when one is reachable, else in-process\n"
    "(useless on its own); QPE_IPC_TRANSPORT=dbus|local forces the choice.\n"
    "\n"
    "Catalogue JSON (UTF-8; written to the files in EUC-KR):\n"
    "  {\"groups\": [{\"name\": \"Samples\", \"parts\": [{\"name\": \"Cards\",\n"
    "     \"titles\": [{\"name\": \"Bars\", \"length\": 5, \"file\": \"bars.ogg\"}]}]}]}\n"
    "length in whole seconds as the browser lists it; file relative to the JSON file.";
}

VideoManagerCommandLine parseVideoManagerCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(Description));
    parser.addOptions({
        {"catalogue", "Reads the catalogue from the JSON <file>; without it the titles have no media.",
         "file"},
        {"push-address", "Receives the broadcast on this <address> (default 127.0.0.1).", "address"},
        {"push-port", "Receives the broadcast on this UDP <port> (default 5004).", "port"},
        {"push-timeout", "Seconds without a packet after which the broadcast has ended (default 2).",
         "seconds"},
        {"push-start-delay", "Seconds from pushAppExecuted() to startPush() (default 0.5).", "seconds"},
        {"audio-sink",
         "Where the sound goes: a GStreamer <description> (default autoaudiosink; \"fakesink sync=true\" "
         "for none but in time; \"none\" leaves the sound out).",
         "description"},
        {"video-plane", "The video plane's shared memory <name>.", "name"},
        {"check", "Lists the GStreamer elements this system lacks; exit code 1 if any."},
    });

    VideoManagerCommandLine result;
    auto fail = [&result](const QString &why) {
        result.status = VideoManagerCommandLine::Error;
        result.text = why;
        return result;
    };
    bool help = false;
    if (!CommandLineParts::parse(parser, arguments, &help, &result.text)) {
        result.status = help ? VideoManagerCommandLine::Help : VideoManagerCommandLine::Error;
        return result;
    }
    if (parser.isSet("check")) {
        result.status = VideoManagerCommandLine::Check;
        return result;
    }

    VideoManagerOptions &o = result.options;
    QString error;
    if (!CommandLineParts::readNumber(parser, "push-timeout", 0, false, &o.pushTimeout, &error)
        || !CommandLineParts::readNumber(parser, "push-start-delay", 0, true, &o.pushStartDelay, &error)
        || !CommandLineParts::readCatalogue(parser, &o.catalogue, &error))
        return fail(error);
    if (parser.isSet("push-address"))
        o.pushAddress = parser.value("push-address");
    if (parser.isSet("push-port")) {
        bool ok = false;
        o.pushPort = parser.value("push-port").toInt(&ok);
        if (!ok || o.pushPort < 1 || o.pushPort > 65535)
            return fail(QStringLiteral("--push-port needs a port from 1 to 65535, not \"%1\"")
                            .arg(parser.value("push-port")));
    }
    if (parser.isSet("audio-sink"))
        o.audioSink = parser.value("audio-sink");
    o.videoPlane = parser.isSet("video-plane") ? parser.value("video-plane") : VideoPlaneLayout::nameFromEnvironment();
    if (!o.videoPlane.startsWith(QLatin1Char('/')))
        o.videoPlane.prepend(QLatin1Char('/'));
    if (o.videoPlane.size() < 2 || o.videoPlane.indexOf(QLatin1Char('/'), 1) >= 0)
        return fail(QStringLiteral("the video plane needs a name without slashes, not \"%1\"").arg(o.videoPlane));
    return result;
}
