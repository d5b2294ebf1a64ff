#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <Qt>

class QWidget;

// The applications this library provides: key -> creator of the main window.
// One table per process, created on first use and never freed; the library
// registers its applications into it when it is loaded.
class ApplicationTable
{
public:
    using Creator = QWidget *(*)(QWidget *parent, Qt::WindowFlags flags);

    // Adds an application; a key already present gets the new creator.
    static void registerApplication(const QString &key, Creator creator);
    // Every key, in table order.
    static QStringList keys();
    // The creator of key, or null.
    static Creator creator(const QString &key);

private:
    static QMap<QString, Creator> &table();
};
