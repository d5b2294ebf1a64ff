#pragma once

#include <QListWidget>

// The list of the VOD browser. The device's five direct row keys each pick one
// of the first five visible rows.
class MVodListView : public QListWidget
{
    Q_OBJECT

public:
    explicit MVodListView(QWidget *parent);

    // Makes the row under the key's point current; false for any other key or
    // when no row lies there. The event is neither accepted nor ignored here.
    bool selectRowByKey(QKeyEvent *e);

    // Public: the browser's event filter hands the list's ordinary keys here
    // after it has taken the ones it handles itself.
    void keyPressEvent(QKeyEvent *e) override;
};
