#include "e2eprograms.h"

#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QTest>

namespace {

void take(const QByteArray &bytes, QByteArray &part, QStringList &lines)
{
    part += bytes;
    qsizetype end;
    while ((end = part.indexOf('\n')) >= 0) {
        lines << QString::fromUtf8(part.left(end));
        part.remove(0, end + 1);
    }
}

const QString Interface = QStringLiteral("com.trolltech.qtopia");

} // namespace

Program::Program(const QString &name, const QString &path, const QStringList &arguments,
                 const QProcessEnvironment &env)
    : name(name)
{
    process.setProcessEnvironment(env);
    connect(&process, &QProcess::readyReadStandardOutput, this,
            [this] { take(process.readAllStandardOutput(), outPart, out); });
    connect(&process, &QProcess::readyReadStandardError, this,
            [this] { take(process.readAllStandardError(), errPart, err); });
    process.start(path, arguments);
}

Program::~Program()
{
    stop();
}

bool Program::stop()
{
    if (process.state() != QProcess::NotRunning) {
        process.terminate();
        if (!process.waitForFinished(10000 * E2ESlowness)) {
            process.kill();
            process.waitForFinished(5000);
            return false;
        }
    }
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QString Program::dump() const
{
    return QStringLiteral("--- %1 stdout:\n%2\n--- %1 stderr:\n%3\n")
        .arg(name, out.join(QLatin1Char('\n')), err.join(QLatin1Char('\n')));
}

BusWatch::BusWatch(QDBusConnection bus)
    : bus(bus)
{
    clock.start();
    // QDBusConnection offers only the string form of the slot.
    ok = bus.connect(QString(), QString(), Interface, QString(), this, SLOT(seen(QDBusMessage)));
}

BusWatch::~BusWatch()
{
    bus.disconnect(QString(), QString(), Interface, QString(), this, SLOT(seen(QDBusMessage)));
}

void BusWatch::seen(const QDBusMessage &message)
{
    const QByteArray bytes =
        message.arguments().isEmpty() ? QByteArray() : message.arguments().constFirst().toByteArray();
    QString line = message.path().section(QLatin1Char('/'), -1) + QLatin1Char(' ') + message.member();
    if (!bytes.isEmpty())
        line += QLatin1Char(' ') + QString::fromLatin1(bytes.toHex());
    lines << line;
    data << bytes;
    times << clock.elapsed();
}

qsizetype waitForLine(const QStringList &lines, const QString &pattern, qsizetype from, int timeoutMs)
{
    const QRegularExpression re(pattern);
    QDeadlineTimer deadline(qint64(timeoutMs) * E2ESlowness);
    for (;;) {
        for (qsizetype i = from; i < lines.size(); ++i) {
            if (re.match(lines.at(i)).hasMatch())
                return i;
        }
        if (deadline.hasExpired())
            return -1;
        QTest::qWait(10);
    }
}

bool launcherSettled(const Program &launcher)
{
    // A text where the transport takes a byte array: refused with a warning,
    // and the transport hands each message on before it takes the next.
    const QRegularExpression refused(QStringLiteral("ignored \"?e2eProbe\\(\\)\"?"));
    const qsizetype before = launcher.err.filter(refused).size();
    QDBusMessage probe = QDBusMessage::createSignal(QStringLiteral("/com/trolltech/qtopia/QPE_2FVideoApplication"),
                                                    Interface, QStringLiteral("e2eProbe_28_29"));
    probe << QStringLiteral("probe");
    if (!QDBusConnection::sessionBus().send(probe))
        return false;
    QDeadlineTimer deadline(10000 * E2ESlowness);
    while (launcher.err.filter(refused).size() == before) {
        if (deadline.hasExpired())
            return false;
        QTest::qWait(10);
    }
    return true;
}
