#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

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

// Loads the file at path into buffer: the whole file plus one zero byte, so that
// every name ends inside the buffer. On a failed size query or allocation it
// writes a debug line and returns false with buffer empty; a file that cannot be
// opened returns false silently with buffer left zero-filled.
bool load(const QString &path, QByteArray &buffer);

QStringList groupNames(const QByteArray &catalogue);
QStringList partNames(const QByteArray &catalogue, int group);
QStringList contentTitles(const QByteArray &catalogue);

}
