#include "qapplicationplugin.h"

#include "phonetheme.h"

QApplicationPlugin::QApplicationPlugin(QObject *parent)
    : QObject(parent)
{
    // A quick-launched application runs in the phone's look.
    PhoneTheme::install();
}

QApplicationPlugin::~QApplicationPlugin() = default;
