#include "pluginlocator.h"

#include <QDir>
#include <QFileInfo>

QStringList PluginLocator::candidates(const QString &applicationDir, const QStringList &relativeDirs,
                                      const QString &fileName)
{
    QStringList paths;
    const QDir base(applicationDir);
    for (const QString &dir : relativeDirs) {
        const QString path = QDir::cleanPath(base.absoluteFilePath(QDir(dir).filePath(fileName)));
        if (!paths.contains(path))
            paths.append(path);
    }
    return paths;
}

QString PluginLocator::locate(const QString &applicationDir, const QStringList &relativeDirs, const QString &fileName)
{
    const QStringList paths = candidates(applicationDir, relativeDirs, fileName);
    for (const QString &path : paths) {
        if (QFileInfo(path).isFile())
            return path;
    }
    return paths.value(0);
}
