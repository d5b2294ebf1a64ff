#include "testenvironment.h"

#include "browser/mvodlistview.h"
#include "qtopiachannel.h"
#include "vod.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QPointer>
#include <QSettings>
#include <QTest>
#include <QWidget>

TestEnvironment::TestEnvironment()
{
    qputenv("QPE_ROOT", root.path().toLocal8Bit());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, root.path() + "/settings");
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, root.path() + "/settings");
    QDir(root.path()).mkpath("tmp/status");
    QDir(root.path()).mkpath("tmp/systemdb");
}

TestEnvironment::~TestEnvironment()
{
    qunsetenv("QPE_ROOT");
}

QString TestEnvironment::path(const QString &devicePath) const
{
    return QDir::cleanPath(root.path() + QLatin1Char('/') + devicePath);
}

void TestEnvironment::writeFile(const QString &devicePath, const QByteArray &bytes) const
{
    const QString p = path(devicePath);
    QDir().mkpath(QFileInfo(p).path());
    QFile f(p);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write %s", qPrintable(p));
    f.write(bytes);
}

void TestEnvironment::remove(const QString &devicePath) const
{
    QFile::remove(path(devicePath));
}

QStringList sentMessages()
{
    QStringList result;
    for (const QtopiaIpcMessage &m : QtopiaIpcTransport::traffic()) {
        QString entry = m.channel == QLatin1String("QPE/VideoManager") ? m.message : m.channel + QLatin1Char(' ') + m.message;
        if (!m.data.isEmpty())
            entry += QLatin1Char(' ') + QString::fromLatin1(m.data.toHex());
        result.append(entry);
    }
    return result;
}

void deliver(const QString &channel, const QString &message, const QByteArray &data)
{
    QtopiaChannel::deliver(channel, message, data);
}

void pressKey(QWidget *widget, int key, Qt::KeyboardModifiers modifiers)
{
    QTest::sendKeyEvent(QTest::Click, widget, Qt::Key(key), QString(), modifiers);
}

void flushEvents()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

int deleteLeakedTopLevels()
{
    flushEvents();
    QList<QPointer<QWidget>> leaked;
    for (QWidget *w : QApplication::topLevelWidgets())
        leaked << w;
    for (const QPointer<QWidget> &w : leaked)
        delete w.data();
    return int(leaked.size());
}

QStringList listRows(const vod &browser)
{
    QStringList texts;
    for (int i = 0; i < browser.listView->count(); ++i)
        texts << browser.listView->item(i)->text();
    return texts;
}

void openRow(vod &browser, int row)
{
    browser.listView->setCurrentRow(row);
    pressKey(browser.listView, Qt::Key_Select, Qt::KeypadModifier);
}
