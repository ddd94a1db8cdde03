#include "ui/Alert.h"

#include <QAbstractButton>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

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

    // Checks the one open box (window-modal, still waiting), then clicks the button titled
    // |title| (or the only one) and checks that the box is gone.
    void answer(QMessageBox* returned, QMessageBox::Icon icon, const QString& title = {})
    {
        const auto boxes = window.findChildren<QMessageBox*>();
        ASSERT_EQ(boxes.size(), 1);
        QPointer<QMessageBox> box = boxes.front();
        EXPECT_EQ(box, returned);
        EXPECT_TRUE(box->isVisible());
        EXPECT_EQ(box->windowModality(), Qt::WindowModal);
        EXPECT_EQ(box->icon(), icon);
        EXPECT_EQ(box->windowTitle() + box->text(), u"TitleMessage"_s);
        const auto buttons = box->buttons();
        const auto button = std::find_if(buttons.begin(), buttons.end(), [&](auto* candidate) {
            return title.isEmpty() ? buttons.size() == 1 : candidate->text() == title;
        });
        ASSERT_NE(button, buttons.end()) << title.toStdString();
        ran << u"click"_s;
        QTest::mouseClick(*button, Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(box.isNull());
    }

    QMainWindow window;
    QStringList ran;
};

TEST_F(AlertTest, AlertsAreWindowModalAndAnsweredByClickingAButton)
{
    for (const QString& button : {u"AlertYesButton"_s, u"AlertNoButton"_s}) {
        answer(QBAlert::shared().showYesNoAlertWithLocalizedTitle(
                   u"Title"_s, u"Message"_s, QBAlert::Informational, [&] { ran << u"yes"_s; },
                   [&] { ran << u"no"_s; }),
               QMessageBox::Information, button);
    }
    answer(QBAlert::shared().infoWithTitle(u"Title"_s, u"Message"_s), QMessageBox::Information);
    answer(QBAlert::shared().warningWithTitle(u"Title"_s, u"Message"_s), QMessageBox::Warning);
    EXPECT_EQ(ran,
              QStringList({u"click"_s, u"yes"_s, u"click"_s, u"no"_s, u"click"_s, u"click"_s}));
}

} // namespace
