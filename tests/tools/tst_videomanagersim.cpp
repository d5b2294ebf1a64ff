#include "cataloguewriter.h"
#include "messagetext.h"
#include "messaging/messagecatalogue.h"
#include "messaging/vodmessages.h"
#include "qtopiachannel.h"
#include "qtopiaipcenvelope.h"
#include "qtopiaipctransport.h"
#include "testenvironment.h"
#include "videomanagersimulator.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {
// A small catalogue whose lengths the tests know.
SimCatalogue testCatalogue()
{
    SimCatalogue c;
    c.groups = {
        {"News", {{"Weather", {{"Weekly", 95}, {"Daily", 30}}}}},
        {QString::fromUtf8("드라마"), {{QString::fromUtf8("1부"), {{QString::fromUtf8("가"), 12}}}}},
    };
    return c;
}

// Stands in for the module: listens on both notification channels, keeps what
// arrives as readable lines, and sends requests with envelopes.
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
                times << clock.elapsed();
            });
        }
        clock.start();
    }

    // "signature|argument|argument" to the video manager.
    void request(const QString &entry)
    {
        const QStringList items = entry.split('|');
        const MessageEntry *m = findMessage(VodChannel::VideoManager, items.first());
        QByteArray data;
        if (m) {
            QString error;
            data = encodeArguments(*m, items.mid(1), &error).value_or(QByteArray());
            QVERIFY2(error.isEmpty(), qPrintable(error));
        }
        QtopiaIpcEnvelope e(VodChannel::VideoManager, items.first());
        e.writeRawData(data.constData(), int(data.size()));
    }

    QString last() const { return received.isEmpty() ? QString() : received.constLast(); }

    // The received lines without the time reports.
    QStringList answers() const
    {
        QStringList result;
        for (const QString &line : received)
            if (!line.contains("currentTime(float)"))
                result << line;
        return result;
    }

    // The positions of the time reports on one channel.
    QList<float> reports(const char *channel) const
    {
        QList<float> result;
        const QString prefix = QLatin1String(channel) + " currentTime(float) ";
        for (const QString &line : received)
            if (line.startsWith(prefix))
                result << line.mid(prefix.size()).toFloat();
        return result;
    }

    QStringList received;
    QList<qint64> times;
    QElapsedTimer clock;
};

const QString Push = "QPE/PushApplication ";
const QString App = "QPE/VideoApplication ";
}

class tst_VideoManagerSim : public QObject
{
    Q_OBJECT

private:
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
        auto simulator = std::make_unique<VideoManagerSimulator>(options);
        connect(simulator.get(), &VideoManagerSimulator::logLine, this, [this](const QString &l) { log << l; });
        return simulator;
    }

    // Waits until the simulator has taken the last request sent.
    bool waitForReceipt(const QString &request)
    {
        const QString line = "<- QPE/VideoManager " + request.section('|', 0, 0);
        return QTest::qWaitFor([&] {
            return std::any_of(log.cbegin(), log.cend(), [&](const QString &l) { return l.startsWith(line); });
        });
    }

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init()
    {
        log.clear();
        QtopiaIpcTransport::clearTraffic();
    }
    void cleanup()
    {
        flushEvents();
        QVERIFY(QtopiaChannel::listenedChannels().isEmpty());
    }

    void answers_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("requests");
        QTest::addColumn<QStringList>("expected");
        // A simulated second of 100 real seconds keeps time reports out of the way.
        const QStringList slow{"--time-scale", "100", "--push-start-delay", "0"};
        const QString contents = App + "getContentsList()";
        const QStringList setUp{"requestContents(int,int)|0|0", "setupVod(int)|1"};
        const QString setupOK = App + "setupOKVod(int,int,int,float,float,float) 0, 0, 1, 100, 195, 0";

        QTest::newRow("group list") << slow << QStringList{"requestGroupList()"}
                                    << QStringList{App + "getGroupList()"};
        QTest::newRow("contents of a missing part")
            << slow << QStringList{"requestContents(int,int)|5|5"} << QStringList{contents};
        QTest::newRow("setup of the second part's title")
            << slow << QStringList{"requestContents(int,int)|1|0", "setupVod(int)|1"}
            << QStringList{contents, App + "setupOKVod(int,int,int,float,float,float) 1, 0, 1, 100, 112, 0"};
        QTest::newRow("setup without a title")
            << slow << QStringList{"requestContents(int,int)|0|0", "setupVod(int)|3"}
            << QStringList{contents, App + "setupFailVod(int) 2"};
        QTest::newRow("setup asked to fail")
            << (slow + QStringList{"--fail-setup-vod", "7"}) << setUp
            << QStringList{contents, App + "setupFailVod(int) 7"};
        QTest::newRow("start") << slow << (setUp + QStringList{"startVod(QString)|0"})
                               << QStringList{contents, setupOK, App + "startOKVod()"};
        QTest::newRow("start without setup") << slow << QStringList{"startVod(QString)|0"}
                                             << QStringList{App + "startFailVod(int) 1"};
        QTest::newRow("start asked to fail")
            << (slow + QStringList{"--fail-start-vod", "5"}) << (setUp + QStringList{"startVod(QString)|0"})
            << QStringList{contents, setupOK, App + "startFailVod(int) 5"};
        QTest::newRow("pause reports the position")
            << slow << (setUp + QStringList{"startVod(QString)|0", "forwardVod(QString)|42.5", "pauseVod(int)|0"})
            << QStringList{contents, setupOK, App + "startOKVod()", App + "pauseOKVod(float) 42.5"};
        QTest::newRow("reverse")
            << slow
            << (setUp + QStringList{"startVod(QString)|0", "forwardVod(QString)|60", "reverseVod(QString)|10.5",
                                    "pauseVod(int)|1"})
            << QStringList{contents, setupOK, App + "startOKVod()", App + "pauseOKVod(float) 10.5"};
        QTest::newRow("seek beyond the end stops at the end")
            << slow << (setUp + QStringList{"startVod(QString)|0", "forwardVod(QString)|500", "pauseVod(int)|0"})
            << QStringList{contents, setupOK, App + "startOKVod()", App + "pauseOKVod(float) 95"};
        QTest::newRow("pause while not playing") << slow << (setUp + QStringList{"pauseVod(int)|0"})
                                                 << QStringList{contents, setupOK, App + "pauseFailVod()"};
        QTest::newRow("resume without setup") << slow << QStringList{"resumeVod(QString)|3"}
                                              << QStringList{App + "error(int) 1"};
        QTest::newRow("stop") << slow << (setUp + QStringList{"startVod(QString)|0", "stopVod()"})
                              << QStringList{contents, setupOK, App + "startOKVod()", App + "endOKVod()"};
        QTest::newRow("push start") << slow << QStringList{"pushAppExecuted()"} << QStringList{Push + "startPush()"};
        QTest::newRow("push setup asked to fail")
            << (slow + QStringList{"--fail-setup-push", "9"}) << QStringList{"pushAppExecuted()"}
            << QStringList{Push + "setupFailPush(int) 9"};
        QTest::newRow("push pause") << slow << QStringList{"playPush(QString)|0.0", "pausePush()"}
                                    << QStringList{Push + "pauseOKPush()"};
        QTest::newRow("push stop by the user") << slow << QStringList{"playPush(QString)|0.0", "stopUIPush()"}
                                               << QStringList{Push + "endOKPush()"};
        QTest::newRow("requests without an answer")
            << slow
            << QStringList{"playPush(QString)|0.0", "resumePush()", "stopPush()", "stopMulticastPush()",
                           "changeVodWindow(int,int,int,int)|8|39|256|194", "requestContentsPage(int,int)|0|1",
                           "noSuchRequest()"}
            << QStringList();
    }
    void answers()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, requests);
        QFETCH(QStringList, expected);
        auto simulator = makeSimulator(arguments);
        ModuleStandIn module;
        for (const QString &r : requests)
            module.request(r);
        QVERIFY(waitForReceipt(requests.constLast()));
        QTRY_COMPARE(module.answers(), expected);
        flushEvents();
        QCOMPARE(module.answers(), expected);

        // The log names every request in order, and every answer with its arguments.
        const QStringList received = log.filter(QRegularExpression("^<- "));
        QCOMPARE(received.size(), requests.size());
        for (int i = 0; i < requests.size(); ++i)
            QVERIFY2(received.at(i).startsWith("<- QPE/VideoManager " + requests.at(i).section('|', 0, 0)),
                     qPrintable(received.at(i)));
        for (const QString &e : expected)
            QVERIFY2(log.contains("-> " + e), qPrintable(e));
    }

    void rememberedRequests()
    {
        auto simulator = makeSimulator({});
        ModuleStandIn module;
        module.request("changeVodWindow(int,int,int,int)|0|0|480|271");
        {
            QtopiaIpcEnvelope e(VodChannel::CallManager, VodMessage::SetVolumeVod);
            e << 7;
        }
        QtopiaIpcEnvelope(VodChannel::CallManager, VodMessage::SetHeadsetOnOff);
        QTRY_VERIFY(simulator->headsetOn());
        QCOMPARE(simulator->videoWindow(), QRect(0, 0, 480, 271));
        QCOMPARE(simulator->volume(), 7);
        QVERIFY(log.contains("<- QPE/VideoManager changeVodWindow(int,int,int,int) 0, 0, 480, 271"));
        QVERIFY(log.contains("<- QPE/CallManager setVolume_vod(int) 7"));
    }

    void catalogueFilesAreWrittenBeforeTheAnnouncement()
    {
        auto simulator = makeSimulator({});
        ModuleStandIn module;
        QByteArray groupFile;
        QByteArray contentsFile;
        // Read the file when the announcement arrives, as the module does.
        QtopiaChannel app(VodChannel::VideoApplication, nullptr);
        connect(&app, &QtopiaChannel::received, this, [&](const QString &m) {
            QFile file(env->path(m == "getGroupList()" ? CatalogueLayout::GroupFile : CatalogueLayout::ContentsFile));
            if (file.open(QIODevice::ReadOnly))
                (m == "getGroupList()" ? groupFile : contentsFile) = file.readAll();
        });
        module.request("requestGroupList()");
        module.request("requestContents(int,int)|1|0");
        QTRY_VERIFY(!contentsFile.isEmpty());
        QCOMPARE(groupFile, groupCatalogueBytes(testCatalogue()));
        QCOMPARE(contentsFile, contentsCatalogueBytes(testCatalogue(), 1, 0));
        // Title 0 of group 1 part 0 is "가": B0 A1 then NUL.
        QCOMPARE(contentsFile.mid(16, 3).toHex(), QByteArray("b0a100"));
    }

    void unwritableCatalogueIsNotAnnounced()
    {
        auto simulator = makeSimulator({"--time-scale", "100"});
        ModuleStandIn module;
        // A directory where the file should be cannot be replaced.
        const QString path = env->path(CatalogueLayout::GroupFile);
        QFile::remove(path);
        QVERIFY(QDir().mkpath(path));
        module.request("requestGroupList()");
        QVERIFY(waitForReceipt("requestGroupList()"));
        flushEvents();
        QVERIFY(QDir().rmdir(path));
        QCOMPARE(module.answers(), QStringList());
        QVERIFY(log.constLast().endsWith(": not answered"));
    }

    void vodReportsEverySecondAndEnds()
    {
        // 20 ms seconds; the title of group 1 part 0 lasts 12 seconds.
        auto simulator = makeSimulator({"--time-scale", "0.02"});
        ModuleStandIn module;
        module.request("requestContents(int,int)|1|0");
        module.request("setupVod(int)|1");
        module.request("startVod(QString)|0");
        QTRY_VERIFY(module.received.contains(App + "endOKVod()"));
        QCOMPARE(module.reports(VodChannel::VideoApplication),
                 (QList<float>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
        QCOMPARE(module.last(), App + "endOKVod()");
        QVERIFY(module.reports(VodChannel::PushApplication).isEmpty());
        // Twelve simulated seconds between the start and the end.
        const qsizetype start = module.received.indexOf(App + "startOKVod()");
        QVERIFY(module.times.constLast() - module.times.at(start) >= 12 * 20 - 10);
        QVERIFY(!simulator->isReportingVod());
    }

    void vodResumesFromThePausedPosition()
    {
        auto simulator = makeSimulator({"--time-scale", "0.02"});
        ModuleStandIn module;
        module.request("requestContents(int,int)|1|0");
        module.request("setupVod(int)|1");
        module.request("startVod(QString)|0");
        QTRY_VERIFY(!module.reports(VodChannel::VideoApplication).isEmpty());
        module.request("pauseVod(int)|0");
        QTRY_VERIFY(module.last().startsWith(App + "pauseOKVod(float) "));
        const float paused = module.last().section(' ', 2).toFloat();
        QCOMPARE(paused, module.reports(VodChannel::VideoApplication).constLast());
        QVERIFY(!simulator->isReportingVod());
        module.received.clear();
        module.request("resumeVod(QString)|8");
        QTRY_VERIFY(module.received.contains(App + "endOKVod()"));
        QCOMPARE(module.received.constFirst(), App + "resumedOKVod()");
        QCOMPARE(module.reports(VodChannel::VideoApplication), (QList<float>{9, 10, 11, 12}));
    }

    void pushReportsUntilPausedOrStopped()
    {
        auto simulator = makeSimulator({"--time-scale", "0.02"});
        ModuleStandIn module;
        module.request("playPush(QString)|0.0");
        QTRY_VERIFY(module.reports(VodChannel::PushApplication).size() >= 3);
        module.request("pausePush()");
        QTRY_VERIFY(module.received.contains(Push + "pauseOKPush()"));
        const QList<float> beforePause = module.reports(VodChannel::PushApplication);
        QVERIFY(!simulator->isReportingPush());
        QTest::qWait(5 * 20);
        QCOMPARE(module.reports(VodChannel::PushApplication), beforePause);
        module.request("resumePush()");
        QTRY_VERIFY(module.reports(VodChannel::PushApplication).size() >= beforePause.size() + 2);
        const QList<float> all = module.reports(VodChannel::PushApplication);
        for (int i = 0; i < all.size(); ++i)
            QCOMPARE(all.at(i), float(i + 1));
        module.request("stopPush()");
        QTRY_VERIFY(!simulator->isReportingPush());
        QVERIFY(module.reports(VodChannel::VideoApplication).isEmpty());
    }

    void silentAfter()
    {
        auto simulator = makeSimulator({"--time-scale", "0.02", "--silent-after", "3"});
        ModuleStandIn module;
        module.request("requestContents(int,int)|0|0");
        module.request("setupVod(int)|1");
        module.request("playPush(QString)|0.0");
        module.request("startVod(QString)|0");
        QTRY_VERIFY(simulator->isSilent());
        flushEvents();
        QVERIFY(!simulator->isReportingVod() && !simulator->isReportingPush());
        QVERIFY(module.reports(VodChannel::VideoApplication).size() <= 3);
        QVERIFY(module.reports(VodChannel::PushApplication).size() <= 3);
        const QStringList before = module.received;
        module.request("pauseVod(int)|0");
        module.request("pushAppExecuted()");
        QVERIFY(waitForReceipt("pushAppExecuted()"));
        QTest::qWait(5 * 20);
        QCOMPARE(module.received, before);
        QVERIFY(log.contains("<- QPE/VideoManager pauseVod(int) 0 (silent: not answered)"));
    }

    void callAtGivenTime()
    {
        auto simulator = makeSimulator({"--time-scale", "0.02", "--call-at", "2", "--call-length", "3"});
        ModuleStandIn module;
        module.request("requestContents(int,int)|0|0");
        module.request("setupVod(int)|1");
        module.request("startVod(QString)|0");
        QTRY_VERIFY(module.received.contains(App + "stopcall()"));
        const QStringList calls = module.received.filter("call()");
        QCOMPARE(calls, (QStringList{Push + "startcall()", App + "startcall()", Push + "stopcall()",
                                     App + "stopcall()"}));
        const qint64 started = module.times.at(module.received.indexOf(App + "startOKVod()"));
        const qint64 callStart = module.times.at(module.received.indexOf(App + "startcall()"));
        const qint64 callEnd = module.times.at(module.received.indexOf(App + "stopcall()"));
        QVERIFY2(callStart - started >= 2 * 20 - 5, qPrintable(QString::number(callStart - started)));
        QVERIFY2(callEnd - callStart >= 3 * 20 - 5, qPrintable(QString::number(callEnd - callStart)));
    }

    void multicastEnd()
    {
        auto simulator = makeSimulator({"--time-scale", "0.02", "--multicast-end-at", "3"});
        ModuleStandIn module;
        module.request("playPush(QString)|0.0");
        QTRY_VERIFY(module.received.contains(Push + "endOKMulticastPush()"));
        QVERIFY(!simulator->isReportingPush());
        const QList<float> reports = module.reports(VodChannel::PushApplication);
        QVERIFY(reports.size() <= 3);
        QTest::qWait(3 * 20);
        QCOMPARE(module.reports(VodChannel::PushApplication), reports);
    }

    void serverPause()
    {
        auto simulator = makeSimulator({"--time-scale", "0.02", "--server-pause-at", "4"});
        ModuleStandIn module;
        module.request("requestContents(int,int)|0|0");
        module.request("setupVod(int)|1");
        module.request("startVod(QString)|0");
        QTRY_VERIFY(module.last().startsWith(App + "pauseVodByServer(float) "));
        QVERIFY(!simulator->isReportingVod());
        // The pause carries the position last reported.
        const float position = module.last().section(' ', 2).toFloat();
        QCOMPARE(position, module.reports(VodChannel::VideoApplication).constLast());
        QVERIFY(position >= 1 && position <= 4);
        // The module resumes it.
        module.request("resumeVod(QString)|" + QString::number(position));
        QTRY_VERIFY(module.reports(VodChannel::VideoApplication).constLast() > position);
    }

    void serverPauseWithoutVodDoesNothing()
    {
        auto simulator = makeSimulator({"--time-scale", "0.02", "--server-pause-at", "1"});
        ModuleStandIn module;
        module.request("requestContents(int,int)|0|0");
        module.request("setupVod(int)|1");
        module.request("startVod(QString)|0");
        module.request("stopVod()");
        QTRY_VERIFY(log.contains("-- no VOD playing: no server pause"));
        QVERIFY(module.received.filter("pauseVodByServer").isEmpty());
    }

    void sendAt()
    {
        auto simulator = makeSimulator(
            {"--time-scale", "0.02", "--send-at", "2,QPE/VideoApplication,vodSoundMute(int),1", "--send-at",
             "1,QPE/PushApplication,error(int),-3"});
        ModuleStandIn module;
        QTRY_COMPARE(module.received.size(), 2);
        QCOMPARE(module.received, (QStringList{Push + "error(int) -3", App + "vodSoundMute(int) 1"}));
        QVERIFY(module.times.at(1) >= 2 * 20 - 5);
    }
};

QTEST_MAIN(tst_VideoManagerSim)
#include "tst_videomanagersim.moc"
