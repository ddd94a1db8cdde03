#include "app/QuoteRowDelegate.h"

#include "model/QuotesListModel.h"

QBQuoteRowDelegate::QBQuoteRowDelegate(const QIcon& mark, QObject* parent)
    : QStyledItemDelegate(parent), mMark(mark)
{}

void QBQuoteRowDelegate::initStyleOption(QStyleOptionViewItem* option,
                                         const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const bool windowIsRightToLeft = option->direction == Qt::RightToLeft;
    option->direction = option->text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    option->displayAlignment = Qt::AlignAbsolute | Qt::AlignVCenter |
                               (windowIsRightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    option->features |= QStyleOptionViewItem::HasDecoration;
    const int side = option->fontMetrics.height();
    option->decorationSize = QSize(side, side);
    option->icon = index.data(QBQuotesListModel::IsCurrentSignatureRole).toBool() ? mMark : QIcon();
    if (index.data(QBQuotesListModel::TooLongForSignatureRole).toBool()) {
        option->palette.setBrush(QPalette::Text, option->palette.brush(QPalette::PlaceholderText));
        option->font.setItalic(true);
    }
}
