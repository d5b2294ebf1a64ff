#pragma once

#include <QByteArray>
#include <QString>

// Files that other processes write (catalogues, status files) are read without
// trusting them: only a regular file is read, since a FIFO or a device would
// block the reader or never end; it is opened without blocking, only up to a
// size, and a file swapped between the size query and the reading is refused.
namespace DeviceFile {

enum class Status { Ok, Missing, NotRegular, TooLarge, Unreadable };

// What tells one version of a file from another.
struct Stamp
{
    qint64 size = -1;
    qint64 modifiedNs = 0;
    quint64 inode = 0;

    bool operator==(const Stamp &other) const
    {
        return size == other.size && modifiedNs == other.modifiedNs && inode == other.inode;
    }
    bool operator!=(const Stamp &other) const { return !(*this == other); }
};

// The file's size and version, without opening it.
Status query(const QString &path, qint64 maxSize, Stamp *stamp);

// Reads the file of that version into `buffer` (at most `stamp.size` bytes);
// the bytes that the read does not fill (a file that shrank) become zero.
// Unreadable when it cannot be opened or is no longer that file.
Status readInto(const QString &path, const Stamp &stamp, char *buffer);

// The whole file, when it is a regular file of at most maxSize bytes.
Status read(const QString &path, qint64 maxSize, QByteArray *bytes);

} // namespace DeviceFile
