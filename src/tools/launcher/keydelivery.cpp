#include "keydelivery.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>

QObject *deliverKeyStroke(const KeyStroke &stroke)
{
    QObject *target = QGuiApplication::focusObject();
    if (!target)
        return nullptr;
    QPointer<QObject> receiver(target);
    QKeyEvent press(QEvent::KeyPress, stroke.key, stroke.modifiers);
    QCoreApplication::sendEvent(receiver, &press);
    if (receiver) {
        QKeyEvent release(QEvent::KeyRelease, stroke.key, stroke.modifiers);
        QCoreApplication::sendEvent(receiver, &release);
    }
    return target;
}
