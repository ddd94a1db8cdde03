#include "ui/WrappingRow.h"

#include <QBoxLayout>
#include <QStyle>
#include <QWidget>

#include <algorithm>

QBWrappingRow::QBWrappingRow(int spacing)
{
    setSpacing(spacing);
}

QBWrappingRow::~QBWrappingRow()
{
    while (QLayoutItem* item = takeAt(0))
        delete item;
}

QBWrappingRow* QBWrappingRow::replace(QBoxLayout* row)
{
    auto* wrapping = new QBWrappingRow(row->spacing());
    wrapping->setObjectName(row->objectName());
    wrapping->setContentsMargins(row->contentsMargins());
    while (QLayoutItem* item = row->takeAt(0)) {
        if (QWidget* widget = item->widget()) {
            delete item;
            wrapping->addWidget(widget);
        } else {
            wrapping->addItem(item);
        }
    }
    // A nested layout's parent is the layout holding it.
    if (auto* parent = qobject_cast<QBoxLayout*>(row->parent())) {
        const int index = parent->indexOf(row);
        delete row;
        parent->insertLayout(index, wrapping);
    } else {
        delete row;
    }
    return wrapping;
}

void QBWrappingRow::addItem(QLayoutItem* item)
{
    mItems.append(item);
    invalidate();
}

QLayoutItem* QBWrappingRow::takeAt(int index)
{
    if (index < 0 || index >= mItems.size())
        return nullptr;
    QLayoutItem* item = mItems.takeAt(index);
    invalidate();
    return item;
}

int QBWrappingRow::horizontalGap() const
{
    if (spacing() >= 0)
        return spacing();
    const QWidget* widget = parentWidget();
    return widget
               ? widget->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, widget)
               : 6;
}

int QBWrappingRow::heightForWidth(int width) const
{
    return arrange(QRect(0, 0, width, 0), false);
}

QSize QBWrappingRow::minimumSize() const
{
    // The widest single item: everything else can go onto a line of its own.
    QSize size;
    for (QLayoutItem* item : mItems)
        if (!item->isEmpty() && !item->spacerItem())
            size = size.expandedTo(item->minimumSize());
    const QMargins margins = contentsMargins();
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize QBWrappingRow::sizeHint() const
{
    // Everything on one line.
    int width = 0;
    int height = 0;
    int shown = 0;
    for (QLayoutItem* item : mItems) {
        if (item->isEmpty() || item->spacerItem())
            continue;
        width += item->sizeHint().width();
        height = std::max(height, item->sizeHint().height());
        ++shown;
    }
    const QMargins margins = contentsMargins();
    return {width + std::max(0, shown - 1) * horizontalGap() + margins.left() + margins.right(),
            height + margins.top() + margins.bottom()};
}

void QBWrappingRow::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int QBWrappingRow::arrange(const QRect& rect, bool apply) const
{
    const QRect area = rect.marginsRemoved(contentsMargins());
    const int gap = horizontalGap();
    const int verticalGap = gap;
    const Qt::LayoutDirection direction =
        parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;

    // Lines of visible items; each remembers from which of its items on it is pushed to
    // the far end. The items after an expanding spacer stay together where they can.
    struct Line
    {
        QList<QLayoutItem*> items;
        int pushFrom = -1;
        int width = 0;
        int height = 0;
    };
    QList<QLayoutItem*> shown;
    int trailingFrom = -1;
    for (QLayoutItem* item : mItems) {
        if (item->spacerItem()) {
            if (item->expandingDirections() & Qt::Horizontal)
                trailingFrom = int(shown.size());
        } else if (!item->isEmpty()) {
            shown.append(item);
        }
    }
    int trailingWidth = 0;
    for (int i = std::max(0, trailingFrom); trailingFrom >= 0 && i < shown.size(); ++i)
        trailingWidth += (i == trailingFrom ? 0 : gap) + shown[i]->sizeHint().width();

    QList<Line> lines(1);
    for (int i = 0; i < shown.size(); ++i) {
        const QSize hint = shown[i]->sizeHint();
        const bool trailing = trailingFrom >= 0 && i >= trailingFrom;
        const int needed = i == trailingFrom ? trailingWidth : hint.width();
        Line* line = &lines.last();
        if (!line->items.isEmpty() && line->width + gap + needed > area.width())
            line = &lines.emplace_back();
        if (trailing && line->pushFrom < 0)
            line->pushFrom = int(line->items.size());
        line->width += (line->items.isEmpty() ? 0 : gap) + hint.width();
        line->height = std::max(line->height, hint.height());
        line->items.append(shown[i]);
    }

    int y = area.top();
    for (const Line& line : lines) {
        if (line.items.isEmpty())
            continue;
        int x = area.left();
        for (int i = 0; i < line.items.size(); ++i) {
            if (i == line.pushFrom)
                x = std::max(x, area.left() + area.width() - (line.width - (x - area.left())));
            QLayoutItem* item = line.items[i];
            const QSize hint = item->sizeHint();
            const int width = std::min(hint.width(), area.width());
            if (apply) {
                const QRect cell(x, y + (line.height - hint.height()) / 2, width, hint.height());
                item->setGeometry(QStyle::visualRect(direction, area, cell));
            }
            x += width + gap;
        }
        y += line.height + verticalGap;
    }
    const QMargins margins = contentsMargins();
    return y - verticalGap - area.top() + margins.top() + margins.bottom();
}
