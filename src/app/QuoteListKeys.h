#pragma once

#include <QObject>

#include <functional>

class QAction;
class QLineEdit;
class QListView;

// The keys that tie the filter field and the list together: Down leaves the filter for the
// list, Escape clears the filter, Return edits the selected quote, and Delete reaches the
// remove command only while removing is allowed (not behind the settings page).
class QBQuoteListKeys : public QObject
{
    Q_OBJECT
public:
    QBQuoteListKeys(QLineEdit* filterField, QListView* list, QAction* editAction,
                    QAction* removeAction, std::function<bool()> removingAllowed,
                    QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool filterFieldKey(int key);
    bool listKey(int key);

    QLineEdit* mFilterField;
    QListView* mList;
    QAction* mEditAction;
    std::function<bool()> mRemovingAllowed;
};
