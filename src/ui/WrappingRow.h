#pragma once

#include <QLayout>
#include <QList>

class QBoxLayout;

// A row of buttons that wraps onto further lines when the window is too narrow for it,
// so long translations or a large scale never force a wider window. An expanding
// spacer in the row pushes the items after it to the line's far end, as it does in a
// box layout. Qt ships such a layout only as an example, hence this one.
class QBWrappingRow : public QLayout
{
public:
    explicit QBWrappingRow(int spacing = -1);
    ~QBWrappingRow() override;

    // Moves the items of |row| (widgets and spacers) into a new wrapping row that takes
    // |row|'s place in its parent layout, and deletes |row|.
    static QBWrappingRow* replace(QBoxLayout* row);

    void addItem(QLayoutItem* item) override;
    int count() const override { return int(mItems.size()); }
    QLayoutItem* itemAt(int index) const override { return mItems.value(index); }
    QLayoutItem* takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect& rect) override;

private:
    // Lays the items out in |rect| (or only measures, when |apply| is false) and returns
    // the height used.
    int arrange(const QRect& rect, bool apply) const;
    int horizontalGap() const;

    QList<QLayoutItem*> mItems;
};
