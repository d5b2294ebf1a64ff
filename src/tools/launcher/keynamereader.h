#pragma once

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

// Reads lines from a file descriptor (the launcher's standard input) without
// blocking the event loop, and hands out each line as it completes.
class KeyNameReader : public QObject
{
    Q_OBJECT

public:
    explicit KeyNameReader(int fd, QObject *parent = nullptr);

signals:
    // One line, without its line end and surrounding blanks; blank lines and
    // lines starting with '#' are skipped.
    void lineRead(const QString &line);
    // End of input; a last line without a line end comes before it.
    void finished();

private:
    void readAvailable();
    void emitLine(const QByteArray &raw);

    int fd;
    QSocketNotifier *notifier;
    QByteArray pending;
};
