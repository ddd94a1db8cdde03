#pragma once

#include "core/QuoteRecord.h"

#include <QString>

#include <vector>

// The collection as the helper sees it: read afresh from quotes.db whenever a quote is
// due, so a changed file counts at once and nothing stays in memory in between.
class QBHelperQuoteSource
{
public:
    struct Reading
    {
        std::vector<CQuoteRecord> quotes;
        QString problem; // why there is no quote to show; empty when there are quotes
    };
    static Reading read();

    // Where the shuffled order of quotes is kept; empty without a container.
    static QString cycleStatePath();
    // Picks the next quote of the shared cycle; nothing when |quotes| is empty.
    static const CQuoteRecord* nextQuote(const std::vector<CQuoteRecord>& quotes);
};
