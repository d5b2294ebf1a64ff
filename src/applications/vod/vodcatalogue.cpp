#include "vodcatalogue.h"

#include "devicepath.h"

#include "qlogbase.h"

#include <QDebug>
#include <QFile>

#include <cstring>
#include <new>

namespace VodCatalogue {

namespace {

// The bad file is the normal case here: the video manager may still be writing
// it, or may have written a count that its records do not back. Every reader
// below checks that what it reads lies inside the loaded bytes.

bool fits(const QByteArray &bytes, qint64 offset, qint64 size)
{
    return offset >= 0 && size >= 0 && offset + size <= bytes.size();
}

// A 32-bit little-endian integer, or 0 when it does not lie inside the bytes.
qint32 int32At(const QByteArray &bytes, qint64 offset)
{
    if (!fits(bytes, offset, 4))
        return 0;
    const auto *p = reinterpret_cast<const uchar *>(bytes.constData() + offset);
    return qint32(quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24);
}

// The bytes from offset up to the first NUL, one character per byte. A name that
// fills its field without a NUL runs on into what follows, as the device's own
// reader does, but never past the end of the bytes nor past MaxNameBytes.
QString nameAt(const QByteArray &bytes, qint64 offset)
{
    if (offset < 0 || offset >= bytes.size())
        return QString();
    const qsizetype room = qMin<qint64>(bytes.size() - offset, MaxNameBytes);
    const char *start = bytes.constData() + offset;
    const void *nul = std::memchr(start, '\0', size_t(room));
    const qsizetype length = nul ? static_cast<const char *>(nul) - start : room;
    return QString::fromLatin1(start, length);
}

constexpr qint64 GroupCountOffset = 0;
constexpr qint64 FirstGroupOffset = 4;
constexpr qint64 PartCountInRecord = 4;
constexpr qint64 GroupNameInRecord = 8;
constexpr qint64 FirstPartInRecord = 92;
constexpr qint64 ContentCountOffset = 8;
constexpr qint64 FirstContentOffset = 16;

} // namespace

bool load(const QString &path, QByteArray &buffer, DeviceFile::Stamp &stamp)
{
    const QString file = devicePath(path);
    DeviceFile::Stamp found;
    switch (DeviceFile::query(file, MaxFileBytes, &found)) {
    case DeviceFile::Status::Ok:
        break;
    case DeviceFile::Status::TooLarge:
        buffer.clear();
        stamp = {};
        qCDebug(lcQtopiaDebug) << __FILE__ << "vodMessageHandle" << __LINE__ << "size error";
        return false;
    default:
        buffer.clear();
        stamp = {};
        qCDebug(lcQtopiaDebug) << __FILE__ << "vodMessageHandle" << __LINE__ << "stat error";
        return false;
    }
    if (!buffer.isEmpty() && found == stamp)
        return true;

    // The previous copy goes before the new one is allocated.
    buffer.clear();
    stamp = {};
    try {
        // One byte more than the file, left zero: every name ends inside it.
        // The read zeroes what it does not fill: a second pass over a large
        // catalogue would cost as much as reading it.
        buffer = QByteArray(qsizetype(found.size + 1), Qt::Uninitialized);
    } catch (const std::bad_alloc &) {
        buffer = QByteArray();
        qCDebug(lcQtopiaDebug) << __FILE__ << "vodMessageHandle" << __LINE__ << "malloc error";
        return false;
    }
    buffer.data()[found.size] = '\0';
    if (DeviceFile::readInto(file, found, buffer.data()) != DeviceFile::Status::Ok) {
        buffer.fill('\0');
        return false;
    }
    stamp = found;
    return true;
}

QStringList groupNames(const QByteArray &catalogue)
{
    QStringList names;
    const qint32 count = int32At(catalogue, GroupCountOffset);
    names.reserve(qBound(0, count, int((catalogue.size() - FirstGroupOffset) / GroupRecordSize)));
    // A count larger than the records present: stop at the last whole record and
    // keep the groups read so far.
    for (qint32 g = 0; g < count; ++g) {
        const qint64 record = FirstGroupOffset + qint64(GroupRecordSize) * g;
        if (!fits(catalogue, record, GroupRecordSize))
            break;
        names.append(nameAt(catalogue, record + GroupNameInRecord));
    }
    return names;
}

QStringList partNames(const QByteArray &catalogue, int group)
{
    QStringList names;
    if (group < 0)
        return names;
    const qint64 record = FirstGroupOffset + qint64(GroupRecordSize) * group;
    if (!fits(catalogue, record, GroupNameInRecord))
        return names;
    const qint32 count = int32At(catalogue, record + PartCountInRecord);
    // The count is not clamped to the 20 slots of a record: entries past them are
    // read from what follows, like the device does. A count that reaches past the
    // loaded bytes stops at the last whole entry and keeps the parts read so far.
    for (qint32 j = 0; j < count; ++j) {
        const qint64 entry = record + FirstPartInRecord + qint64(PartEntrySize) * j;
        if (!fits(catalogue, entry, PartEntrySize))
            break;
        names.append(nameAt(catalogue, entry));
    }
    return names;
}

QStringList contentTitles(const QByteArray &catalogue)
{
    QStringList titles;
    const qint32 count = int32At(catalogue, ContentCountOffset);
    titles.reserve(qBound(0, count, int((catalogue.size() - FirstContentOffset) / ContentRecordSize)));
    // A count larger than the records present: stop at the last whole record and
    // keep the titles read so far.
    for (qint32 i = 0; i < count; ++i) {
        const qint64 record = FirstContentOffset + qint64(ContentRecordSize) * i;
        if (!fits(catalogue, record, ContentRecordSize))
            break;
        titles.append(nameAt(catalogue, record));
    }
    return titles;
}

} // namespace VodCatalogue
