// No session bus: DBUS_SESSION_BUS_ADDRESS points at nothing (set by CMake for
// this program). Selecting the transport must fall back to the in-process one,
// say so in one line, and deliver every message exactly once.
#include "messaging/vodmessages.h"
#include "qtopiachannel.h"
#include "qtopiadbustransport.h"
#include "qtopiaipcenvelope.h"
#include "qtopiaipctransport.h"
#include "testenvironment.h"

#include <QSignalSpy>
#include <QTest>

namespace {

QStringList ipcLines;
QtMessageHandler previousHandler = nullptr;

void recordIpcLines(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (context.category && QLatin1String(context.category) == QLatin1String("QtopiaIpc")) {
        ipcLines << QStringLiteral("%1 %2").arg(type == QtWarningMsg ? "warning" : "info", text);
        return;
    }
    previousHandler(type, context, text);
}

} // namespace

class tst_NoSessionBus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS").contains(QLatin1String("nonexistent")));
        previousHandler = qInstallMessageHandler(recordIpcLines);
    }
    void cleanupTestCase() { qInstallMessageHandler(previousHandler); }

    void fallsBackToInProcess_data()
    {
        QTest::addColumn<QByteArray>("requested");
        QTest::addColumn<QString>("line");
        QTest::newRow("nothing asked")
            << QByteArray() << "info IPC over the in-process transport (no D-Bus session bus reachable)";
        QTest::newRow("dbus asked")
            << QByteArray("dbus")
            << "warning QPE_IPC_TRANSPORT=dbus but no D-Bus session bus is reachable; IPC falls back "
               "to the in-process transport";
    }
    void fallsBackToInProcess()
    {
        QFETCH(QByteArray, requested);
        QFETCH(QString, line);
        qputenv("QPE_IPC_TRANSPORT", requested);
        ipcLines.clear();

        QtopiaIpcTransport *transport = QtopiaIpcTransport::selectDefault();
        QCOMPARE(ipcLines, QStringList({line}));
        QCOMPARE(transport, QtopiaIpcTransport::instance());
        QVERIFY(!dynamic_cast<QtopiaDBusTransport *>(transport));

        // One notification sent, one received, with its bytes intact.
        QtopiaChannel listener(QLatin1String(VodChannel::VideoApplication), nullptr);
        QSignalSpy received(&listener, &QtopiaChannel::received);
        {
            QtopiaIpcEnvelope e{QLatin1String(VodChannel::VideoApplication),
                                QLatin1String(VodMessage::PauseOKVod)};
            e << 12.5f;
        }
        QTRY_COMPARE(received.size(), 1);
        flushEvents();
        QTest::qWait(20);
        QCOMPARE(received.size(), 1);
        QCOMPARE(received.at(0).at(0).toString(), QLatin1String(VodMessage::PauseOKVod));
        QCOMPARE(received.at(0).at(1).toByteArray().toHex(), QByteArray("41480000"));
        qunsetenv("QPE_IPC_TRANSPORT");
    }
};

QTEST_MAIN(tst_NoSessionBus)
#include "tst_nosessionbus.moc"
