#include "messaging/messagecatalogue.h"
#include "qtopiachannel.h"
#include "qtopiadbusnames.h"
#include "qtopiadbustransport.h"
#include "qtopiaipcenvelope.h"
#include "qtopiaipctransport.h"
#include "qtopialocaltransport.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {
// A bus daemon of this test alone, so that nothing depends on (or disturbs)
// the user's session bus.
class PrivateBus
{
public:
    ~PrivateBus()
    {
        if (daemon.state() != QProcess::NotRunning) {
            daemon.terminate();
            if (!daemon.waitForFinished(3000))
                daemon.kill();
        }
    }

    // Ends the daemon, as when the bus goes away under its clients.
    void kill()
    {
        daemon.kill();
        daemon.waitForFinished(3000);
    }

    // The address to connect to, or an empty string with *error set.
    QString start(QString *error)
    {
        const QString config = dir.filePath("bus.conf");
        QFile file(config);
        if (!dir.isValid() || !file.open(QIODevice::WriteOnly)) {
            *error = "cannot write the bus configuration";
            return QString();
        }
        file.write(QStringLiteral(
                       "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
                       " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
                       "<busconfig><type>session</type><listen>unix:dir=%1</listen><auth>EXTERNAL</auth>\n"
                       "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
                       "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n")
                       .arg(dir.path())
                       .toUtf8());
        file.close();
        daemon.setReadChannel(QProcess::StandardOutput);
        daemon.start("dbus-daemon", {"--config-file=" + config, "--nofork", "--print-address"});
        if (!daemon.waitForStarted(5000)) {
            *error = "cannot run dbus-daemon (Debian package dbus-daemon): " + daemon.errorString();
            return QString();
        }
        while (!daemon.canReadLine() && daemon.waitForReadyRead(5000)) {
        }
        const QString address = QString::fromUtf8(daemon.readLine()).trimmed();
        if (address.isEmpty())
            *error = "dbus-daemon printed no address: " + QString::fromUtf8(daemon.readAllStandardError());
        return address;
    }

private:
    QTemporaryDir dir;
    QProcess daemon;
};

// The message a catalogue entry gives with fixed sample arguments, sent with an
// envelope as the module sends.
void sendSample(const MessageEntry &entry)
{
    QtopiaIpcEnvelope e(entry.channel, entry.signature);
    qint32 n = 7;
    for (MessageEntry::ArgType type : entry.arguments) {
        switch (type) {
        case MessageEntry::Int:
            e << n++;
            break;
        case MessageEntry::Float:
            e << 12.5f;
            break;
        case MessageEntry::String:
            e << QString("83.5");
            break;
        case MessageEntry::CString:
            e << "0.0";
            break;
        }
    }
}

// Opens a listener, sends one sample and returns what the listener got.
QtopiaIpcMessage roundTrip(const MessageEntry &entry, QtopiaDBusTransport *bus)
{
    QtopiaChannel channel(entry.channel, nullptr);
    QSignalSpy spy(&channel, &QtopiaChannel::received);
    if (bus)
        bus->sync();
    sendSample(entry);
    if (!spy.wait(5000) && spy.isEmpty())
        return {};
    return {channel.channel(), spy.first().at(0).toString(), spy.first().at(1).toByteArray()};
}
}

// Receives plain D-Bus signals, as any D-Bus peer of the module would.
class RawReceiver : public QObject
{
    Q_OBJECT

public:
    QList<QDBusMessage> messages;

public slots:
    void take(const QDBusMessage &message) { messages.append(message); }
};

class tst_QtopiaDBusTransport : public QObject
{
    Q_OBJECT

private:
    PrivateBus privateBus;
    QString address;
    std::unique_ptr<QtopiaDBusTransport> transport;

private slots:
    void initTestCase()
    {
        // Nothing has picked a transport: whatever bus a user has, a program
        // that does not ask stays on the in-process one.
        QVERIFY(dynamic_cast<QtopiaLocalTransport *>(QtopiaIpcTransport::instance()));

        QString error;
        address = privateBus.start(&error);
        QVERIFY2(!address.isEmpty(), qPrintable(error));
        qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
        transport = std::make_unique<QtopiaDBusTransport>(QDBusConnection::sessionBus());
        QVERIFY(transport->isConnected());
        QVERIFY(dynamic_cast<QtopiaLocalTransport *>(QtopiaIpcTransport::instance()));
    }

    void cleanup()
    {
        QtopiaIpcTransport::setInstance(nullptr);
        qunsetenv("QPE_IPC_TRANSPORT");
        QVERIFY(QtopiaChannel::listenedChannels().isEmpty());
    }

    void cleanupTestCase() { transport.reset(); }

    void escape_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("escaped");
        QTest::newRow("channel") << "QPE/VideoManager" << "QPE_2FVideoManager";
        QTest::newRow("commas") << "requestContents(int,int)" << "requestContents_28int_2Cint_29";
        QTest::newRow("underscore") << "setVolume_vod(int)" << "setVolume_5Fvod_28int_29";
        QTest::newRow("leading digit") << "3gp()" << "_003gp_28_29";
        QTest::newRow("escaped marker text") << "_00" << "_5F00";
        QTest::newRow("Hangul") << QString::fromUtf8("가") << "_EA_B0_80";
        QTest::newRow("beyond the BMP") << QString::fromUtf8("\xF0\x9F\x98\x80") << "_F0_9F_98_80";
    }
    void escape()
    {
        QFETCH(QString, text);
        QFETCH(QString, escaped);
        QCOMPARE(qtopiaDBusEscape(text), escaped);
        bool ok = false;
        QCOMPARE(qtopiaDBusUnescape(escaped, &ok), text);
        QVERIFY(ok);
    }

    void unescape_data()
    {
        QTest::addColumn<QString>("escaped");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("text");
        QTest::newRow("lower-case hex") << "QPE_2fX" << true << "QPE/X";
        QTest::newRow("plain member of another peer") << "startPush" << true << "startPush";
        QTest::newRow("cut escape") << "a_2" << false << "";
        QTest::newRow("raw non-ASCII") << QString::fromUtf8("ä") << false << "";
        QTest::newRow("half a UTF-8 sequence") << "_C3" << false << "";
        QTest::newRow("marker without digit is a NUL byte") << "_00x" << true << QString(QChar(0)) + "x";
    }
    void unescape()
    {
        QFETCH(QString, escaped);
        QFETCH(bool, valid);
        QFETCH(QString, text);
        bool ok = !valid;
        const QString result = qtopiaDBusUnescape(escaped, &ok);
        QCOMPARE(ok, valid);
        if (valid)
            QCOMPARE(result, text);
        else
            QVERIFY(result.isNull());
    }

    void catalogueTravelsUnchanged_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < messageCatalogue().size(); ++i) {
            const MessageEntry &entry = messageCatalogue().at(i);
            QTest::addRow("%s %s", entry.channel, entry.signature) << i;
        }
    }
    void catalogueTravelsUnchanged()
    {
        QFETCH(int, index);
        const MessageEntry &entry = messageCatalogue().at(index);

        QtopiaIpcTransport::setInstance(nullptr);
        const QtopiaIpcMessage local = roundTrip(entry, nullptr);
        QCOMPARE(local.message, QString(entry.signature));
        QCOMPARE(local.data, QtopiaIpcTransport::traffic().constLast().data);

        // A second connection sees the signal as any D-Bus peer does.
        QDBusConnection peer = QDBusConnection::connectToBus(address, "raw-peer");
        RawReceiver raw;
        const QString path = QStringLiteral("/com/trolltech/qtopia/") + qtopiaDBusEscape(entry.channel);
        QVERIFY(peer.connect(QString(), path, "com.trolltech.qtopia", qtopiaDBusEscape(entry.signature), &raw,
                             SLOT(take(QDBusMessage))));

        QtopiaIpcTransport::setInstance(transport.get());
        const QtopiaIpcMessage overBus = roundTrip(entry, transport.get());
        QCOMPARE(overBus, local);

        QTRY_COMPARE(raw.messages.size(), 1);
        const QDBusMessage m = raw.messages.first();
        QCOMPARE(m.type(), QDBusMessage::SignalMessage);
        QCOMPARE(m.path(), path);
        QCOMPARE(m.interface(), QString("com.trolltech.qtopia"));
        QCOMPARE(m.member(), qtopiaDBusEscape(entry.signature));
        QCOMPARE(m.signature(), QString("ay"));
        QCOMPARE(m.arguments().size(), 1);
        QCOMPARE(m.arguments().first().toByteArray(), local.data);
        peer.disconnect(QString(), path, "com.trolltech.qtopia", qtopiaDBusEscape(entry.signature), &raw,
                        SLOT(take(QDBusMessage)));
        QDBusConnection::disconnectFromBus("raw-peer");
    }

    // Channels opened before the bus transport was installed move over, each
    // subscribed once however many listeners it has.
    void channelsMoveToTheBus()
    {
        QtopiaChannel early("QPE/Move", nullptr);
        QtopiaChannel second("QPE/Move", nullptr);
        QStringList seen;
        connect(&early, &QtopiaChannel::received, this, [&](const QString &m) { seen << m; });
        QtopiaIpcTransport::setInstance(transport.get());
        transport->sync();
        QtopiaIpcEnvelope("QPE/Move", "one()");
        QtopiaIpcEnvelope("QPE/Move", "two()");
        QTRY_COMPARE(seen.size(), 2);
        QCOMPARE(seen, (QStringList{"one()", "two()"}));
    }

    // The transport a program takes says so: information as asked, a warning
    // where the machine cannot do as asked.
    void selectionSaysSo()
    {
        qputenv("QPE_IPC_TRANSPORT", "local");
        QTest::ignoreMessage(QtInfoMsg, "IPC over the in-process transport (QPE_IPC_TRANSPORT=local)");
        QVERIFY(dynamic_cast<QtopiaLocalTransport *>(QtopiaIpcTransport::selectDefault()));
        qputenv("QPE_IPC_TRANSPORT", "qcop");
        QTest::ignoreMessage(QtWarningMsg,
                             "QPE_IPC_TRANSPORT=qcop is neither dbus nor local; IPC over the D-Bus session bus");
        QVERIFY(dynamic_cast<QtopiaDBusTransport *>(QtopiaIpcTransport::selectDefault()));
    }

    // A request sent after the bus daemon went is lost, and says so.
    void lostBusSaysSo()
    {
        PrivateBus doomed;
        QString error;
        const QString doomedAddress = doomed.start(&error);
        QVERIFY2(!doomedAddress.isEmpty(), qPrintable(error));
        QDBusConnection connection = QDBusConnection::connectToBus(doomedAddress, "doomed");
        QVERIFY(connection.isConnected());
        {
            QtopiaDBusTransport lonely(connection);
            doomed.kill();
            QTRY_VERIFY(!connection.isConnected());
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression("lost \"stopVod\\(\\)\" on channel \"QPE/VideoManager\""));
            QtopiaIpcTransport::setInstance(&lonely);
            QtopiaIpcEnvelope(QStringLiteral("QPE/VideoManager"), QStringLiteral("stopVod()"));
            QtopiaIpcTransport::setInstance(transport.get());
        }
        QDBusConnection::disconnectFromBus("doomed");
    }
};

QTEST_MAIN(tst_QtopiaDBusTransport)
#include "tst_qtopiadbustransport.moc"
