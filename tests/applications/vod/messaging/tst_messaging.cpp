#include "messaging/messagecatalogue.h"
#include "messaging/messagedata.h"
#include "messaging/messagereader.h"
#include "qtopiaipcenvelope.h"
#include "qtopiaipctransport.h"
#include "messaging/vodmessages.h"

#include <QSet>
#include <QTest>

class tst_Messaging : public QObject
{
    Q_OBJECT

private slots:
    void init() { QtopiaIpcTransport::clearTraffic(); }

    void wireBytes_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QByteArray>("hex");
        QTest::newRow("zero-terminated 0.0") << messageData("0.0") << QByteArray("000000043" "02e3000");
        QTest::newRow("float 12.5") << messageData(12.5f) << QByteArray("41480000");
        QTest::newRow("ints keep order") << messageData(8, 39, 256, 194)
                                         << QByteArray("00000008" "00000027" "00000100" "000000c2");
        QTest::newRow("negative int") << messageData(-1) << QByteArray("ffffffff");
        QTest::newRow("QString 90") << messageData(QString("90")) << QByteArray("00000004" "00390030");
    }
    void wireBytes()
    {
        QFETCH(QByteArray, data);
        QFETCH(QByteArray, hex);
        QCOMPARE(data.toHex(), hex);
    }

    void envelopeWritesWhatMessageDataWrites()
    {
        {
            QtopiaIpcEnvelope e(VodChannel::VideoApplication, VodMessage::SetupOKVod);
            e << 1 << 2 << 3 << 10.0f << 3733.5f << 0.0f;
        }
        QCOMPARE(QtopiaIpcTransport::traffic().first().data,
                 messageData(1, 2, 3, 10.0f, 3733.5f, 0.0f));
        QCOMPARE(QtopiaIpcTransport::traffic().first().data.size(), 24);
    }

    void readerReadsInOrderAndShortBlocksAsZero()
    {
        MessageReader in(messageData(5, 2.5f) + QByteArray("\x01\x02", 2));
        QCOMPARE(in.readInt(), 5);
        QCOMPARE(in.readFloat(), 2.5f);
        QVERIFY(!in.readPastEnd());
        QCOMPARE(in.readInt(), 0);
        QVERIFY(in.readPastEnd());
        QCOMPARE(in.readFloat(), 0.0f);
        QCOMPARE(in.readString(), QString());

        MessageReader empty{QByteArray()};
        QCOMPARE(empty.readFloat(), 0.0f);
        QCOMPARE(empty.readInt(), 0);

        // A one-byte block, as the start request carries, is too short for a float.
        MessageReader start{QByteArray("0")};
        QCOMPARE(start.readFloat(), 0.0f);
    }

    void readerReadsStrings()
    {
        MessageReader in(messageData("0.0", QString("12.5")));
        QCOMPARE(in.readCString(), QByteArray("0.0"));
        QCOMPARE(in.readString(), QString("12.5"));
    }

    void catalogueNamesEachMessageOncePerChannel()
    {
        QSet<QString> seen;
        for (const MessageEntry &entry : messageCatalogue()) {
            const QString sig = QLatin1String(entry.signature);
            QVERIFY2(!sig.contains(' '), entry.signature);
            const QString key = QLatin1String(entry.channel) + '|' + sig;
            QVERIFY2(!seen.contains(key), qPrintable(key));
            seen.insert(key);
            // The argument list matches the types named in the signature, but for
            // the one QString that travels as a zero-terminated string.
            const QString inner = sig.section('(', 1).chopped(1);
            const QStringList types = inner.isEmpty() ? QStringList() : inner.split(',');
            QCOMPARE(types.size(), entry.arguments.size());
            for (int i = 0; i < types.size(); ++i) {
                const MessageEntry::ArgType t = entry.arguments.at(i);
                if (types[i] == "int")
                    QCOMPARE(t, MessageEntry::Int);
                else if (types[i] == "float")
                    QCOMPARE(t, MessageEntry::Float);
                else
                    QVERIFY(t == MessageEntry::String || t == MessageEntry::CString);
            }
        }
        QCOMPARE(findMessage(VodChannel::VideoManager, VodMessage::PlayPush)->arguments,
                 QList<MessageEntry::ArgType>{MessageEntry::CString});
    }

    void lookupIsExact_data()
    {
        QTest::addColumn<QString>("channel");
        QTest::addColumn<QString>("signature");
        QTest::addColumn<bool>("found");
        QTest::newRow("exact") << VodChannel::PushApplication << "currentTime(float)" << true;
        QTest::newRow("blank") << VodChannel::PushApplication << "currentTime( float)" << false;
        QTest::newRow("case") << VodChannel::PushApplication << "CurrentTime(float)" << false;
        QTest::newRow("other channel") << VodChannel::CallManager << "currentTime(float)" << false;
    }
    void lookupIsExact()
    {
        QFETCH(QString, channel);
        QFETCH(QString, signature);
        QFETCH(bool, found);
        QCOMPARE(findMessage(channel, signature) != nullptr, found);
    }

    void describesArguments()
    {
        const MessageEntry *setup = findMessage(VodChannel::VideoApplication, VodMessage::SetupOKVod);
        QCOMPARE(describeArguments(*setup, messageData(1, 2, 3, 10.0f, 3733.5f, 0.0f)),
                 QString("1, 2, 3, 10, 3733.5, 0"));
        const MessageEntry *play = findMessage(VodChannel::VideoManager, VodMessage::PlayPush);
        QCOMPARE(describeArguments(*play, messageData("0.0")), QString("\"0.0\""));
    }
};

QTEST_MAIN(tst_Messaging)
#include "tst_messaging.moc"
