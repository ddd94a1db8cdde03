#include "app/QuoteListPlaceholder.h"

#include "model/QuotesListModel.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

QBQuoteListPlaceholder::QBQuoteListPlaceholder(QListView* list, QBQuotesListModel* model,
                                               QAction* addAction, QAction* importAction)
    : QWidget(list->viewport()), mModel(model)
{
    setObjectName(QStringLiteral("quoteListPlaceholder"));
    mLabel = new QLabel(this);
    mLabel->setWordWrap(true);
    mLabel->setAlignment(Qt::AlignCenter);
    mLabel->setForegroundRole(QPalette::PlaceholderText);

    mButtons = new QWidget(this);
    auto* buttonsLayout = new QHBoxLayout(mButtons);
    buttonsLayout->setContentsMargins(0, 0, 0, 0);
    // No mnemonics: the window's own buttons and menus already use these letters.
    //% "Add Quote"
    const QString addLabel = qtTrId("QuoteListPlaceholderAddQuote");
    //% "Import…"
    const QString importLabel = qtTrId("QuoteListPlaceholderImport");
    for (const auto& [action, label] :
         {std::pair{addAction, addLabel}, std::pair{importAction, importLabel}}) {
        auto* button = new QPushButton(label, mButtons);
        button->setObjectName(action->objectName() + QStringLiteral("Button"));
        button->setFocusPolicy(Qt::TabFocus); // a click leaves an open edit open
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        buttonsLayout->addWidget(button);
    }

    auto* layout = new QVBoxLayout(this);
    layout->addStretch(1); // a third of the way down
    layout->addWidget(mLabel);
    layout->addWidget(mButtons, 0, Qt::AlignHCenter);
    layout->addStretch(2);

    list->viewport()->installEventFilter(this);
    setGeometry(list->viewport()->rect());
    connect(model, &QAbstractItemModel::modelReset, this, &QBQuoteListPlaceholder::refresh);
    connect(model, &QAbstractItemModel::layoutChanged, this, &QBQuoteListPlaceholder::refresh);
    connect(model, &QAbstractItemModel::rowsInserted, this, &QBQuoteListPlaceholder::refresh);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &QBQuoteListPlaceholder::refresh);
    refresh();
}

QString QBQuoteListPlaceholder::text() const
{
    return isHidden() ? QString() : mLabel->text();
}

bool QBQuoteListPlaceholder::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(static_cast<QWidget*>(watched)->rect());
    return QWidget::eventFilter(watched, event);
}

void QBQuoteListPlaceholder::refresh()
{
    if (mModel == nullptr || mModel->rowCount() > 0) {
        hide();
        return;
    }
    const bool noQuotes = mModel->quotesSource()->isEmpty();
    if (noQuotes) {
        //% "No quotes yet. Add one, or import many from a text file."
        mLabel->setText(qtTrId("QuoteListEmpty"));
    } else {
        //% "No quote matches “%1”."
        mLabel->setText(qtTrId("QuoteListNoMatch").arg(mModel->filterText().trimmed()));
    }
    mButtons->setVisible(noQuotes);
    show();
}
