#include "util/UndoManager.h"
#include "util/NotificationCenter.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

// A counter with an undoable increment whose undo registers the inverse, the way the
// quote actions do.
class Counter
{
public:
    explicit Counter(QBUndoManager& undoManager) : mUndoManager(undoManager) {}

    void add(int amount)
    {
        value += amount;
        mUndoManager.registerUndoWithTarget(this, [this, amount] { add(-amount); });
    }

    int value = 0;

private:
    QBUndoManager& mUndoManager;
};

class UndoManagerTest : public ::testing::Test
{
protected:
    QBUndoManager undoManager;
    Counter counter{undoManager};
};

TEST_F(UndoManagerTest, RegistrationsOfOneEventFormOneStep)
{
    counter.add(1);
    counter.add(2);
    EXPECT_TRUE(undoManager.canUndo());
    QCoreApplication::processEvents(); // the event ends: its automatic group closes
    counter.add(4);
    QCoreApplication::processEvents();

    undoManager.undo();
    EXPECT_EQ(counter.value, 3);
    undoManager.undo();
    EXPECT_EQ(counter.value, 0);
    EXPECT_FALSE(undoManager.canUndo());
    undoManager.redo();
    EXPECT_EQ(counter.value, 3);
    undoManager.redo();
    EXPECT_EQ(counter.value, 7);
    EXPECT_FALSE(undoManager.canRedo());
}

TEST_F(UndoManagerTest, UndoClosesTheOpenAutomaticGroupFirst)
{
    counter.add(1);
    counter.add(2);
    undoManager.undo(); // same event: both registrations are one step
    EXPECT_EQ(counter.value, 0);
    EXPECT_FALSE(undoManager.canUndo());
    EXPECT_TRUE(undoManager.canRedo());
}

TEST_F(UndoManagerTest, UndoRedoChainAlternatesWithoutEnd)
{
    undoManager.setGroupsByEvent(false);
    counter.add(5);
    for (int round = 0; round < 3; ++round) {
        undoManager.undo();
        EXPECT_EQ(counter.value, 0) << "round " << round;
        EXPECT_FALSE(undoManager.canUndo());
        undoManager.redo();
        EXPECT_EQ(counter.value, 5) << "round " << round;
        EXPECT_FALSE(undoManager.canRedo());
    }
}

TEST_F(UndoManagerTest, NestedGroupsUndoAsOneStepInReverseOrder)
{
    undoManager.setGroupsByEvent(false);
    QStringList order;
    undoManager.beginUndoGrouping();
    undoManager.registerUndoWithTarget(nullptr, [&] { order << QStringLiteral("outer1"); });
    undoManager.beginUndoGrouping();
    EXPECT_EQ(undoManager.groupingLevel(), 2);
    undoManager.registerUndoWithTarget(nullptr, [&] { order << QStringLiteral("inner"); });
    undoManager.endUndoGrouping();
    undoManager.registerUndoWithTarget(nullptr, [&] { order << QStringLiteral("outer2"); });
    undoManager.endUndoGrouping();
    EXPECT_EQ(undoManager.groupingLevel(), 0);

    undoManager.undo();
    EXPECT_EQ(order, (QStringList{QStringLiteral("outer2"), QStringLiteral("inner"),
                                  QStringLiteral("outer1")}));
    EXPECT_FALSE(undoManager.canUndo());
}

TEST_F(UndoManagerTest, ANewChangeClearsTheRedoStackButARedoDoesNot)
{
    undoManager.setGroupsByEvent(false);
    counter.add(1);
    counter.add(2);
    undoManager.undo();
    undoManager.undo();
    undoManager.redo(); // redo's inverse goes to the undo stack; the other redo stays
    EXPECT_TRUE(undoManager.canRedo());
    EXPECT_EQ(counter.value, 1);

    counter.add(10);
    EXPECT_FALSE(undoManager.canRedo());
    undoManager.undo();
    undoManager.undo();
    EXPECT_EQ(counter.value, 0);
}

TEST_F(UndoManagerTest, PostsWillAndDidNotificationsAroundEachUndoAndRedo)
{
    undoManager.setGroupsByEvent(false);
    QStringList seen;
    auto& center = QBNotificationCenter::defaultCenter();
    std::vector<QBNotificationToken> tokens;
    for (const QString& name :
         {QBUndoManagerWillUndoChangeNotification, QBUndoManagerDidUndoChangeNotification,
          QBUndoManagerWillRedoChangeNotification, QBUndoManagerDidRedoChangeNotification}) {
        tokens.push_back(center.addObserver(name, [&](const QBNotification& notification) {
            if (notification.object == &undoManager)
                seen << notification.name + QLatin1Char('@') + QString::number(counter.value);
        }));
    }
    counter.add(3);
    undoManager.undo();
    undoManager.redo();
    undoManager.redo(); // nothing to redo: nothing posted
    for (const auto& token : tokens)
        center.removeObserver(token);

    EXPECT_EQ(seen, (QStringList{QStringLiteral("QBUndoManagerWillUndoChangeNotification@3"),
                                 QStringLiteral("QBUndoManagerDidUndoChangeNotification@0"),
                                 QStringLiteral("QBUndoManagerWillRedoChangeNotification@0"),
                                 QStringLiteral("QBUndoManagerDidRedoChangeNotification@3")}));
}

TEST_F(UndoManagerTest, RemovingATargetDropsItsStepsAndTheTargetsItKeptAlive)
{
    undoManager.setGroupsByEvent(false);
    auto kept = std::make_shared<int>(0);
    std::weak_ptr<int> watch = kept;
    undoManager.registerUndoWithTarget(kept.get(), [kept] { ++*kept; });
    kept.reset();
    EXPECT_FALSE(watch.expired()); // the step keeps what it needs alive
    counter.add(1);

    QSignalSpy stackChanged(&undoManager, &QBUndoManager::stackChanged);
    undoManager.removeAllActionsWithTarget(watch.lock().get());
    EXPECT_TRUE(watch.expired());
    EXPECT_GE(stackChanged.count(), 1);
    undoManager.undo();
    EXPECT_EQ(counter.value, 0);
    EXPECT_FALSE(undoManager.canUndo());

    undoManager.removeAllActions();
    EXPECT_FALSE(undoManager.canRedo());
}

} // namespace
