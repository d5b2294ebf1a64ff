#pragma once

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

    QRect outerFrameRect;
    QRect innerFrameRect;
    QRect screenRect;
    QRect iconRect;
    VodPlayView *owner;
    bool showPlayIcon = false;

protected:
    void paintEvent(QPaintEvent *e) override;
    void showEvent(QShowEvent *e) override;
};
