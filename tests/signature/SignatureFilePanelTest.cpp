#include "signature/CurrentSignatureFileHelper.h"

#include "TestHome.h"

#include <QApplication>
#include <QFileDialog>
#include <QMainWindow>

#include <gtest/gtest.h>

namespace {

class SignatureFilePanelTest : public ::testing::Test
{
protected:
    QFileDialog* openPanel()
    {
        QBCurrentSignatureFileHelper::askPathToOutputSignatureFile(
            [this](const QUrl& url) { mChosen.append(url); });
        return mWindow.findChild<QFileDialog*>();
    }

    QBTestHome mHome;
    QMainWindow mWindow;
    QList<QUrl> mChosen;
};

TEST_F(SignatureFilePanelTest, NoMainWindowShowsNothing)
{
    QBCurrentSignatureFileHelper::askPathToOutputSignatureFile(
        [this](const QUrl& url) { mChosen.append(url); });
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        EXPECT_EQ(qobject_cast<QFileDialog*>(widget), nullptr);
    }
    EXPECT_TRUE(mChosen.isEmpty());
}

TEST_F(SignatureFilePanelTest, CancelCallsNothingAndOkCallsOnceWithTheFile)
{
    mWindow.show();
    QFileDialog* panel = openPanel();
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->windowModality(), Qt::WindowModal);
    EXPECT_EQ(panel->acceptMode(), QFileDialog::AcceptSave);
    ASSERT_EQ(panel->selectedFiles().size(), 1);
    EXPECT_TRUE(panel->selectedFiles().first().endsWith(QStringLiteral("/CurrentSignature.txt")));
    panel->reject();
    QApplication::processEvents();
    EXPECT_TRUE(mChosen.isEmpty());

    panel = openPanel();
    ASSERT_NE(panel, nullptr);
    const QString chosen = mHome.filePath(QStringLiteral("MySignature.txt"));
    panel->selectFile(chosen);
    static_cast<QDialog*>(panel)->accept(); // dispatches to the file dialog's own accept
    QApplication::processEvents();
    ASSERT_EQ(mChosen.size(), 1);
    EXPECT_EQ(mChosen.first(), QUrl::fromLocalFile(chosen));
}

} // namespace
