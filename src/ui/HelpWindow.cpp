#include "ui/HelpWindow.h"

#include "core/AppIdentity.h"

#include <QAction>
#include <QApplication>
#include <QPointer>
#include <QStyle>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

namespace {
QPointer<QBHelpWindow>& openWindow()
{
    static QPointer<QBHelpWindow> window;
    return window;
}
} // namespace

QBHelpWindow::QBHelpWindow(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("helpWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    //% "%1 Help"
    setWindowTitle(qtTrId("HelpWindowTitle").arg(QString::fromUtf8(qbidentity::kDisplayName)));
    resize(720, 640);

    mBrowser = new QTextBrowser(this);
    mBrowser->setObjectName(QStringLiteral("helpBrowser"));
    mBrowser->setOpenExternalLinks(true);
    mBrowser->setFrameShape(QFrame::NoFrame);

    auto* toolBar = new QToolBar(this);
    //% "Back"
    QAction* back = toolBar->addAction(style()->standardIcon(QStyle::SP_ArrowBack),
                                       qtTrId("HelpWindowBack"), mBrowser, &QTextBrowser::backward);
    back->setShortcut(QKeySequence::Back);
    back->setEnabled(false);
    connect(mBrowser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    //% "Forward"
    QAction* forward =
        toolBar->addAction(style()->standardIcon(QStyle::SP_ArrowForward),
                           qtTrId("HelpWindowForward"), mBrowser, &QTextBrowser::forward);
    forward->setShortcut(QKeySequence::Forward);
    forward->setEnabled(false);
    connect(mBrowser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    //% "Contents"
    toolBar->addAction(style()->standardIcon(QStyle::SP_DirHomeIcon), qtTrId("HelpWindowContents"),
                       this, [this] { mBrowser->setSource(mHome); });

    // A keyboard user closes it as any document window, or as a dialog.
    auto* close = new QAction(this);
    close->setShortcuts({QKeySequence(QKeySequence::Close), QKeySequence(Qt::Key_Escape)});
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(toolBar);
    layout->addWidget(mBrowser);
}

QBHelpWindow* QBHelpWindow::instance()
{
    return openWindow();
}

QBHelpWindow* QBHelpWindow::showPage(const QUrl& page)
{
    QPointer<QBHelpWindow>& window = openWindow();
    if (!window) {
        // Beside the window the user works in, and closed with it.
        QWidget* active = QApplication::activeWindow();
        window = new QBHelpWindow(active != nullptr ? active->window() : nullptr);
    }
    QUrl home = page.adjusted(QUrl::RemoveFragment | QUrl::RemoveFilename);
    home.setPath(home.path() + QStringLiteral("index.html"));
    window->mHome = home;
    window->mBrowser->setSource(page);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}
