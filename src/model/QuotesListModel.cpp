#include "model/QuotesListModel.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace {

// The list shows one line per quote: its line breaks become " / ", as verse is quoted.
QString singleLine(const QString& text)
{
    QString line = text.trimmed();
    line.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    static const QRegularExpression lineBreaks(
        QStringLiteral("\\s*[\\n\\r\\x{2028}\\x{2029}]+\\s*"));
    line.replace(lineBreaks, QStringLiteral(" / "));
    return line;
}

} // namespace

QBQuotesListModel::QBQuotesListModel(QBQuotesSource* source, QObject* parent)
    : QAbstractListModel(parent), mSource(source)
{
    connect(source, &QBQuotesSource::quotesAboutToChange, this, [this] {
        beginResetModel();
        mFolded.clear();
    });
    connect(source, &QBQuotesSource::quotesChanged, this, [this] {
        if (isNarrowed())
            arrange(false);
        endResetModel();
    });
    // The row shows the new text; it stays where it is even when the filter no longer
    // matches it, until the filter next runs.
    connect(source, &QBQuotesSource::quoteContentChanged, this, [this](qsizetype sourceIndex) {
        if (const int row = rowOfSourceIndex(sourceIndex); row >= 0)
            emit dataChanged(index(row), index(row),
                             {Qt::DisplayRole, Qt::ToolTipRole, TooLongForSignatureRole});
    });
}

int QBQuotesListModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() || mSource == nullptr)
        return 0;
    return int(!isNarrowed() ? mSource->count() : qsizetype(mRows.size()));
}

int QBQuotesListModel::sourceIndexOfRow(int row) const
{
    if (row < 0 || row >= rowCount())
        return -1;
    return !isNarrowed() ? row : int(mRows[std::size_t(row)]);
}

std::shared_ptr<QBQuoteValueObject> QBQuotesListModel::objectAtRow(int row) const
{
    const int index = sourceIndexOfRow(row);
    return index < 0 ? nullptr : mSource->valueObjectAt(index);
}

int QBQuotesListModel::rowOfObject(const QBQuoteValueObject* object) const
{
    if (mSource == nullptr)
        return -1;
    return rowOfSourceIndex(mSource->indexOfValueObject(object));
}

int QBQuotesListModel::rowOfSourceIndex(qsizetype index) const
{
    if (index < 0 || !isNarrowed())
        return int(index);
    const auto found = std::lower_bound(mRows.begin(), mRows.end(), index);
    return found != mRows.end() && *found == index ? int(found - mRows.begin()) : -1;
}

QVariant QBQuotesListModel::data(const QModelIndex& index, int role) const
{
    const int sourceIndex = index.isValid() ? sourceIndexOfRow(index.row()) : -1;
    if (sourceIndex < 0)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole: {
        const QString line = singleLine(mSource->contentAt(sourceIndex));
        //% "New Quote"
        return line.isEmpty() ? qtTrId("QuotesListEmptyQuote") : line;
    }
    case Qt::ToolTipRole:
        if (isTooLong(sourceIndex)) {
            //% "Longer than the signature's line limit: the automatic changes pass over it."
            return QString(mSource->contentAt(sourceIndex) + QStringLiteral("\n\n") +
                           qtTrId("QuotesListTooLongNote"));
        }
        return mSource->contentAt(sourceIndex);
    case TooLongForSignatureRole:
        return isTooLong(sourceIndex);
    case QuoteUIDRole:
        return mSource->quoteUIDAt(sourceIndex);
    case IsCurrentSignatureRole:
        return !mCurrentSignatureUID.isEmpty() &&
               mSource->quoteUIDAt(sourceIndex) == mCurrentSignatureUID;
    case Qt::AccessibleTextRole:
        // Screen readers hear what the icon shows.
        if (!mCurrentSignatureUID.isEmpty() &&
            mSource->quoteUIDAt(sourceIndex) == mCurrentSignatureUID) {
            //% "Current signature: %1"
            return qtTrId("QuotesListCurrentSignature")
                .arg(data(index, Qt::DisplayRole).toString());
        }
        return QVariant();
    default:
        return QVariant();
    }
}

const QString& QBQuotesListModel::foldedTextAt(std::size_t sourceIndex) const
{
    if (mFolded.size() != std::size_t(mSource->count()))
        mFolded.resize(std::size_t(mSource->count()));
    Folded& entry = mFolded[sourceIndex];
    const auto index = qsizetype(sourceIndex);
    if (const QBQuoteValueObject* object = mSource->existingValueObjectAt(index)) {
        // A shared string is the one folded last time; anything else is a new text.
        const QString content = object->content();
        if (!entry.done || entry.fromRecord || !entry.from.isSharedWith(content)) {
            entry = {content, QBQuoteFilter::fold(content), 0, false, true};
        }
    } else if (!entry.done || !entry.fromRecord ||
               entry.revision != mSource->contentRevisionAt(index)) {
        entry = {QString(), QBQuoteFilter::fold(mSource->contentAt(index)),
                 mSource->contentRevisionAt(index), true, true};
    }
    return entry.folded;
}

void QBQuotesListModel::prepareFilter() const
{
    if (mSource == nullptr)
        return;
    for (std::size_t index = 0; index < std::size_t(mSource->count()); ++index)
        foldedTextAt(index);
}

void QBQuotesListModel::arrange(bool narrowOnly)
{
    std::vector<qsizetype> rows;
    const auto keepIfMatching = [&](qsizetype index) {
        if ((!mOnlyTooLong || isTooLong(index)) &&
            (mFilter.isEmpty() || mFilter.matches(foldedTextAt(std::size_t(index)))))
            rows.push_back(index);
    };
    if (narrowOnly) {
        for (const qsizetype index : mRows)
            keepIfMatching(index);
    } else {
        const qsizetype count = mSource->count();
        rows.reserve(std::size_t(count));
        for (qsizetype index = 0; index < count; ++index)
            keepIfMatching(index);
    }
    mRows = std::move(rows);
    mArrangedGeneration = mSource->contentGeneration();
}

void QBQuotesListModel::setFilterText(const QString& text)
{
    if (text == mFilterText || mSource == nullptr)
        return;
    QBQuoteFilter filter(text);
    // Narrowing may look at the shown rows only, unless a hidden quote changed meanwhile.
    const bool narrowOnly = !mFilter.isEmpty() && mFilter.isNarrowedBy(filter) &&
                            mArrangedGeneration == mSource->contentGeneration();
    beginResetModel();
    mFilterText = text;
    mFilter = std::move(filter);
    if (!isNarrowed())
        mRows.clear();
    else
        arrange(narrowOnly);
    endResetModel();
}

void QBQuotesListModel::setCurrentSignatureUID(const QString& quoteUID)
{
    if (quoteUID == mCurrentSignatureUID)
        return;
    const QString before = std::exchange(mCurrentSignatureUID, quoteUID);
    currentSignatureRowChanged(before);
    currentSignatureRowChanged(quoteUID);
}

void QBQuotesListModel::currentSignatureRowChanged(const QString& quoteUID)
{
    if (quoteUID.isEmpty() || mSource == nullptr)
        return;
    if (const int row = rowOfSourceIndex(mSource->indexOfQuoteUID(quoteUID)); row >= 0)
        emit dataChanged(index(row), index(row),
                         {IsCurrentSignatureRole, Qt::DecorationRole, Qt::AccessibleTextRole});
}

bool QBQuotesListModel::isTooLong(qsizetype sourceIndex) const
{
    return mFits && !mFits(mSource->contentAt(sourceIndex));
}

void QBQuotesListModel::rearrange()
{
    beginResetModel();
    if (!isNarrowed())
        mRows.clear();
    else
        arrange(false);
    endResetModel();
}

void QBQuotesListModel::setSignatureFitTest(FitTest fits)
{
    mFits = std::move(fits);
    if (mSource == nullptr)
        return;
    if (mOnlyTooLong)
        rearrange();
    else if (rowCount() > 0)
        emit dataChanged(index(0), index(rowCount() - 1),
                         {Qt::ToolTipRole, TooLongForSignatureRole});
}

void QBQuotesListModel::setShowsOnlyTooLong(bool onlyTooLong)
{
    if (onlyTooLong == mOnlyTooLong || mSource == nullptr)
        return;
    mOnlyTooLong = onlyTooLong;
    rearrange();
}

void QBQuotesListModel::removeQuotesWithUIDs(const QStringList& quoteUIDs)
{
    if (mSource == nullptr || quoteUIDs.isEmpty())
        return;
    const std::vector<qsizetype> removed = mSource->indicesOfQuoteUIDs(quoteUIDs);
    if (removed.empty())
        return;

    emit layoutAboutToBeChanged();
    const QModelIndexList persistent = persistentIndexList();
    std::vector<int> persistentSourceIndices;
    persistentSourceIndices.reserve(std::size_t(persistent.size()));
    for (const QModelIndex& index : persistent)
        persistentSourceIndices.push_back(sourceIndexOfRow(index.row()));

    const auto isRemoved = [&removed](qsizetype index) {
        return std::binary_search(removed.begin(), removed.end(), index);
    };
    // Source index shift after the removal: how many removed indices lie below.
    const auto shifted = [&removed](qsizetype index) {
        return index - (std::lower_bound(removed.begin(), removed.end(), index) - removed.begin());
    };
    if (isNarrowed()) {
        std::vector<qsizetype> rows;
        rows.reserve(mRows.size());
        for (const qsizetype index : mRows) {
            if (!isRemoved(index))
                rows.push_back(shifted(index));
        }
        mRows = std::move(rows);
    }
    if (mFolded.size() == std::size_t(mSource->count())) {
        std::size_t kept = 0;
        for (std::size_t index = 0; index < mFolded.size(); ++index) {
            if (isRemoved(qsizetype(index)))
                continue;
            if (kept != index)
                mFolded[kept] = std::move(mFolded[index]);
            ++kept;
        }
        mFolded.resize(kept);
    }
    mSource->removeQuotesAt(removed);

    QModelIndexList moved;
    moved.reserve(persistent.size());
    for (const int sourceIndex : persistentSourceIndices) {
        int row = -1;
        if (sourceIndex >= 0 && !isRemoved(sourceIndex))
            row = rowOfSourceIndex(shifted(sourceIndex));
        moved.append(row < 0 ? QModelIndex() : index(row));
    }
    changePersistentIndexList(persistent, moved);
    emit layoutChanged();
}
