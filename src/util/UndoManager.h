#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <vector>

inline const QString QBUndoManagerWillUndoChangeNotification =
    QStringLiteral("QBUndoManagerWillUndoChangeNotification");
inline const QString QBUndoManagerWillRedoChangeNotification =
    QStringLiteral("QBUndoManagerWillRedoChangeNotification");
inline const QString QBUndoManagerDidUndoChangeNotification =
    QStringLiteral("QBUndoManagerDidUndoChangeNotification");
inline const QString QBUndoManagerDidRedoChangeNotification =
    QStringLiteral("QBUndoManagerDidRedoChangeNotification");

// Undo and redo stacks of steps, each step a (target, operation) pair. Steps are
// filed in groups; one undo or redo runs a whole group, last step first.
//
// A registration made while undoing goes to the redo stack and one made while redoing
// to the undo stack, so an operation that registers its own inverse makes an endless
// undo/redo chain. Any other registration clears the redo stack. With groupsByEvent
// (the default) every registration made while handling one event joins one automatic
// top-level group, closed when control returns to the event loop or before an undo or
// redo. The will/did notifications go to the default notification centre with this
// object as sender; every "will" is followed by its "did" before undo()/redo() return.
class QBUndoManager : public QObject
{
    Q_OBJECT
public:
    explicit QBUndoManager(QObject* parent = nullptr);
    ~QBUndoManager() override;

    // |target| only identifies the step (see removeAllActionsWithTarget); |operation|
    // keeps whatever it needs alive until the step is discarded.
    void registerUndoWithTarget(const void* target, std::function<void()> operation);

    void beginUndoGrouping();
    void endUndoGrouping();
    int groupingLevel() const { return mGroupingLevel; }

    bool groupsByEvent() const { return mGroupsByEvent; }
    void setGroupsByEvent(bool groupsByEvent) { mGroupsByEvent = groupsByEvent; }

    // Names the group being filed (or, with none open, the last one filed) for the Edit
    // menu: "Undo Remove All". The inverse of a group takes over its name. Ignored while
    // undoing or redoing.
    void setActionName(const QString& name);
    QString undoActionName() const;
    QString redoActionName() const;
    // Tells apart the groups that Undo would take back: changes whenever another group
    // comes on top of the undo stack (0 for an empty stack).
    quint64 undoTopSerial() const;

    bool canUndo() const;
    bool canRedo() const;
    void undo();
    void redo();
    bool isUndoing() const { return mState == State::Undoing; }
    bool isRedoing() const { return mState == State::Redoing; }

    void removeAllActions();
    void removeAllActionsWithTarget(const void* target);

    // Closes the automatic group now instead of at the next turn of the event loop.
    void closeAutomaticGroup();

signals:
    // After any change of canUndo() or canRedo(), for enabling Undo/Redo menu items.
    void stackChanged();

private:
    struct Step
    {
        const void* target;
        std::function<void()> operation;
    };
    struct Group
    {
        std::vector<Step> steps;
        QString name;
        quint64 serial = 0;
    };
    enum class State
    {
        Idle,
        Undoing,
        Redoing
    };

    // The group Undo would run: the open one once it holds a step, else the stack's top.
    const Group* undoTop() const;
    void openAutomaticGroupIfNeeded();
    void fileGroup(Group group);
    void runGroup(std::vector<Group>& from, State state, const QString& willName,
                  const QString& didName);

    std::vector<Group> mUndoStack;
    std::vector<Group> mRedoStack;
    Group mOpenGroup; // nested groups are flattened into the outermost open one
    quint64 mLastSerial = 0;
    int mGroupingLevel = 0;
    bool mAutomaticGroupOpen = false;
    bool mGroupsByEvent = true;
    State mState = State::Idle;
};
