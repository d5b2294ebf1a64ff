#include "phonestatus.h"

#include "devicefile.h"
#include "devicepath.h"

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QSettings>
#include <QTemporaryFile>

namespace {
// Far above the few lines the phone application writes.
constexpr qint64 MaxStatusBytes = 64 * 1024;
}

PhoneStatus &PhoneStatus::instance()
{
    static PhoneStatus status;
    return status;
}

PhoneStatus::PhoneStatus()
    : watcher(new QFileSystemWatcher(this))
{
    connect(watcher, &QFileSystemWatcher::fileChanged, this, &PhoneStatus::refresh);
    connect(watcher, &QFileSystemWatcher::directoryChanged, this, &PhoneStatus::refresh);
    refresh();
}

bool PhoneStatus::screenUp()
{
    // The device root may change (a test gives each program its own).
    if (path != devicePath(QStringLiteral("/tmp/status/PhoneStatus.conf")))
        refresh();
    return up;
}

void PhoneStatus::refresh()
{
    const QString now = devicePath(QStringLiteral("/tmp/status/PhoneStatus.conf"));
    if (now != path) {
        if (!watcher->files().isEmpty())
            watcher->removePaths(watcher->files());
        if (!watcher->directories().isEmpty())
            watcher->removePaths(watcher->directories());
        path = now;
    }
    // The directory tells when the file comes, goes or is replaced; the file
    // when it is written in place.
    const QString directory = QFileInfo(path).path();
    if (!watcher->directories().contains(directory) && QFileInfo(directory).isDir())
        watcher->addPath(directory);
    if (watcher->files().isEmpty() && QFileInfo::exists(path))
        watcher->addPath(path);

    const bool was = up;
    up = readScreenUp(path);
    if (up != was)
        emit changed();
}

bool PhoneStatus::readScreenUp(const QString &file)
{
    QByteArray bytes;
    if (DeviceFile::read(file, MaxStatusBytes, &bytes) != DeviceFile::Status::Ok)
        return false;
    // QSettings reads the INI text, from a copy that cannot block it.
    QTemporaryFile copy;
    if (!copy.open() || copy.write(bytes) != bytes.size() || !copy.flush())
        return false;
    const QSettings status(copy.fileName(), QSettings::IniFormat);
    return status.value(QStringLiteral("Phone/CallWindowStatus"), 0).toInt() > 0
           || status.value(QStringLiteral("Phone/DialerWindowStatus"), 0).toInt() > 0;
}
