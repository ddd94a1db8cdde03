#include "ui/ElidedLabel.h"

#include <QEvent>

LMElidedLabel::LMElidedLabel(Qt::TextElideMode mode, QWidget* parent) : QLabel(parent), mMode(mode)
{
    // Ignored: the layout gives what it has; the text never widens the window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setTextFormat(Qt::PlainText);
}

void LMElidedLabel::setFullText(const QString& text)
{
    mFullText = text;
    setToolTip(text);
    setAccessibleName(text);
    elide();
}

void LMElidedLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    elide();
}

void LMElidedLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        elide();
}

void LMElidedLabel::elide()
{
    const int room = contentsRect().width();
    const QString shown = fontMetrics().elidedText(mFullText, mMode, room);
    if (shown != text())
        setText(shown);
}
