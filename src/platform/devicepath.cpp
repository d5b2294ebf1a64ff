#include "devicepath.h"

#include <QDir>

QString devicePath(const QString &path)
{
    const QString root = qEnvironmentVariable("QPE_ROOT");
    if (root.isEmpty() || root == QLatin1String("/"))
        return path;
    return QDir::cleanPath(root + QLatin1Char('/') + path);
}
