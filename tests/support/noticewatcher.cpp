#include "noticewatcher.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

NoticeWatcher::NoticeWatcher(int timeoutMsecs)
{
    qputenv("QPE_NOTICE_TIMEOUT", QByteArray::number(timeoutMsecs));
    qApp->installEventFilter(this);
}

NoticeWatcher::~NoticeWatcher()
{
    qApp->removeEventFilter(this);
    qunsetenv("QPE_NOTICE_TIMEOUT");
}

bool NoticeWatcher::eventFilter(QObject *watched, QEvent *event)
{
    if (auto *notice = qobject_cast<QNoticeDialog *>(watched)) {
        if (event->type() == QEvent::Show) {
            seen.append(notice->notice());
            deepest = qMax(deepest, ++up);
        } else if (event->type() == QEvent::Hide) {
            --up;
        }
    }
    return QObject::eventFilter(watched, event);
}

void whileNextNoticeIsUp(std::function<void()> action)
{
    QTimer::singleShot(0, qApp, [action = std::move(action)] {
        if (QApplication::activeModalWidget())
            action();
        else
            whileNextNoticeIsUp(action);
    });
}
