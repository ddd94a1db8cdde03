#include "ui/VerticalScrollArea.h"

#include <QEvent>
#include <QScrollBar>
#include <QStyle>

QBVerticalScrollArea::QBVerticalScrollArea(QWidget* parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QSize QBVerticalScrollArea::minimumSizeHint() const
{
    QSize size = QScrollArea::minimumSizeHint();
    if (widget() != nullptr) {
        const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        size.setWidth(widget()->minimumSizeHint().width() + scrollBar + 2 * frameWidth());
    }
    return size;
}

bool QBVerticalScrollArea::eventFilter(QObject* watched, QEvent* event)
{
    // A longer text in the page (a translation, a status line) widens its least width.
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
