#include "helper/QuoteSource.h"

#include "core/PlainQuotesReader.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "helper/QuoteCycle.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <exception>
#include <string_view>
#include <vector>

namespace {

QString noQuotesProblem(const QString& shownPath)
{
    return QStringLiteral("The quotes database '%1' holds no quotes").arg(shownPath);
}

// The quick way: a file of the usual shape, read without copying and decoding only the
// chosen quote. Nothing when the file has another shape or is damaged, or when the full
// reader would change a UID (it replaces an empty one; an escaped one would need decoding).
std::optional<QBHelperQuoteSource::Pick> pickInPlace(std::string_view document,
                                                     const QString& shownPath)
{
    std::vector<std::string_view> uids;
    std::vector<std::string_view> contents;
    uids.reserve(plainQuoteCountBound(document));
    contents.reserve(uids.capacity());
    bool uidsAsRead = true;
    if (!forEachPlainQuote(document,
                           [&](std::string_view uid, std::string_view content) {
                               uidsAsRead = !uid.empty() && uid.find('\\') == uid.npos;
                               uids.push_back(uid);
                               contents.push_back(content);
                               return uidsAsRead;
                           }) ||
        !uidsAsRead) {
        return std::nullopt;
    }
    QBHelperQuoteSource::Pick pick;
    if (uids.empty()) {
        pick.problem = noQuotesProblem(shownPath);
        return pick;
    }
    const std::string wanted = QBQuoteCycle(QBHelperQuoteSource::cycleStatePath()).next(uids);
    const auto found = std::find(uids.cbegin(), uids.cend(), wanted);
    if (found != uids.cend()) {
        pick.content = decodedQuoteText(contents[static_cast<std::size_t>(found - uids.cbegin())]);
        pick.uid = wanted;
    }
    return pick;
}

// Any other shape, and the errors of a damaged file, come from the application's reader.
QBHelperQuoteSource::Pick pickFromRecords(const std::string& path, const QString& shownPath)
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
    const std::string wanted = QBQuoteCycle(QBHelperQuoteSource::cycleStatePath()).next(uids);
    const auto found =
        std::find_if(quotes.cbegin(), quotes.cend(),
                     [&wanted](const CQuoteRecord& quote) { return quote.mUID == wanted; });
    if (found != quotes.cend()) {
        pick.content = found->mContent;
        pick.uid = wanted;
    }
    return pick;
}

} // namespace

QBHelperQuoteSource::Pick QBHelperQuoteSource::nextQuote(Access access)
{
    const std::optional<std::string> path = QBQuotesDBHelper::getPathToQuotesDb();
    const QString shownPath = path ? QString::fromStdString(*path)
                                   : QString::fromUtf8(QBQuotesDBHelper::kMissingObjectText);
    const QFileInfo info(shownPath);
    if (!path || !info.exists()) {
        return {std::nullopt, QStringLiteral("No quotes database at '%1'").arg(shownPath), {}};
    }
    // Anything else (a FIFO above all) could block the read for good.
    if (!info.isFile()) {
        return {std::nullopt,
                QStringLiteral("The quotes database '%1' is not a regular file").arg(shownPath),
                {}};
    }
    QFile file(shownPath);
    QByteArray copy;
    std::string_view document;
    if (file.open(QIODevice::ReadOnly) && file.size() > 0) {
        if (access == Access::Mapped) {
            const uchar* bytes = file.map(0, file.size(), QFileDevice::MapPrivateOption);
            document = bytes ? std::string_view(reinterpret_cast<const char*>(bytes),
                                                static_cast<std::size_t>(file.size()))
                             : std::string_view();
        } else {
            copy = file.readAll();
            document = std::string_view(copy.constData(), static_cast<std::size_t>(copy.size()));
        }
    }
    std::optional<Pick> pick = pickInPlace(document, shownPath);
    return pick ? std::move(*pick) : pickFromRecords(*path, shownPath);
}

QString QBHelperQuoteSource::cycleStatePath()
{
    const std::optional<std::string> folder = QBQuotesDBHelper::getApplicationGroupFolder();
    return folder ? QString::fromStdString(*folder) + QStringLiteral("/quillbox2-helper-cycle")
                  : QString();
}
