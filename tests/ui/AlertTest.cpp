#include "ui/Alert.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class AlertTest : public ::testing::Test
{
protected:
    AlertTest()
    {
        window.show();
        QBAlert::shared().setParentWindow(&window);
    }
    ~AlertTest() override { QBAlert::shared().setParentWindow(nullptr); }

    // The one open message box attached to the window.
    QMessageBox* openBox() const
    {
        const auto boxes = window.findChildren<QMessageBox*>();
        return boxes.size() == 1 ? boxes.front() : nullptr;
    }

    static QAbstractButton* buttonTitled(QMessageBox* box, const QString& title)
    {
        for (QAbstractButton* button : box->buttons()) {
            if (button->text() == title)
                return button;
        }
        return nullptr;
    }

    QMainWindow window;
};

TEST_F(AlertTest, QuestionIsWindowModalAndRunsTheHandlerOfTheAnswer)
{
    struct Case
    {
        QString buttonTitle;
        int expectedYes;
        int expectedNo;
    };
    for (const Case& answer : {Case{QStringLiteral("AlertYesButton"), 1, 0},
                               Case{QStringLiteral("AlertNoButton"), 0, 1}}) {
        int yes = 0;
        int no = 0;
        QMessageBox* returned = QBAlert::shared().showYesNoAlertWithLocalizedTitle(
            QStringLiteral("Duplicates"), QStringLiteral("Remove them?"), QBAlert::Informational,
            [&] { ++yes; }, [&] { ++no; });
        QMessageBox* box = openBox();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box, returned);
        QPointer<QMessageBox> guard(box);
        EXPECT_TRUE(box->isVisible()); // open() returned at once: nothing answered yet
        EXPECT_EQ(yes + no, 0);
        EXPECT_EQ(box->windowModality(), Qt::WindowModal);
        EXPECT_EQ(box->icon(), QMessageBox::Information);
        EXPECT_EQ(box->text(), QStringLiteral("Remove them?"));

        QAbstractButton* button = buttonTitled(box, answer.buttonTitle);
        ASSERT_NE(button, nullptr) << answer.buttonTitle.toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_EQ(yes, answer.expectedYes);
        EXPECT_EQ(no, answer.expectedNo);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(guard.isNull()); // closed boxes go away
    }
}

TEST_F(AlertTest, InformationAndWarningAlerts)
{
    struct Case
    {
        QMessageBox* (QBAlert::*show)(const QString&, const QString&);
        QMessageBox::Icon icon;
    };
    for (const Case& kind : {Case{&QBAlert::infoWithTitle, QMessageBox::Information},
                             Case{&QBAlert::warningWithTitle, QMessageBox::Warning}}) {
        (QBAlert::shared().*kind.show)(QStringLiteral("No Output File Specified"),
                                       QStringLiteral("Please specify an output file"));
        QMessageBox* box = openBox();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->icon(), kind.icon);
        EXPECT_EQ(box->windowTitle(), QStringLiteral("No Output File Specified"));
        EXPECT_EQ(box->windowModality(), Qt::WindowModal);
        ASSERT_EQ(box->buttons().size(), 1);
        QTest::mouseClick(box->buttons().front(), Qt::LeftButton);
        EXPECT_FALSE(box->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(openBox(), nullptr);
    }
}

} // namespace
