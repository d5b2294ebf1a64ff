#include "commandlineparts.h"

#include "cataloguejson.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace CommandLineParts {

bool parse(QCommandLineParser &parser, const QStringList &arguments, bool *help, QString *text)
{
    const QCommandLineOption helpOption(QStringList{"h", "help"}, "Shows this help.");
    parser.addOption(helpOption);
    *help = false;
    if (!parser.parse(arguments)) {
        *text = parser.errorText();
        return false;
    }
    if (parser.isSet(helpOption)) {
        *help = true;
        *text = parser.helpText();
        return false;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *text = QStringLiteral("unexpected argument: %1").arg(parser.positionalArguments().constFirst());
        return false;
    }
    return true;
}

int finish(bool help, const QString &text)
{
    if (help) {
        QTextStream(stdout) << text;
        return 0;
    }
    const QString name = QCoreApplication::applicationName();
    QTextStream(stderr) << name << ": " << text << "\nTry " << name << " --help.\n";
    return 2;
}

bool readNumber(const QCommandLineParser &parser, const QString &name, double minimum, bool inclusive,
                double *out, QString *error)
{
    if (!parser.isSet(name))
        return true;
    bool ok = false;
    const double value = parser.value(name).toDouble(&ok);
    if (!ok || (inclusive ? value < minimum : value <= minimum)) {
        *error = QStringLiteral("--%1 needs a number %2 %3, not \"%4\"")
                     .arg(name, inclusive ? QStringLiteral("of at least") : QStringLiteral("above"))
                     .arg(minimum)
                     .arg(parser.value(name));
        return false;
    }
    *out = value;
    return true;
}

bool readCatalogue(const QCommandLineParser &parser, SimCatalogue *out, QString *error)
{
    if (!parser.isSet("catalogue"))
        return true;
    std::optional<SimCatalogue> catalogue = readCatalogueJsonFile(parser.value("catalogue"), error);
    if (!catalogue)
        return false;
    *out = *catalogue;
    return true;
}

} // namespace CommandLineParts
