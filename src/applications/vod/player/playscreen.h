#pragma once

#include <QIcon>
#include <QRect>
#include <QWidget>

#include "vodplayview.h"

// The child of every player dialog that lies over the video area: it frames the
// small video area, keeps the area dark while the picture is being moved or a
// phone screen is up, shows the play icon, and otherwise leaves the area fully
// transparent so that the video manager's picture shows through.
class PlayScreen : public QWidget
{
    Q_OBJECT

public:
    explicit PlayScreen(VodPlayView *parent);

    void setWideLayout(playScreenType type);
    // Sets or clears the play icon and repaints: the icon shows at once.
    void setShowPlayIcon(bool show);

    // What the video area shows, decided anew at every paint.
    enum class Content {
        HeldDark,  // held for a call or the push application: dark, with the play icon
        Dark,      // the phone's own screens are up or the player lost the focus
        PlayIcon,  // stopped or paused: the play icon (and the key hints)
        Waiting,   // the video window is being moved: dark
        Open       // transparent: the video shows through
    };
    static Content contentFor(playScreenType type, VodPlayView::playScreenStatus status,
                              bool focusLost, bool phoneScreenUp, bool showPlayIcon, bool ready);

    // Whether the phone application shows its call or dialer screen.
    static bool phoneScreenUp();

    QRect outerFrameRect;
    QRect innerFrameRect;
    QRect screenRect;
    QRect iconRect;
    VodPlayView *owner;
    bool showPlayIcon = false;

protected:
    void paintEvent(QPaintEvent *e) override;
    void showEvent(QShowEvent *e) override;

private:
    void drawPlayIcon(QPainter *painter) const;

    QIcon playIcon;
    static void drawKeyHints(QPainter *painter, int offset);
};
