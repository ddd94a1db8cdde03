#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

// Draws the quotes list's rows: the mark on the row of the quote that the signature file
// holds (every row keeps the icon's room, so the texts stay aligned when the mark moves),
// and quotes longer than the signature's line limit greyed and in italics, like
// placeholder text: present, but not in the rotation.
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
