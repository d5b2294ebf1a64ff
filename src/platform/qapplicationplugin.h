#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QWidget>

// The application factory of a quick-launch plugin: the launcher loads the
// library, asks its plugin object for the application keys and has it build the
// main window of the one it launches. The window belongs to the launcher.
class QApplicationPlugin : public QObject
{
    Q_OBJECT

public:
    explicit QApplicationPlugin(QObject *parent = nullptr);
    ~QApplicationPlugin() override;

    virtual QStringList keys() const = 0;
    virtual void setProcessKey(const QString &key) = 0;
    virtual QWidget *createMainWindow(const QString &key, QWidget *parent, Qt::WindowFlags flags) = 0;
};

// The launcher and the plugin each carry their own copy of this class, so a
// cast by meta-object identity would fail across the library boundary; the
// interface id makes qobject_cast ask the plugin object itself.
#define QApplicationPlugin_iid "org.videophone.Qtopia.QApplicationPlugin/1.0"
Q_DECLARE_INTERFACE(QApplicationPlugin, QApplicationPlugin_iid)
