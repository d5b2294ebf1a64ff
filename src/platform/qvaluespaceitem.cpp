#include "qvaluespaceitem.h"

#include <QHash>

namespace {
QHash<QString, QVariant> &values()
{
    static QHash<QString, QVariant> store;
    return store;
}
}

QValueSpaceItem::QValueSpaceItem(const QString &path, QObject *parent)
    : QObject(parent), itemPath(path)
{
}

QVariant QValueSpaceItem::value(const QVariant &def) const
{
    return values().value(itemPath, def);
}

void QValueSpaceItem::setValue(const QVariant &value)
{
    values().insert(itemPath, value);
}

void QValueSpaceItem::clearAll()
{
    values().clear();
}
