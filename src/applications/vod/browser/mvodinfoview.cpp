#include "mvodinfoview.h"
// PLACEHOLDER: replaced by the VOD information page work.
#include "vodplayer/vodplaysmallscreenview.h"
MVodInfoView::MVodInfoView(const QString &t, const QTime &pt, vod *o, QWidget *parent) : QWidget(parent), title(t), playTime(pt), owner(o) {}
MVodInfoView::~MVodInfoView() = default;
void MVodInfoView::showMaximized() {}
void MVodInfoView::finishedVod() {}
void MVodInfoView::keyPressEvent(QKeyEvent *) {}
void MVodInfoView::paintEvent(QPaintEvent *) {}
