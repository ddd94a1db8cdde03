#include "model/QuotesSource.h"

#include "core/QuotesRepository.h"
#include "model/Notifications.h"
#include "util/StringUtilities.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

QBQuotesSource::QBQuotesSource(QObject* parent) : QObject(parent)
{
    mNotificationTracker.observeNotification(
        QBQuoteDidUpdateNotification,
        [this](const QBNotification& notification) { deliverQuoteDidUpdate(notification); });
    rebuildQuotesArray();
}

void QBQuotesSource::rebuildQuotesArray()
{
    const auto& records = CQuotesRepository::getInstance().mQuotes;
    std::vector<Entry> rebuilt;
    rebuilt.reserve(records.size());
    for (const CQuoteRecord& record : records)
        rebuilt.push_back({record.mUID, nullptr, 0});
    emit quotesAboutToChange();
    mEntries = std::move(rebuilt);
    emit quotesChanged();
}

const CQuoteRecord* QBQuotesSource::recordAt(qsizetype index) const
{
    const auto& records = CQuotesRepository::getInstance().mQuotes;
    const std::string& uid = mEntries[std::size_t(index)].uid;
    const auto position = std::size_t(index);
    if (position < records.size() && records[position].mUID == uid)
        return &records[position];
    // Removals not applied here yet move records towards the front: look there first.
    const std::size_t start = std::min(position, records.size());
    for (std::size_t before = start; before-- > 0;) {
        if (records[before].mUID == uid)
            return &records[before];
    }
    for (std::size_t after = start + 1; after < records.size(); ++after) {
        if (records[after].mUID == uid)
            return &records[after];
    }
    return nullptr;
}

std::shared_ptr<QBQuoteValueObject> QBQuotesSource::valueObjectAt(qsizetype index)
{
    if (index < 0 || index >= count())
        return nullptr;
    Entry& entry = mEntries[std::size_t(index)];
    if (entry.object == nullptr) {
        constexpr auto delivery = QBQuoteValueObject::UpdateDelivery::ThroughSource;
        if (const CQuoteRecord* record = recordAt(index)) {
            entry.object = std::make_shared<QBQuoteValueObject>(*record, delivery);
        } else {
            // The record is already gone and its removal is about to reach the list.
            entry.object = std::make_shared<QBQuoteValueObject>(
                CQuoteRecord(std::string(), entry.uid), delivery);
        }
    }
    return entry.object;
}

QBQuoteValueObject* QBQuotesSource::existingValueObjectAt(qsizetype index) const
{
    return mEntries[std::size_t(index)].object.get();
}

QString QBQuotesSource::quoteUIDAt(qsizetype index) const
{
    return QString::fromStdString(mEntries[std::size_t(index)].uid);
}

QString QBQuotesSource::contentAt(qsizetype index) const
{
    if (const QBQuoteValueObject* object = existingValueObjectAt(index))
        return object->content();
    const CQuoteRecord* record = recordAt(index);
    return record != nullptr ? stringFromUnicodeCPPString(record->mContent) : QString();
}

quint32 QBQuotesSource::contentRevisionAt(qsizetype index) const
{
    return mEntries[std::size_t(index)].revision;
}

qsizetype QBQuotesSource::indexOfUID(const std::string& uid) const
{
    const auto found = std::find_if(mEntries.begin(), mEntries.end(),
                                    [&uid](const Entry& entry) { return entry.uid == uid; });
    return found == mEntries.end() ? -1 : found - mEntries.begin();
}

qsizetype QBQuotesSource::indexOfQuoteUID(const QString& quoteUID) const
{
    return indexOfUID(quoteUID.toStdString());
}

std::shared_ptr<QBQuoteValueObject> QBQuotesSource::valueObjectForQuoteUID(const QString& quoteUID)
{
    return valueObjectAt(indexOfQuoteUID(quoteUID));
}

std::vector<qsizetype> QBQuotesSource::indicesOfQuoteUIDs(const QStringList& quoteUIDs) const
{
    std::vector<qsizetype> indices;
    if (quoteUIDs.size() < 16) {
        for (const QString& uid : quoteUIDs) {
            if (const qsizetype index = indexOfQuoteUID(uid); index >= 0)
                indices.push_back(index);
        }
    } else { // one pass instead of one search per identifier
        std::vector<std::string> wanted;
        wanted.reserve(std::size_t(quoteUIDs.size()));
        for (const QString& uid : quoteUIDs)
            wanted.push_back(uid.toStdString());
        std::unordered_set<std::string_view> pending(wanted.begin(), wanted.end());
        for (std::size_t index = 0; index < mEntries.size() && !pending.empty(); ++index) {
            if (pending.erase(mEntries[index].uid) != 0)
                indices.push_back(qsizetype(index));
        }
    }
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    return indices;
}

qsizetype QBQuotesSource::indexOfValueObject(const QBQuoteValueObject* object) const
{
    if (object == nullptr)
        return -1;
    const auto found = std::find_if(mEntries.begin(), mEntries.end(), [object](const Entry& entry) {
        return entry.object.get() == object;
    });
    return found == mEntries.end() ? -1 : found - mEntries.begin();
}

void QBQuotesSource::deliverQuoteDidUpdate(const QBNotification& notification)
{
    ++mContentGeneration;
    // The repository never holds two records of one UID, so the first entry is the one.
    const qsizetype index = indexOfQuoteUID(notification.userInfo.value(QBKeyQuoteUID).toString());
    if (index < 0)
        return;
    Entry& entry = mEntries[std::size_t(index)];
    ++entry.revision;
    if (entry.object != nullptr)
        entry.object->handleQuoteDidUpdate(notification.userInfo);
    emit quoteContentChanged(index);
}

void QBQuotesSource::removeQuotesAt(const std::vector<qsizetype>& sortedIndices)
{
    if (sortedIndices.empty())
        return;
    auto next = sortedIndices.begin();
    std::size_t kept = std::size_t(*next);
    for (std::size_t index = kept; index < mEntries.size(); ++index) {
        if (next != sortedIndices.end() && qsizetype(index) == *next) {
            ++next;
            continue;
        }
        mEntries[kept++] = std::move(mEntries[index]);
    }
    mEntries.resize(kept);
}
