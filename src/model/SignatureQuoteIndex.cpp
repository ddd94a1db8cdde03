#include "model/SignatureQuoteIndex.h"

#include "core/QuotesRepository.h"
#include "model/Notifications.h"

#include <string_view>

namespace {

std::uint64_t hashOf(const QByteArray& bytes)
{
    return std::hash<std::string_view>()(std::string_view(bytes.constData(), bytes.size()));
}

} // namespace

QBSignatureQuoteIndex::QBSignatureQuoteIndex()
{
    QBNotificationObserverTracker& tracker = mNotificationTracker;
    const auto uidOf = [](const QBNotification& n) {
        return n.userInfo.value(QBKeyQuoteUID).toString();
    };
    tracker.observeNotification(
        QBQuoteDidUpdateNotification,
        [this, uidOf](const QBNotification& n) { quoteChanged(uidOf(n), false); });
    tracker.observeNotification(QBQuoteAddedNotification, [this, uidOf](const QBNotification& n) {
        quoteChanged(uidOf(n), false);
    });
    tracker.observeNotification(QBQuoteRemovedNotification, [this, uidOf](const QBNotification& n) {
        quoteChanged(uidOf(n), true);
    });
    // Whole-collection changes (remove all, its undo, imports) are indexed again when next
    // asked, once however many came.
    for (const QString& name : {QBQuotesModifiedNotification, QBQuotesImportedNotification}) {
        tracker.observeNotification(name, [this](const QBNotification&) { mBuilt = false; });
    }
}

QBSignatureQuoteIndex::~QBSignatureQuoteIndex()
{
    mNotificationTracker.removeObservers();
}

void QBSignatureQuoteIndex::setSettings(const QBSignatureSettings& settings)
{
    if (settings == mSettings)
        return;
    mSettings = settings;
    mBuilt = false;
}

QByteArray QBSignatureQuoteIndex::fileBytesForQuote(const std::string& content) const
{
    return QBSignatureComposer::compose(QString::fromStdString(content), mSettings).bytes;
}

void QBSignatureQuoteIndex::ensureBuilt()
{
    if (mBuilt)
        return;
    mUIDsByHash.clear();
    mHashByUID.clear();
    const std::vector<CQuoteRecord>& quotes = CQuotesRepository::getInstance().mQuotes;
    mUIDsByHash.reserve(quotes.size());
    mHashByUID.reserve(quotes.size());
    for (const CQuoteRecord& quote : quotes) {
        const std::uint64_t hash = hashOf(fileBytesForQuote(quote.mContent));
        if (mHashByUID.emplace(quote.mUID, hash).second)
            mUIDsByHash.emplace(hash, quote.mUID);
    }
    mBuilt = true;
}

void QBSignatureQuoteIndex::forget(const std::string& uid)
{
    const auto known = mHashByUID.find(uid);
    if (known == mHashByUID.end())
        return;
    auto [first, last] = mUIDsByHash.equal_range(known->second);
    for (; first != last; ++first) {
        if (first->second == uid) {
            mUIDsByHash.erase(first);
            break;
        }
    }
    mHashByUID.erase(known);
}

void QBSignatureQuoteIndex::learn(const std::string& uid)
{
    const CQuoteRecord* record = CQuotesRepository::getInstance().findQuote(uid);
    if (record == nullptr)
        return;
    const std::uint64_t hash = hashOf(fileBytesForQuote(record->mContent));
    mHashByUID.emplace(uid, hash);
    mUIDsByHash.emplace(hash, uid);
}

void QBSignatureQuoteIndex::quoteChanged(const QString& uid, bool removed)
{
    if (!mBuilt)
        return; // built from the repository when next asked
    const std::string key = uid.toStdString();
    forget(key);
    if (!removed)
        learn(key);
}

QString QBSignatureQuoteIndex::quoteUIDForFileBytes(const QByteArray& fileBytes)
{
    ensureBuilt();
    auto [first, last] = mUIDsByHash.equal_range(hashOf(fileBytes));
    // Equal hashes are checked byte for byte; the first quote in collection order wins.
    QString found;
    std::uint32_t foundIndex = UINT32_MAX;
    CQuotesRepository& repository = CQuotesRepository::getInstance();
    for (; first != last; ++first) {
        const CQuoteRecord* record = repository.findQuote(first->second);
        if (record == nullptr || fileBytesForQuote(record->mContent) != fileBytes)
            continue;
        const std::uint32_t index = repository.indexOfQuote(first->second);
        if (index < foundIndex) {
            foundIndex = index;
            found = QString::fromStdString(first->second);
        }
    }
    return found;
}
