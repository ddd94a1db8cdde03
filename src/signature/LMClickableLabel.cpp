#include "signature/LMClickableLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

LMClickableLabel::LMClickableLabel(QWidget* parent) : LMElidedLabel(Qt::ElideMiddle, parent)
{
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    // Looks like a link, so people see that clicking it does something.
    setForegroundRole(QPalette::Link);
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
}

void LMClickableLabel::paintEvent(QPaintEvent* event)
{
    LMElidedLabel::paintEvent(event);
    if (!hasFocus())
        return;
    // A label draws no focus frame of its own; keyboard users need to see where they are.
    QStylePainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}

void LMClickableLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit clicked();
        return;
    }
    LMElidedLabel::mouseReleaseEvent(event);
}

void LMClickableLabel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
        event->key() == Qt::Key_Enter) {
        emit clicked();
        return;
    }
    LMElidedLabel::keyPressEvent(event);
}
