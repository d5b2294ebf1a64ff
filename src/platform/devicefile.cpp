#include "devicefile.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace DeviceFile {

namespace {

Stamp stampOf(const struct stat &info)
{
    return Stamp{qint64(info.st_size), qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec,
                 quint64(info.st_ino)};
}

} // namespace

Status query(const QString &path, qint64 maxSize, Stamp *stamp)
{
    struct stat info;
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return Status::Missing;
    if (!S_ISREG(info.st_mode))
        return Status::NotRegular;
    if (info.st_size > maxSize)
        return Status::TooLarge;
    *stamp = stampOf(info);
    return Status::Ok;
}

Status readInto(const QString &path, const Stamp &stamp, char *buffer)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return Status::Unreadable;
    struct stat info;
    // What was opened must be the file that was measured, not a FIFO put in
    // its place since.
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || quint64(info.st_ino) != stamp.inode) {
        ::close(fd);
        return Status::Unreadable;
    }
    qint64 done = 0;
    while (done < stamp.size) {
        const ssize_t got = ::read(fd, buffer + done, size_t(stamp.size - done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += got;
    }
    ::close(fd);
    std::memset(buffer + done, 0, size_t(stamp.size - done));
    return Status::Ok;
}

Status read(const QString &path, qint64 maxSize, QByteArray *bytes)
{
    Stamp stamp;
    const Status status = query(path, maxSize, &stamp);
    if (status != Status::Ok)
        return status;
    QByteArray data(qsizetype(stamp.size), Qt::Uninitialized);
    if (readInto(path, stamp, data.data()) != Status::Ok)
        return Status::Unreadable;
    *bytes = data;
    return Status::Ok;
}

} // namespace DeviceFile
