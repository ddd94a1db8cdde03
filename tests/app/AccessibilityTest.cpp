// Every window and dialog read through the accessibility tree and walked with Tab; built
// once in English and once in German, since names and mnemonics come from the string table.
#include "app/EditorAreaViewController.h"
#include "app/QuotesEditorViewController.h"
#include "import/BatchImportDialogs.h"
#include "signature/SettingsKeys.h"

#include "AccessibilityAudit.h"
#include "LaunchedAppFixture.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QTest>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace {

class AccessibilityTest : public LaunchedAppFixture
{
protected:
    void SetUp() override
    {
        LaunchedAppFixture::SetUp();
        if (HasFatalFailure())
            return;
        mWindow->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(mWindow));
    }
    static void expectNoFaults(QWidget* window)
    {
        ASSERT_NE(window, nullptr);
        const QStringList faults = accessibilityFaults(window);
        EXPECT_TRUE(faults.isEmpty()) << faults.join(QLatin1Char('\n')).toStdString();
    }
    // Presses Tab in |window| until |target| has the focus; false when the chain cycles first.
    static bool tabTo(QWidget* window, QWidget* target)
    {
        for (int presses = 0; presses < 60 && window->focusWidget() != target; ++presses)
            QTest::keyClick(window->focusWidget() ? window->focusWidget() : window, Qt::Key_Tab);
        return window->focusWidget() == target;
    }
};

TEST_F(AccessibilityTest, MainWindowSettingsSeparatorQuestionAndAboutAreNamedAndKeyboardComplete)
{
    // The editor page during an edit, so that Cancel, Confirm and Remove are enabled.
    QListView* list = mWindow->quotesListView();
    list->setCurrentIndex(list->model()->index(0, 0));
    QTextEdit* text =
        mWindow->editorAreaViewController()->quotesEditorViewController()->quoteTextView();
    text->setFocus();
    QTest::keyClicks(text, QStringLiteral("!"));
    {
        SCOPED_TRACE("editor page");
        expectNoFaults(mWindow);
    }
    QTest::keyClick(text, Qt::Key_Escape);

    mWindow->switchToSettings();
    {
        SCOPED_TRACE("settings page");
        expectNoFaults(mWindow);
    }

    QBBatchImportDialogs::askUserForSeparatorToUse(
        {QStringLiteral("%"), QStringLiteral("\n"), QStringLiteral("--")}, [](const QString&) {});
    auto* question = mWindow->findChild<QMessageBox*>();
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(question));
    {
        SCOPED_TRACE("separator question");
        expectNoFaults(question);
    }
    question->reject();

    mDelegate.showAboutWindow();
    {
        SCOPED_TRACE("About");
        expectNoFaults(mDelegate.aboutWindowController());
    }
    mDelegate.aboutWindowController()->close();
}

// What the label it once was could not do: Tab to "Choose…", Space, type a name, Return.
TEST_F(AccessibilityTest, TheSignatureFileIsChosenWithTheKeyboardAlone)
{
    mWindow->switchToSettings();
    auto* choose = child<QAbstractButton>("choosePathButton");
    ASSERT_TRUE(tabTo(mWindow, choose));
    QTest::keyClick(choose, Qt::Key_Space);
    QFileDialog* dialog = nullptr;
    QTRY_VERIFY((dialog = mWindow->findChild<QFileDialog*>()) != nullptr && dialog->isVisible());
    auto* nameField = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(nameField, nullptr);
    const QString chosen = mHome.filePath(QStringLiteral("Keyboard.txt"));
    nameField->selectAll();
    QTest::keyClicks(nameField, chosen);
    QTest::keyClick(nameField, Qt::Key_Return);
    QTRY_COMPARE(child<QLineEdit>("outputPathField")->text(), chosen);
    EXPECT_EQ(QBUserDefaults::standardUserDefaults().stringForKey(QBDefaultsSignatureOutputPath),
              chosen);
}

} // namespace
