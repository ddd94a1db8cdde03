#include "model/QuotesListModel.h"

#include <QRegularExpression>

#include <algorithm>
#include <unordered_set>

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
        if (!mFilter.isEmpty())
            arrange(false);
        endResetModel();
    });
}

int QBQuotesListModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() || mSource == nullptr)
        return 0;
    return int(mFilter.isEmpty() ? mSource->quotes().size() : mRows.size());
}

int QBQuotesListModel::sourceIndexOfRow(int row) const
{
    if (row < 0 || row >= rowCount())
        return -1;
    return mFilter.isEmpty() ? row : int(mRows[std::size_t(row)]);
}

std::shared_ptr<QBQuoteValueObject> QBQuotesListModel::objectAtRow(int row) const
{
    const int index = sourceIndexOfRow(row);
    return index < 0 ? nullptr : mSource->quotes()[std::size_t(index)];
}

int QBQuotesListModel::rowOfObject(const QBQuoteValueObject* object) const
{
    if (mSource == nullptr)
        return -1;
    const qsizetype index = mSource->indexOfValueObject(object);
    if (index < 0 || mFilter.isEmpty())
        return int(index);
    const auto found = std::lower_bound(mRows.begin(), mRows.end(), index);
    return found != mRows.end() && *found == index ? int(found - mRows.begin()) : -1;
}

QVariant QBQuotesListModel::data(const QModelIndex& index, int role) const
{
    const std::shared_ptr<QBQuoteValueObject> quote = objectAtRow(index.row());
    if (!index.isValid() || quote == nullptr)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole: {
        const QString line = singleLine(quote->content());
        //% "New Quote"
        return line.isEmpty() ? qtTrId("QuotesListEmptyQuote") : line;
    }
    case Qt::ToolTipRole:
        return quote->content();
    case QuoteUIDRole:
        return quote->quoteUID();
    default:
        return QVariant();
    }
}

const QString& QBQuotesListModel::foldedTextAt(std::size_t sourceIndex) const
{
    const auto& quotes = mSource->quotes();
    if (mFolded.size() != quotes.size())
        mFolded.resize(quotes.size());
    Folded& entry = mFolded[sourceIndex];
    const QString content = quotes[sourceIndex]->content();
    // A shared string is the one folded last time; anything else is a new text.
    if (!entry.from.isSharedWith(content) || entry.folded.isNull()) {
        entry.folded = QBQuoteFilter::fold(content);
        entry.from = content;
    }
    return entry.folded;
}

void QBQuotesListModel::prepareFilter() const
{
    if (mSource == nullptr)
        return;
    for (std::size_t index = 0; index < mSource->quotes().size(); ++index)
        foldedTextAt(index);
}

void QBQuotesListModel::arrange(bool narrowOnly)
{
    std::vector<qsizetype> rows;
    const auto keepIfMatching = [&](qsizetype index) {
        if (mFilter.matches(foldedTextAt(std::size_t(index))))
            rows.push_back(index);
    };
    if (narrowOnly) {
        for (const qsizetype index : mRows)
            keepIfMatching(index);
    } else {
        const auto count = qsizetype(mSource->quotes().size());
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
    if (mFilter.isEmpty())
        mRows.clear();
    else
        arrange(narrowOnly);
    endResetModel();
}

void QBQuotesListModel::removeObjects(const std::vector<const QBQuoteValueObject*>& objects)
{
    if (mSource == nullptr || objects.empty())
        return;
    std::vector<qsizetype> removed;
    removed.reserve(objects.size());
    if (objects.size() < 16) {
        for (const QBQuoteValueObject* object : objects) {
            const qsizetype index = mSource->indexOfValueObject(object);
            if (index >= 0)
                removed.push_back(index);
        }
    } else { // one pass instead of one search per object
        const std::unordered_set<const QBQuoteValueObject*> doomed(objects.begin(), objects.end());
        const auto& quotes = mSource->quotes();
        for (std::size_t index = 0; index < quotes.size(); ++index) {
            if (doomed.contains(quotes[index].get()))
                removed.push_back(qsizetype(index));
        }
    }
    std::sort(removed.begin(), removed.end());
    removed.erase(std::unique(removed.begin(), removed.end()), removed.end());
    if (removed.empty())
        return;

    emit layoutAboutToBeChanged();
    const QModelIndexList persistent = persistentIndexList();
    std::vector<const QBQuoteValueObject*> persistentObjects;
    persistentObjects.reserve(std::size_t(persistent.size()));
    for (const QModelIndex& index : persistent)
        persistentObjects.push_back(objectAtRow(index.row()).get());

    // Source index shift after the removal: how many removed indices lie below.
    const auto shifted = [&removed](qsizetype index) {
        return index - (std::lower_bound(removed.begin(), removed.end(), index) - removed.begin());
    };
    if (!mFilter.isEmpty()) {
        std::vector<qsizetype> rows;
        rows.reserve(mRows.size());
        for (const qsizetype index : mRows) {
            if (!std::binary_search(removed.begin(), removed.end(), index))
                rows.push_back(shifted(index));
        }
        mRows = std::move(rows);
    }
    if (mFolded.size() == mSource->quotes().size()) {
        std::size_t kept = 0;
        for (std::size_t index = 0; index < mFolded.size(); ++index) {
            if (std::binary_search(removed.begin(), removed.end(), qsizetype(index)))
                continue;
            if (kept != index)
                mFolded[kept] = std::move(mFolded[index]);
            ++kept;
        }
        mFolded.resize(kept);
    }
    mSource->removeValueObjectsAt(removed);

    QModelIndexList moved;
    moved.reserve(persistent.size());
    for (const QBQuoteValueObject* object : persistentObjects) {
        const int row = object == nullptr ? -1 : rowOfObject(object);
        moved.append(row < 0 ? QModelIndex() : index(row));
    }
    changePersistentIndexList(persistent, moved);
    emit layoutChanged();
}
