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
    // when no row lies there.
    bool selectRowByKey(QKeyEvent *e);

protected:
    void keyPressEvent(QKeyEvent *e) override;
};
