#include "mvodlistview.h"

#include "devicekeys.h"

#include <QKeyEvent>

MVodListView::MVodListView(QWidget *parent)
    : QListWidget(parent)
{
    setFrameStyle(0);
}

bool MVodListView::selectRowByKey(QKeyEvent *e)
{
    // Rows are 42 pixels high; each key looks at the middle of its row of the
    // viewport. The fifth point is 188: still inside the fifth row (168 to 209).
    QPoint point;
    switch (e->key()) {
    case Key_Video0:
        point = QPoint(0, 21);
        break;
    case Key_Video1:
        point = QPoint(0, 63);
        break;
    case Key_Video2:
        point = QPoint(0, 105);
        break;
    case Key_Video3:
        point = QPoint(0, 147);
        break;
    case Key_Video4:
        point = QPoint(0, 188);
        break;
    default:
        return false;
    }

    const QModelIndex index = indexAt(point);
    if (!index.isValid())
        return false;
    setCurrentIndex(index);
    return true;
}

void MVodListView::keyPressEvent(QKeyEvent *e)
{
    QAbstractItemView::keyPressEvent(e);
}
