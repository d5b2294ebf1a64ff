#pragma once

#include <QObject>

// Installed on the application: turns the keyboard keys that stand in for the
// device's keys (KeyMap::translate) into those keys before any widget sees them.
// Only keys from the window system are translated; keys that the program sends
// itself pass unchanged.
class KeyTranslator : public QObject
{
    Q_OBJECT

public:
    explicit KeyTranslator(QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
