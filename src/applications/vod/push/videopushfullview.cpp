#include "videopushfullview.h"
// PLACEHOLDER: replaced by the push viewer work.
#include "videopushview.h"
VideoPushFullView::VideoPushFullView(VideoPushView *o, QWidget *parent) : VodPlayView(nullptr, FullPushScreen, parent), owner(o) {}
VideoPushFullView::~VideoPushFullView() = default;
void VideoPushFullView::showVolumeRect() {}
void VideoPushFullView::drawVolumeRect(QPainter *) {}
void VideoPushFullView::drawButtonColumn(QPainter *) {}
void VideoPushFullView::deleteVolumeRect() {}
void VideoPushFullView::keyPressEvent(QKeyEvent *) {}
void VideoPushFullView::paintEvent(QPaintEvent *) {}
void VideoPushFullView::showEvent(QShowEvent *) {}
