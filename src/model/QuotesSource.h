#pragma once

#include "model/QuoteValueObject.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

// The ordered value objects of the whole collection, one per repository record, that
// the quotes list shows.
class QBQuotesSource : public QObject
{
    Q_OBJECT
public:
    using QuoteList = std::vector<std::shared_ptr<QBQuoteValueObject>>;

    explicit QBQuotesSource(QObject* parent = nullptr);

    const QuoteList& quotes() const { return mQuotes; }
    void setQuotes(QuoteList quotes);

    // Fresh value objects for every record, in repository order; one quotesChanged().
    void rebuildQuotesArray();
    // The first object standing for |quoteUID|, or null.
    std::shared_ptr<QBQuoteValueObject> valueObjectForQuoteUID(const QString& quoteUID) const;

signals:
    void quotesChanged();

private:
    QuoteList mQuotes;
};
