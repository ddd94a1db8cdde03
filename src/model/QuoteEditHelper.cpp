#include "model/QuoteEditHelper.h"

#include "core/QuotesRepository.h"
#include "logging/Log.h"
#include "logging/ULog.h"
#include "model/Actions.h"
#include "model/Notifications.h"
#include "model/QuotesChangeBatch.h"
#include "telemetry/QBTelemetryHelper.h"
#include "util/CommandResults.h"
#include "util/NotificationCenter.h"
#include "util/StringUtilities.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"

#include <QPointer>

#include <memory>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace {

// NSAlert-style numbering: 0 warning, 1 informational, 2 critical.
constexpr int kDuplicatesAlertStyle = 1;

QBYesNoQuestion& installedQuestion()
{
    static QBYesNoQuestion question;
    return question;
}

void postForQuote(const QString& name, const QString& uid)
{
    QBNotificationCenter::defaultCenter().post(name, QBQuoteEditHelper::notificationSender(),
                                               {{QBKeyQuoteUID, uid}});
}

// The name the Edit menu gives the step: "Undo Remove All".
void nameUndoStep(QBUndoManager* undoManager, const QString& name)
{
    if (undoManager != nullptr)
        undoManager->setActionName(name);
}

void logQuoteNotFound(const QString& uid)
{
    logWarningMessage(QStringLiteral("Quote <%1> not found").arg(uid));
}

// Record indices grouped by text, each group in repository order.
std::unordered_map<std::string_view, std::vector<std::size_t>>
groupByContent(const std::vector<CQuoteRecord>& records)
{
    std::unordered_map<std::string_view, std::vector<std::size_t>> groups;
    groups.reserve(records.size());
    for (std::size_t index = 0; index < records.size(); ++index)
        groups[records[index].mContent].push_back(index);
    return groups;
}

// Counts marked positions below an index in O(log n): how far a record has moved up
// after the records marked before it were removed.
class RemovedBelowCounter
{
public:
    explicit RemovedBelowCounter(std::size_t size) : mTree(size + 1, 0) {}
    void mark(std::size_t index)
    {
        for (std::size_t i = index + 1; i < mTree.size(); i += i & (~i + 1))
            ++mTree[i];
    }
    std::uint32_t countBelow(std::size_t index) const
    {
        std::uint32_t count = 0;
        for (std::size_t i = index; i > 0; i -= i & (~i + 1))
            count += mTree[i];
        return count;
    }

private:
    std::vector<std::uint32_t> mTree;
};

} // namespace

QObject* QBQuoteEditHelper::notificationSender()
{
    static QObject* const sender = [] {
        auto* object = new QObject;
        object->setObjectName(QStringLiteral("QBQuoteEditHelper"));
        return object;
    }();
    return sender;
}

void QBQuoteEditHelper::setYesNoQuestion(QBYesNoQuestion question)
{
    installedQuestion() = std::move(question);
}

void QBQuoteEditHelper::updateQuote(const QString& uid, const QString& content,
                                    QBUndoManager* undoManager)
{
    CQuoteRecord* record = CQuotesRepository::getInstance().findQuote(uid.toStdString());
    if (record == nullptr) {
        logQuoteNotFound(uid);
        return;
    }
    // The first text typed into a new quote is undone together with the add.
    if (!record->mContent.empty()) {
        std::make_shared<QBEditQuoteAction>(undoManager, *record)->registerUndo();
        //% "Edit Quote"
        nameUndoStep(undoManager, qtTrId("UndoNameEditQuote"));
    }
    record->mContent = content.toStdString();
    postForQuote(QBQuoteDidUpdateNotification, uid);
}

void QBQuoteEditHelper::addQuoteWithUndoManager(QBUndoManager* undoManager)
{
    CQuoteRecord* record = CQuotesRepository::getInstance().addNewQuote();
    if (record == nullptr) {
        logWarningMessage("Failed to add quote in addQuoteWithUndoManager:");
        return;
    }
    // Copied first: the record moves when observers change the collection.
    const CQuoteRecord added = *record;
    std::make_shared<QBAddQuoteAction>(undoManager, added)->registerUndo();
    //% "Add Quote"
    nameUndoStep(undoManager, qtTrId("UndoNameAddQuote"));
    postForQuote(QBQuoteAddedNotification, QString::fromStdString(added.mUID));
    QBTelemetryHelper::shared().trackQuoteAdded();
}

void QBQuoteEditHelper::addQuotesFromStringArray(const QStringList& strings)
{
    auto& repository = CQuotesRepository::getInstance();
    qint32 added = 0;
    for (const QString& string : strings) {
        if (stringByStrippingWhitespace(string).isEmpty()) {
            logInfoMessage("Skipping empty quote..");
            continue;
        }
        repository.addNewQuote()->mContent = preprocessQuote(string).toStdString();
        ++added;
    }
    QBNotificationCenter::defaultCenter().post(QBQuotesImportedNotification, notificationSender(),
                                               {{QBKeyImportedQuotesCount, added}});
    // One signal per import, whatever it added (none included).
    QBTelemetryHelper::shared().trackQuoteAdded();
}

QString QBQuoteEditHelper::preprocessQuote(const QString& text)
{
    if (QBUserDefaults::standardUserDefaults().boolForKey(
            QStringLiteral("QBDefaultsClearTrailingEmptyLines")))
        return stringByStrippingTrailingWhitespace(text);
    return text;
}

bool QBQuoteEditHelper::hasDuplicateQuotes()
{
    const auto& records = CQuotesRepository::getInstance().mQuotes;
    for (const auto& [content, indices] : groupByContent(records)) {
        for (std::size_t index : indices) {
            if (records[index].mUID != records[indices.front()].mUID)
                return true;
        }
    }
    return false;
}

std::vector<std::string> QBQuoteEditHelper::duplicateQuoteUIDs()
{
    // Same list as comparing every record with every other one in repository order,
    // but each record is only compared within its group of equal texts.
    const auto& records = CQuotesRepository::getInstance().mQuotes;
    const auto groups = groupByContent(records);
    std::vector<std::string> duplicates;
    std::unordered_set<std::string_view> listed;
    for (const CQuoteRecord& keeper : records) {
        if (listed.contains(keeper.mUID))
            continue;
        for (std::size_t index : groups.at(keeper.mContent)) {
            const CQuoteRecord& other = records[index];
            if (other.mUID != keeper.mUID) {
                duplicates.push_back(other.mUID);
                listed.insert(other.mUID);
            }
        }
    }
    return duplicates;
}

void QBQuoteEditHelper::checkForDuplicateQuotesWithUndoManager(QBUndoManager* undoManager)
{
    if (!hasDuplicateQuotes())
        return;
    const QBYesNoQuestion& question = installedQuestion();
    if (!question) {
        logWarningMessage("Duplicate quotes found, but no way to ask the user is installed");
        return;
    }
    QPointer<QBUndoManager> guardedUndoManager(undoManager);
    question(
        //% "Duplicates Detected"
        qtTrId("DuplicatesDetectedTitle"),
        //% "Your collection contains duplicate quotes. Do you want to remove them?"
        qtTrId("CollectionContainsDuplicatesAskRemove"), kDuplicatesAlertStyle,
        [guardedUndoManager] { removeDuplicateQuotesWithUndoManager(guardedUndoManager); }, [] {});
}

void QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(QBUndoManager* undoManager)
{
    const std::vector<std::string> duplicates = duplicateQuoteUIDs();
    if (duplicates.empty())
        return;

    const QBQuotesChangeBatch batch;
    if (undoManager != nullptr)
        undoManager->beginUndoGrouping();
    logInfo("Processing %d duplicates", static_cast<int>(duplicates.size()));
    removeQuotes(duplicates, undoManager);
    //% "Remove Duplicates"
    nameUndoStep(undoManager, qtTrId("UndoNameRemoveDuplicates"));
    if (undoManager != nullptr)
        undoManager->endUndoGrouping();
    //% "Removed %n duplicate(s)"
    QBCommandResults::reportUndoable(
        qtTrId("DuplicatesRemovedResult", static_cast<int>(duplicates.size())), undoManager);
}

void QBQuoteEditHelper::removeQuote(const QString& uid, QBUndoManager* undoManager, bool notify)
{
    auto& repository = CQuotesRepository::getInstance();
    const std::string key = uid.toStdString();
    // One scan for both the record and its index: removing duplicates calls this
    // for every one of them.
    const std::uint32_t index = repository.indexOfQuote(key);
    if (index >= repository.mQuotes.size()) {
        logQuoteNotFound(uid);
        return;
    }
    std::make_shared<QBRemoveQuoteAction>(undoManager, repository.mQuotes[index], index)
        ->registerUndo();
    //% "Remove Quote"
    nameUndoStep(undoManager, qtTrId("UndoNameRemoveQuote"));
    if (notify)
        postForQuote(QBQuoteWillRemoveNotification, uid);
    repository.removeQuote(key);
    if (notify && !uid.isNull()) {
        postForQuote(QBQuoteRemovedNotification, uid);
        QBTelemetryHelper::shared().trackQuoteRemoved();
    }
}

void QBQuoteEditHelper::removeQuotes(const std::vector<std::string>& uids,
                                     QBUndoManager* undoManager)
{
    // As removeQuote() for each UID in turn (the same undo steps with the same indices,
    // the same notifications), but the records go in one pass at the end instead of
    // one search and one shift of the whole collection per quote.
    auto& records = CQuotesRepository::getInstance().mQuotes;
    // Where each UID stands, every occurrence in order (the repository removes them all).
    std::unordered_map<std::string_view, std::vector<std::size_t>> positions;
    positions.reserve(uids.size());
    for (const std::string& uid : uids)
        positions.emplace(uid, std::vector<std::size_t>());
    for (std::size_t index = 0; index < records.size(); ++index) {
        const auto found = positions.find(records[index].mUID);
        if (found != positions.end())
            found->second.push_back(index);
    }

    RemovedBelowCounter removedBelow(records.size());
    std::vector<bool> removed(records.size(), false);
    std::vector<QString> removedUIDs;
    removedUIDs.reserve(uids.size());
    for (const std::string& uid : uids) {
        std::vector<std::size_t>& occurrences = positions.at(uid);
        if (occurrences.empty()) { // not stored, or removed by an earlier entry
            logQuoteNotFound(QString::fromStdString(uid));
            continue;
        }
        const std::size_t index = occurrences.front();
        const auto currentIndex =
            static_cast<std::uint32_t>(index - removedBelow.countBelow(index));
        std::make_shared<QBRemoveQuoteAction>(undoManager, records[index], currentIndex)
            ->registerUndo();
        removedUIDs.push_back(QString::fromStdString(uid));
        postForQuote(QBQuoteWillRemoveNotification, removedUIDs.back());
        for (const std::size_t occurrence : std::exchange(occurrences, {})) {
            removed[occurrence] = true;
            removedBelow.mark(occurrence);
        }
    }
    std::size_t kept = 0;
    for (std::size_t index = 0; index < records.size(); ++index) {
        if (removed[index])
            continue;
        if (kept != index)
            records[kept] = std::move(records[index]);
        ++kept;
    }
    records.resize(kept);
    for (const QString& uid : removedUIDs) {
        postForQuote(QBQuoteRemovedNotification, uid);
        QBTelemetryHelper::shared().trackQuoteRemoved();
    }
}

void QBQuoteEditHelper::removeAllQuotesWithUndoManager(QBUndoManager* undoManager)
{
    auto& repository = CQuotesRepository::getInstance();
    std::make_shared<QBRemoveAllQuotesAction>(undoManager, repository.mQuotes)->registerUndo();
    //% "Remove All"
    nameUndoStep(undoManager, qtTrId("UndoNameRemoveAll"));
    repository.removeAllQuotes();
    QBNotificationCenter::defaultCenter().post(QBQuotesModifiedNotification, notificationSender());
}
