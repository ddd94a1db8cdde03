#pragma once

#include <QPointer>
#include <QWidget>

class QAction;
class QBQuotesListModel;
class QLabel;
class QListView;
class QPushButton;

// Stands in the empty list and says why it is empty: no quotes yet (with buttons to add
// or import some), or no quote matching the filter.
class QBQuoteListPlaceholder : public QWidget
{
    Q_OBJECT
public:
    QBQuoteListPlaceholder(QListView* list, QBQuotesListModel* model, QAction* addAction,
                           QAction* importAction);

    QString text() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();

    QPointer<QBQuotesListModel> mModel;
    QLabel* mLabel = nullptr;
    QWidget* mButtons = nullptr;
};
