#include "model/QuotesSource.h"

#include "core/QuotesRepository.h"

#include <algorithm>

QBQuotesSource::QBQuotesSource(QObject* parent) : QObject(parent)
{
    rebuildQuotesArray();
}

void QBQuotesSource::setQuotes(QuoteList quotes)
{
    mQuotes = std::move(quotes);
    emit quotesChanged();
}

void QBQuotesSource::rebuildQuotesArray()
{
    const auto& records = CQuotesRepository::getInstance().mQuotes;
    QuoteList rebuilt;
    rebuilt.reserve(records.size());
    for (const CQuoteRecord& record : records)
        rebuilt.push_back(std::make_shared<QBQuoteValueObject>(record));
    setQuotes(std::move(rebuilt));
}

std::shared_ptr<QBQuoteValueObject>
QBQuotesSource::valueObjectForQuoteUID(const QString& quoteUID) const
{
    const auto found = std::find_if(mQuotes.begin(), mQuotes.end(), [&](const auto& quote) {
        return quote->quoteUID() == quoteUID;
    });
    return found == mQuotes.end() ? nullptr : *found;
}
