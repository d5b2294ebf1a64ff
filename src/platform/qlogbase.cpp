#include "qlogbase.h"

#include <QHash>
#include <QLoggingCategory>
#include <QMutex>

namespace {
const QLoggingCategory &categoryFor(const char *name)
{
    static QMutex mutex;
    static QHash<QByteArray, QLoggingCategory *> categories;
    QMutexLocker lock(&mutex);
    QLoggingCategory *&category = categories[QByteArray(name)];
    if (!category) {
        // QLoggingCategory keeps the name pointer: give it one that lives as long.
        // Debug stays off by default, so only a logging rule turns a category on.
        category = new QLoggingCategory(qstrdup(name), QtWarningMsg);
    }
    return *category;
}
}

bool qtopiaLogRequested(const char *category)
{
    return categoryFor(category).isDebugEnabled();
}

QDebug QLogBase::log(const char *category)
{
    return QMessageLogger().debug(categoryFor(category));
}
