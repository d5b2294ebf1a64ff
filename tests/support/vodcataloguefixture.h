#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

// Writers of the two catalogue files for the tests. Every field the browser
// does not read is filled with non-zero noise, so that a reader that looks at
// the wrong offset picks up noise instead of a plausible name.
namespace VodCatalogueFixture {

inline QByteArray int32le(qint32 value)
{
    const quint32 v = quint32(value);
    QByteArray bytes(4, '\0');
    bytes[0] = char(v & 0xff);
    bytes[1] = char((v >> 8) & 0xff);
    bytes[2] = char((v >> 16) & 0xff);
    bytes[3] = char((v >> 24) & 0xff);
    return bytes;
}

// Writes bytes at offset into a field of fieldSize, NUL-padded (a name that
// fills its field has no NUL).
inline void putField(QByteArray &into, int offset, const QByteArray &bytes, int fieldSize)
{
    QByteArray field = bytes.left(fieldSize);
    field.append(QByteArray(fieldSize - field.size(), '\0'));
    into.replace(offset, fieldSize, field);
}

struct Group
{
    QByteArray name;
    QList<QByteArray> parts;
    // The part count written; parts.size() unless given.
    std::optional<qint32> partCount = std::nullopt;
};

inline QByteArray groupRecord(const Group &group)
{
    QByteArray record(1772, '\x5a');
    record.replace(0, 4, int32le(0x5a5a5a5a));
    record.replace(4, 4, int32le(group.partCount.value_or(qint32(group.parts.size()))));
    putField(record, 8, group.name, 84);
    for (int j = 0; j < 20; ++j) {
        // Slots without a part stay noise, as unused slots may be.
        if (j < group.parts.size())
            putField(record, 92 + 84 * j, group.parts.at(j), 84);
    }
    return record;
}

// The group file: the count (groups.size() unless given) and the records.
inline QByteArray groupFile(const QList<Group> &groups, std::optional<qint32> count = std::nullopt)
{
    QByteArray file = int32le(count.value_or(qint32(groups.size())));
    for (const Group &g : groups)
        file += groupRecord(g);
    return file;
}

// The contents file: 8 bytes of noise, the count, 4 bytes of noise, the records.
inline QByteArray contentsFile(const QList<QByteArray> &titles,
                               std::optional<qint32> count = std::nullopt)
{
    QByteArray file = QByteArray(8, '\x6b') + int32le(count.value_or(qint32(titles.size())))
                      + QByteArray(4, '\x6b');
    for (const QByteArray &title : titles) {
        QByteArray record(240, '\x6b');
        putField(record, 0, title, 240);
        // Keep the noise after the title's NUL.
        if (title.size() + 1 < 240)
            record.replace(title.size() + 1, 240 - title.size() - 1,
                           QByteArray(240 - title.size() - 1, '\x6b'));
        file += record;
    }
    return file;
}

}
