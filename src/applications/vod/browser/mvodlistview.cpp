#include "mvodlistview.h"
// PLACEHOLDER: replaced by the VOD browser work.
MVodListView::MVodListView(QWidget *parent) : QListWidget(parent) {}
bool MVodListView::selectRowByKey(QKeyEvent *) { return false; }
void MVodListView::keyPressEvent(QKeyEvent *e) { QListWidget::keyPressEvent(e); }
