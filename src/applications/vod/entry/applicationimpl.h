#pragma once

#include "qapplicationplugin.h"

// The plugin object of this library: builds the main windows of the
// applications in the application table.
class ApplicationImpl : public QApplicationPlugin
{
    Q_OBJECT
    Q_INTERFACES(QApplicationPlugin)

public:
    ApplicationImpl();
    ~ApplicationImpl() override;

    QStringList keys() const override;
    void setProcessKey(const QString &key) override;
    QWidget *createMainWindow(const QString &key, QWidget *parent, Qt::WindowFlags flags) override;
};
