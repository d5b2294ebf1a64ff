#pragma once

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QProcess>
#include <QStringList>

class QDBusMessage;

// Helpers of the end-to-end tests that run the launcher and a video manager as
// programs on one D-Bus session bus (the tests run under dbus-run-session).

// How much slower the programs run in the sanitizers' build.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr int E2ESlowness = 4;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr int E2ESlowness = 4;
#else
inline constexpr int E2ESlowness = 1;
#endif
#else
inline constexpr int E2ESlowness = 1;
#endif

// A program whose output is collected line by line as it comes; asked to end
// (SIGTERM) when the test is done with it.
class Program : public QObject
{
public:
    Program(const QString &name, const QString &path, const QStringList &arguments, const QProcessEnvironment &env);
    ~Program() override;

    // Ends the program as a signal does; true if it ended with code 0.
    bool stop();
    void write(const QByteArray &text) { process.write(text); }
    void closeInput() { process.closeWriteChannel(); }
    bool running() const { return process.state() != QProcess::NotRunning; }
    int exitCode() const { return process.exitCode(); }
    QProcess::ExitStatus exitStatus() const { return process.exitStatus(); }
    // Both outputs, for a failed test's report.
    QString dump() const;

    QString name;
    QProcess process;
    QStringList out;
    QStringList err;

private:
    QByteArray outPart;
    QByteArray errPart;
};

// Every signal of the module's interface on the bus, in the bus's order, as
// "path member hex", with its bytes and the time it was seen.
class BusWatch : public QObject
{
    Q_OBJECT

public:
    explicit BusWatch(QDBusConnection bus);
    ~BusWatch() override;

    bool ok = false;
    QStringList lines;
    QList<QByteArray> data;
    QList<qint64> times; // milliseconds since the watch began

private slots:
    void seen(const QDBusMessage &message);

private:
    QDBusConnection bus;
    QElapsedTimer clock;
};

// The index of the first line from `from` on that matches, waiting for it (the
// deadline stretched for the sanitizers' build); -1 when none came in time.
qsizetype waitForLine(const QStringList &lines, const QString &pattern, qsizetype from = 0, int timeoutMs = 10000);

// Waits until the launcher has handled every notification the bus carried so
// far: a message its transport refuses, sent now, is refused (and says so)
// after all of them.
bool launcherSettled(const Program &launcher);

// A failed wait shows what it waited for; cleanup() shows the programs' output.
#define WAIT_LINE(index, lines, pattern, from, timeout)                                                        \
    const qsizetype index = waitForLine(lines, pattern, from, timeout);                                         \
    QVERIFY2(index >= 0, qPrintable(QStringLiteral("no line matching %1").arg(pattern)))
