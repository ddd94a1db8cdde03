#include "app/QuoteRowDelegate.h"

void QBQuoteRowDelegate::initStyleOption(QStyleOptionViewItem* option,
                                         const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const bool windowIsRightToLeft = option->direction == Qt::RightToLeft;
    option->direction = option->text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    option->displayAlignment = Qt::AlignAbsolute | Qt::AlignVCenter |
                               (windowIsRightToLeft ? Qt::AlignRight : Qt::AlignLeft);
}
