#include "signature/CurrentSignatureFileHelper.h"

#include "TestHome.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMainWindow>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(SignatureFilePanelTest, OnlyOkCallsTheHandlerAndOnlyWithAMainWindow)
{
    QBTestHome home;
    QList<QUrl> chosen;
    QMainWindow window;
    const auto ask = [&] {
        QBCurrentSignatureFileHelper::askPathToOutputSignatureFile(
            [&](const QUrl& url) { chosen.append(url); });
        return window.findChild<QFileDialog*>();
    };
    ask(); // no visible main window: nothing is shown
    EXPECT_EQ(QApplication::topLevelWidgets(), QWidgetList{&window});

    window.show();
    QFileDialog* panel = ask();
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->windowModality(), Qt::WindowModal);
    EXPECT_EQ(panel->selectedFiles().value(0), QDir::home().filePath(u"CurrentSignature.txt"_s));
    panel->reject();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // it closes for good
    EXPECT_TRUE(chosen.isEmpty());
    EXPECT_EQ(window.findChild<QFileDialog*>(), nullptr);

    panel = ask();
    ASSERT_NE(panel, nullptr);
    const QString mine = home.filePath(QStringLiteral("Mine.txt"));
    panel->selectFile(mine);
    static_cast<QDialog*>(panel)->accept(); // dispatches to the file dialog's own accept
    QApplication::processEvents();
    EXPECT_EQ(chosen, QList<QUrl>{QUrl::fromLocalFile(mine)});
}

} // namespace
