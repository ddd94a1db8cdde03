#pragma once

#include "logging/Log.h"

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

// The next quote of the shared no-repeat cycle, written into the signature file now: the
// helper's --next and the application's Next Quote Now do the same step, so a quote
// never comes twice in a round whoever asked for it.
struct QBNextQuoteResult
{
    QString uid;      // the quote taken from the cycle; empty when there was none
    QByteArray bytes; // the signature composed around it, as written
    bool written = false;
    // Why nothing was written, as log lines (no quote, no or a broken bookmark, a failed
    // write); empty when written.
    std::vector<std::pair<qblog::Level, QString>> messages;
};

QBNextQuoteResult writeNextQuote();
