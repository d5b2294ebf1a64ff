// storyboard: runs a scripted session of the video phone module against the
// simulated video manager and writes one picture of the device's display per
// step, with an index.html.
#include "displaychoice.h"
#include "launcherscreen.h"
#include "phonesession.h"
#include "storyboard.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {
QString text(const char *source)
{
    return QCoreApplication::translate("storyboard", source);
}

void printLines(const QStringList &lines)
{
    for (const QString &line : lines)
        std::fprintf(stderr, "storyboard: %s\n", qPrintable(line));
}

// The names of the pictures, from a storyboard without a session.
QStringList pictureNames()
{
    Storyboard board([] { return QImage(); }, QString());
    PhoneSession session;
    session.script(&board);
    return board.pictureNames();
}
}

int main(int argc, char **argv)
{
    // A picture must not depend on the machine's display; notices wait for the script.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QPE_NOTICE_TIMEOUT");

    // The module's files and settings go to a private root, unless one is given.
    QTemporaryDir root;
    if (qEnvironmentVariableIsEmpty("QPE_ROOT")) {
        if (!root.isValid() || !QDir(root.path()).mkpath(QStringLiteral("tmp/status")) ||
            !QDir(root.path()).mkpath(QStringLiteral("tmp/systemdb"))) {
            std::fprintf(stderr, "storyboard: cannot create a temporary device root\n");
            return 1;
        }
        qputenv("QPE_ROOT", QFile::encodeName(root.path()));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(root.filePath(QStringLiteral("settings"))));
    }

    useDeviceFontResolution();
    QApplication app(argc, argv);
    // The session ends with its script, not whenever no window happens to be up.
    QApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::setApplicationName(QStringLiteral("storyboard"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        text("Runs a scripted session of the push viewer and the VOD browser against the simulated video\n"
             "manager and writes a PNG picture of the 480 x 272 display after each step into OUTDIR,\n"
             "with an index.html that shows them with captions. Then checks that every picture is there\n"
             "and differs from its neighbours."));
    parser.addHelpOption();
    const QCommandLineOption verifyOption(
        QStringLiteral("verify"), text("Only check the pictures already in OUTDIR; run no session."));
    parser.addOption(verifyOption);
    const QCommandLineOption compareOption(
        QStringLiteral("compare"),
        text("Also compare every picture with the reference picture of the same name in DIR, pixel by pixel."),
        QStringLiteral("DIR"));
    parser.addOption(compareOption);
    parser.addPositionalArgument(QStringLiteral("OUTDIR"), text("Where the pictures go (default: storyboard)."));
    parser.process(app);
    if (parser.positionalArguments().size() > 1) {
        printLines({text("one output folder only")});
        return 1;
    }
    const QString outDir = parser.positionalArguments().value(0, QStringLiteral("storyboard"));
    const QSize displaySize(LauncherScreen::Width, LauncherScreen::Height);

    if (parser.isSet(verifyOption)) {
        const QStringList problems = Storyboard::problems(outDir, pictureNames(), displaySize);
        printLines(problems);
        return problems.isEmpty() ? 0 : 1;
    }

    auto *session = new PhoneSession;
    Storyboard board([session] { return session->screen()->screenImage(); }, outDir);
    session->script(&board);
    bool ok = false;
    QObject::connect(&board, &Storyboard::finished, &app, [&ok](bool result) {
        ok = result;
        QCoreApplication::quit();
    });
    QTimer::singleShot(0, &board, &Storyboard::start);
    app.exec();
    const QStringList names = board.pictureNames();
    delete session;

    if (!ok) {
        printLines({board.errorString()});
        return 1;
    }
    QStringList problems = Storyboard::problems(outDir, names, displaySize);
    if (parser.isSet(compareOption))
        problems += Storyboard::differences(outDir, parser.value(compareOption), names);
    printLines(problems);
    if (!problems.isEmpty())
        return 1;
    std::printf("%s\n", qPrintable(text("%1 pictures and index.html in %2")
                                       .arg(names.size())
                                       .arg(QDir(outDir).absolutePath())));
    return 0;
}
