#include "util/UndoManager.h"

#include "logging/ULog.h"
#include "util/NotificationCenter.h"

#include <QTimer>

#include <algorithm>
#include <utility>

QBUndoManager::QBUndoManager(QObject* parent) : QObject(parent) {}

QBUndoManager::~QBUndoManager() = default;

void QBUndoManager::openAutomaticGroupIfNeeded()
{
    if (!mGroupsByEvent || mGroupingLevel > 0 || mState != State::Idle)
        return;
    mAutomaticGroupOpen = true;
    ++mGroupingLevel;
    QTimer::singleShot(0, this, &QBUndoManager::closeAutomaticGroup);
}

void QBUndoManager::closeAutomaticGroup()
{
    if (!mAutomaticGroupOpen)
        return;
    if (mGroupingLevel != 1) {
        logWarningMessage(QStringLiteral("Undo group left open at the end of an event (level %1)")
                              .arg(mGroupingLevel));
        mGroupingLevel = 1;
    }
    mAutomaticGroupOpen = false;
    endUndoGrouping();
}

void QBUndoManager::registerUndoWithTarget(const void* target, std::function<void()> operation)
{
    if (mState == State::Idle && !mRedoStack.empty()) {
        mRedoStack.clear();
        emit stackChanged();
    }
    openAutomaticGroupIfNeeded();
    if (mGroupingLevel == 0) {
        // No grouping at all: every registration is a step of its own.
        fileGroup(Group{{Step{target, std::move(operation)}}, QString(), ++mLastSerial});
        return;
    }
    if (mOpenGroup.steps.empty())
        mOpenGroup.serial = ++mLastSerial;
    mOpenGroup.steps.push_back(Step{target, std::move(operation)});
}

void QBUndoManager::beginUndoGrouping()
{
    openAutomaticGroupIfNeeded();
    ++mGroupingLevel;
}

void QBUndoManager::endUndoGrouping()
{
    if (mGroupingLevel == 0) {
        logWarningMessage("endUndoGrouping called without an open undo group");
        return;
    }
    if (--mGroupingLevel == 0)
        fileGroup(std::exchange(mOpenGroup, {}));
}

void QBUndoManager::fileGroup(Group group)
{
    if (group.steps.empty())
        return;
    auto& stack = mState == State::Undoing ? mRedoStack : mUndoStack;
    stack.push_back(std::move(group));
    emit stackChanged();
}

const QBUndoManager::Group* QBUndoManager::undoTop() const
{
    if (mState == State::Idle && mGroupingLevel > 0 && !mOpenGroup.steps.empty())
        return &mOpenGroup;
    return mUndoStack.empty() ? nullptr : &mUndoStack.back();
}

void QBUndoManager::setActionName(const QString& name)
{
    if (mState != State::Idle)
        return;
    if (mGroupingLevel > 0)
        mOpenGroup.name = name;
    else if (!mUndoStack.empty())
        mUndoStack.back().name = name;
    emit stackChanged();
}

QString QBUndoManager::undoActionName() const
{
    const Group* top = undoTop();
    return top != nullptr ? top->name : QString();
}

QString QBUndoManager::redoActionName() const
{
    return mRedoStack.empty() ? QString() : mRedoStack.back().name;
}

quint64 QBUndoManager::undoTopSerial() const
{
    const Group* top = undoTop();
    return top != nullptr ? top->serial : 0;
}

bool QBUndoManager::canUndo() const
{
    return !mUndoStack.empty() || (mAutomaticGroupOpen && !mOpenGroup.steps.empty());
}

bool QBUndoManager::canRedo() const
{
    return !mRedoStack.empty();
}

void QBUndoManager::undo()
{
    runGroup(mUndoStack, State::Undoing, QBUndoManagerWillUndoChangeNotification,
             QBUndoManagerDidUndoChangeNotification);
}

void QBUndoManager::redo()
{
    runGroup(mRedoStack, State::Redoing, QBUndoManagerWillRedoChangeNotification,
             QBUndoManagerDidRedoChangeNotification);
}

void QBUndoManager::runGroup(std::vector<Group>& from, State state, const QString& willName,
                             const QString& didName)
{
    closeAutomaticGroup();
    if (mState != State::Idle || mGroupingLevel > 0) {
        logWarningMessage("Undo or redo refused while an undo group is open");
        return;
    }
    if (from.empty())
        return;

    QBNotificationCenter::defaultCenter().post(willName, this);
    Group group = std::move(from.back());
    from.pop_back();

    // The steps' own registrations (their inverses) form the opposite group.
    mState = state;
    mGroupingLevel = 1;
    for (auto step = group.steps.rbegin(); step != group.steps.rend(); ++step)
        step->operation();
    mGroupingLevel = 0;
    Group inverse = std::exchange(mOpenGroup, {});
    inverse.name = group.name;
    mState = State::Idle;

    auto& opposite = state == State::Undoing ? mRedoStack : mUndoStack;
    if (!inverse.steps.empty())
        opposite.push_back(std::move(inverse));
    emit stackChanged();
    QBNotificationCenter::defaultCenter().post(didName, this);
}

void QBUndoManager::removeAllActions()
{
    mUndoStack.clear();
    mRedoStack.clear();
    mOpenGroup = {};
    emit stackChanged();
}

void QBUndoManager::removeAllActionsWithTarget(const void* target)
{
    const auto dropTarget = [target](std::vector<Group>& stack) {
        for (Group& group : stack)
            std::erase_if(group.steps,
                          [target](const Step& step) { return step.target == target; });
        std::erase_if(stack, [](const Group& group) { return group.steps.empty(); });
    };
    dropTarget(mUndoStack);
    dropTarget(mRedoStack);
    std::erase_if(mOpenGroup.steps, [target](const Step& step) { return step.target == target; });
    emit stackChanged();
}
