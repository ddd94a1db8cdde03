#pragma once

#include <QLabel>

// A label that acts like a link: a left click (or Space / Return when it has the focus)
// emits clicked().
class LMClickableLabel : public QLabel
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
