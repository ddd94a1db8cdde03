#pragma once

#include "model/QuoteFilter.h"
#include "model/QuotesSource.h"

#include <QAbstractListModel>
#include <QPointer>

#include <vector>

// The quotes list's array controller: shows the value objects of a QBQuotesSource, one
// row per quote, narrowed by an optional filter. Its rows are the "arranged objects".
class QBQuotesListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role
    {
        QuoteUIDRole = Qt::UserRole + 1
    };

    explicit QBQuotesListModel(QBQuotesSource* source, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    QBQuotesSource* quotesSource() const { return mSource; }
    // The value object shown in |row|, or null.
    std::shared_ptr<QBQuoteValueObject> objectAtRow(int row) const;
    // The row showing |object|, or -1 (also when the filter hides it).
    int rowOfObject(const QBQuoteValueObject* object) const;

    QString filterText() const { return mFilterText; }
    void setFilterText(const QString& text);

    // Takes |objects| out of the source and the rows; one layout change for all of them,
    // so selections and views keep their other rows.
    void removeObjects(const std::vector<const QBQuoteValueObject*>& objects);

    // Folds every quote's text for the filter now rather than at the first key.
    void prepareFilter() const;

private:
    int sourceIndexOfRow(int row) const;
    const QString& foldedTextAt(std::size_t sourceIndex) const;
    void arrange(bool narrowOnly);

    QPointer<QBQuotesSource> mSource;
    QString mFilterText;
    QBQuoteFilter mFilter;
    // Source indices of the rows, ascending; unused while the filter is empty.
    std::vector<qsizetype> mRows;
    quint64 mArrangedGeneration = 0; // the source's content generation mRows reflect
    // Folded text per source index, with the text it was folded from to spot edits.
    struct Folded
    {
        QString from;
        QString folded;
    };
    mutable std::vector<Folded> mFolded;
};
