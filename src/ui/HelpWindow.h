#pragma once

#include <QUrl>
#include <QWidget>

class QTextBrowser;

// The help book in a window of the program itself, for desktops where no browser opens
// it: the bundled pages in a text browser with Back, Forward and Contents. One window;
// it never keeps the program running on its own.
class QBHelpWindow : public QWidget
{
    Q_OBJECT
public:
    // Shows |page| (a file address, with its anchor) in the help window, opening it first.
    static QBHelpWindow* showPage(const QUrl& page);
    // The open help window, or null.
    static QBHelpWindow* instance();

    QTextBrowser* browser() const { return mBrowser; }

private:
    explicit QBHelpWindow(QWidget* parent);

    QTextBrowser* mBrowser = nullptr;
    QUrl mHome;
};
