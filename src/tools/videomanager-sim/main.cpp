#include "simulatoroptions.h"
#include "videomanagersimulator.h"

#include "qtopiaipctransport.h"

#include <QCoreApplication>
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

    QtopiaIpcTransport::selectDefault();
    VideoManagerSimulator simulator(commandLine.options);
    return simulator.serve(QStringLiteral("%1 group(s), a second lasts %2 ms")
                               .arg(commandLine.options.catalogue.groups.size())
                               .arg(simulator.secondMs()));
}
