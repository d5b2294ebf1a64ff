#include "simulatoroptions.h"
#include "stopsignals.h"
#include "videomanagersimulator.h"

#include "qtopiadbustransport.h"
#include "qtopiaipctransport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("videomanager-sim"));

    const SimulatorCommandLine commandLine = parseSimulatorCommandLine(QCoreApplication::arguments());
    if (commandLine.status == SimulatorCommandLine::Help) {
        QTextStream(stdout) << commandLine.text;
        return 0;
    }
    if (commandLine.status == SimulatorCommandLine::Error) {
        QTextStream(stderr) << "videomanager-sim: " << commandLine.text << "\n"
                            << "Try videomanager-sim --help.\n";
        return 2;
    }

    QtopiaIpcTransport *transport = QtopiaIpcTransport::selectDefault();
    VideoManagerSimulator simulator(commandLine.options);

    QElapsedTimer clock;
    clock.start();
    QTextStream out(stdout);
    QObject::connect(&simulator, &VideoManagerSimulator::logLine, &simulator, [&](const QString &line) {
        out << QStringLiteral("[%1] ").arg(clock.elapsed() / 1000.0, 9, 'f', 3) << line << Qt::endl;
    });

    // Listen before saying so, so that a peer that starts now is heard.
    if (auto *bus = dynamic_cast<QtopiaDBusTransport *>(transport))
        bus->sync();
    out << QStringLiteral("[%1] -- ready: %2 group(s), a second lasts %3 ms")
               .arg(0.0, 9, 'f', 3)
               .arg(commandLine.options.catalogue.groups.size())
               .arg(simulator.secondMs())
        << Qt::endl;
    // Told to stop, it ends as it does normally.
    StopSignals stop;
    QObject::connect(&stop, &StopSignals::stopRequested, &app, &QCoreApplication::quit);
    return app.exec();
}
