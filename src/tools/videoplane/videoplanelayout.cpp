#include "videoplanelayout.h"

#include <QCryptographicHash>
#include <QDir>

#include <cerrno>
#include <signal.h>
#include <unistd.h>

namespace VideoPlaneLayout {

QString nameFromEnvironment()
{
    const QString chosen = qEnvironmentVariable("QPE_VIDEO_PLANE");
    if (!chosen.isEmpty())
        return chosen.startsWith(QLatin1Char('/')) ? chosen : QLatin1Char('/') + chosen;
    QString name = QStringLiteral("/qpe-videoplane-%1").arg(getuid());
    const QString root = qEnvironmentVariable("QPE_ROOT");
    if (!root.isEmpty() && QDir(root).absolutePath() != QDir::rootPath()) {
        const QByteArray digest =
            QCryptographicHash::hash(QDir(root).absolutePath().toUtf8(), QCryptographicHash::Sha1).toHex();
        name += QLatin1Char('-') + QString::fromLatin1(digest.left(12));
    }
    return name;
}

bool writerAlive(std::int32_t pid)
{
    return pid > 0 && (kill(pid, 0) == 0 || errno == EPERM);
}

}
