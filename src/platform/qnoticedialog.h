#pragma once

#include <QDialog>
#include <QString>

#include <functional>

// The device's notice pop-up: a modal notice with a main line and a detail line.
// information() and warning() return only once the notice has gone.
//
// Set QPE_NOTICE_TIMEOUT (milliseconds) to have every notice dismiss itself, for
// unattended runs. Tests install a presenter instead, which sees the notice and
// returns at once without showing anything.
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
    using Presenter = std::function<void(const Notice &)>;

    static int information(QWidget *parent, const QString &text, const QString &detail, int option);
    static int warning(QWidget *parent, const QString &text, const QString &detail, int option);

    // Replaces the modal notice (an empty presenter restores it).
    static void setPresenter(Presenter presenter);

    QNoticeDialog(const Notice &notice, QWidget *parent);

    // What the notice says, as it was asked for.
    const Notice &notice() const { return shown; }

protected:
    void keyPressEvent(QKeyEvent *e) override;

private:
    static int present(const Notice &notice);

    Notice shown;
};
