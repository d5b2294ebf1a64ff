#include "pluginverification.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QList>

const char *const PluginVerification::expectedVersion = "4.2.3";
const char *const PluginVerification::expectedDebug = "false";
const char *const PluginVerification::expectedBuildKey = "i686 Linux no-stl QT_NO_PLUGIN_CHECK";

namespace {
QString text(const char *source)
{
    return QCoreApplication::translate("PluginVerification", source);
}

// The value of "key=" in the record, or a null array when the line is missing.
QByteArray valueOf(const QList<QByteArray> &lines, const QByteArray &key)
{
    const QByteArray prefix = key + '=';
    for (const QByteArray &line : lines) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).isNull() ? QByteArray("") : line.mid(prefix.size());
    }
    return QByteArray();
}
}

QString PluginVerification::problem(const char *record)
{
    if (!record)
        return text("no verification data");
    const QList<QByteArray> lines = QByteArray(record).split('\n');
    if (lines.value(0) != "pattern=QT_PLUGIN_VERIFICATION_DATA")
        return text("the verification data has no pattern line");

    const struct
    {
        const char *key;
        const char *expected;
    } checks[] = {
        {"version", expectedVersion},
        {"debug", expectedDebug},
        {"buildkey", expectedBuildKey},
    };
    for (const auto &check : checks) {
        const QByteArray value = valueOf(lines, check.key);
        if (value.isNull())
            return text("the verification data has no %1").arg(QLatin1String(check.key));
        if (value != check.expected) {
            return text("%1 is \"%2\", expected \"%3\"")
                .arg(QLatin1String(check.key), QString::fromLatin1(value), QLatin1String(check.expected));
        }
    }
    return QString();
}
