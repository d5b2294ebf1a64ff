#include "qapplicationplugin.h"

QApplicationPlugin::QApplicationPlugin(QObject *parent)
    : QObject(parent)
{
}

QApplicationPlugin::~QApplicationPlugin() = default;
