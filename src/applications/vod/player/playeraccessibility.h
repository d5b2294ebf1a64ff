#pragma once

#include <QCoreApplication>
#include <QString>

#include "vodplayview.h"

// The spoken form of a player window. So much of a player is drawn (state,
// time, volume, the meaning of the soft keys and side keys) that assistive
// tools would see nothing; the players publish these texts as their accessible
// name and description instead.
class PlayerAccessibility
{
    Q_DECLARE_TR_FUNCTIONS(PlayerAccessibility)

public:
    struct State
    {
        playScreenType type = SmallVodScreen;
        VodPlayView::playScreenStatus status = VodPlayView::Stopped;
        QString title;   // the content title; none for a broadcast
        QString elapsed; // "hh:mm:ss", empty while no time has been reported
        QString total;   // "hh:mm:ss", empty when the length is unknown
        int volume = 1;  // 1 ... 16
        bool mute = false;
    };

    // "<what plays>: <state>", e.g. "Broadcast: Playing".
    static QString name(const State &state);
    // Time, volume and what each key does now, e.g. "Time 00:01:05 of 00:10:00.
    // Volume 8 of 16. Select: pause, Context 1: forward, ...".
    static QString description(const State &state);

    static QString statusText(VodPlayView::playScreenStatus status);
};
