#include "qsoftmenubar.h"

#include <QHash>
#include <QWidget>

namespace {
QHash<const QWidget *, QMap<int, QSoftMenuBar::Label>> &store()
{
    static QHash<const QWidget *, QMap<int, QSoftMenuBar::Label>> labels;
    return labels;
}
}

QSoftMenuBar *QSoftMenuBar::instance()
{
    static QSoftMenuBar bar;
    return &bar;
}

void QSoftMenuBar::setLabel(QWidget *widget, int key, const QString &pixmap, const QString &text,
                            FocusState state)
{
    if (!widget)
        return;
    auto &labels = store();
    if (!labels.contains(widget)) {
        // Forget a widget's labels when it goes, so that a new widget at the same
        // address starts with none.
        QObject::connect(widget, &QObject::destroyed, instance(),
                         [widget]() { store().remove(widget); });
    }
    labels[widget][key] = Label{pixmap, text, state};
    emit instance()->labelsChanged(widget);
}

QMap<int, QSoftMenuBar::Label> QSoftMenuBar::labels(const QWidget *widget)
{
    return store().value(widget);
}

QSoftMenuBar::Label QSoftMenuBar::label(const QWidget *widget, int key)
{
    return store().value(widget).value(key);
}
