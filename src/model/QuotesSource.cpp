#include "model/QuotesSource.h"

#include "core/QuotesRepository.h"
#include "model/Notifications.h"

#include <algorithm>

QBQuotesSource::QBQuotesSource(QObject* parent) : QObject(parent)
{
    mNotificationTracker.observeNotification(
        QBQuoteDidUpdateNotification,
        [this](const QBNotification& notification) { deliverQuoteDidUpdate(notification); });
    rebuildQuotesArray();
}

void QBQuotesSource::setQuotes(QuoteList quotes)
{
    emit quotesAboutToChange();
    mQuotes = std::move(quotes);
    indexByUID();
    emit quotesChanged();
}

void QBQuotesSource::indexByUID()
{
    mFirstObjectByUID.clear();
    mFirstObjectByUID.reserve(qsizetype(mQuotes.size()));
    for (const auto& quote : mQuotes) {
        if (!mFirstObjectByUID.contains(quote->quoteUID()))
            mFirstObjectByUID.insert(quote->quoteUID(), quote.get());
    }
}

void QBQuotesSource::deliverQuoteDidUpdate(const QBNotification& notification)
{
    ++mContentGeneration;
    // The repository never holds two records of one UID, so the first object is the one.
    if (QBQuoteValueObject* object =
            mFirstObjectByUID.value(notification.userInfo.value(QBKeyQuoteUID).toString()))
        object->handleQuoteDidUpdate(notification.userInfo);
}

void QBQuotesSource::rebuildQuotesArray()
{
    const auto& records = CQuotesRepository::getInstance().mQuotes;
    QuoteList rebuilt;
    rebuilt.reserve(records.size());
    for (const CQuoteRecord& record : records)
        rebuilt.push_back(std::make_shared<QBQuoteValueObject>(
            record, QBQuoteValueObject::UpdateDelivery::ThroughSource));
    setQuotes(std::move(rebuilt));
}

std::shared_ptr<QBQuoteValueObject>
QBQuotesSource::valueObjectForQuoteUID(const QString& quoteUID) const
{
    const QBQuoteValueObject* first = mFirstObjectByUID.value(quoteUID);
    if (first == nullptr)
        return nullptr;
    const qsizetype index = indexOfValueObject(first);
    return index < 0 ? nullptr : mQuotes[std::size_t(index)];
}

qsizetype QBQuotesSource::indexOfValueObject(const QBQuoteValueObject* object) const
{
    const auto found = std::find_if(mQuotes.begin(), mQuotes.end(),
                                    [object](const auto& quote) { return quote.get() == object; });
    return found == mQuotes.end() ? -1 : found - mQuotes.begin();
}

void QBQuotesSource::removeValueObjectsAt(const std::vector<qsizetype>& sortedIndices)
{
    if (sortedIndices.empty())
        return;
    auto next = sortedIndices.begin();
    std::size_t kept = std::size_t(*next);
    for (std::size_t index = kept; index < mQuotes.size(); ++index) {
        if (next != sortedIndices.end() && qsizetype(index) == *next) {
            QBQuoteValueObject* removed = mQuotes[index].get();
            const auto entry = mFirstObjectByUID.find(removed->quoteUID());
            if (entry != mFirstObjectByUID.end() && entry.value() == removed)
                mFirstObjectByUID.erase(entry);
            ++next;
            continue;
        }
        mQuotes[kept++] = std::move(mQuotes[index]);
    }
    mQuotes.resize(kept);
}
