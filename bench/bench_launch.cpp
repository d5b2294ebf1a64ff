// Start-up of the push viewer in a fresh process: from createMainWindow("videoPush")
// to "pushAppExecuted()" in the traffic log, and the resident size of the process
// with the view up, against a bare QDialog shown maximized the same way.
//
// Each figure is the median of several fresh processes: this program started
// again with --child push|dialog, which prints "<ns> <resident kB>".

#include "entry/applicationimpl.h"
#include "testenvironment.h"
#include "messaging/vodmessages.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace {

constexpr int Runs = 7;

qint64 residentKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

bool pushAppExecutedSent()
{
    const QString wanted = QLatin1String(VodMessage::PushAppExecuted);
    for (const QtopiaIpcMessage &m : QtopiaIpcTransport::traffic()) {
        if (m.message == wanted)
            return true;
    }
    return false;
}

int runChild(const QString &what)
{
    TestEnvironment environment;
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    QElapsedTimer clock;
    std::unique_ptr<QWidget> window;
    clock.start();
    if (what == QLatin1String("push")) {
        window.reset(ApplicationImpl().createMainWindow(QStringLiteral("videoPush"), nullptr, Qt::WindowFlags()));
        while (!pushAppExecutedSent())
            QCoreApplication::processEvents();
    } else {
        window = std::make_unique<QDialog>();
        window->showMaximized();
    }
    const qint64 ns = clock.nsecsElapsed();
    // Resident size once the window has been painted.
    if (!QTest::qWaitForWindowExposed(window.get()))
        return 1;
    QTest::qWait(700);
    QTextStream(stdout) << ns << ' ' << residentKb() << Qt::endl;
    return 0;
}

struct Sample
{
    qint64 ns;
    qint64 kb;
};

// Median launch time and resident size of Runs fresh processes, measured once per kind.
Sample measure(const QString &what)
{
    static QHash<QString, Sample> measured;
    if (measured.contains(what))
        return measured.value(what);
    QList<qint64> times;
    QList<qint64> sizes;
    for (int i = 0; i < Runs; ++i) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child"), what});
        if (!child.waitForFinished(30000) || child.exitCode() != 0)
            return {-1, -1};
        const QList<QByteArray> fields = child.readAllStandardOutput().trimmed().split(' ');
        times << fields.value(0).toLongLong();
        sizes << fields.value(1).toLongLong();
    }
    std::sort(times.begin(), times.end());
    std::sort(sizes.begin(), sizes.end());
    const Sample median{times.at(Runs / 2), sizes.at(Runs / 2)};
    measured.insert(what, median);
    return median;
}

} // namespace

class BenchLaunch : public QObject
{
    Q_OBJECT

private slots:
    void launch_data() { rows(); }
    void launch()
    {
        QFETCH(QString, what);
        const Sample sample = measure(what);
        QVERIFY(sample.ns > 0);
        QTest::setBenchmarkResult(qreal(sample.ns) / 1e6, QTest::WalltimeMilliseconds);
    }

    void resident_data() { rows(); }
    void resident()
    {
        QFETCH(QString, what);
        const Sample sample = measure(what);
        QVERIFY(sample.kb > 0);
        QTest::setBenchmarkResult(qreal(sample.kb) * 1024, QTest::BytesAllocated);
    }

private:
    static void rows()
    {
        QTest::addColumn<QString>("what");
        QTest::newRow("push view") << "push";
        QTest::newRow("bare dialog") << "dialog";
    }
};

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    if (argc > 2 && qstrcmp(argv[1], "--child") == 0)
        return runChild(QString::fromLocal8Bit(argv[2]));
    BenchLaunch bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_launch.moc"
