// The protocol on the wire: every request of the two senders byte for byte,
// with the wait pop-up it opens; argument blocks read back, short ones as
// zeros; the catalogue's lookups exact.

#include "messaging/messagecatalogue.h"
#include "messaging/messagedata.h"
#include "messaging/messagereader.h"
#include "messaging/vodmessages.h"
#include "push/videopushview.h"
#include "qwaitwidget.h"
#include "testenvironment.h"
#include "vod.h"

#include <QPointer>
#include <QTest>

#include <memory>

using namespace VodMessage;

class tst_Messaging : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void vodRequests_data();
    void vodRequests();
    void pushRequests_data();
    void pushRequests();
    void reader();
    void catalogue_data();
    void catalogue();
};

void tst_Messaging::vodRequests_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("wait"); // the pop-up's text, empty for none

    QTest::newRow("setupVod") << "setupVod(int)" << messageData(5) << "setupVod(int) 00000005"
                              << "Getting Media Information";
    // The players' start block is the one byte "0": too short for a float.
    QTest::newRow("startVod") << "startVod(QString)" << QByteArray("0") << "startVod(QString) 000000020030"
                              << "";
    QTest::newRow("resumeVod") << "resumeVod(QString)" << messageData(83.5f)
                               << "resumeVod(QString) 00000008003800330" "02e0035" << "";
    QTest::newRow("pauseVod") << "pauseVod(int)" << messageData(1) << "pauseVod(int) 00000001" << "";
    QTest::newRow("stopVod") << "stopVod()" << QByteArray() << "stopVod()" << "";
    QTest::newRow("forward 12.5") << "forwardVod(QString)" << messageData(12.5f)
                                  << "forwardVod(QString) 0000000800310032002e0035" << "";
    QTest::newRow("forward 90") << "forwardVod(QString)" << messageData(90.0f)
                                << "forwardVod(QString) 0000000400390030" << "";
    // Six significant digits, exponent form beyond them.
    QTest::newRow("reverse 1234567") << "reverseVod(QString)" << messageData(1234567.0f)
                                     << "reverseVod(QString) 00000016" "0031002e0032003300340035003700650"
                                        "02b00300036" << "";
    QTest::newRow("requestGroupList") << "requestGroupList()" << QByteArray() << "requestGroupList()"
                                      << "Getting contents";
    QTest::newRow("requestContents keeps the order") << "requestContents(int,int)" << messageData(2, 0)
                                                     << "requestContents(int,int) 0000000200000000"
                                                     << "Getting List";
    QTest::newRow("requestContentsPage") << "requestContentsPage(int,int)" << messageData(7, 3)
                                         << "requestContentsPage(int,int) 0000000700000003" << "";
    QTest::newRow("pausePush") << "pausePush()" << QByteArray() << "pausePush()" << "";
    QTest::newRow("changeVodWindow keeps the order") << "changeVodWindow(int,int,int,int)"
                                                     << messageData(8, 39, 256, 194)
                                                     << "changeVodWindow(int,int,int,int) "
                                                        "0000000800000027" "00000100000000c2"
                                                     << "";
    QTest::newRow("short block: zeros") << "changeVodWindow(int,int,int,int)" << messageData(8)
                                        << "changeVodWindow(int,int,int,int) 00000008" "000000000000000000000000"
                                        << "";
    QTest::newRow("a blank is another name") << "stopVod( )" << QByteArray() << "" << "";
    QTest::newRow("so is a capital") << "StopVod()" << QByteArray() << "" << "";
    QTest::newRow("not a request") << "startOKVod()" << QByteArray() << "" << "";
}

// The browser's request sender: the wait pop-up opens before the arguments are
// read, positions travel as text.
void tst_Messaging::vodRequests()
{
    QFETCH(QString, message);
    QFETCH(QByteArray, arguments);
    QFETCH(QString, sent);
    QFETCH(QString, wait);

    vod browser;
    QtopiaIpcTransport::clearTraffic();
    const QPointer<QWaitWidget> before = browser.waitWidget;
    browser.vodRequestHandle(message, arguments);
    QCOMPARE(sentMessages(), sent.isEmpty() ? QStringList() : QStringList{sent});
    // A request with a pop-up replaces the one up before.
    QCOMPARE(!before, !wait.isEmpty());
    if (!wait.isEmpty()) {
        QCOMPARE(browser.waitWidget->text(), wait);
        QCOMPARE(browser.waitWidget->expiryTime(), 5000);
    }
}

void tst_Messaging::pushRequests_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QString>("sent");

    // Whatever the caller passes, the broadcast starts from "0.0", a C string.
    QTest::newRow("playPush") << "playPush(QString)" << messageData(QString("12")) << "playPush(QString) 00000004302e3000";
    for (const char *bare : {"pausePush()", "resumePush()", "stopPush()", "stopUIPush()", "stopMulticastPush()"})
        QTest::newRow(bare) << bare << messageData(1) << bare;
    QTest::newRow("changeVodWindow") << "changeVodWindow(int,int,int,int)" << messageData(0, 0, 480, 271)
                                     << "changeVodWindow(int,int,int,int) 0000000000000000000001e00000010f";
    QTest::newRow("a VOD request") << "stopVod()" << QByteArray() << "";
}

void tst_Messaging::pushRequests()
{
    QFETCH(QString, message);
    QFETCH(QByteArray, arguments);
    QFETCH(QString, sent);

    VideoPushView view(nullptr, Qt::WindowFlags());
    QtopiaIpcTransport::clearTraffic();
    view.pushRequestHandle(message, arguments);
    QCOMPARE(sentMessages(), sent.isEmpty() ? QStringList() : QStringList{sent});
}

// Arguments in signature order; what a block is too short for reads as 0.
void tst_Messaging::reader()
{
    MessageReader in(messageData(5, 2.5f) + QByteArray("\x01\x02", 2));
    QCOMPARE(in.readInt(), 5);
    QCOMPARE(in.readFloat(), 2.5f);
    QCOMPARE(in.readInt(), 0);
    QVERIFY(in.readPastEnd());
    QCOMPARE(in.readString(), QString());
    MessageReader strings(messageData("0.0", QString("12.5")));
    QCOMPARE(strings.readCString(), QByteArray("0.0"));
    QCOMPARE(strings.readString(), QString("12.5"));
    // 12.5 is 41 48 00 00: four bytes, never widened.
    QCOMPARE(messageData(12.5f).toHex(), QByteArray("41480000"));
}

void tst_Messaging::catalogue_data()
{
    QTest::addColumn<QString>("channel");
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("described"); // empty: not in the catalogue

    QTest::newRow("set-up") << VodChannel::VideoApplication << SetupOKVod << messageData(1, 2, 3, 10.0f, 3733.5f, 0.0f)
                            << "1, 2, 3, 10, 3733.5, 0";
    QTest::newRow("C string") << VodChannel::VideoManager << PlayPush << messageData("0.0") << "\"0.0\"";
    QTest::newRow("blank") << VodChannel::PushApplication << "currentTime( float)" << QByteArray() << "";
    QTest::newRow("case") << VodChannel::PushApplication << "CurrentTime(float)" << QByteArray() << "";
    QTest::newRow("other channel") << VodChannel::CallManager << CurrentTime << QByteArray() << "";
}

void tst_Messaging::catalogue()
{
    QFETCH(QString, channel);
    QFETCH(QString, signature);
    QFETCH(QByteArray, data);
    QFETCH(QString, described);

    const MessageEntry *entry = findMessage(channel, signature);
    QCOMPARE(entry != nullptr, !described.isEmpty());
    if (entry)
        QCOMPARE(describeArguments(*entry, data), described);
}

QTEST_MAIN(tst_Messaging)
#include "tst_messaging.moc"
