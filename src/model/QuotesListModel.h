#pragma once

#include "model/QuoteFilter.h"
#include "model/QuotesSource.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <vector>

// The quotes list's array controller: shows the quotes of a QBQuotesSource, one row per
// quote, narrowed by an optional filter. Its rows are the "arranged objects"; a row's
// value object is made when it is first asked for.
class QBQuotesListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role
    {
        QuoteUIDRole = Qt::UserRole + 1,
        // True on the row of the quote the signature file holds now.
        IsCurrentSignatureRole,
        // True on rows of quotes longer than the signature's line limit.
        TooLongForSignatureRole = Qt::UserRole + 100,
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

    // Takes the quotes with these identifiers out of the source and the rows; one layout
    // change for all of them, so selections and views keep their other rows.
    void removeQuotesWithUIDs(const QStringList& quoteUIDs);

    // Marks the row of the quote with |quoteUID| as the current signature (none when
    // empty); only the rows that change are repainted.
    void setCurrentSignatureUID(const QString& quoteUID);
    QString currentSignatureUID() const { return mCurrentSignatureUID; }
    // Tells which quotes fit the signature (by their text); without a test all do. The
    // rows of those that do not say so, and can be the only rows shown.
    using FitTest = std::function<bool(const QString& content)>;
    void setSignatureFitTest(FitTest fits);
    void setShowsOnlyTooLong(bool onlyTooLong);
    bool showsOnlyTooLong() const { return mOnlyTooLong; }

    // Folds every quote's text for the filter now rather than at the first key.
    void prepareFilter() const;

private:
    // Whether rows are a selection of the source's quotes (mRows) rather than all.
    bool isNarrowed() const { return !mFilter.isEmpty() || mOnlyTooLong; }
    bool isTooLong(qsizetype sourceIndex) const;
    void rearrange();
    int sourceIndexOfRow(int row) const;
    // The row showing the quote at source |index|, or -1.
    int rowOfSourceIndex(qsizetype index) const;
    const QString& foldedTextAt(std::size_t sourceIndex) const;
    void arrange(bool narrowOnly);

    void currentSignatureRowChanged(const QString& quoteUID);

    QPointer<QBQuotesSource> mSource;
    QString mCurrentSignatureUID;
    QString mFilterText;
    QBQuoteFilter mFilter;
    FitTest mFits;
    bool mOnlyTooLong = false;
    // Source indices of the rows, ascending; unused while the filter is empty.
    std::vector<qsizetype> mRows;
    quint64 mArrangedGeneration = 0; // the source's content generation mRows reflect
    // Folded text per source index, with what it was folded from to spot edits: the
    // value object's text, or else the record's revision.
    struct Folded
    {
        QString from;
        QString folded;
        quint32 revision = 0;
        bool fromRecord = false;
        bool done = false;
    };
    mutable std::vector<Folded> mFolded;
};
