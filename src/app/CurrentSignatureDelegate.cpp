#include "app/CurrentSignatureDelegate.h"

#include "model/QuotesListModel.h"

QBCurrentSignatureDelegate::QBCurrentSignatureDelegate(const QIcon& mark, QObject* parent)
    : QStyledItemDelegate(parent), mMark(mark)
{}

void QBCurrentSignatureDelegate::initStyleOption(QStyleOptionViewItem* option,
                                                 const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->features |= QStyleOptionViewItem::HasDecoration;
    const int side = option->fontMetrics.height();
    option->decorationSize = QSize(side, side);
    option->icon = index.data(QBQuotesListModel::IsCurrentSignatureRole).toBool() ? mMark : QIcon();
}
