// Every window and dialog read through the accessibility tree and walked with Tab; built
// once in English and once in German, since names and mnemonics come from the string table.
#include "app/EditorAreaViewController.h"
#include "app/QuotesEditorViewController.h"
#include "import/BatchImportDialogs.h"
#include "import/QuoteFile.h"
#include "signature/SettingsKeys.h"
#include "ui/NamedColors.h"

#include "AccessibilityAudit.h"
#include "LaunchedAppFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QTest>
#include <QTextEdit>

#include <gtest/gtest.h>

#include <cmath>

namespace {

// Contrast ratio of two colours, from their relative luminance.
double contrast(const QColor& one, const QColor& other)
{
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](double c) {
            return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
               0.0722 * linear(colour.blueF());
    };
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

QPalette darkPalette()
{
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(0x2d, 0x2d, 0x2d));
    dark.setColor(QPalette::WindowText, QColor(0xee, 0xee, 0xee));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    dark.setColor(QPalette::Text, QColor(0xee, 0xee, 0xee));
    dark.setColor(QPalette::Button, QColor(0x3a, 0x3a, 0x3a));
    dark.setColor(QPalette::ButtonText, QColor(0xee, 0xee, 0xee));
    dark.setColor(QPalette::Highlight, QColor(0x35, 0x84, 0xe4));
    dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x80, 0x80, 0x80));
    return dark;
}

class AccessibilityTest : public ActiveWindowFixture
{
protected:
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
    // The walk covers the first-run hint's buttons and the status bar's too.
    for (const char* shown :
         {"messageAction", "messageClose", "chooseSignatureFileButton", "nextQuoteButton"})
        ASSERT_TRUE(child<QAbstractButton>(shown)->isVisible()) << shown;
    {
        SCOPED_TRACE("editor page");
        expectNoFaults(mWindow);
    }
    QTest::keyClick(text, Qt::Key_Escape);

    mWindow->switchToSettings();
    ASSERT_TRUE(child<QWidget>("signatureTemplateEdit")->isVisible());
    {
        SCOPED_TRACE("settings page");
        expectNoFaults(mWindow);
    }

    // A fortune file with blank lines inside its quotes: the question offers both.
    const QString path = QDir::home().filePath(QStringLiteral("fortunes.txt"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("One\n\nstill one\n%\nTwo\n%\nThree\n\nFour\n");
    file.close();
    QBBatchImportDialogs::askUserForSeparatorToUse(QBQuoteFile::load(path),
                                                   [](std::optional<QBSeparatorChoice>) {});
    auto* choices = mWindow->findChild<QWidget*>(QStringLiteral("separatorChoices"));
    ASSERT_NE(choices, nullptr);
    QWidget* question = choices->window();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(question));
    QStringList spoken;
    for (QRadioButton* choice : choices->findChildren<QRadioButton*>())
        spoken << choice->accessibleName();
    EXPECT_TRUE(spoken.contains(qtTrId("BatchImportSeparatorPercentLine")))
        << spoken.join(u'|').toStdString();
    EXPECT_TRUE(spoken.contains(qtTrId("BatchImportSeparatorBlankLine")))
        << spoken.join(u'|').toStdString();
    {
        SCOPED_TRACE("separator question");
        expectNoFaults(question);
    }
    question->close();

    // The empty list's placeholder buttons.
    child<QAction>("removeAllQuotesAction")->trigger();
    auto* confirm = mWindow->findChild<QMessageBox*>();
    ASSERT_NE(confirm, nullptr);
    for (QAbstractButton* button : confirm->buttons()) {
        if (confirm->buttonRole(button) == QMessageBox::YesRole)
            QTest::mouseClick(button, Qt::LeftButton);
    }
    ASSERT_TRUE(QTest::qWaitFor([this] {
        auto* add = child<QAbstractButton>("addQuoteActionButton");
        return add != nullptr && add->isVisible();
    }));
    {
        SCOPED_TRACE("empty list");
        expectNoFaults(mWindow);
    }

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
    // The dialog opens in the home folder.
    const QString chosen = QDir::home().filePath(QStringLiteral("Keyboard.txt"));
    nameField->selectAll();
    QTest::keyClicks(nameField, QStringLiteral("Keyboard.txt"));
    QTest::keyClick(nameField, Qt::Key_Return);
    QTRY_COMPARE(child<QLineEdit>("outputPathField")->text(), chosen);
    EXPECT_EQ(QBUserDefaults::standardUserDefaults().stringForKey(QBDefaultsSignatureOutputPath),
              chosen);
}

// The settings page's texts stand on the editor area's gradient, in both themes.
TEST_F(AccessibilityTest, SettingsTextsKeepTheirContrastOnTheGradientInLightAndDarkThemes)
{
    mWindow->switchToSettings();
    QWidget* page = mWindow->editorAreaViewController()->settingsViewController();
    const QPalette light = QApplication::style()->standardPalette();
    for (const QPalette& palette : {light, darkPalette()}) {
        SCOPED_TRACE(QBNamedColors::isDark(palette) ? "dark" : "light");
        mWindow->setPalette(palette);
        QList<QWidget*> texts;
        for (QLabel* label : page->findChildren<QLabel*>())
            texts << label;
        for (QCheckBox* box : page->findChildren<QCheckBox*>())
            texts << box;
        for (QWidget* text : texts) {
            // An unavailable control may fade; text that explains must not.
            if (!text->isVisible() || (qobject_cast<QCheckBox*>(text) && !text->isEnabled()))
                continue;
            const QColor ink = text->palette().color(
                text->isEnabled() ? QPalette::Active : QPalette::Disabled, text->foregroundRole());
            for (auto stop :
                 {QBNamedColors::Name::GradientTop, QBNamedColors::Name::GradientBottom})
                EXPECT_GE(contrast(ink, QBNamedColors::color(stop, palette)), 4.5)
                    << text->objectName().toStdString();
        }
    }
    mWindow->setPalette(QPalette());
}

// At 640x400 (or a 1280x800 screen at twice the scale) both pages fit in either language:
// rows of buttons wrap, the settings page scrolls only downwards and is never cut at the
// side, no control leaves the window.
TEST_F(AccessibilityTest, BothPagesFitASmallWindowWithNothingCutOff)
{
    QListView* list = mWindow->quotesListView();
    list->setCurrentIndex(list->model()->index(0, 0));
    mWindow->resize(640, 400);
    const auto expectWholeAndApart = [this](const char* page) {
        SCOPED_TRACE(page);
        QTest::qWait(50); // layouts settle through posted events
        EXPECT_LE(mWindow->minimumSizeHint().width(), 640);
        EXPECT_LE(mWindow->minimumSizeHint().height(), 400);
        EXPECT_EQ(mWindow->size(), QSize(640, 400));
        auto* scroll = child<QScrollArea>("settingsScrollArea");
        QList<QRect> placed;
        for (QAbstractButton* button : mWindow->findChildren<QAbstractButton*>()) {
            if (!button->isVisible() || button->window() != mWindow ||
                button->parentWidget()->inherits("QScrollBar"))
                continue;
            const QRect rect(button->mapTo(mWindow, QPoint()), button->size());
            // The settings page scrolls downwards: there only left and right must fit.
            QRect room = mWindow->rect();
            if (scroll->isAncestorOf(button))
                room =
                    QRect(scroll->viewport()->mapTo(mWindow, QPoint()), scroll->viewport()->size())
                        .adjusted(0, -100000, 0, 100000);
            EXPECT_TRUE(room.contains(rect)) << button->text().toStdString();
            EXPECT_GE(button->width(), button->minimumSizeHint().width())
                << button->text().toStdString();
            for (const QRect& other : placed)
                EXPECT_FALSE(rect.intersects(other)) << button->text().toStdString();
            placed << rect;
        }
        if (scroll->isVisible()) {
            EXPECT_GE(scroll->widget()->width(), scroll->widget()->minimumSizeHint().width());
        }
    };
    expectWholeAndApart("editor page");
    mWindow->switchToSettings();
    expectWholeAndApart("settings page");
}

} // namespace
