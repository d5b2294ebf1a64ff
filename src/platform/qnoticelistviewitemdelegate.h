#pragma once

#include <QStyledItemDelegate>

// Paints the rows of the device's lists: a dark row with a light text, the
// current row highlighted, and a thin separator under each row.
class QNoticeListViewItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit QNoticeListViewItemDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
