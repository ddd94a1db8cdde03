#pragma once

#include <QScrollArea>

// A scroll area for a page of settings: it scrolls downwards only and is never narrower
// than the page's widest row, so the window's layout, not a horizontal scroll bar,
// finds the room for it (a splitter beside it gives up its own width first).
class QBVerticalScrollArea : public QScrollArea
{
public:
    explicit QBVerticalScrollArea(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
