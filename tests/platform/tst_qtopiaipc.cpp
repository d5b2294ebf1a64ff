#include "qtopiachannel.h"
#include "qtopiaipcenvelope.h"
#include "qtopiaipctransport.h"
#include "testenvironment.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

namespace {
// Counts subscriptions and delivers nothing, to see what the channel layer asks
// of a transport.
class RecordingTransport : public QtopiaIpcTransport
{
public:
    QStringList subscribed;
    QStringList unsubscribed;
    QList<QtopiaIpcMessage> transmitted;
    void subscribe(const QString &c) override { subscribed << c; }
    void unsubscribe(const QString &c) override { unsubscribed << c; }

protected:
    void transmit(const QtopiaIpcMessage &m) override { transmitted << m; }
};
}

class tst_QtopiaIpc : public QObject
{
    Q_OBJECT

private slots:
    void init() { QtopiaIpcTransport::clearTraffic(); }

    void envelopeLeavesWhenDestroyed()
    {
        QtopiaChannel channel("QPE/Test", nullptr);
        QSignalSpy spy(&channel, &QtopiaChannel::received);
        {
            QtopiaIpcEnvelope e("QPE/Test", "a(int,float,QString)");
            e << 7 << 12.5f << QString("x");
            QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
        }
        QCOMPARE(QtopiaIpcTransport::traffic().size(), 1);
        const QtopiaIpcMessage m = QtopiaIpcTransport::traffic().first();
        QCOMPARE(m.channel, QString("QPE/Test"));
        QCOMPARE(m.message, QString("a(int,float,QString)"));
        // int 7, float 12.5 in 4 bytes, QString "x" (byte count 2, UTF-16).
        QCOMPARE(m.data.toHex(), QByteArray("00000007" "41480000" "00000002" "0078"));
        // Delivery goes through the event loop, never inside the sender's call.
        QCOMPARE(spy.size(), 0);
        QTRY_COMPARE(spy.size(), 1);
        QCOMPARE(spy.first().at(0).toString(), m.message);
        QCOMPARE(spy.first().at(1).toByteArray(), m.data);
    }

    void deliveryKeepsOrderAndReachesEveryListenerOfTheChannel()
    {
        QtopiaChannel first("QPE/Order", nullptr);
        QtopiaChannel second("QPE/Order", nullptr);
        QtopiaChannel other("QPE/Other", nullptr);
        QStringList seen;
        connect(&first, &QtopiaChannel::received, this, [&](const QString &m) { seen << "1:" + m; });
        connect(&second, &QtopiaChannel::received, this, [&](const QString &m) { seen << "2:" + m; });
        QSignalSpy otherSpy(&other, &QtopiaChannel::received);
        for (int i = 0; i < 100; ++i)
            QtopiaIpcEnvelope("QPE/Order", QString("m%1()").arg(i));
        QTRY_COMPARE(seen.size(), 200);
        for (int i = 0; i < 100; ++i) {
            QCOMPARE(seen.at(2 * i), QString("1:m%1()").arg(i));
            QCOMPARE(seen.at(2 * i + 1), QString("2:m%1()").arg(i));
        }
        QCOMPARE(otherSpy.size(), 0);
    }

    void listenerDeletedByAnEarlierListenerIsSkipped()
    {
        // The killer opened first, so it runs first in a delivery and deletes the
        // victim before the victim's turn.
        QtopiaChannel killer("QPE/Del", nullptr);
        QPointer<QtopiaChannel> victim = new QtopiaChannel("QPE/Del", nullptr);
        int victimCalls = 0;
        connect(victim, &QtopiaChannel::received, this, [&] { ++victimCalls; });
        connect(&killer, &QtopiaChannel::received, this, [&] { delete victim; });
        deliver("QPE/Del", "x()");
        QVERIFY(!victim);
        QCOMPARE(victimCalls, 0);
    }

    void transportIsToldAboutFirstAndLastListener()
    {
        RecordingTransport transport;
        QtopiaIpcTransport::setInstance(&transport);
        {
            QtopiaChannel a("QPE/Sub", nullptr);
            QtopiaChannel b("QPE/Sub", nullptr);
            QCOMPARE(transport.subscribed, QStringList{"QPE/Sub"});
            QtopiaIpcEnvelope("QPE/Sub", "y()");
        }
        QCOMPARE(transport.unsubscribed, QStringList{"QPE/Sub"});
        QCOMPARE(transport.transmitted.size(), 1);
        // The log records what the process sent, whatever the transport.
        QCOMPARE(QtopiaIpcTransport::traffic().size(), 1);
        QtopiaIpcTransport::setInstance(nullptr);
    }

    void channelDiesWithItsParent()
    {
        auto *owner = new QObject;
        new QtopiaChannel("QPE/Parent", owner);
        QVERIFY(QtopiaChannel::isListening("QPE/Parent"));
        delete owner;
        QVERIFY(!QtopiaChannel::isListening("QPE/Parent"));
    }
};

QTEST_MAIN(tst_QtopiaIpc)
#include "tst_qtopiaipc.moc"
