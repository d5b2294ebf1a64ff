#include "playeraccessibleinterface.h"

#include "playeraccessibility.h"
#include "vodplayview.h"

PlayerAccessibleInterface::PlayerAccessibleInterface(VodPlayView *view)
    : QAccessibleWidget(view, QAccessible::Window)
{
}

QString PlayerAccessibleInterface::text(QAccessible::Text t) const
{
    if (t != QAccessible::Name && t != QAccessible::Description)
        return QAccessibleWidget::text(t);
    const auto *view = static_cast<const VodPlayView *>(widget());
    PlayerAccessibility::State state;
    state.type = view->screenType;
    state.status = view->screenStatus;
    state.title = view->contentTitle;
    state.elapsed = view->flowingTimeText;
    state.total = view->totalTimeText;
    state.volume = view->volume;
    state.mute = view->isMute;
    return t == QAccessible::Name ? PlayerAccessibility::name(state) : PlayerAccessibility::description(state);
}

QAccessibleInterface *PlayerAccessibleInterface::create(const QString &className, QObject *object)
{
    Q_UNUSED(className);
    if (auto *view = qobject_cast<VodPlayView *>(object))
        return new PlayerAccessibleInterface(view);
    return nullptr;
}
