#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

// Draws the quotes list's rows: the mark on the row of the quote that the signature file
// holds (every row keeps the icon's room, so the texts stay aligned when the mark moves),
// and quotes longer than the signature's line limit greyed and in italics, like
// placeholder text: present, but not in the rotation. Each row is drawn in the direction
// of its own text, so a left-to-right quote in a right-to-left window (and the reverse)
// is elided at its own end, not cut at the edge; it still lines up with the window's
// leading edge.
class QBQuoteRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit QBQuoteRowDelegate(const QIcon& mark, QObject* parent = nullptr);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    QIcon mMark;
};
