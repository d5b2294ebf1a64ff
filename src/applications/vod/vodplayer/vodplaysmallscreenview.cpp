#include "vodplaysmallscreenview.h"
// PLACEHOLDER: replaced by the VOD players work.
#include "vodplayfullscreenview.h"
VodPlaySmallScreenView::VodPlaySmallScreenView(vod *rs, QWidget *parent) : VodPlayView(rs, SmallVodScreen, parent) {}
VodPlaySmallScreenView::~VodPlaySmallScreenView() = default;
void VodPlaySmallScreenView::messageHandle(const QString &, const QByteArray &) {}
void VodPlaySmallScreenView::setServerIsDown() {}
void VodPlaySmallScreenView::finishedVod() {}
void VodPlaySmallScreenView::fullScreenCloseSlot(VodPlayView::playScreenStatus, ulong, int, bool) {}
void VodPlaySmallScreenView::keyPressEvent(QKeyEvent *) {}
void VodPlaySmallScreenView::focusInEvent(QFocusEvent *) {}
void VodPlaySmallScreenView::focusOutEvent(QFocusEvent *) {}
void VodPlaySmallScreenView::paintEvent(QPaintEvent *) {}
void VodPlaySmallScreenView::showEvent(QShowEvent *) {}
