#include "util/CommandResults.h"

#include "util/UndoManager.h"
#include "util/UserMessages.h"

#include <QCoreApplication>
#include <QPointer>

const QString QBCommandResults::kTopic = QStringLiteral("commandResult");

namespace {

// The undo step the shown result stands for, followed on its manager's stack.
struct WatchedStep
{
    QPointer<QBUndoManager> undoManager;
    quint64 serial = 0;
    QMetaObject::Connection connection;

    void stop()
    {
        QObject::disconnect(connection);
        undoManager.clear();
        serial = 0;
    }
};

WatchedStep& watchedStep()
{
    static WatchedStep step;
    return step;
}

} // namespace

void QBCommandResults::report(const QString& text)
{
    watchedStep().stop();
    QBUserMessages::shared().show({QBUserMessage::Kind::Success, text, {}, {}, {}, {}, kTopic});
}

void QBCommandResults::reportUndoable(const QString& text, QBUndoManager* undoManager)
{
    WatchedStep& step = watchedStep();
    step.stop();
    if (undoManager == nullptr || undoManager->undoTopSerial() == 0) {
        report(text);
        return;
    }
    step.undoManager = undoManager;
    step.serial = undoManager->undoTopSerial();
    step.connection = QObject::connect(undoManager, &QBUndoManager::stackChanged, undoManager, [] {
        WatchedStep& watched = watchedStep();
        if (watched.undoManager && watched.undoManager->undoTopSerial() != watched.serial) {
            watched.stop();
            QBUserMessages::shared().dismiss(kTopic);
        }
    });
    const quint64 serial = step.serial;
    QPointer<QBUndoManager> guarded(undoManager);
    //% "Undo"
    QBUserMessages::shared().show({QBUserMessage::Kind::Success,
                                   text,
                                   qtTrId("MessageUndoButton"),
                                   [guarded, serial] {
                                       if (guarded && guarded->undoTopSerial() == serial)
                                           guarded->undo();
                                   },
                                   {},
                                   {},
                                   kTopic});
}
