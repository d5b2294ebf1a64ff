#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

class QLabel;

// The device's notice pop-up: a modal notice with a main line and a detail line.
// information() and warning() return only once the notice has gone.
//
// The notice belongs to the call that shows it, never to the window it is shown
// over: a window deleted while its notice is up closes that notice, and the call
// returns (its caller must check that it still exists). At most one notice is up
// over a window: a notice asked for while one is up there replaces that one's
// texts and returns at once, so notices never nest without bound.
//
// Set QPE_NOTICE_TIMEOUT (milliseconds) to have every notice dismiss itself, for
// unattended runs.
class QNoticeDialog : public QDialog
{
    Q_OBJECT

public:
    enum Kind { Information, Warning };

    struct Notice
    {
        Kind kind = Information;
        QWidget *parent = nullptr;
        QString text;
        QString detail;
        int option = 0;
    };

    static int information(QWidget *parent, const QString &text, const QString &detail, int option);
    static int warning(QWidget *parent, const QString &text, const QString &detail, int option);

    explicit QNoticeDialog(const Notice &notice);

    // What the notice says now.
    const Notice &notice() const { return shown; }

protected:
    void keyPressEvent(QKeyEvent *e) override;

private:
    static int present(const Notice &notice);
    void say(const Notice &notice);

    Notice shown;
    // The window the notice is up over.
    QPointer<QWidget> over;
    QLabel *text;
    QLabel *detail;
};
