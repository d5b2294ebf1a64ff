#pragma once

#include "simcatalogue.h"

#include <QByteArray>
#include <QString>

#include <optional>

// Reads a catalogue description (UTF-8 JSON):
//
//   { "groups": [ { "name": "뉴스",
//                   "parts": [ { "name": "날씨",
//                                "titles": [ { "name": "주간 날씨", "length": 95 } ] } ] } ] }
//
// "length" is in seconds and must be positive; a group has at most
// SimCatalogue::MaxParts parts. A title may name its media "file" (played by
// the real video manager); a relative path is taken from `baseDirectory`. On
// failure the result is empty and *error tells where and what, e.g.
// "line 3, column 7: unterminated string" or
// "groups[0].parts[1].titles[2]: \"length\" must be a number above 0".
std::optional<SimCatalogue> readCatalogueJson(const QByteArray &json, QString *error,
                                              const QString &baseDirectory = QString());

// The same for a file; the error names the file, relative media paths are
// relative to it.
std::optional<SimCatalogue> readCatalogueJsonFile(const QString &path, QString *error);
