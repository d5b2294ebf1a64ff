#include "commandlineparts.h"
#include "mediapipeline.h"
#include "videomanager.h"
#include "videomanageroptions.h"
#include "videoplanewriter.h"

#include "qtopiaipctransport.h"

#include <QCoreApplication>
#include <QTextStream>

#include <gst/gst.h>

namespace {
int run(const VideoManagerCommandLine &commandLine)
{
    QTextStream out(stdout);
    if (commandLine.status == VideoManagerCommandLine::Check) {
        const QStringList missing = MediaPipeline::missingElements();
        if (missing.isEmpty())
            return 0;
        out << "missing GStreamer elements: " << missing.join(QLatin1String(", ")) << Qt::endl;
        return 1;
    }

    VideoPlaneWriter plane(commandLine.options.videoPlane);
    QString error;
    if (!plane.open(&error)) {
        QTextStream(stderr) << "videomanager: " << error << "\n";
        return 1;
    }
    QtopiaIpcTransport::selectDefault();
    VideoManager manager(commandLine.options, &plane);
    // Told to stop, it ends as it does normally: the video plane is removed.
    return manager.serve(QStringLiteral("%1 group(s), video plane %2, broadcast on %3 port %4")
                             .arg(commandLine.options.catalogue.groups.size())
                             .arg(plane.name(), commandLine.options.pushAddress)
                             .arg(commandLine.options.pushPort));
}
}

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("videomanager"));

    const VideoManagerCommandLine commandLine = parseVideoManagerCommandLine(QCoreApplication::arguments());
    if (commandLine.status == VideoManagerCommandLine::Help || commandLine.status == VideoManagerCommandLine::Error)
        return CommandLineParts::finish(commandLine.status == VideoManagerCommandLine::Help, commandLine.text);

    gst_init(nullptr, nullptr);
    const int code = run(commandLine);
    // Everything of GStreamer is released by now; its own caches go too.
    gst_deinit();
    return code;
}
