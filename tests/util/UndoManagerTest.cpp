#include "util/UndoManager.h"
#include "util/NotificationCenter.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A counter with an undoable increment whose undo registers the inverse, the way the
// quote actions do.
struct Counter
{
    void add(int amount)
    {
        value += amount;
        undoManager.registerUndoWithTarget(this, [this, amount] { add(-amount); });
    }
    QBUndoManager& undoManager;
    int value = 0;
};

// Steps are grouped by hand unless a test turns event grouping back on.
class UndoManagerTest : public ::testing::Test
{
protected:
    UndoManagerTest() { undoManager.setGroupsByEvent(false); }
    QBUndoManager undoManager;
    Counter counter{undoManager};
};

// Will and did notifications come around each undo and redo that does something.
TEST_F(UndoManagerTest, RegistrationsOfOneEventFormOneStepAndUndoClosesTheOpenOne)
{
    QStringList seen;
    auto& center = QBNotificationCenter::defaultCenter();
    const QBNotificationToken token = center.addObserver(QString(), [&](const QBNotification& n) {
        if (n.object == &undoManager)
            seen << n.name + QLatin1Char('@') + QString::number(counter.value);
    });
    undoManager.setGroupsByEvent(true);
    counter.add(1);
    counter.add(2);
    QCoreApplication::processEvents(); // the event ends: its automatic group closes
    counter.add(4);
    undoManager.undo(); // the group of this event is still open: closed, then undone
    EXPECT_EQ(counter.value, 3);
    undoManager.undo();
    EXPECT_EQ(counter.value, 0);
    EXPECT_FALSE(undoManager.canUndo());
    undoManager.undo(); // nothing to undo: nothing posted
    undoManager.redo();
    undoManager.redo();
    EXPECT_EQ(counter.value, 7);
    EXPECT_FALSE(undoManager.canRedo());
    center.removeObserver(token);
    EXPECT_EQ(seen, QStringList({QBUndoManagerWillUndoChangeNotification + u"@7"_s,
                                 QBUndoManagerDidUndoChangeNotification + u"@3"_s,
                                 QBUndoManagerWillUndoChangeNotification + u"@3"_s,
                                 QBUndoManagerDidUndoChangeNotification + u"@0"_s,
                                 QBUndoManagerWillRedoChangeNotification + u"@0"_s,
                                 QBUndoManagerDidRedoChangeNotification + u"@3"_s,
                                 QBUndoManagerWillRedoChangeNotification + u"@3"_s,
                                 QBUndoManagerDidRedoChangeNotification + u"@7"_s}));
    undoManager.undo();
    ASSERT_TRUE(undoManager.canRedo());
    counter.add(10); // a new change clears what could be redone
    EXPECT_FALSE(undoManager.canRedo());
}

TEST_F(UndoManagerTest, NestedGroupsUndoAsOneStepInReverseOrder)
{
    QStringList order;
    const auto note = [&](const char* label) {
        undoManager.registerUndoWithTarget(nullptr,
                                           [&order, label] { order << QString::fromUtf8(label); });
    };
    undoManager.beginUndoGrouping();
    note("outer1");
    undoManager.beginUndoGrouping();
    EXPECT_EQ(undoManager.groupingLevel(), 2);
    note("inner");
    undoManager.endUndoGrouping();
    note("outer2");
    undoManager.endUndoGrouping();
    EXPECT_EQ(undoManager.groupingLevel(), 0);

    undoManager.undo();
    EXPECT_EQ(order, QStringList({u"outer2"_s, u"inner"_s, u"outer1"_s}));
    EXPECT_FALSE(undoManager.canUndo());
}

TEST_F(UndoManagerTest, RemovingATargetDropsItsStepsAndTheTargetsItKeptAlive)
{
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
