#pragma once

#include "player/vodplayview.h"

// The full-screen VOD player, opened by the small player while a content plays:
// the video in 363 × 272 with a control panel at the right, or in the whole
// display after the wide switch.
class VodPlayFullScreenView : public VodPlayView
{
    Q_OBJECT

public:
    VodPlayFullScreenView(vod *requestSender, QWidget *parent);
    ~VodPlayFullScreenView() override;

    void messageHandle(const QString &message, const QByteArray &data) override;
    void drawVolumeRect(QPainter *painter) override;

public slots:
    void updateFlowingTime(QTime currentTime) override;

protected:
    void keyPressEvent(QKeyEvent *e) override;
    void focusInEvent(QFocusEvent *e) override;
    void focusOutEvent(QFocusEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    void showEvent(QShowEvent *e) override;
};
