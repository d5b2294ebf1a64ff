#include "cataloguejson.h"
#include "cataloguewriter.h"
#include "messagetext.h"
#include "messaging/messagecatalogue.h"
#include "messaging/messagedata.h"
#include "playbackposition.h"
#include "qeuckr.h"
#include "simulatoroptions.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace {
qint32 intAt(const QByteArray &bytes, int offset)
{
    return qFromLittleEndian<qint32>(bytes.constData() + offset);
}

// The NUL-terminated bytes at an offset.
QByteArray nameAt(const QByteArray &bytes, int offset)
{
    return QByteArray(bytes.constData() + offset);
}

SimCatalogue twoGroups()
{
    SimCatalogue c;
    c.groups = {
        {"News", {{"Weather", {{"Weekly", 95}}}}},
        {QString::fromUtf8("가"),
         {{"Part A", {{"One", 10}, {QString::fromUtf8("둘"), 20.9}, {"Three", 30}}}, {"Part B", {}}}},
    };
    return c;
}
}

class tst_VideoManagerSimParts : public QObject
{
    Q_OBJECT

private slots:
    void encodeField_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("size");
        QTest::addColumn<QByteArray>("hex");
        QTest::newRow("fits, zero padded") << "abc" << 6 << QByteArray("616263000000");
        QTest::newRow("exact fit keeps the NUL") << "abc" << 4 << QByteArray("61626300");
        QTest::newRow("too long is cut") << "abcdef" << 4 << QByteArray("61626300");
        QTest::newRow("Hangul in EUC-KR") << QString::fromUtf8("가") << 4 << QByteArray("b0a10000");
        QTest::newRow("cut before a half character")
            << QString::fromUtf8("a가나") << 5 << QByteArray("61b0a10000");
        QTest::newRow("no room for the first character") << QString::fromUtf8("가") << 2 << QByteArray("0000");
        QTest::newRow("unencodable becomes ?")
            << QString::fromUtf8("\xF0\x9F\x98\x80" "a" "é") << 5 << QByteArray("3f613f0000");
    }
    void encodeField()
    {
        QFETCH(QString, text);
        QFETCH(int, size);
        QFETCH(QByteArray, hex);
        const QByteArray field = ::encodeField(text, size);
        QCOMPARE(field.size(), size);
        QCOMPARE(field.toHex(), hex);
    }

    void groupFileLayout()
    {
        const QByteArray bytes = groupCatalogueBytes(twoGroups());
        QCOMPARE(bytes.size(), 4 + 2 * 1772);
        QCOMPARE(intAt(bytes, 0), 2);
        // Group 0.
        QCOMPARE(intAt(bytes, 4), 0);
        QCOMPARE(intAt(bytes, 8), 1);
        QCOMPARE(nameAt(bytes, 12), QByteArray("News"));
        QCOMPARE(nameAt(bytes, 96), QByteArray("Weather"));
        QCOMPARE(nameAt(bytes, 96 + 84), QByteArray());
        // Group 1: count at 1780, name at 1784, parts at 1868 + 84·j.
        QCOMPARE(intAt(bytes, 4 + 1772), 1);
        QCOMPARE(intAt(bytes, 8 + 1772), 2);
        QCOMPARE(bytes.mid(12 + 1772, 3).toHex(), QByteArray("b0a100"));
        QCOMPARE(nameAt(bytes, 1868), QByteArray("Part A"));
        QCOMPARE(nameAt(bytes, 1868 + 84), QByteArray("Part B"));
        QCOMPARE(qEUCKRtoQString(bytes.mid(1784)), QString::fromUtf8("가"));
        QCOMPARE(groupCatalogueBytes(SimCatalogue()).toHex(), QByteArray("00000000"));
    }

    void groupFileKeepsTwentyPartSlots()
    {
        SimCatalogue c;
        c.groups.append(SimGroup{"Many", {}});
        for (int j = 0; j < 25; ++j)
            c.groups[0].parts.append(SimPart{QString("P%1").arg(j), {}});
        const QByteArray bytes = groupCatalogueBytes(c);
        QCOMPARE(bytes.size(), 4 + 1772);
        QCOMPARE(intAt(bytes, 8), 20);
        QCOMPARE(nameAt(bytes, 96 + 84 * 19), QByteArray("P19"));
    }

    void contentsFileLayout()
    {
        const QByteArray bytes = contentsCatalogueBytes(twoGroups(), 1, 0);
        QCOMPARE(bytes.size(), 16 + 3 * 240);
        QCOMPARE(intAt(bytes, 0), 1);
        QCOMPARE(intAt(bytes, 4), 0);
        QCOMPARE(intAt(bytes, 8), 3);
        QCOMPARE(intAt(bytes, 12), 0);
        QCOMPARE(nameAt(bytes, 16), QByteArray("One"));
        QCOMPARE(bytes.mid(256, 3).toHex(), QByteArray("b5d100")); // "둘"
        QCOMPARE(nameAt(bytes, 496), QByteArray("Three"));
        // The video manager's own fields: whole seconds and the content number.
        QCOMPARE(intAt(bytes, 256 + 232), 20);
        QCOMPARE(intAt(bytes, 496 + 236), 3);
    }

    void contentsFileOfMissingPartIsEmpty_data()
    {
        QTest::addColumn<int>("group");
        QTest::addColumn<int>("part");
        QTest::newRow("part without titles") << 1 << 1;
        QTest::newRow("no such part") << 0 << 5;
        QTest::newRow("no such group") << 7 << 0;
        QTest::newRow("negative") << -1 << 0;
    }
    void contentsFileOfMissingPartIsEmpty()
    {
        QFETCH(int, group);
        QFETCH(int, part);
        const QByteArray bytes = contentsCatalogueBytes(twoGroups(), group, part);
        QCOMPARE(bytes.size(), 16);
        QCOMPARE(intAt(bytes, 8), 0);
    }

    void writeFileAtomicallyReplacesTheFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("tmp/systemdb/vod_list.bin");
        QString error;
        QVERIFY(writeFileAtomically(path, "first", &error));
        QVERIFY(writeFileAtomically(path, "2nd", &error));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("2nd"));
        QCOMPARE(QDir(dir.filePath("tmp/systemdb")).entryList(QDir::Files), QStringList{"vod_list.bin"});

        // A directory in the way cannot be replaced.
        QVERIFY(QDir().mkpath(dir.filePath("blocked")));
        QVERIFY(!writeFileAtomically(dir.filePath("blocked"), "x", &error));
        QVERIFY(error.contains("blocked"));
    }

    void jsonCatalogue()
    {
        const QByteArray json = R"({"groups": [
            {"name": "뉴스", "parts": [{"name": "날씨", "titles": [{"name": "주간 날씨", "length": 95},
                                                                 {"name": "Flash", "length": 12.5}]}]},
            {"name": "Empty", "parts": []}]})";
        QString error;
        const std::optional<SimCatalogue> c = readCatalogueJson(json, &error);
        QVERIFY2(c, qPrintable(error));
        QCOMPARE(c->groups.size(), 2);
        QCOMPARE(c->groups[0].parts[0].name, QString::fromUtf8("날씨"));
        QCOMPARE(c->title(0, 0, 0)->name, QString::fromUtf8("주간 날씨"));
        QCOMPARE(c->title(0, 0, 0)->length, 95.0);
        QCOMPARE(c->title(0, 0, 1)->length, 12.5);
        QVERIFY(c->groups[1].parts.isEmpty());
        QVERIFY(!c->title(0, 0, 2));
        QVERIFY(!c->title(1, 0, 0));
    }

    void badJsonSaysWhatAndWhere_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("error");
        QTest::newRow("syntax") << QByteArray("{\"groups\": [\n  {\"name\" \"x\"}]}")
                                << "line 2, column 12: missing name separator";
        QTest::newRow("top level array") << QByteArray("[]") << "the top level must be an object";
        QTest::newRow("no groups") << QByteArray("{}") << "\"groups\" is missing or not an array";
        QTest::newRow("group not an object") << QByteArray("{\"groups\": [1]}") << "groups[0]: not an object";
        QTest::newRow("name not a string") << QByteArray(R"({"groups": [{"name": 3, "parts": []}]})")
                                           << "groups[0]: \"name\" is missing or not a string";
        QTest::newRow("no parts") << QByteArray(R"({"groups": [{"name": "g"}]})")
                                  << "groups[0]: \"parts\" is missing or not an array";
        QTest::newRow("zero length")
            << QByteArray(R"({"groups": [{"name": "g", "parts": [{"name": "p", "titles": [
                   {"name": "a", "length": 5}, {"name": "b", "length": 0}]}]}]})")
            << "groups[0].parts[0].titles[1]: \"length\" must be a number above 0";
        QTest::newRow("length as text")
            << QByteArray(R"({"groups": [{"name": "g", "parts": [{"name": "p", "titles": [
                   {"name": "a", "length": "5"}]}]}]})")
            << "groups[0].parts[0].titles[0]: \"length\" must be a number above 0";
        QTest::newRow("file not a string")
            << QByteArray(R"({"groups": [{"name": "g", "parts": [{"name": "p", "titles": [
                   {"name": "a", "length": 5, "file": 3}]}]}]})")
            << "groups[0].parts[0].titles[0]: \"file\" must be a non-empty string";
        QByteArray many = R"({"groups": [{"name": "g", "parts": [)";
        for (int j = 0; j < 21; ++j)
            many += QByteArray(j ? "," : "") + R"({"name": "p", "titles": []})";
        many += "]}]}";
        QTest::newRow("too many parts") << many << "groups[0]: 21 parts, a group holds at most 20";
    }
    void badJsonSaysWhatAndWhere()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);
        QString message;
        QVERIFY(!readCatalogueJson(json, &message));
        QVERIFY2(message.startsWith(error) || message.contains(error), qPrintable(message));
    }

    void jsonFileErrorsNameTheFile()
    {
        QTemporaryDir dir;
        QString error;
        QVERIFY(!readCatalogueJsonFile(dir.filePath("missing.json"), &error));
        QVERIFY2(error.startsWith(dir.filePath("missing.json") + ": "), qPrintable(error));
        QFile file(dir.filePath("bad.json"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"groups\": ");
        file.close();
        QVERIFY(!readCatalogueJsonFile(file.fileName(), &error));
        QVERIFY2(error.startsWith(file.fileName() + ": line 1, column "), qPrintable(error));

        // The command line reads a good one; media files are found beside it.
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(R"({"groups": [{"name": "Only", "parts": [{"name": "p", "titles": [
            {"name": "near", "length": 5, "file": "media/near.ogg"},
            {"name": "far", "length": 5, "file": "/srv/far.ogg"}, {"name": "none", "length": 5}]}]}]})");
        file.close();
        const SimulatorCommandLine result =
            parseSimulatorCommandLine({"videomanager-sim", "--catalogue", file.fileName()});
        QCOMPARE(int(result.status), int(SimulatorCommandLine::Run));
        QCOMPARE(result.options.catalogue.groups.size(), 1);
        QCOMPARE(result.options.catalogue.groups[0].name, QString("Only"));
        QCOMPARE(result.options.catalogue.title(0, 0, 0)->file, dir.filePath("media/near.ogg"));
        QCOMPARE(result.options.catalogue.title(0, 0, 1)->file, QString("/srv/far.ogg"));
        QCOMPARE(result.options.catalogue.title(0, 0, 2)->file, QString());
    }

    void builtInCatalogueFitsTheFiles()
    {
        const SimCatalogue c = SimCatalogue::builtIn();
        QVERIFY(c.groups.size() >= 2);
        bool korean = false;
        bool english = false;
        for (const SimGroup &g : c.groups) {
            QVERIFY(!g.parts.isEmpty() && g.parts.size() <= SimCatalogue::MaxParts);
            for (const SimPart &p : g.parts) {
                for (const SimTitle &t : p.titles) {
                    QVERIFY(t.length > 0);
                    // Every name survives the trip through the file unchanged.
                    QCOMPARE(qEUCKRtoQString(::encodeField(t.name, CatalogueLayout::TitleSize)), t.name);
                    korean = korean || t.name.at(0).unicode() >= 0xAC00;
                    english = english || t.name.at(0).unicode() < 0x80;
                }
            }
        }
        QVERIFY(korean && english);
    }

    void position_data()
    {
        QTest::addColumn<double>("length");
        QTest::addColumn<double>("moveTo");
        QTest::addColumn<double>("advance");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<bool>("atEnd");
        QTest::newRow("plain") << 60.0 << 10.0 << 1.0 << 11.0 << false;
        QTest::newRow("advance stops at the end") << 12.0 << 11.5 << 1.0 << 12.0 << true;
        QTest::newRow("fractional length") << 312.5 << 312.0 << 1.0 << 312.5 << true;
        QTest::newRow("seek beyond the end") << 95.0 << 500.0 << 0.0 << 95.0 << true;
        QTest::newRow("seek below zero") << 95.0 << -3.0 << 0.0 << 0.0 << false;
        QTest::newRow("no length") << 0.0 << 5.0 << 1.0 << 0.0 << true;
    }
    void position()
    {
        QFETCH(double, length);
        QFETCH(double, moveTo);
        QFETCH(double, advance);
        QFETCH(double, seconds);
        QFETCH(bool, atEnd);
        PlaybackPosition p(length);
        QCOMPARE(p.seconds(), 0.0);
        p.moveTo(moveTo);
        p.advance(advance);
        QCOMPARE(p.seconds(), seconds);
        QCOMPARE(p.atEnd(), atEnd);
    }

    void positionText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<double>("seconds");
        QTest::newRow("fraction") << "83.5" << true << 83.5;
        QTest::newRow("blanks") << " 12 " << true << 12.0;
        QTest::newRow("exponent from 'g'") << "1.23457e+06" << true << 1234570.0;
        QTest::newRow("empty") << "" << false << 0.0;
        QTest::newRow("word") << "abc" << false << 0.0;
        QTest::newRow("infinity") << "inf" << false << 0.0;
        QTest::newRow("nan") << "nan" << false << 0.0;
    }
    void positionText()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(double, seconds);
        const std::optional<double> value = parsePositionText(text);
        QCOMPARE(value.has_value(), valid);
        if (valid)
            QCOMPARE(*value, seconds);
    }

    void argumentsFromText_data()
    {
        QTest::addColumn<QString>("channel");
        QTest::addColumn<QString>("signature");
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("error");
        QTest::newRow("none") << "QPE/PushApplication" << "startPush()" << QStringList() << QByteArray() << "";
        QTest::newRow("ints") << "QPE/VideoManager" << "changeVodWindow(int,int,int,int)"
                              << QStringList{"8", "39", "256", "-1"} << messageData(8, 39, 256, -1) << "";
        QTest::newRow("float") << "QPE/VideoApplication" << "pauseOKVod(float)" << QStringList{"12.5"}
                               << messageData(12.5f) << "";
        QTest::newRow("QString") << "QPE/VideoManager" << "resumeVod(QString)" << QStringList{"83.5"}
                                 << messageData(QString("83.5")) << "";
        QTest::newRow("zero-terminated") << "QPE/VideoManager" << "playPush(QString)" << QStringList{"0.0"}
                                         << messageData("0.0") << "";
        QTest::newRow("too few") << "QPE/VideoManager" << "requestContents(int,int)" << QStringList{"1"}
                                 << QByteArray() << "takes 2 argument(s), 1 given";
        QTest::newRow("not a number") << "QPE/CallManager" << "setVolume_vod(int)" << QStringList{"loud"}
                                      << QByteArray() << "argument 1 of setVolume_vod(int) is not a number";
    }
    void argumentsFromText()
    {
        QFETCH(QString, channel);
        QFETCH(QString, signature);
        QFETCH(QStringList, values);
        QFETCH(QByteArray, data);
        QFETCH(QString, error);
        const MessageEntry *entry = findMessage(channel, signature);
        QVERIFY(entry);
        QString message;
        const std::optional<QByteArray> result = encodeArguments(*entry, values, &message);
        QCOMPARE(result.has_value(), error.isEmpty());
        if (result)
            QCOMPARE(result->toHex(), data.toHex());
        else
            QVERIFY2(message.contains(error), qPrintable(message));
    }

    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("text");
        const int run = SimulatorCommandLine::Run;
        const int error = SimulatorCommandLine::Error;
        QTest::newRow("defaults") << QStringList() << run << "";
        QTest::newRow("help") << QStringList{"--help"} << int(SimulatorCommandLine::Help) << "--silent-after";
        QTest::newRow("zero time scale") << QStringList{"--time-scale", "0"} << error << "--time-scale needs a number above 0";
        QTest::newRow("negative time") << QStringList{"--call-at", "-1"} << error << "--call-at needs a number of at least 0";
        QTest::newRow("code not a number") << QStringList{"--fail-start-vod", "x"} << error
                                           << "--fail-start-vod needs an integer failure code";
        QTest::newRow("unknown option") << QStringList{"--bogus"} << error << "bogus";
        QTest::newRow("stray argument") << QStringList{"extra"} << error << "unexpected argument: extra";
        QTest::newRow("missing catalogue") << QStringList{"--catalogue", "/nonexistent/c.json"} << error
                                           << "/nonexistent/c.json: ";
        QTest::newRow("send-at unknown message") << QStringList{"--send-at", "1,QPE/VideoManager,startPush()"}
                                                 << error << "no message of the protocol";
        QTest::newRow("send-at bad form") << QStringList{"--send-at", "soon,QPE/X"} << error
                                          << "--send-at needs SECONDS,CHANNEL,SIGNATURE";
        QTest::newRow("send-at arguments") << QStringList{"--send-at", "2,QPE/VideoApplication,vodSoundMute(int)"}
                                           << error << "takes 1 argument(s), 0 given";
    }
    void commandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, text);
        const SimulatorCommandLine result = parseSimulatorCommandLine(QStringList{"videomanager-sim"} + arguments);
        QCOMPARE(int(result.status), status);
        QVERIFY2(result.text.contains(text), qPrintable(result.text));
    }

    void commandLineValues()
    {
        const SimulatorCommandLine none = parseSimulatorCommandLine({"videomanager-sim"});
        QCOMPARE(none.options.timeScale, 1.0);
        QCOMPARE(none.options.silentAfter, -1.0);
        QVERIFY(!none.options.failSetupVod && !none.options.failSetupPush && !none.options.failStartVod);

        const SimulatorCommandLine all = parseSimulatorCommandLine(
            {"videomanager-sim", "--time-scale", "0.05", "--silent-after", "30", "--fail-setup-vod", "4",
             "--fail-setup-push", "5", "--fail-start-vod", "6", "--call-at", "3", "--call-length", "2",
             "--multicast-end-at", "7", "--server-pause-at", "8", "--push-start-delay", "0",
             "--send-at", "1.5,QPE/VideoManager,changeVodWindow(int,int,int,int),1,2,3,4",
             "--send-at", "0,QPE/VideoApplication,checkFocus()"});
        QCOMPARE(int(all.status), int(SimulatorCommandLine::Run));
        const SimulatorOptions &o = all.options;
        QCOMPARE(o.timeScale, 0.05);
        QCOMPARE(o.silentAfter, 30.0);
        QCOMPARE(o.failSetupVod, std::optional<int>(4));
        QCOMPARE(o.failSetupPush, std::optional<int>(5));
        QCOMPARE(o.failStartVod, std::optional<int>(6));
        QCOMPARE(o.callAt, 3.0);
        QCOMPARE(o.callLength, 2.0);
        QCOMPARE(o.multicastEndAt, 7.0);
        QCOMPARE(o.serverPauseAt, 8.0);
        QCOMPARE(o.pushStartDelay, 0.0);
        QCOMPARE(o.scheduled.size(), 2);
        QCOMPARE(o.scheduled[0].at, 1.5);
        QCOMPARE(o.scheduled[0].message, QString("changeVodWindow(int,int,int,int)"));
        QCOMPARE(o.scheduled[0].data, messageData(1, 2, 3, 4));
        QCOMPARE(o.scheduled[1].channel, QString("QPE/VideoApplication"));
    }
};

QTEST_GUILESS_MAIN(tst_VideoManagerSimParts)
#include "tst_videomanagersimparts.moc"
