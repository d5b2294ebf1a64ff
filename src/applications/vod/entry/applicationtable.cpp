#include "applicationtable.h"

#include "push/videopushview.h"

namespace {
QWidget *createVideoPushView(QWidget *parent, Qt::WindowFlags flags)
{
    return new VideoPushView(parent, flags);
}

// Fills the table when the library is loaded. It sits in the same object file
// as the table itself: a program that links the table from the static library
// links this registration with it, so the table is never found empty.
struct Registration
{
    Registration() { ApplicationTable::registerApplication(QStringLiteral("videoPush"), createVideoPushView); }
};
const Registration registration;
}

QMap<QString, ApplicationTable::Creator> &ApplicationTable::table()
{
    static auto *applications = new QMap<QString, Creator>;
    return *applications;
}

void ApplicationTable::registerApplication(const QString &key, Creator creator)
{
    table().insert(key, creator);
}

QStringList ApplicationTable::keys()
{
    return table().keys();
}

ApplicationTable::Creator ApplicationTable::creator(const QString &key)
{
    return table().value(key, nullptr);
}
