#include "qnoticelistviewitemdelegate.h"

#include <QPainter>

QNoticeListViewItemDelegate::QNoticeListViewItemDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

void QNoticeListViewItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const
{
    const QRect r = option.rect;
    const bool current = option.state & (QStyle::State_Selected | QStyle::State_HasFocus);
    painter->save();
    painter->fillRect(r, current ? QColor(0, 120, 170) : QColor(35, 35, 35));
    painter->fillRect(QRect(r.left(), r.bottom(), r.width(), 1), QColor(70, 70, 70));
    QFont font = option.font;
    font.setPixelSize(20);
    painter->setFont(font);
    painter->setPen(current ? QColor(255, 255, 255) : QColor(210, 210, 210));
    const QRect textRect = r.adjusted(14, 0, -14, 0);
    const QString text = painter->fontMetrics().elidedText(index.data(Qt::DisplayRole).toString(),
                                                          Qt::ElideRight, textRect.width());
    painter->drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter, text);
    painter->restore();
}
