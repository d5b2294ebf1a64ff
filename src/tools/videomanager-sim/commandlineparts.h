#pragma once

#include "simcatalogue.h"

#include <QString>
#include <QStringList>

class QCommandLineParser;

// The parts of the video managers' command lines that the simulated and the
// real one read alike.
namespace CommandLineParts {

// Adds -h/--help and parses `arguments` (the first is the program name); no
// positional arguments are taken. False when the program is not to run:
// `*help` then says whether `*text` is the help text or what is wrong.
bool parse(QCommandLineParser &parser, const QStringList &arguments, bool *help, QString *text);

// The number of option `name`, if it is set: above `minimum`, or at least
// `minimum` when `inclusive`. False, with `*error` saying why, if it is not.
bool readNumber(const QCommandLineParser &parser, const QString &name, double minimum, bool inclusive,
                double *out, QString *error);

// For a command line that is not to run: prints the help on stdout (0), or
// what is wrong on stderr (2), and returns that exit code.
int finish(bool help, const QString &text);

// The catalogue JSON file of option "catalogue", if it is set.
bool readCatalogue(const QCommandLineParser &parser, SimCatalogue *out, QString *error);

} // namespace CommandLineParts
