#pragma once

#include <QList>
#include <QObject>

#include "qnoticedialog.h"

#include <functional>

// Watches the real notice pop-ups of a test program: records each one when it
// comes up. The notices run their own modal loop and go away by themselves
// after QPE_NOTICE_TIMEOUT milliseconds (set by the watcher) or when a key
// answers them.
class NoticeWatcher : public QObject
{
    Q_OBJECT

public:
    explicit NoticeWatcher(int timeoutMsecs = 30);
    ~NoticeWatcher() override;

    QList<QNoticeDialog::Notice> seen;
    // How many notices are up at the most, one inside the other.
    int deepest = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int up = 0;
};

// Runs `action` from inside the next modal loop that comes up (a notice's).
void whileNextNoticeIsUp(std::function<void()> action);
