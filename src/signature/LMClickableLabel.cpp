#include "signature/LMClickableLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>

LMClickableLabel::LMClickableLabel(QWidget* parent) : QLabel(parent)
{
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
}

void LMClickableLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit clicked();
        return;
    }
    QLabel::mouseReleaseEvent(event);
}

void LMClickableLabel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
        event->key() == Qt::Key_Enter) {
        emit clicked();
        return;
    }
    QLabel::keyPressEvent(event);
}
