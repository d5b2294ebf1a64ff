#include "qlogbase.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QMutex>

#include <map>
#include <memory>

// Named as Qt's own default category: its lines look as qDebug()'s do, and
// the same rules ("default.debug=false") silence them.
Q_LOGGING_CATEGORY(lcQtopiaDebug, "default")

namespace {
// A category with the name it points to; QLoggingCategory keeps the pointer.
struct NamedCategory
{
    // Debug stays off by default, so only a logging rule turns a category on.
    explicit NamedCategory(const char *n) : name(n), category(name.constData(), QtWarningMsg) {}
    const QByteArray name;
    QLoggingCategory category;
};

const QLoggingCategory &categoryFor(const char *name)
{
    static QMutex mutex;
    // Made once per name and kept, owned, for the life of the process.
    static std::map<QByteArray, std::unique_ptr<NamedCategory>> categories;
    QMutexLocker lock(&mutex);
    std::unique_ptr<NamedCategory> &entry = categories[QByteArray(name)];
    if (!entry)
        entry = std::make_unique<NamedCategory>(name);
    return entry->category;
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
