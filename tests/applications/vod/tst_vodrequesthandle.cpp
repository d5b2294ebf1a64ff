#include "vod.h"

#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "qtopiaipctransport.h"
#include "qwaitwidget.h"
#include "testenvironment.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QPointer>
#include <QRegularExpression>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(QtopiaIpcMessage)

class tst_VodRequestHandle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void request_data();
    void request();
    void logLine_data();
    void logLine();

private:
    std::unique_ptr<TestEnvironment> env;
};

namespace {

QByteArray int32be(qint32 v)
{
    const quint32 u = quint32(v);
    QByteArray b(4, '\0');
    b[0] = char(u >> 24);
    b[1] = char((u >> 16) & 0xff);
    b[2] = char((u >> 8) & 0xff);
    b[3] = char(u & 0xff);
    return b;
}

// A QString on the wire, written out by hand: byte count, then UTF-16 big-endian.
QByteArray stringBlock(const QString &text)
{
    QByteArray b = int32be(qint32(text.size() * 2));
    for (QChar c : text) {
        b.append(char(c.unicode() >> 8));
        b.append(char(c.unicode() & 0xff));
    }
    return b;
}

QtopiaIpcMessage posted(const char *message, const QByteArray &data = QByteArray())
{
    return QtopiaIpcMessage{QLatin1String(VodChannel::VideoManager), QLatin1String(message), data};
}

// Messages as "channel message hex-bytes", so that a mismatch shows what went.
QStringList described(const QList<QtopiaIpcMessage> &messages)
{
    QStringList lines;
    for (const QtopiaIpcMessage &m : messages)
        lines << m.channel + QLatin1Char(' ') + m.message + QLatin1Char(' ')
                     + QString::fromLatin1(m.data.toHex(' '));
    return lines;
}

}

void tst_VodRequestHandle::initTestCase()
{
    env = std::make_unique<TestEnvironment>();
    // Before any window asks whether the category is on.
    QLoggingCategory::setFilterRules(QStringLiteral("VOD.debug=true"));
}

void tst_VodRequestHandle::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_VodRequestHandle::request_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QList<QtopiaIpcMessage>>("sent");
    // The text of the wait pop-up opened by the request; empty for none.
    QTest::addColumn<QString>("waitText");

    using List = QList<QtopiaIpcMessage>;

    QTest::newRow("setupVod") << "setupVod(int)" << messageData(qint32(5))
                              << List{posted("setupVod(int)", int32be(5))}
                              << "Getting Media Information";
    QTest::newRow("startVod, empty block")
        << "startVod(QString)" << QByteArray()
        << List{posted("startVod(QString)", stringBlock("0"))} << QString();
    // What the players send: one byte, too short for a float.
    QTest::newRow("startVod, the block \"0\"")
        << "startVod(QString)" << QByteArray("0")
        << List{posted("startVod(QString)", stringBlock("0"))} << QString();
    QTest::newRow("resumeVod") << "resumeVod(QString)" << messageData(83.5f)
                               << List{posted("resumeVod(QString)", stringBlock("83.5"))} << QString();
    QTest::newRow("pauseVod") << "pauseVod(int)" << messageData(qint32(1))
                              << List{posted("pauseVod(int)", int32be(1))} << QString();
    QTest::newRow("stopVod") << "stopVod()" << QByteArray() << List{posted("stopVod()")} << QString();
    QTest::newRow("reverseVod, 0.1 widened")
        << "reverseVod(QString)" << messageData(0.1f)
        << List{posted("reverseVod(QString)", stringBlock("0.1"))} << QString();
    QTest::newRow("forwardVod 90") << "forwardVod(QString)" << messageData(90.0f)
                                   << List{posted("forwardVod(QString)", stringBlock("90"))}
                                   << QString();
    QTest::newRow("forwardVod 1234567")
        << "forwardVod(QString)" << messageData(1234567.0f)
        << List{posted("forwardVod(QString)", stringBlock("1.23457e+06"))} << QString();
    QTest::newRow("requestGroupList") << "requestGroupList()" << QByteArray()
                                      << List{posted("requestGroupList()")} << "Getting contents";
    QTest::newRow("requestContents 2, 0")
        << "requestContents(int,int)" << messageData(qint32(2), qint32(0))
        << List{posted("requestContents(int,int)", int32be(2) + int32be(0))} << "Getting List";
    QTest::newRow("requestContents, short block")
        << "requestContents(int,int)" << messageData(qint32(7))
        << List{posted("requestContents(int,int)", int32be(7) + int32be(0))} << "Getting List";
    QTest::newRow("requestContentsPage")
        << "requestContentsPage(int,int)" << messageData(qint32(3), qint32(4))
        << List{posted("requestContentsPage(int,int)", int32be(3) + int32be(4))} << QString();
    QTest::newRow("pausePush") << "pausePush()" << QByteArray("junk") << List{posted("pausePush()")}
                               << QString();
    QTest::newRow("changeVodWindow")
        << "changeVodWindow(int,int,int,int)"
        << messageData(qint32(10), qint32(31), qint32(300), qint32(-210))
        << List{posted("changeVodWindow(int,int,int,int)",
                       int32be(10) + int32be(31) + int32be(300) + int32be(-210))}
        << QString();
    QTest::newRow("blank inside") << "stopVod( )" << QByteArray() << List{} << QString();
    QTest::newRow("other case") << "StopVod()" << QByteArray() << List{} << QString();
    QTest::newRow("other case, wait row") << "SetupVod(int)" << messageData(qint32(5)) << List{}
                                          << QString();
    QTest::newRow("a notification") << "getGroupList()" << QByteArray() << List{} << QString();
}

void tst_VodRequestHandle::request()
{
    QFETCH(QString, message);
    QFETCH(QByteArray, arguments);
    QFETCH(QList<QtopiaIpcMessage>, sent);
    QFETCH(QString, waitText);

    vod w;
    const QPointer<QWaitWidget> before = w.waitWidget;
    QtopiaIpcTransport::clearTraffic();

    w.vodRequestHandle(message, arguments);

    QCOMPARE(described(QtopiaIpcTransport::traffic()), described(sent));
    if (waitText.isEmpty()) {
        QCOMPARE(w.waitWidget, before.data());
    } else {
        QVERIFY(before.isNull());
        QCOMPARE(w.waitWidget->text(), waitText);
        QVERIFY(w.waitWidget->isVisible());
        QCOMPARE(w.waitWidget->expiryTime(), 5000);
        QVERIFY(!w.waitWidget->isCancelEnabled());
        QVERIFY(!w.waitWidget->isHomeKeyEnabled());
    }
}

void tst_VodRequestHandle::logLine_data()
{
    QTest::addColumn<QString>("message");

    QTest::newRow("known") << "forwardVod(QString)";
    QTest::newRow("unknown") << "StopVod()";
}

// Every call is logged with its location header and the message, known or not.
void tst_VodRequestHandle::logLine()
{
    QFETCH(QString, message);

    vod w;
    const QString pattern = QStringLiteral("^\"[^\"]*vod\\.cpp:\\d+:vodRequestHandle\" \"%1\"$")
                                .arg(QRegularExpression::escape(message));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(pattern));
    w.vodRequestHandle(message, messageData(1.0f));
}

QTEST_MAIN(tst_VodRequestHandle)
#include "tst_vodrequesthandle.moc"
