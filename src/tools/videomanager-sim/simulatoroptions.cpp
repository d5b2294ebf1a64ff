#include "simulatoroptions.h"

#include "commandlineparts.h"
#include "messagetext.h"

#include <QCommandLineParser>

namespace {
const char Description[] =
    "Plays the video manager for the video module: answers its requests on\n"
    "\"QPE/VideoManager\", reports the playing time, writes the VOD catalogue files\n"
    "(\"/tmp/systemdb/vod_partlist.bin\", \"/tmp/systemdb/vod_list.bin\", under $QPE_ROOT)\n"
    "and logs every message it receives (<-) and sends (->) on stdout.\n"
    "\n"
    "It talks over the D-Bus session bus when one is reachable, else in-process\n"
    "(useless on its own); QPE_IPC_TRANSPORT=dbus|local forces the choice.\n"
    "\n"
    "Answers: pushAppExecuted() -> startPush() after --push-start-delay;\n"
    "playPush(QString) -> currentTime(float) every second on \"QPE/PushApplication\";\n"
    "pausePush() -> pauseOKPush(); resumePush() -> the reports go on; stopUIPush() ->\n"
    "endOKPush(); stopPush(), stopMulticastPush() -> the reports stop.\n"
    "requestGroupList() -> group file + getGroupList(); requestContents(int,int) ->\n"
    "contents file of that group and part + getContentsList(); setupVod(int) ->\n"
    "setupOKVod(group,part,number,100,100+length,0); startVod(QString) -> startOKVod() and\n"
    "currentTime(float) every second on \"QPE/VideoApplication\"; pauseVod(int) ->\n"
    "pauseOKVod(float); resumeVod(QString) -> resumedOKVod(), going on from there;\n"
    "forwardVod/reverseVod(QString) -> jump there; stopVod() -> endOKVod(); the end of a\n"
    "title -> endOKVod(). changeVodWindow(int,int,int,int) and the call manager's\n"
    "setVolume_vod(int), setHeadset_onoff() are logged and remembered.\n"
    "\n"
    "Times are simulated seconds (see --time-scale). The fault times count from the\n"
    "first playback start (playPush or startVod); --multicast-end-at from the first\n"
    "push playback, --server-pause-at from the first VOD playback; --send-at from the\n"
    "start of the simulator.\n"
    "\n"
    "Catalogue JSON (UTF-8; written to the files in EUC-KR):\n"
    "  {\"groups\": [{\"name\": \"News\", \"parts\": [{\"name\": \"Weather\",\n"
    "     \"titles\": [{\"name\": \"Weekly\", \"length\": 95}]}]}]}\n"
    "length in seconds; at most 20 parts per group. Without --catalogue a built-in one\n"
    "with Korean and English titles is used.";

bool readCode(const QCommandLineParser &parser, const QString &name, std::optional<int> *out,
              QString *error)
{
    if (!parser.isSet(name))
        return true;
    bool ok = false;
    const int value = parser.value(name).toInt(&ok);
    if (!ok) {
        *error = QStringLiteral("--%1 needs an integer failure code, not \"%2\"").arg(name, parser.value(name));
        return false;
    }
    *out = value;
    return true;
}

bool readScheduled(const QString &text, ScheduledMessage *out, QString *error)
{
    const QStringList items = text.split(QLatin1Char(','));
    bool ok = false;
    const double at = items.value(0).toDouble(&ok);
    if (items.size() < 3 || !ok || at < 0) {
        *error = QStringLiteral("--send-at needs SECONDS,CHANNEL,SIGNATURE[,ARGUMENT...], not \"%1\"").arg(text);
        return false;
    }
    // Signatures hold commas themselves: take the items up to the one that closes it.
    qsizetype end = 2;
    QString signature = items.at(2);
    while (!signature.endsWith(QLatin1Char(')')) && end + 1 < items.size())
        signature += QLatin1Char(',') + items.at(++end);
    const MessageEntry *messageSpec = findMessage(items.at(1), signature);
    if (!messageSpec) {
        *error = QStringLiteral("--send-at: %1 on %2 is no message of the protocol").arg(signature, items.at(1));
        return false;
    }
    QString why;
    const std::optional<QByteArray> data = encodeArguments(*messageSpec, items.mid(end + 1), &why);
    if (!data) {
        *error = QStringLiteral("--send-at: ") + why;
        return false;
    }
    *out = {at, items.at(1), signature, *data};
    return true;
}
}

SimulatorCommandLine parseSimulatorCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(Description));
    parser.addOptions({
        {"catalogue", "Reads the catalogue from the JSON <file>.", "file"},
        {"time-scale", "One simulated second lasts <factor> real seconds (0.05: 50 ms). Default 1.",
         "factor"},
        {"push-start-delay", "Seconds from pushAppExecuted() to startPush(). Default 0.5.", "seconds"},
        {"answer-delay", "Seconds from a catalogue or set-up request to its answer. Default 0.", "seconds"},
        {"silent-after", "Stops answering and reporting <seconds> after the first playback start.",
         "seconds"},
        {"fail-setup-vod", "Answers setupVod(int) with setupFailVod(int) carrying <code>.", "code"},
        {"fail-setup-push", "Answers pushAppExecuted() with setupFailPush(int) carrying <code>.", "code"},
        {"fail-start-vod", "Answers startVod(QString) with startFailVod(int) carrying <code>.", "code"},
        {"call-at", "Sends startcall() on both notification channels at <seconds>.", "seconds"},
        {"call-length", "Sends stopcall() this many seconds after startcall(). Default 5.", "seconds"},
        {"multicast-end-at", "Sends endOKMulticastPush() <seconds> after the push playback started.",
         "seconds"},
        {"server-pause-at", "Pauses the VOD playback with pauseVodByServer(float) at <seconds>.",
         "seconds"},
        {"send-at",
         "Sends any protocol message: <timed-message> = SECONDS,CHANNEL,SIGNATURE[,ARGUMENT...], e.g. "
         "5,QPE/VideoApplication,vodSoundMute(int),1. May be repeated.",
         "timed-message"},
    });

    SimulatorCommandLine result;
    auto fail = [&result](const QString &why) {
        result.status = SimulatorCommandLine::Error;
        result.text = why;
        return result;
    };
    bool help = false;
    if (!CommandLineParts::parse(parser, arguments, &help, &result.text)) {
        result.status = help ? SimulatorCommandLine::Help : SimulatorCommandLine::Error;
        return result;
    }

    SimulatorOptions &o = result.options;
    QString error;
    using CommandLineParts::readNumber;
    if (!readNumber(parser, "time-scale", 0, false, &o.timeScale, &error)
        || !readNumber(parser, "push-start-delay", 0, true, &o.pushStartDelay, &error)
        || !readNumber(parser, "answer-delay", 0, true, &o.answerDelay, &error)
        || !readNumber(parser, "silent-after", 0, true, &o.silentAfter, &error)
        || !readNumber(parser, "call-at", 0, true, &o.callAt, &error)
        || !readNumber(parser, "call-length", 0, true, &o.callLength, &error)
        || !readNumber(parser, "multicast-end-at", 0, true, &o.multicastEndAt, &error)
        || !readNumber(parser, "server-pause-at", 0, true, &o.serverPauseAt, &error)
        || !readCode(parser, "fail-setup-vod", &o.failSetupVod, &error)
        || !readCode(parser, "fail-setup-push", &o.failSetupPush, &error)
        || !readCode(parser, "fail-start-vod", &o.failStartVod, &error))
        return fail(error);
    for (const QString &text : parser.values("send-at")) {
        ScheduledMessage message;
        if (!readScheduled(text, &message, &error))
            return fail(error);
        o.scheduled.append(message);
    }
    if (!CommandLineParts::readCatalogue(parser, &o.catalogue, &error))
        return fail(error);
    return result;
}
