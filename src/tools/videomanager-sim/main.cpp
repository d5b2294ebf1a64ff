#include "commandlineparts.h"
#include "simulatoroptions.h"
#include "videomanagersimulator.h"

#include "qtopiaipctransport.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("videomanager-sim"));

    const SimulatorCommandLine commandLine = parseSimulatorCommandLine(QCoreApplication::arguments());
    if (commandLine.status != SimulatorCommandLine::Run)
        return CommandLineParts::finish(commandLine.status == SimulatorCommandLine::Help, commandLine.text);

    QtopiaIpcTransport::selectDefault();
    VideoManagerSimulator simulator(commandLine.options);
    return simulator.serve(QStringLiteral("%1 group(s), a second lasts %2 ms")
                               .arg(commandLine.options.catalogue.groups.size())
                               .arg(simulator.secondMs()));
}
