#include "signature/CurrentSignatureFileHelper.h"

#include "TestHome.h"

#include <QApplication>
#include <QFileDialog>
#include <QMainWindow>

#include <gtest/gtest.h>

namespace {

TEST(SignatureFilePanelTest, OnlyOkCallsTheHandlerAndOnlyWithAMainWindow)
{
    QBTestHome home;
    QList<QUrl> chosen;
    const auto ask = [&] {
        QBCurrentSignatureFileHelper::askPathToOutputSignatureFile(
            [&](const QUrl& url) { chosen.append(url); });
    };
    ask(); // no main window: nothing is shown
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());

    QMainWindow window;
    window.show();
    ask();
    QFileDialog* panel = window.findChild<QFileDialog*>();
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->windowModality(), Qt::WindowModal);
    EXPECT_TRUE(panel->selectedFiles().value(0).endsWith(QStringLiteral("/CurrentSignature.txt")));
    panel->reject();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // it closes for good
    EXPECT_TRUE(chosen.isEmpty());
    EXPECT_EQ(window.findChild<QFileDialog*>(), nullptr);

    ask();
    panel = window.findChild<QFileDialog*>();
    ASSERT_NE(panel, nullptr);
    panel->selectFile(home.filePath(QStringLiteral("Mine.txt")));
    static_cast<QDialog*>(panel)->accept(); // dispatches to the file dialog's own accept
    QApplication::processEvents();
    EXPECT_EQ(chosen, QList<QUrl>{QUrl::fromLocalFile(home.filePath(QStringLiteral("Mine.txt")))});
}

} // namespace
