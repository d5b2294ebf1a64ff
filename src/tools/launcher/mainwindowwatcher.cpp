#include "mainwindowwatcher.h"

#include <QEvent>
#include <QWidget>

MainWindowWatcher::MainWindowWatcher(QWidget *window, QObject *parent)
    : QObject(parent)
    , window(window)
{
    connect(window, &QObject::destroyed, this, &MainWindowWatcher::report);
    window->installEventFilter(this);
}

bool MainWindowWatcher::eventFilter(QObject *watched, QEvent *event)
{
    // The close event comes before the widget decides; whether it was accepted
    // shows afterwards, in whether the window went away.
    if (watched == window && event->type() == QEvent::Close)
        QMetaObject::invokeMethod(this, &MainWindowWatcher::checkClosed, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void MainWindowWatcher::checkClosed()
{
    if (!window || !window->isVisible())
        report();
}

void MainWindowWatcher::report()
{
    if (reported)
        return;
    reported = true;
    emit gone();
}
