#include "cataloguejson.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {
// Collects the first error with the place it was found at.
struct Reader
{
    QString error;
    QString baseDirectory;

    bool fail(const QString &where, const QString &what)
    {
        if (error.isEmpty())
            error = where.isEmpty() ? what : where + QLatin1String(": ") + what;
        return false;
    }

    bool name(const QJsonObject &object, const QString &where, QString *out)
    {
        const QJsonValue value = object.value(QLatin1String("name"));
        if (!value.isString())
            return fail(where, QStringLiteral("\"name\" is missing or not a string"));
        *out = value.toString();
        return true;
    }

    bool array(const QJsonObject &object, const char *key, const QString &where, QJsonArray *out)
    {
        const QJsonValue value = object.value(QLatin1String(key));
        if (!value.isArray())
            return fail(where, QStringLiteral("\"%1\" is missing or not an array").arg(QLatin1String(key)));
        *out = value.toArray();
        return true;
    }

    bool object(const QJsonValue &value, const QString &where, QJsonObject *out)
    {
        if (!value.isObject())
            return fail(where, QStringLiteral("not an object"));
        *out = value.toObject();
        return true;
    }

    bool title(const QJsonValue &value, const QString &where, SimTitle *out)
    {
        QJsonObject o;
        if (!object(value, where, &o) || !name(o, where, &out->name))
            return false;
        const QJsonValue length = o.value(QLatin1String("length"));
        if (!length.isDouble() || !(length.toDouble() > 0))
            return fail(where, QStringLiteral("\"length\" must be a number above 0"));
        out->length = length.toDouble();
        const QJsonValue file = o.value(QLatin1String("file"));
        if (file.isUndefined())
            return true;
        if (!file.isString() || file.toString().isEmpty())
            return fail(where, QStringLiteral("\"file\" must be a non-empty string"));
        out->file = QDir::cleanPath(QDir(baseDirectory).filePath(file.toString()));
        return true;
    }

    bool part(const QJsonValue &value, const QString &where, SimPart *out)
    {
        QJsonObject o;
        QJsonArray titles;
        if (!object(value, where, &o) || !name(o, where, &out->name) || !array(o, "titles", where, &titles))
            return false;
        for (qsizetype i = 0; i < titles.size(); ++i) {
            SimTitle t;
            if (!title(titles.at(i), QStringLiteral("%1.titles[%2]").arg(where).arg(i), &t))
                return false;
            out->titles.append(t);
        }
        return true;
    }

    bool group(const QJsonValue &value, const QString &where, SimGroup *out)
    {
        QJsonObject o;
        QJsonArray parts;
        if (!object(value, where, &o) || !name(o, where, &out->name) || !array(o, "parts", where, &parts))
            return false;
        if (parts.size() > SimCatalogue::MaxParts)
            return fail(where, QStringLiteral("%1 parts, a group holds at most %2")
                                   .arg(parts.size())
                                   .arg(SimCatalogue::MaxParts));
        for (qsizetype j = 0; j < parts.size(); ++j) {
            SimPart p;
            if (!part(parts.at(j), QStringLiteral("%1.parts[%2]").arg(where).arg(j), &p))
                return false;
            out->parts.append(p);
        }
        return true;
    }
};

// "line L, column C" of a byte offset, both counted from 1.
QString position(const QByteArray &text, int offset)
{
    const QByteArray before = text.left(offset);
    const int line = int(before.count('\n')) + 1;
    const int column = int(before.size() - (before.lastIndexOf('\n') + 1)) + 1;
    return QStringLiteral("line %1, column %2").arg(line).arg(column);
}
}

std::optional<SimCatalogue> readCatalogueJson(const QByteArray &json, QString *error, const QString &baseDirectory)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    Reader reader;
    reader.baseDirectory = baseDirectory;
    SimCatalogue catalogue;
    QJsonArray groups;
    if (parseError.error != QJsonParseError::NoError) {
        reader.fail(position(json, parseError.offset), parseError.errorString());
    } else if (!document.isObject()) {
        reader.fail(QString(), QStringLiteral("the top level must be an object with \"groups\""));
    } else if (reader.array(document.object(), "groups", QString(), &groups)) {
        for (qsizetype g = 0; g < groups.size(); ++g) {
            SimGroup group;
            if (!reader.group(groups.at(g), QStringLiteral("groups[%1]").arg(g), &group))
                break;
            catalogue.groups.append(group);
        }
    }
    if (!reader.error.isEmpty()) {
        if (error)
            *error = reader.error;
        return std::nullopt;
    }
    return catalogue;
}

std::optional<SimCatalogue> readCatalogueJsonFile(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    QString why;
    std::optional<SimCatalogue> catalogue =
        readCatalogueJson(file.readAll(), &why, QFileInfo(path).absolutePath());
    if (!catalogue && error)
        *error = QStringLiteral("%1: %2").arg(path, why);
    return catalogue;
}
