#include "applicationimpl.h"

#include "applicationtable.h"

#include "qlogbase.h"

namespace {
bool quicklauncherLogging()
{
    static const bool requested = qtopiaLogRequested("Quicklauncher");
    return requested;
}
}

ApplicationImpl::ApplicationImpl() = default;

ApplicationImpl::~ApplicationImpl() = default;

QStringList ApplicationImpl::keys() const
{
    return ApplicationTable::keys();
}

void ApplicationImpl::setProcessKey(const QString &key)
{
    Q_UNUSED(key);
}

QWidget *ApplicationImpl::createMainWindow(const QString &key, QWidget *parent, Qt::WindowFlags flags)
{
    if (quicklauncherLogging())
        QLogBase::log("Quicklauncher") << "created main window for quicklaunched" << key.toLocal8Bit().constData();

    const ApplicationTable::Creator create = ApplicationTable::creator(key);
    return create ? create(parent, flags) : nullptr;
}
