// The simulated video manager: its answers and reports second by second on a
// manual clock, and the faults its command line asks for. The catalogue files
// it writes are read by the browser in the roads and the storyboard.
#include "cataloguejson.h"
#include "messagetext.h"
#include "messaging/messagecatalogue.h"
#include "messaging/vodmessages.h"
#include "qtopiachannel.h"
#include "qtopiaipcenvelope.h"
#include "testenvironment.h"
#include "videomanagersimulator.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <memory>

namespace {

const QString Push = "QPE/PushApplication ";
const QString App = "QPE/VideoApplication ";

// A small catalogue whose lengths the tests know.
SimCatalogue testCatalogue()
{
    SimCatalogue c;
    c.groups = {
        {"News", {{"Weather", {{"Weekly", 95}, {"Daily", 30}}}}},
        {QString::fromUtf8("드라마"), {{QString::fromUtf8("1부"), {{QString::fromUtf8("가"), 12}}}, {"Empty", {}}}},
    };
    return c;
}

// The time reports of whole seconds from..to on a channel.
QStringList ticks(const QString &channel, int from, int to)
{
    QStringList lines;
    for (int s = from; s <= to; ++s)
        lines << channel + "currentTime(float) " + QString::number(s);
    return lines;
}

// Stands in for the module: listens on both notification channels, keeps what
// arrives as readable lines, and sends requests written as text.
class ModuleStandIn : public QObject
{
public:
    ModuleStandIn()
    {
        for (const char *name : {VodChannel::PushApplication, VodChannel::VideoApplication}) {
            auto *channel = new QtopiaChannel(QLatin1String(name), this);
            connect(channel, &QtopiaChannel::received, this, [this, name](const QString &m, const QByteArray &d) {
                const MessageEntry *entry = findMessage(QLatin1String(name), m);
                const QString arguments = entry ? describeArguments(*entry, d) : QString("?");
                received << QString("%1 %2%3").arg(QLatin1String(name), m,
                                                    arguments.isEmpty() ? QString() : " " + arguments);
            });
        }
    }

    // "signature|argument|argument" to the video manager.
    void request(const QString &entry)
    {
        const QStringList items = entry.split('|');
        const MessageEntry *m = findMessage(VodChannel::VideoManager, items.first());
        QString error;
        const QByteArray data = m ? encodeArguments(*m, items.mid(1), &error).value_or(QByteArray()) : QByteArray();
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QtopiaIpcEnvelope e(VodChannel::VideoManager, items.first());
        e.writeRawData(data.constData(), int(data.size()));
    }

    QStringList received;
};

} // namespace

class tst_VideoManagerSim : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;
    QStringList log;

    std::unique_ptr<VideoManagerSimulator> makeSimulator(const QStringList &arguments)
    {
        const SimulatorCommandLine commandLine =
            parseSimulatorCommandLine(QStringList{"videomanager-sim"} + arguments);
        if (commandLine.status != SimulatorCommandLine::Run)
            qFatal("bad arguments: %s", qPrintable(commandLine.text));
        SimulatorOptions options = commandLine.options;
        options.catalogue = testCatalogue();
        options.manualClock = true;
        auto simulator = std::make_unique<VideoManagerSimulator>(options);
        connect(simulator.get(), &VideoManagerSimulator::logLine, this, [this](const QString &l) { log << l; });
        return simulator;
    }

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init() { log.clear(); }
    void cleanup()
    {
        flushEvents();
        QVERIFY(QtopiaChannel::listenedChannels().isEmpty());
    }

    void timeline_data();
    void timeline();
    void commandLine_data();
    void commandLine();
};

void tst_VideoManagerSim::timeline_data()
{
    QTest::addColumn<QStringList>("arguments");
    // Requests, and "+N" for N simulated seconds.
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("expected");

    const QString contents = App + "getContentsList()";
    const QStringList setUp{"requestContents(int,int)|0|0", "setupVod(int)|1"};
    const QString setupOK = App + "setupOKVod(int,int,int,float,float,float) 0, 0, 1, 100, 195, 0";
    const QStringList started{contents, setupOK, App + "startOKVod()"};
    // The 12-second title of group 1, part 0.
    const QStringList shortTitle{"requestContents(int,int)|1|0", "setupVod(int)|1", "startVod(QString)|0"};
    const QStringList shortStarted{contents, App + "setupOKVod(int,int,int,float,float,float) 1, 0, 1, 100, 112, 0",
                                   App + "startOKVod()"};

    QTest::newRow("group list") << QStringList() << QStringList{"requestGroupList()"}
                                << QStringList{App + "getGroupList()"};
    QTest::newRow("setup without a title") << QStringList()
                                           << QStringList{"requestContents(int,int)|0|0", "setupVod(int)|3"}
                                           << QStringList{contents, App + "setupFailVod(int) 2"};
    QTest::newRow("setup asked to fail") << QStringList{"--fail-setup-vod", "7"} << setUp
                                         << QStringList{contents, App + "setupFailVod(int) 7"};
    QTest::newRow("start without setup") << QStringList() << QStringList{"startVod(QString)|0"}
                                         << QStringList{App + "startFailVod(int) 1"};
    QTest::newRow("start asked to fail") << QStringList{"--fail-start-vod", "5"}
                                         << setUp + QStringList{"startVod(QString)|0"}
                                         << QStringList{contents, setupOK, App + "startFailVod(int) 5"};
    QTest::newRow("reports every second to the end") << QStringList() << shortTitle + QStringList{"+14"}
                                                     << shortStarted + ticks(App, 1, 12) + QStringList{App + "endOKVod()"};
    QTest::newRow("pause, resume from elsewhere")
        << QStringList() << shortTitle + QStringList{"+3", "pauseVod(int)|0", "+2", "resumeVod(QString)|8", "+5"}
        << shortStarted + ticks(App, 1, 3) + QStringList{App + "pauseOKVod(float) 3", App + "resumedOKVod()"}
               + ticks(App, 9, 12) + QStringList{App + "endOKVod()"};
    QTest::newRow("seeks") << QStringList()
                           << setUp + QStringList{"startVod(QString)|0", "forwardVod(QString)|60",
                                                  "reverseVod(QString)|10.5", "pauseVod(int)|1"}
                           << started + QStringList{App + "pauseOKVod(float) 10.5"};
    QTest::newRow("seek beyond the end") << QStringList()
                                         << setUp + QStringList{"startVod(QString)|0", "forwardVod(QString)|500",
                                                                "pauseVod(int)|0"}
                                         << started + QStringList{App + "pauseOKVod(float) 95"};
    QTest::newRow("pause while not playing") << QStringList() << setUp + QStringList{"pauseVod(int)|0"}
                                             << QStringList{contents, setupOK, App + "pauseFailVod()"};
    QTest::newRow("resume without setup") << QStringList() << QStringList{"resumeVod(QString)|3"}
                                          << QStringList{App + "error(int) 1"};
    QTest::newRow("stop") << QStringList() << setUp + QStringList{"startVod(QString)|0", "+1", "stopVod()", "+2"}
                          << started + ticks(App, 1, 1) + QStringList{App + "endOKVod()"};
    QTest::newRow("push start") << QStringList() << QStringList{"pushAppExecuted()", "+1"}
                                << QStringList{Push + "startPush()"};
    QTest::newRow("push setup asked to fail") << QStringList{"--fail-setup-push", "9"}
                                              << QStringList{"pushAppExecuted()", "+1"}
                                              << QStringList{Push + "setupFailPush(int) 9"};
    QTest::newRow("push reports until paused or stopped")
        << QStringList() << QStringList{"playPush(QString)|0.0", "+2", "pausePush()", "+2", "resumePush()", "+1",
                                        "stopPush()", "+2"}
        << ticks(Push, 1, 2) + QStringList{Push + "pauseOKPush()"} + ticks(Push, 3, 3);
    QTest::newRow("push stopped by the user") << QStringList() << QStringList{"playPush(QString)|0.0", "stopUIPush()"}
                                              << QStringList{Push + "endOKPush()"};
    QTest::newRow("silent after 3 s")
        << QStringList{"--silent-after", "3"}
        << setUp + QStringList{"playPush(QString)|0.0", "startVod(QString)|0", "+5", "pauseVod(int)|0",
                               "pushAppExecuted()", "+2"}
        << started + QStringList{Push + "currentTime(float) 1", App + "currentTime(float) 1",
                                 Push + "currentTime(float) 2", App + "currentTime(float) 2"};
    QTest::newRow("a call from 2 s for 3 s")
        << QStringList{"--call-at", "2", "--call-length", "3"} << shortTitle + QStringList{"+6"}
        << shortStarted + ticks(App, 1, 1) + QStringList{Push + "startcall()", App + "startcall()"} + ticks(App, 2, 4)
               + QStringList{Push + "stopcall()", App + "stopcall()"} + ticks(App, 5, 6);
    QTest::newRow("multicast end at 3 s") << QStringList{"--multicast-end-at", "3"}
                                          << QStringList{"playPush(QString)|0.0", "+5"}
                                          << ticks(Push, 1, 2) + QStringList{Push + "endOKMulticastPush()"};
    QTest::newRow("server pause at 4 s, resumed")
        << QStringList{"--server-pause-at", "4"} << shortTitle + QStringList{"+6", "resumeVod(QString)|3", "+1"}
        << shortStarted + ticks(App, 1, 3)
               + QStringList{App + "pauseVodByServer(float) 3", App + "resumedOKVod()", App + "currentTime(float) 4"};
    QTest::newRow("server pause without a VOD") << QStringList{"--server-pause-at", "1"}
                                                << setUp + QStringList{"startVod(QString)|0", "stopVod()", "+3"}
                                                << started + QStringList{App + "endOKVod()"};
    QTest::newRow("scheduled messages")
        << QStringList{"--send-at", "2,QPE/VideoApplication,vodSoundMute(int),1", "--send-at",
                       "1,QPE/PushApplication,error(int),-3"}
        << QStringList{"+1", "+1"} << QStringList{Push + "error(int) -3", App + "vodSoundMute(int) 1"};
    QTest::newRow("requests without an answer")
        << QStringList()
        << QStringList{"resumePush()", "stopPush()", "stopMulticastPush()",
                       "changeVodWindow(int,int,int,int)|8|39|256|194", "requestContentsPage(int,int)|0|1",
                       "noSuchRequest()", "+2"}
        << QStringList();
}

void tst_VideoManagerSim::timeline()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, steps);
    QFETCH(QStringList, expected);
    auto simulator = makeSimulator(arguments);
    ModuleStandIn module;
    for (const QString &step : steps) {
        if (step.startsWith('+'))
            simulator->advance(step.mid(1).toInt());
        else
            module.request(step);
        flushEvents();
    }
    QCOMPARE(module.received, expected);
    // The log names every request and every answer with its arguments.
    for (const QString &step : steps)
        QVERIFY2(step.startsWith('+') || !log.filter("<- QPE/VideoManager " + step.section('|', 0, 0)).isEmpty(),
                 qPrintable(step));
    for (const QString &e : expected)
        QVERIFY2(log.contains("-> " + e), qPrintable(e));
}



void tst_VideoManagerSim::commandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("json"); // written to the file that "--catalogue @" names
    QTest::addColumn<QString>("error");

    const QStringList json{"--catalogue", "@"};
    QTest::newRow("zero time scale") << QStringList{"--time-scale", "0"} << QByteArray()
                                     << "--time-scale needs a number above 0";
    QTest::newRow("code not a number") << QStringList{"--fail-start-vod", "x"} << QByteArray()
                                       << "--fail-start-vod needs an integer failure code";
    QTest::newRow("unknown option") << QStringList{"--bogus"} << QByteArray() << "bogus";
    QTest::newRow("missing catalogue") << QStringList{"--catalogue", "/nonexistent/c.json"} << QByteArray()
                                       << "/nonexistent/c.json: ";
    QTest::newRow("send-at not a number") << QStringList{"--send-at", "2,QPE/CallManager,setVolume_vod(int),loud"}
                                          << QByteArray() << "argument 1 of setVolume_vod(int) is not a number";
    // Media files are found beside the catalogue.
    QTest::newRow("catalogue") << json << QByteArray(R"({"groups": [{"name": "뉴스", "parts": [{"name": "날씨",
                                      "titles": [{"name": "주간", "length": 95, "file": "media/near.ogg"},
                                      {"name": "Flash", "length": 12.5, "file": "/srv/far.ogg"}]}]},
                                      {"name": "Empty", "parts": []}]})")
                               << QString();
    QTest::newRow("JSON syntax") << json << QByteArray("{\"groups\": [\n  {\"name\" \"x\"}]}") << "line 2, column ";
    QTest::newRow("file not a string") << json << QByteArray(R"({"groups": [{"name": "g", "parts": [{"name": "p",
                                              "titles": [{"name": "a", "length": 5, "file": 3}]}]}]})")
                                       << "groups[0].parts[0].titles[0]: \"file\" must be a non-empty string";
    QTest::newRow("length as text") << json << QByteArray(R"({"groups": [{"name": "g", "parts": [{"name": "p",
                                           "titles": [{"name": "a", "length": "5"}]}]}]})")
                                    << "groups[0].parts[0].titles[0]: \"length\" must be a number above 0";
    QByteArray many = R"({"groups": [{"name": "g", "parts": [)";
    for (int j = 0; j < 21; ++j)
        many += QByteArray(j ? "," : "") + R"({"name": "p", "titles": []})";
    QTest::newRow("too many parts") << json << many + "]}]}" << "groups[0]: 21 parts, a group holds at most 20";
}

void tst_VideoManagerSim::commandLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, json);
    QFETCH(QString, error);
    QTemporaryDir dir;
    QFile file(dir.filePath("catalogue.json"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(json) == json.size());
    file.close();
    arguments.replaceInStrings(QRegularExpression("^@$"), file.fileName());
    const SimulatorCommandLine result = parseSimulatorCommandLine(QStringList{"videomanager-sim"} + arguments);
    if (!error.isEmpty()) {
        QCOMPARE(int(result.status), int(SimulatorCommandLine::Error));
        QVERIFY2(result.text.contains(error), qPrintable(result.text));
        QVERIFY(json.isEmpty() || result.text.startsWith(file.fileName() + ": "));
        return;
    }
    const SimCatalogue &c = result.options.catalogue;
    QCOMPARE(c.groups.size(), 2);
    QCOMPARE(c.title(0, 0, 0)->name, QString::fromUtf8("주간"));
    QCOMPARE(c.title(0, 0, 1)->length, 12.5);
    QCOMPARE(c.title(0, 0, 0)->file, dir.filePath("media/near.ogg"));
    QCOMPARE(c.title(0, 0, 1)->file, QStringLiteral("/srv/far.ogg"));
    QVERIFY(!c.title(0, 0, 2) && !c.title(1, 0, 0));
}

QTEST_MAIN(tst_VideoManagerSim)
#include "tst_videomanagersim.moc"
