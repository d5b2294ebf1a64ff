#pragma once

#include <QString>
#include <QStringList>

// Where the launcher looks for the plugin library when no path is given: in
// directories relative to the launcher's own directory (the installed layout
// and the build tree).
class PluginLocator
{
public:
    // The candidate paths, in the order they are tried, without duplicates.
    static QStringList candidates(const QString &applicationDir, const QStringList &relativeDirs,
                                  const QString &fileName);
    // The first candidate that exists, else the first candidate (for the error
    // message), else an empty string.
    static QString locate(const QString &applicationDir, const QStringList &relativeDirs, const QString &fileName);
};
