#pragma once

#include <QObject>
#include <QString>

class QFileSystemWatcher;

// Whether the phone application shows its call or dialer screen, from the
// status file it writes ("/tmp/status/PhoneStatus.conf", INI: an integer
// "Phone/CallWindowStatus" or "Phone/DialerWindowStatus" above 0). The file
// is read when it changes, never on a paint, and only as a regular file: a
// FIFO in its place would block the reader. Anything unreadable counts as 0.
class PhoneStatus : public QObject
{
    Q_OBJECT

public:
    // The process's one reader.
    static PhoneStatus &instance();

    bool screenUp();

signals:
    // The phone screen came or went: what the play screens show changes.
    void changed();

private:
    PhoneStatus();
    void refresh();
    static bool readScreenUp(const QString &path);

    QFileSystemWatcher *watcher;
    QString path;
    bool up = false;
};
