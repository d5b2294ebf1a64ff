#pragma once

#include <QAccessibleWidget>

class VodPlayView;

// What assistive tools read of a player window: its state, time, volume and key
// meanings as name and description, built from the player's state when asked,
// so that notifications and time reports pay nothing for it.
class PlayerAccessibleInterface : public QAccessibleWidget
{
public:
    explicit PlayerAccessibleInterface(VodPlayView *view);

    QString text(QAccessible::Text t) const override;

    // The accessibility factory for player windows (QAccessible::installFactory).
    static QAccessibleInterface *create(const QString &className, QObject *object);
};
