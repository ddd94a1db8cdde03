#pragma once

#include "ui/ElidedLabel.h"

// A label that acts like a link: a left click (or Space / Return when it has the focus)
// emits clicked(). A long text is elided in the middle rather than widening the window.
class LMClickableLabel : public LMElidedLabel
{
    Q_OBJECT
public:
    explicit LMClickableLabel(QWidget* parent = nullptr);

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
