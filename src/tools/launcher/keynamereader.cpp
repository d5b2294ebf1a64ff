#include "keynamereader.h"

#include <QSocketNotifier>

#include <cerrno>
#include <unistd.h>

KeyNameReader::KeyNameReader(int fd, QObject *parent)
    : QObject(parent)
    , fd(fd)
    , notifier(new QSocketNotifier(fd, QSocketNotifier::Read, this))
{
    connect(notifier, &QSocketNotifier::activated, this, &KeyNameReader::readAvailable);
}

void KeyNameReader::readAvailable()
{
    // poll() said there is something: one read returns what is there, or 0 at the end.
    char buffer[4096];
    ssize_t n;
    do {
        n = ::read(fd, buffer, sizeof buffer);
    } while (n < 0 && errno == EINTR);
    if (n < 0 && errno == EAGAIN)
        return;

    if (n > 0) {
        pending.append(buffer, n);
        qsizetype end;
        while ((end = pending.indexOf('\n')) >= 0) {
            const QByteArray raw = pending.left(end);
            pending.remove(0, end + 1);
            emitLine(raw);
        }
        return;
    }

    notifier->setEnabled(false);
    if (!pending.isEmpty()) {
        emitLine(pending);
        pending.clear();
    }
    emit finished();
}

void KeyNameReader::emitLine(const QByteArray &raw)
{
    const QString line = QString::fromLocal8Bit(raw).trimmed();
    if (!line.isEmpty() && !line.startsWith(QLatin1Char('#')))
        emit lineRead(line);
}
