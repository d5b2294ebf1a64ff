#include "playeraccessibility.h"

#include <QStringList>

namespace {

bool isPush(playScreenType type)
{
    return type == SmallPushScreen || type == FullPushScreen || type == WidePushScreen;
}

} // namespace

QString PlayerAccessibility::statusText(VodPlayView::playScreenStatus status)
{
    switch (status) {
    case VodPlayView::Stopped:
        return tr("Stopped");
    case VodPlayView::Playing:
        return tr("Playing");
    case VodPlayView::Paused:
        return tr("Paused");
    case VodPlayView::Interrupted:
        return tr("Interrupted");
    case VodPlayView::Stopping:
        return tr("Stopping");
    case VodPlayView::PausedForPush:
        return tr("Paused for a broadcast");
    }
    return QString();
}

QString PlayerAccessibility::name(const State &state)
{
    QString what = state.title;
    if (what.isEmpty())
        what = isPush(state.type) ? tr("Broadcast") : tr("Video");
    //: Accessible name of a player: what plays, then its state ("Broadcast: Playing").
    return tr("%1: %2").arg(what, statusText(state.status));
}

QString PlayerAccessibility::description(const State &state)
{
    QStringList sentences;

    if (!state.elapsed.isEmpty()) {
        sentences << (state.total.isEmpty() ? tr("Time %1.").arg(state.elapsed)
                                            : tr("Time %1 of %2.").arg(state.elapsed, state.total));
    }
    sentences << (state.mute ? tr("Volume %1 of 16, muted.").arg(state.volume)
                             : tr("Volume %1 of 16.").arg(state.volume));

    // What the keys do in this state, as the players' key handlers have it.
    const bool playing = state.status == VodPlayView::Playing;
    QStringList keys;
    const auto key = [&keys](const QString &which, const QString &action) {
        //: A key and what it does now ("Select: pause").
        keys << tr("%1: %2").arg(which, action);
    };
    switch (state.type) {
    case SmallVodScreen:
        if (playing) {
            key(tr("Select"), tr("pause"));
            key(tr("Context 1"), tr("forward"));
            key(tr("Context 2"), tr("rewind"));
        } else if (state.status == VodPlayView::Stopped) {
            key(tr("Select"), tr("play"));
        } else if (state.status == VodPlayView::Paused || state.status == VodPlayView::Interrupted) {
            key(tr("Select"), tr("resume"));
        }
        key(tr("Back"), playing || state.status == VodPlayView::Paused ? tr("stop") : tr("close"));
        if (playing) {
            //: The key under the drawn "Full" strip.
            key(tr("Full"), tr("full screen"));
        }
        break;
    case FullVodScreen:
    case WideVodScreen:
        if (playing) {
            //: The side keys of the full-screen players, beside the rows of the control panel.
            key(tr("Key 1"), tr("rewind"));
            key(tr("Key 2"), tr("pause"));
            key(tr("Key 3"), tr("forward"));
            key(tr("Max"), state.type == FullVodScreen ? tr("wide picture")
                                                       : tr("small screen"));
        } else {
            if (state.status == VodPlayView::Stopped)
                key(tr("Key 2"), tr("play"));
            else if (state.status == VodPlayView::Paused || state.status == VodPlayView::Interrupted)
                key(tr("Key 2"), tr("resume"));
            key(tr("Key 3"), tr("stop"));
        }
        break;
    case SmallPushScreen:
        key(tr("Back"), tr("stop"));
        if (playing)
            key(tr("Full"), tr("full screen"));
        break;
    case FullPushScreen:
    case WidePushScreen:
        key(tr("Key 3"), tr("stop"));
        if (playing) {
            key(tr("Max"), state.type == FullPushScreen ? tr("wide picture")
                                                        : tr("small screen"));
        }
        break;
    }
    sentences << tr("%1.").arg(keys.join(QLatin1String(", ")));

    return sentences.join(QLatin1Char(' '));
}
