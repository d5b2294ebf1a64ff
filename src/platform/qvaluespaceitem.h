#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

// An item of the platform's value space, a process-wide tree of named values
// ("/UI/TellNumber"). The launcher and the tests publish values with setValue().
class QValueSpaceItem : public QObject
{
    Q_OBJECT

public:
    explicit QValueSpaceItem(const QString &path, QObject *parent = nullptr);

    QString path() const { return itemPath; }
    QVariant value(const QVariant &def = QVariant()) const;
    void setValue(const QVariant &value);

    // Removes every published value.
    static void clearAll();

private:
    QString itemPath;
};
