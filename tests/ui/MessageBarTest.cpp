// The message bar as the window shows it: a stack by topic, actions, and screen readers.
#include "ui/MessageBar.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Kind = QBUserMessage::Kind;

QStringList shownTexts(const QBMessageBar& bar)
{
    QStringList texts;
    for (const QBMessageItem* item : bar.items())
        texts << item->findChild<QLabel*>(u"messageText"_s)->text();
    return texts;
}

TEST(MessageBarTest, OneMessagePerTopicNewestFirstAtMostThree)
{
    QBUserMessages& messages = QBUserMessages::shared();
    QWidget window;
    auto* bar = new QBMessageBar(messages);
    (new QVBoxLayout(&window))->addWidget(bar);
    window.resize(600, 400);
    window.show();
    EXPECT_FALSE(bar->isVisible()); // takes no room while empty

    messages.show({Kind::Error, u"Save failed"_s, {}, {}, {}, {}, u"save"_s});
    messages.show({Kind::Success, u"Removed 3"_s, {}, {}, {}, {}, u"result"_s});
    EXPECT_TRUE(bar->isVisible());
    messages.show({Kind::Success, u"Removed 4"_s, {}, {}, {}, {}, u"result"_s}); // replaces
    EXPECT_EQ(shownTexts(*bar), (QStringList{u"Removed 4"_s, u"Save failed"_s}));
    messages.show({Kind::Warning, u"Helper stopped"_s, {}, {}, {}, {}, u"helper"_s});
    messages.show({Kind::Information, u"Help in the app"_s, {}, {}, {}, {}, u"help"_s});
    EXPECT_EQ(shownTexts(*bar),
              (QStringList{u"Help in the app"_s, u"Helper stopped"_s, u"Removed 4"_s}));

    messages.dismiss(u"helper"_s);
    messages.dismiss(u"nothing shown"_s);
    EXPECT_EQ(shownTexts(*bar), (QStringList{u"Help in the app"_s, u"Removed 4"_s}));
    QCoreApplication::processEvents(); // laid out, as on screen
    for (QBMessageItem* item : bar->items())
        QTest::mouseClick(item->findChild<QToolButton*>(u"messageClose"_s), Qt::LeftButton);
    EXPECT_TRUE(bar->items().isEmpty());
    EXPECT_FALSE(bar->isVisible());
}

TEST(MessageBarTest, TheActionRunsOnceClosesItsMessageAndScreenReadersSeeAnAlert)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    QBMessageBar bar(QBUserMessages::shared());
    layout->addWidget(&bar);
    window.resize(600, 400);
    window.show();
    int runs = 0;
    QBUserMessages::shared().show(
        {Kind::Error, u"Cannot write"_s, u"Try Again"_s, [&] { ++runs; }, {}, {}, u"w"_s});
    QBMessageItem* item = bar.item(u"w"_s);
    ASSERT_NE(item, nullptr);

    // (The offscreen platform has no accessibility bridge, so the Alert event itself
    // cannot be observed here; the role is what makes a screen reader speak it.)
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(item);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::AlertMessage);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Cannot write"_s);

    auto* action = item->findChild<QPushButton*>(u"messageAction"_s);
    ASSERT_NE(action, nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(action->text(), u"Try Again"_s);
    EXPECT_NE(action->focusPolicy() & Qt::ClickFocus, Qt::ClickFocus); // an open edit stays
    QTest::mouseClick(action, Qt::LeftButton);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(bar.item(u"w"_s), nullptr);
}

} // namespace
