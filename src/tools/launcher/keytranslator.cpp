#include "keytranslator.h"

#include "keymap.h"

#include <QCoreApplication>
#include <QKeyEvent>

KeyTranslator::KeyTranslator(QObject *parent)
    : QObject(parent)
{
}

bool KeyTranslator::eventFilter(QObject *watched, QEvent *event)
{
    if ((event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) || !event->spontaneous())
        return QObject::eventFilter(watched, event);

    const auto *keyEvent = static_cast<QKeyEvent *>(event);
    const KeyStroke stroke = KeyMap::translate(keyEvent->key());
    if (!stroke.isValid())
        return QObject::eventFilter(watched, event);

    // The device key has no text: a volume key must not type "+" into an editor.
    QKeyEvent deviceEvent(event->type(), stroke.key, stroke.modifiers, QString(), keyEvent->isAutoRepeat(),
                          ushort(keyEvent->count()));
    QCoreApplication::sendEvent(watched, &deviceEvent);
    event->setAccepted(deviceEvent.isAccepted());
    return true;
}
