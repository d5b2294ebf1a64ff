#include "mediapipeline.h"
#include "stopsignals.h"
#include "videomanager.h"
#include "videomanageroptions.h"
#include "videoplanewriter.h"

#include "qtopiadbustransport.h"
#include "qtopiaipctransport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <gst/gst.h>

namespace {
int run(QCoreApplication &app, const VideoManagerCommandLine &commandLine)
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
    QtopiaIpcTransport *transport = QtopiaIpcTransport::selectDefault();
    VideoManager manager(commandLine.options, &plane);

    QElapsedTimer clock;
    clock.start();
    QObject::connect(&manager, &VideoManager::logLine, &manager, [&](const QString &line) {
        out << QStringLiteral("[%1] ").arg(clock.elapsed() / 1000.0, 9, 'f', 3) << line << Qt::endl;
    });

    // Listen before saying so, so that a peer that starts now is heard.
    if (auto *bus = dynamic_cast<QtopiaDBusTransport *>(transport))
        bus->sync();
    out << QStringLiteral("[%1] -- ready: %2 group(s), video plane %3, broadcast on %4 port %5")
               .arg(0.0, 9, 'f', 3)
               .arg(commandLine.options.catalogue.groups.size())
               .arg(plane.name(), commandLine.options.pushAddress)
               .arg(commandLine.options.pushPort)
        << Qt::endl;
    // Told to stop, it ends as it does normally: the video plane is removed.
    StopSignals stop;
    QObject::connect(&stop, &StopSignals::stopRequested, &app, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
}

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("videomanager"));

    const VideoManagerCommandLine commandLine = parseVideoManagerCommandLine(QCoreApplication::arguments());
    if (commandLine.status == VideoManagerCommandLine::Help) {
        QTextStream(stdout) << commandLine.text;
        return 0;
    }
    if (commandLine.status == VideoManagerCommandLine::Error) {
        QTextStream(stderr) << "videomanager: " << commandLine.text << "\n"
                            << "Try videomanager --help.\n";
        return 2;
    }

    gst_init(nullptr, nullptr);
    const int code = run(app, commandLine);
    // Everything of GStreamer is released by now; its own caches go too.
    gst_deinit();
    return code;
}
