#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

// Draws the mark on the row of the quote that the signature file holds. Every row keeps
// the icon's room, so the texts stay aligned when the mark moves.
class QBCurrentSignatureDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit QBCurrentSignatureDelegate(const QIcon& mark, QObject* parent = nullptr);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    QIcon mMark;
};
