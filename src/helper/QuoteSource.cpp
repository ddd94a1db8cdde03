#include "helper/QuoteSource.h"

#include "core/PlainQuotesReader.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "helper/QuoteCycle.h"
#include "helper/QuoteOrderFile.h"
#include "signature/SharedUserDefaults.h"

#include "util/RegularFile.h"

#include <QFile>

#include <sys/mman.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace {

QString noQuotesProblem(const QString& shownPath)
{
    return QStringLiteral("The quotes database '%1' holds no quotes").arg(shownPath);
}

QString nothingFitsProblem(std::size_t quoteCount, const QBSignatureSettings& settings)
{
    return QStringLiteral("None of the %1 quotes fits in the signature's %2 lines; nothing "
                          "was written")
        .arg(QString::number(quoteCount), QString::number(settings.maxLines));
}

// Maps all pages of a mapped |document| in one call before it is read whole: page by page,
// the faults cost more than the reading (a fault per 16 pages, at 30 MB some 500).
void prefault(std::string_view document)
{
#ifdef MADV_POPULATE_READ
    // Refused by kernels before 5.14; the pages then come in as they are read.
    ::madvise(const_cast<char*>(document.data()), document.size(), MADV_POPULATE_READ);
#else
    (void)document;
#endif
}

// The cycle's step, taking only quotes whose text (by index) fits; |chosenIndex|
// receives the index of the quote taken.
std::string nextFitting(const QBQuoteCycle::OrderForKey& orderFor,
                        const QBSignatureSettings& settings,
                        const std::function<QString(std::size_t)>& textAt,
                        std::size_t* chosenIndex = nullptr)
{
    QBQuoteCycle cycle(QBHelperQuoteSource::cycleStatePath());
    if (settings.maxLines <= 0) {
        return cycle.next(orderFor, {}, chosenIndex);
    }
    return cycle.next(
        orderFor,
        [&](std::size_t index) { return QBSignatureComposer::fits(textAt(index), settings); },
        chosenIndex);
}

// The quick way: a file of the usual shape, read without copying and decoding only the
// chosen quote. Nothing when the file has another shape or is damaged, or when the full
// reader would change a UID (it replaces an empty one; an escaped one would need decoding).
// With the database's |identity|, the round's order is kept in a file (QBQuoteOrderFile),
// and while neither the database nor the round changes the document is not scanned.
std::optional<QBHelperQuoteSource::Pick> pickInPlace(std::string_view document,
                                                     const QString& shownPath,
                                                     const QBSignatureSettings& settings,
                                                     const QBQuoteOrderFile::Identity* identity)
{
    std::vector<std::string_view> uids;
    std::vector<std::string_view> contents;
    bool scanned = false;
    bool usualShape = false;
    const auto scan = [&] {
        if (std::exchange(scanned, true)) {
            return usualShape;
        }
        if (identity != nullptr) {
            prefault(document);
        }
        uids.reserve(plainQuoteCountBound(document));
        contents.reserve(uids.capacity());
        bool uidsAsRead = true;
        usualShape = forEachPlainQuote(document,
                                       [&](std::string_view uid, std::string_view content) {
                                           uidsAsRead = !uid.empty() && uid.find('\\') == uid.npos;
                                           uids.push_back(uid);
                                           contents.push_back(content);
                                           return uidsAsRead;
                                       }) &&
                     uidsAsRead;
        return usualShape;
    };
    std::optional<QBQuoteOrderFile> kept;
    if (identity != nullptr) {
        kept.emplace(QBHelperQuoteSource::cycleStatePath() + QStringLiteral("-order"), *identity,
                     document);
    }
    // An order is kept only of a database of the usual shape.
    const bool haveKept = kept && kept->isKept();
    if (!haveKept && !scan()) {
        return std::nullopt;
    }
    const std::size_t count = haveKept ? kept->order().size() : uids.size();
    QBHelperQuoteSource::Pick pick;
    if (count == 0) {
        pick.problem = noQuotesProblem(shownPath);
        return pick;
    }

    std::unique_ptr<QBQuoteCycle::Order> built;
    std::uint64_t builtKey = 0;
    bool fromKept = false;
    const auto orderFor = [&](std::uint64_t key) -> const QBQuoteCycle::Order& {
        fromKept = haveKept && kept->key() == key;
        if (fromKept) {
            return kept->order();
        }
        if (!built || builtKey != key) {
            scan();
            built = QBQuoteCycle::sortedOrder(key, uids);
            builtKey = key;
            if (kept) {
                kept->keep(key, *built, uids, contents);
            }
        }
        return *built;
    };
    const auto contentAt = [&](std::size_t index) {
        return fromKept ? kept->contentAt(index) : contents[index];
    };
    std::size_t chosen = 0;
    const std::string wanted = nextFitting(
        orderFor, settings,
        [&](std::size_t index) {
            return QString::fromStdString(decodedQuoteText(contentAt(index)));
        },
        &chosen);
    if (wanted.empty()) {
        pick.problem = nothingFitsProblem(count, settings);
    } else {
        pick.content = decodedQuoteText(contentAt(chosen));
        pick.uid = wanted;
    }
    return pick;
}

// Any other shape, and the errors of a damaged file, come from the application's reader.
QBHelperQuoteSource::Pick pickFromRecords(const std::string& path, const QString& shownPath,
                                          const QBSignatureSettings& settings)
{
    QBHelperQuoteSource::Pick pick;
    std::vector<CQuoteRecord> quotes;
    try {
        readQuotesFile(path, quotes);
    } catch (const std::exception& error) {
        pick.problem = QStringLiteral("The quotes database '%1' cannot be read: %2")
                           .arg(shownPath, QString::fromUtf8(error.what()));
        return pick;
    }
    if (quotes.empty()) {
        pick.problem = noQuotesProblem(shownPath);
        return pick;
    }
    std::vector<std::string_view> uids;
    uids.reserve(quotes.size());
    for (const CQuoteRecord& quote : quotes) {
        uids.emplace_back(quote.mUID);
    }
    const std::string wanted =
        nextFitting(QBQuoteCycle::sortedOrders(uids), settings, [&quotes](std::size_t index) {
            return QString::fromStdString(quotes[index].mContent);
        });
    const auto found =
        std::find_if(quotes.cbegin(), quotes.cend(),
                     [&wanted](const CQuoteRecord& quote) { return quote.mUID == wanted; });
    if (wanted.empty()) {
        pick.problem = nothingFitsProblem(uids.size(), settings);
    } else if (found != quotes.cend()) {
        pick.content = found->mContent;
        pick.uid = wanted;
    }
    return pick;
}

} // namespace

QBHelperQuoteSource::Pick QBHelperQuoteSource::nextQuote(Access access,
                                                         const QBSignatureSettings& settings)
{
    const std::optional<std::string> path = QBQuotesDBHelper::getPathToQuotesDb();
    const QString shownPath = path ? QString::fromStdString(*path)
                                   : QString::fromUtf8(QBQuotesDBHelper::kMissingObjectText);
    if (!path) {
        return {std::nullopt, QStringLiteral("No quotes database at '%1'").arg(shownPath), {}};
    }
    // Opened without blocking and checked once open: a FIFO swapped in after any check
    // of the path would otherwise keep the helper, or a mail client running --print,
    // waiting for ever.
    QFile file;
    QString error;
    if (!openRegularFileForReading(file, shownPath, error)) {
        if (errno == ENOENT) {
            return {std::nullopt, QStringLiteral("No quotes database at '%1'").arg(shownPath), {}};
        }
        return {std::nullopt,
                errno == 0 ? QStringLiteral("The quotes database '%1' is not a "
                                            "regular file")
                                 .arg(shownPath)
                           : QStringLiteral("The quotes database '%1' cannot be "
                                            "opened: %2")
                                 .arg(shownPath, error),
                {}};
    }
    const qint64 size = file.size();
    QByteArray copy;
    std::string_view document;
    QBQuoteOrderFile::Identity identity;
    bool keepsOrder = false;
    if (size > 0) {
        if (access == Access::Mapped) {
            // The order is kept for --print only: the running helper steps once in minutes.
            keepsOrder = QBQuoteOrderFile::identityOf(file.handle(), identity);
            const uchar* bytes = file.map(0, size, QFileDevice::MapPrivateOption);
            document = bytes ? std::string_view(reinterpret_cast<const char*>(bytes),
                                                static_cast<std::size_t>(size))
                             : std::string_view();
        } else {
            copy = file.readAll();
            document = std::string_view(copy.constData(), static_cast<std::size_t>(copy.size()));
        }
    }
    std::optional<Pick> pick =
        pickInPlace(document, shownPath, settings, keepsOrder ? &identity : nullptr);
    return pick ? std::move(*pick) : pickFromRecords(*path, shownPath, settings);
}

QBHelperQuoteSource::Signature QBHelperQuoteSource::nextSignature(Access access, Output output)
{
    QBSharedUserDefaults& suite = QBSharedUserDefaults::sharedInstance();
    suite.suiteUserDefaults().synchronize();
    QBSignatureSettings settings = QBSignatureSettings::fromDefaults(suite.suiteUserDefaults());
    settings.html = settings.html && output == Output::SignatureFile;
    const Pick pick = nextQuote(access, settings);
    if (!pick.content) {
        return {QByteArray(),
                pick.problem.isEmpty() ? QStringLiteral("No quote to show") : pick.problem,
                {}};
    }
    return {QBSignatureComposer::compose(QString::fromStdString(*pick.content), settings).bytes,
            QString(), pick.uid};
}

QString QBHelperQuoteSource::cycleStatePath()
{
    const std::optional<std::string> folder = QBQuotesDBHelper::getApplicationGroupFolder();
    return folder ? QString::fromStdString(*folder) + QStringLiteral("/quillbox2-helper-cycle")
                  : QString();
}
