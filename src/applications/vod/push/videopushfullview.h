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

    void showVolumeRect() override;
    bool isVolumeRectShown() const override { return volumeRectShown; }
    void drawVolumeRect(QPainter *painter) override;
    void drawButtonColumn(QPainter *painter);

    bool volumeRectShown = false;
    QTimer *volumeRectTimer = nullptr;
    VideoPushView *owner;

private slots:
    void deleteVolumeRect();

protected:
    void keyPressEvent(QKeyEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    void showEvent(QShowEvent *e) override;
};
