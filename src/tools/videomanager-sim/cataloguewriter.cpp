#include "cataloguewriter.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringEncoder>
#include <QtEndian>

namespace {
void putInt(QByteArray &bytes, int offset, qint32 value)
{
    qToLittleEndian(value, bytes.data() + offset);
}

void putField(QByteArray &bytes, int offset, const QString &text, int size)
{
    const QByteArray field = encodeField(text, size);
    std::copy(field.cbegin(), field.cend(), bytes.begin() + offset);
}
}

QByteArray encodeField(const QString &text, int size)
{
    QByteArray field;
    if (size <= 0)
        return field;
    qsizetype i = 0;
    while (i < text.size()) {
        // One character at a time, so that a cut never splits one; a fresh
        // encoder each time, as an error stays with the encoder.
        const qsizetype length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        QStringEncoder encoder("EUC-KR");
        QByteArray bytes = encoder.encode(QStringView(text).mid(i, length));
        if (encoder.hasError() || bytes.isEmpty())
            bytes = QByteArray("?");
        if (field.size() + bytes.size() > size - 1)
            break;
        field += bytes;
        i += length;
    }
    field.append(size - field.size(), '\0');
    return field;
}

QByteArray groupCatalogueBytes(const SimCatalogue &catalogue)
{
    using namespace CatalogueLayout;
    const int groups = int(catalogue.groups.size());
    QByteArray bytes(GroupRecordsOffset + GroupRecordSize * groups, '\0');
    putInt(bytes, 0, groups);
    for (int g = 0; g < groups; ++g) {
        const SimGroup &group = catalogue.groups.at(g);
        const int record = GroupRecordsOffset + GroupRecordSize * g;
        const int parts = int(qMin<qsizetype>(group.parts.size(), SimCatalogue::MaxParts));
        putInt(bytes, record, g);
        putInt(bytes, record + GroupPartCountOffset, parts);
        putField(bytes, record + GroupNameOffset, group.name, GroupNameSize);
        for (int j = 0; j < parts; ++j)
            putField(bytes, record + PartEntriesOffset + PartEntrySize * j, group.parts.at(j).name,
                     PartEntrySize);
    }
    return bytes;
}

QByteArray contentsCatalogueBytes(const SimCatalogue &catalogue, int group, int part)
{
    using namespace CatalogueLayout;
    const SimPart *p = catalogue.part(group, part);
    const int titles = p ? int(p->titles.size()) : 0;
    QByteArray bytes(ContentRecordsOffset + ContentRecordSize * titles, '\0');
    putInt(bytes, 0, group);
    putInt(bytes, 4, part);
    putInt(bytes, ContentsCountOffset, titles);
    for (int i = 0; i < titles; ++i) {
        const SimTitle &title = p->titles.at(i);
        const int record = ContentRecordsOffset + ContentRecordSize * i;
        putField(bytes, record, title.name, TitleSize);
        putInt(bytes, record + TitleLengthOffset, qint32(title.length));
        putInt(bytes, record + TitleNumberOffset, i + 1);
    }
    return bytes;
}

bool writeFileAtomically(const QString &path, const QByteArray &bytes, QString *error)
{
    if (!QDir().mkpath(QFileInfo(path).path())) {
        if (error)
            *error = QStringLiteral("cannot create the directory of %1").arg(path);
        return false;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (error)
            *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}
