// A request to the simulated video manager and its notification back: over
// D-Bus to the videomanager-sim program, and in-process to the simulator class,
// each against a bare round trip of the same carrier.
//
// Run on a private bus (dbus-run-session); without a session bus the D-Bus
// benchmarks are skipped. The bare D-Bus peer is this program started again
// with --echo.

#include "qtopiachannel.h"
#include "qtopiadbustransport.h"
#include "qtopiaipcenvelope.h"
#include "testenvironment.h"
#include "videomanagersimulator.h"
#include "messaging/vodmessages.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QTextStream>
#include <QtTest>

#include <memory>

namespace {

const QString echoPath = QStringLiteral("/bench/echo");
const QString echoInterface = QStringLiteral("bench.echo");

// Counts one notification on a channel.
class Waiter : public QObject
{
public:
    Waiter(const QString &channel, const QString &message) : listener(channel, this), message(message)
    {
        connect(&listener, &QtopiaChannel::received, this, [this](const QString &m, const QByteArray &) {
            if (m == this->message)
                ++arrived;
        });
    }

    // Runs the event loop until one more notification has arrived.
    bool wait(int timeoutMs = 5000)
    {
        const int target = arrived + 1;
        QDeadlineTimer deadline(timeoutMs);
        while (arrived < target && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        return arrived >= target;
    }

    int arrived = 0;

private:
    QtopiaChannel listener;
    QString message;
};

// The bare peer's side: answers every "ping" signal with a "pong" signal that
// carries the same bytes.
class Echo : public QObject
{
    Q_OBJECT

public:
    explicit Echo(const QDBusConnection &bus) : bus(bus) {}

public slots:
    void ping(const QByteArray &data)
    {
        QDBusMessage pong = QDBusMessage::createSignal(echoPath, echoInterface, QStringLiteral("pong"));
        pong << data;
        bus.send(pong);
    }

private:
    QDBusConnection bus;
};

// The measuring side of the bare round trip.
class Pinger : public QObject
{
    Q_OBJECT

public:
    int pongs = 0;

public slots:
    void pong(const QByteArray &) { ++pongs; }
};

int runEcho()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    Echo echo(bus);
    if (!bus.connect(QString(), echoPath, echoInterface, QStringLiteral("ping"), &echo, SLOT(ping(QByteArray))))
        return 1;
    // Says it listens only once the bus has the match rule.
    bus.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                            QStringLiteral("/org/freedesktop/DBus"),
                                            QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")));
    QTextStream(stdout) << "ready" << Qt::endl;
    return QCoreApplication::exec();
}

bool waitForLine(QProcess &process, const QByteArray &text)
{
    QDeadlineTimer deadline(10000);
    QByteArray seen;
    while (!deadline.hasExpired()) {
        if (!process.waitForReadyRead(200) && process.state() != QProcess::Running)
            return false;
        seen += process.readAll();
        if (seen.contains(text))
            return true;
    }
    return false;
}

void stopProcess(QProcess &process)
{
    process.terminate();
    if (!process.waitForFinished(3000))
        process.kill();
    process.waitForFinished(3000);
}

} // namespace

class BenchBus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { environment = std::make_unique<TestEnvironment>(); }

    // Reference: a signal to a peer process and its answer, plain QtDBus.
    void bareDBusPingPong()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected())
            QSKIP("no session bus; run under dbus-run-session");
        QProcess peer;
        peer.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--echo")});
        QVERIFY(waitForLine(peer, "ready"));
        Pinger pinger;
        QVERIFY(bus.connect(QString(), echoPath, echoInterface, QStringLiteral("pong"), &pinger,
                            SLOT(pong(QByteArray))));
        const QByteArray data(4, '\0');
        QBENCHMARK {
            const int target = pinger.pongs + 1;
            QDBusMessage ping = QDBusMessage::createSignal(echoPath, echoInterface, QStringLiteral("ping"));
            ping << data;
            bus.send(ping);
            QDeadlineTimer deadline(5000);
            while (pinger.pongs < target && !deadline.hasExpired())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            QVERIFY(pinger.pongs >= target);
        }
        stopProcess(peer);
    }

    // "stopVod()" to the videomanager-sim program, "endOKVod()" back.
    void simulatorOverDBus()
    {
        QtopiaDBusTransport transport;
        if (!transport.isConnected())
            QSKIP("no session bus; run under dbus-run-session");
        QtopiaIpcTransport::setInstance(&transport);
        const auto restore = qScopeGuard([] { QtopiaIpcTransport::setInstance(nullptr); });
        Waiter ended(QLatin1String(VodChannel::VideoApplication), QLatin1String(VodMessage::EndOKVod));
        QVERIFY(transport.sync());

        QProcess simulator;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QPE_IPC_TRANSPORT"), QStringLiteral("dbus"));
        simulator.setProcessEnvironment(env);
        // Its log lines are part of its work; reading them would wake this process
        // once more per message, which the bare peer does not.
        simulator.setStandardOutputFile(QProcess::nullDevice());
        simulator.start(QStringLiteral(SIMULATOR_PATH), QStringList());
        QVERIFY(simulator.waitForStarted());
        // It is listening once it answers; until then the requests go unheard.
        QDeadlineTimer deadline(10000);
        bool answered = false;
        while (!answered && !deadline.hasExpired()) {
            QtopiaIpcEnvelope(QLatin1String(VodChannel::VideoManager), QLatin1String(VodMessage::StopVod));
            answered = ended.wait(200);
        }
        QVERIFY(answered);

        QBENCHMARK {
            QtopiaIpcEnvelope(QLatin1String(VodChannel::VideoManager), QLatin1String(VodMessage::StopVod));
            QVERIFY(ended.wait());
        }
        stopProcess(simulator);
    }

    // Reference: a queued call there and a queued call back.
    void bareQueuedRoundTrip()
    {
        QObject there;
        QObject back;
        int arrived = 0;
        QBENCHMARK {
            const int target = arrived + 1;
            QMetaObject::invokeMethod(
                &there,
                [&] { QMetaObject::invokeMethod(&back, [&] { ++arrived; }, Qt::QueuedConnection); },
                Qt::QueuedConnection);
            while (arrived < target)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    // The same request and notification on the in-process transport.
    void simulatorInProcess()
    {
        VideoManagerSimulator simulator{SimulatorOptions()};
        Waiter ended(QLatin1String(VodChannel::VideoApplication), QLatin1String(VodMessage::EndOKVod));
        QBENCHMARK {
            QtopiaIpcEnvelope(QLatin1String(VodChannel::VideoManager), QLatin1String(VodMessage::StopVod));
            QVERIFY(ended.wait());
        }
    }

private:
    std::unique_ptr<TestEnvironment> environment;
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "--echo") == 0)
        return runEcho();
    BenchBus bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_bus.moc"
