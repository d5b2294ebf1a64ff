#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "devicefile.h"

// The two catalogue files that the video manager writes for the browser, and the
// readers that turn their bytes into lists. Integers are 32-bit little-endian;
// names are EUC-KR byte strings ending at their first NUL. The readers return the
// raw bytes, one character per byte (Latin-1); they are decoded only when shown.
namespace VodCatalogue {

inline constexpr char GroupFile[] = "/tmp/systemdb/vod_partlist.bin";
inline constexpr char ContentsFile[] = "/tmp/systemdb/vod_list.bin";

inline constexpr int GroupRecordSize = 1772;
inline constexpr int PartEntrySize = 84;
inline constexpr int PartSlots = 20;
inline constexpr int ContentRecordSize = 240;

// A catalogue larger than this is refused: far above any real one (20 parts
// of 100,000 titles are 24 MB), it keeps a hostile file from taking the memory.
inline constexpr qint64 MaxFileBytes = 64 * 1024 * 1024;
// A name that fills its field without a NUL runs on into what follows, but no
// further than this, so that reading a catalogue costs time and memory in
// proportion to its size.
inline constexpr int MaxNameBytes = 1024;

// Loads the file at path into buffer: the whole file plus one zero byte, so that
// every name ends inside the buffer. On a failed size query, a file that is not
// a regular one (a FIFO would block), one larger than MaxFileBytes, or a failed
// allocation it writes a debug line and returns false with buffer empty; a file
// that cannot be opened returns false silently with buffer left zero-filled.
// `stamp` records the version loaded: a file announced again unchanged (size,
// modification time and inode alike) is not read again.
bool load(const QString &path, QByteArray &buffer, DeviceFile::Stamp &stamp);

QStringList groupNames(const QByteArray &catalogue);
QStringList partNames(const QByteArray &catalogue, int group);
QStringList contentTitles(const QByteArray &catalogue);

}
