#include "helper/QuoteSource.h"

#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "helper/QuoteCycle.h"

#include <QFileInfo>

#include <algorithm>
#include <exception>
#include <string_view>

QBHelperQuoteSource::Reading QBHelperQuoteSource::read()
{
    Reading reading;
    const std::optional<std::string> path = QBQuotesDBHelper::getPathToQuotesDb();
    const QString shownPath = path ? QString::fromStdString(*path)
                                   : QString::fromUtf8(QBQuotesDBHelper::kMissingObjectText);
    const QFileInfo info(shownPath);
    if (!path || !info.exists()) {
        reading.problem = QStringLiteral("No quotes database at '%1'").arg(shownPath);
        return reading;
    }
    // Anything else (a FIFO above all) could block the read for good.
    if (!info.isFile()) {
        reading.problem =
            QStringLiteral("The quotes database '%1' is not a regular file").arg(shownPath);
        return reading;
    }
    try {
        readQuotesFile(*path, reading.quotes);
    } catch (const std::exception& error) {
        reading.quotes.clear();
        reading.problem = QStringLiteral("The quotes database '%1' cannot be read: %2")
                              .arg(shownPath, QString::fromUtf8(error.what()));
        return reading;
    }
    if (reading.quotes.empty()) {
        reading.problem = QStringLiteral("The quotes database '%1' holds no quotes").arg(shownPath);
    }
    return reading;
}

QString QBHelperQuoteSource::cycleStatePath()
{
    const std::optional<std::string> folder = QBQuotesDBHelper::getApplicationGroupFolder();
    return folder ? QString::fromStdString(*folder) + QStringLiteral("/quillbox2-helper-cycle")
                  : QString();
}

const CQuoteRecord* QBHelperQuoteSource::nextQuote(const std::vector<CQuoteRecord>& quotes)
{
    std::vector<std::string_view> uids;
    uids.reserve(quotes.size());
    for (const CQuoteRecord& quote : quotes) {
        uids.emplace_back(quote.mUID);
    }
    const std::string uid = QBQuoteCycle(cycleStatePath()).next(uids);
    if (uid.empty()) {
        return nullptr;
    }
    const auto found =
        std::find_if(quotes.cbegin(), quotes.cend(),
                     [&uid](const CQuoteRecord& quote) { return quote.mUID == uid; });
    return found == quotes.cend() ? nullptr : &*found;
}
