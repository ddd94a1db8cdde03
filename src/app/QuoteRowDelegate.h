#pragma once

#include <QStyledItemDelegate>

// Draws a list row in the direction of its own text: a left-to-right quote in a
// right-to-left window (and the reverse) is elided at its own end, not cut at the edge.
// The row still lines up with the window's leading edge.
class QBQuoteRowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
