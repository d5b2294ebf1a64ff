#include "vodplayfullscreenview.h"
// PLACEHOLDER: replaced by the VOD players work.
VodPlayFullScreenView::VodPlayFullScreenView(vod *rs, QWidget *parent) : VodPlayView(rs, FullVodScreen, parent) {}
VodPlayFullScreenView::~VodPlayFullScreenView() = default;
void VodPlayFullScreenView::messageHandle(const QString &, const QByteArray &) {}
void VodPlayFullScreenView::drawVolumeRect(QPainter *) {}
void VodPlayFullScreenView::showVolumeRect() {}
void VodPlayFullScreenView::updateFlowingTime(QTime) {}
void VodPlayFullScreenView::deleteVolumeRect() {}
void VodPlayFullScreenView::keyPressEvent(QKeyEvent *) {}
void VodPlayFullScreenView::focusInEvent(QFocusEvent *) {}
void VodPlayFullScreenView::focusOutEvent(QFocusEvent *) {}
void VodPlayFullScreenView::paintEvent(QPaintEvent *) {}
void VodPlayFullScreenView::showEvent(QShowEvent *) {}
