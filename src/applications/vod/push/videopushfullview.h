#pragma once

#include "player/vodplayview.h"

class VideoPushView;

// The pushed broadcast over the whole screen, opened by the push view.
class VideoPushFullView : public VodPlayView
{
    Q_OBJECT

public:
    VideoPushFullView(VideoPushView *owner, QWidget *parent);
    ~VideoPushFullView() override;

    void drawVolumeRect(QPainter *painter) override;
    void drawButtonColumn(QPainter *painter);

    VideoPushView *owner;

protected:
    void keyPressEvent(QKeyEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    void showEvent(QShowEvent *e) override;
    // The push view asks for the wide picture.
    void requestWideWindow() override;
};
