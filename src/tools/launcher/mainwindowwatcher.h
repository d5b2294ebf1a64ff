#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

// Tells when the launched main window is over: deleted, or closed (a close
// that the window accepted, which hides it). Hiding alone is not the end: a
// player hides its window while its full-screen view is up.
class MainWindowWatcher : public QObject
{
    Q_OBJECT

public:
    explicit MainWindowWatcher(QWidget *window, QObject *parent = nullptr);

signals:
    // Emitted once.
    void gone();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void checkClosed();
    void report();

    QPointer<QWidget> window;
    bool reported = false;
};
