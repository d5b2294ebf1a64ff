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

    // The level after a volume key, kept within 1 to 16.
    static int steppedVolume(int level, int key);

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
