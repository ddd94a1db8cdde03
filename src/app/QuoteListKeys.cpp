#include "app/QuoteListKeys.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>

QBQuoteListKeys::QBQuoteListKeys(QLineEdit* filterField, QListView* list, QAction* editAction,
                                 QAction* removeAction, std::function<bool()> removingAllowed,
                                 QObject* parent)
    : QObject(parent), mFilterField(filterField), mList(list), mEditAction(editAction),
      mRemovingAllowed(std::move(removingAllowed))
{
    // Delete is a key of the list only: elsewhere in the window it belongs to the text
    // fields, or does nothing.
    removeAction->setShortcutContext(Qt::WidgetShortcut);
    list->addAction(removeAction);
    filterField->installEventFilter(this);
    list->installEventFilter(this);
}

bool QBQuoteListKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && watched == mList &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Delete) && !mRemovingAllowed()) {
        event->accept(); // taken as a plain key, which the list ignores
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto* keyEvent = static_cast<QKeyEvent*>(event);
    if (keyEvent->modifiers() & ~Qt::KeypadModifier)
        return QObject::eventFilter(watched, event);
    if (watched == mFilterField && filterFieldKey(keyEvent->key()))
        return true;
    if (watched == mList && listKey(keyEvent->key()))
        return true;
    return QObject::eventFilter(watched, event);
}

bool QBQuoteListKeys::filterFieldKey(int key)
{
    if (key == Qt::Key_Escape && !mFilterField->text().isEmpty()) {
        mFilterField->clear();
        return true;
    }
    if (key == Qt::Key_Down && mList->model()->rowCount() > 0) {
        mList->setFocus(Qt::TabFocusReason);
        if (!mList->selectionModel()->hasSelection())
            mList->setCurrentIndex(mList->model()->index(0, 0));
        return true;
    }
    return false;
}

bool QBQuoteListKeys::listKey(int key)
{
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && mEditAction->isEnabled()) {
        mEditAction->trigger();
        return true;
    }
    return false;
}
