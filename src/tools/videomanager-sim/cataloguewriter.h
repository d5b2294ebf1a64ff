#pragma once

#include "simcatalogue.h"

#include <QByteArray>
#include <QString>

// The two catalogue files the browser reads. Integers are 32-bit little-endian,
// names EUC-KR, NUL-terminated inside fixed fields.
//
// "/tmp/systemdb/vod_partlist.bin":
//   0                 group count G
//   4 + 1772·g        group record g: 0 group number, 4 part count P,
//                     8 group name (84 bytes), 92 + 84·j part j's name (84 bytes, 20 slots)
// "/tmp/systemdb/vod_list.bin" (the titles of one part):
//   0 group index, 4 part index, 8 title count N, 12 zero,
//   16 + 240·i        title record i: 0 title (232 bytes), 232 length in whole
//                     seconds, 236 content number (i + 1, as "setupVod(int)" carries it)
namespace CatalogueLayout {
inline constexpr int GroupRecordsOffset = 4;
inline constexpr int GroupRecordSize = 1772;
inline constexpr int GroupPartCountOffset = 4;
inline constexpr int GroupNameOffset = 8;
inline constexpr int GroupNameSize = 84;
inline constexpr int PartEntriesOffset = 92;
inline constexpr int PartEntrySize = 84;
inline constexpr int ContentsCountOffset = 8;
inline constexpr int ContentRecordsOffset = 16;
inline constexpr int ContentRecordSize = 240;
inline constexpr int TitleSize = 232;
inline constexpr int TitleLengthOffset = 232;
inline constexpr int TitleNumberOffset = 236;

inline constexpr char GroupFile[] = "/tmp/systemdb/vod_partlist.bin";
inline constexpr char ContentsFile[] = "/tmp/systemdb/vod_list.bin";
}

// `text` in EUC-KR in a field of `size` bytes: cut after the last whole
// character that leaves room for the terminating NUL, the rest zero. A
// character that EUC-KR cannot encode becomes "?".
QByteArray encodeField(const QString &text, int size);

// The whole group file of a catalogue.
QByteArray groupCatalogueBytes(const SimCatalogue &catalogue);

// The contents file for one part; a group or part that does not exist gives a
// file with no titles.
QByteArray contentsCatalogueBytes(const SimCatalogue &catalogue, int group, int part);

// Replaces the file at `path` (creating its directory) so that a reader sees
// either the old or the new file, never half of one.
bool writeFileAtomically(const QString &path, const QByteArray &bytes, QString *error);
