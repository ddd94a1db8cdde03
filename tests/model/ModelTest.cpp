#include "core/QuotesRepository.h"
#include "logging/Log.h"
#include "model/NotificationObserverTracker.h"
#include "model/Notifications.h"
#include "model/QuoteEditHelper.h"
#include "model/QuoteValueObject.h"
#include "model/QuotesAutoSaver.h"
#include "model/QuotesChangeBatch.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"

#include "TestHome.h"

#include <QCoreApplication>
#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using H = QBQuoteEditHelper;
using Uids = QStringList;

void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

// "a|b" as a list of texts; "" is the empty list and "a|" ends with an empty text.
QStringList texts(const char* joined)
{
    return *joined ? QString::fromUtf8(joined).split(QLatin1Char('|')) : QStringList();
}

QString qs(const std::string& text)
{
    return QString::fromStdString(text);
}

// The process-wide repository pointed at a database file in a fresh temporary home,
// with an auto-saver and an undo manager, as the running application has them. Every
// quote notification posted is kept in |notes|.
class ModelTest : public ::testing::Test
{
protected:
    ModelTest()
    {
        reset();
        repository().mFilePath = mHome.stdPath(QStringLiteral("quotes.db"));
        mTracker.observeNotification(QString(), [this](const QBNotification& notification) {
            if (notification.name.startsWith(QStringLiteral("QBQuote")) &&
                notification.name != QBQuotesChangeBatchDidEndNotification)
                notes.push_back(notification);
        });
    }
    ~ModelTest() override
    {
        H::setYesNoQuestion({});
        reset();
        repository().mFilePath.clear();
    }
    void reset()
    {
        QBUserDefaults::resetStandardUserDefaults();
        repository().removeAllQuotes();
        mUndoManager.removeAllActions();
        qblog::clearLogHistory();
        notes.clear();
    }

    static CQuotesRepository& repository() { return CQuotesRepository::getInstance(); }

    // Fills the repository directly (no notifications, no undo steps).
    static Uids seed(const char* contents)
    {
        Uids uids;
        for (const QString& content : texts(contents)) {
            CQuoteRecord* record = repository().addNewQuote();
            record->mContent = content.toStdString();
            uids << qs(record->mUID);
        }
        return uids;
    }

    // Names of the notes without "QB" and "Notification".
    QStringList posted() const
    {
        QStringList names;
        for (const QBNotification& note : notes)
            names << note.name.mid(2).chopped(12);
        return names;
    }
    static QStringList column(const std::vector<CQuoteRecord>& records,
                              std::string CQuoteRecord::*field = &CQuoteRecord::mContent)
    {
        QStringList values;
        for (const CQuoteRecord& record : records)
            values << qs(record.*field);
        return values;
    }
    static QStringList memoryContents() { return column(repository().mQuotes); }
    static Uids memoryUIDs() { return column(repository().mQuotes, &CQuoteRecord::mUID); }
    static QStringList fileContents()
    {
        std::vector<CQuoteRecord> records;
        readQuotesFile(repository().mFilePath, records);
        return column(records);
    }

    // "Saving quotes" lines logged since the last call (or the start of the test).
    static int takeSaveCount()
    {
        int saves = 0;
        for (const std::string& line :
             qblog::recentLogLines(qblog::kMaxHistoryLines, qblog::Level::Info))
            saves += line.ends_with("Saving quotes") ? 1 : 0;
        qblog::clearLogHistory();
        return saves;
    }

    // Control goes back to the event loop: the undo manager's automatic group closes.
    static void endOfEvent() { QCoreApplication::processEvents(); }

    // One undo or redo: memory and file hold |expected|, written by exactly one save.
    void step(bool undo, const char* expected)
    {
        SCOPED_TRACE(undo ? "undo" : "redo");
        undo ? mUndoManager.undo() : mUndoManager.redo();
        EXPECT_EQ(memoryContents(), texts(expected));
        EXPECT_EQ(fileContents(), texts(expected));
        EXPECT_EQ(takeSaveCount(), 1);
    }

    QBTestHome mHome;
    QBQuotesAutoSaver mAutoSaver;
    QBUndoManager mUndoManager;
    QBNotificationObserverTracker mTracker;
    std::vector<QBNotification> notes;
};

TEST_F(ModelTest, EveryActionUndoesRedoesAndUndoesAgain)
{
    QBUndoManager* undo = &mUndoManager;
    const struct
    {
        std::function<void(const Uids&)> act;
        const char *before, *after, *posts;
    } cases[] = {
        {[=](const Uids&) { H::addQuoteWithUndoManager(undo); }, "kept", "kept|", "QuoteAdded"},
        {[=](const Uids& u) { H::removeQuote(u[1], undo, true); }, "a|b|c", "a|c",
         "QuoteWillRemove|QuoteRemoved"},
        {[=](const Uids& u) { H::updateQuote(u[0], QStringLiteral("B"), undo); }, "A", "B",
         "QuoteDidUpdate"},
        {[=](const Uids&) { H::removeAllQuotesWithUndoManager(undo); }, "1|2|3|4|5", "",
         "QuotesModified"},
        {[=](const Uids&) { // text typed into a just-added quote goes with the add
             H::addQuoteWithUndoManager(undo);
             endOfEvent();
             H::updateQuote(qs(repository().mQuotes.back().mUID), QStringLiteral("new"), undo);
         },
         "kept", "kept|new", "QuoteAdded|QuoteDidUpdate"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.posts);
        reset();
        const Uids uids = seed(c.before);
        c.act(uids);
        EXPECT_EQ(posted(), texts(c.posts));
        EXPECT_EQ(fileContents(), texts(c.after));
        takeSaveCount();
        const Uids changed = memoryUIDs();
        endOfEvent();

        step(true, c.before);
        EXPECT_EQ(memoryUIDs(), uids); // the same records, each at its old index
        step(false, c.after);
        EXPECT_EQ(memoryUIDs(), changed);
        step(true, c.before);
        EXPECT_FALSE(mUndoManager.canUndo());
    }
}

TEST_F(ModelTest, QuietUnknownAndUnmanagedCalls)
{
    const auto uids = seed("a|b");
    H::updateQuote(QStringLiteral("nope"), QStringLiteral("x"), &mUndoManager);
    H::removeQuote(QStringLiteral("gone"), &mUndoManager, true);
    H::updateQuote(uids[1], QStringLiteral("c"), nullptr);
    EXPECT_EQ(fileContents(), texts("a|c")); // made, but not undoable
    EXPECT_FALSE(mUndoManager.canUndo());
    std::vector<std::string> warnings;
    for (const std::string& line : qblog::recentLogLines(100, qblog::Level::Warning))
        warnings.insert(warnings.begin(), line.substr(line.find("] :  ") + 5));
    EXPECT_EQ(warnings, (std::vector<std::string>{
                            "Quote <nope> not found", "Quote <gone> not found",
                            "Invalid undo manager reference @ initWithUndoManager:name:"}));

    // Quietly: undoable, but nothing posted and so nothing saved until the caller posts.
    notes.clear();
    takeSaveCount();
    H::removeQuote(uids[0], &mUndoManager, false);
    EXPECT_TRUE(notes.empty());
    EXPECT_EQ(takeSaveCount(), 0);
    endOfEvent();
    mUndoManager.undo();
    EXPECT_EQ(memoryUIDs(), uids);
}

TEST_F(ModelTest, ImportSkipsBlanksPostsTheCountAndTrimsOnlyWhenSet)
{
    const QStringList input = texts("  |x\n\n|\n|  lead");
    H::addQuotesFromStringArray(input);
    H::addQuotesFromStringArray({});
    QBUserDefaults::standardUserDefaults().setObject(
        true, QStringLiteral("QBDefaultsClearTrailingEmptyLines"));
    H::addQuotesFromStringArray(input);
    QList<int> counts;
    for (const QBNotification& note : notes)
        counts << note.userInfo.value(QBKeyImportedQuotesCount).toInt();
    EXPECT_EQ(posted(), texts("QuotesImported|QuotesImported|QuotesImported"));
    EXPECT_EQ(counts, (QList<int>{2, 0, 2}));
    EXPECT_EQ(fileContents(), texts("x\n\n|  lead|x|  lead"));
    EXPECT_EQ(takeSaveCount(), 3);
    EXPECT_FALSE(mUndoManager.canUndo());
}

TEST_F(ModelTest, DuplicateRemovalKeepsTheFirstAndUndoesInOneStep)
{
    const auto uids = seed("A|B|A|A|B|C|a|A "); // byte-equal texts only
    EXPECT_EQ(H::duplicateQuoteUIDs(),
              (std::vector{uids[2].toStdString(), uids[3].toStdString(), uids[4].toStdString()}));
    H::removeDuplicateQuotesWithUndoManager(&mUndoManager);
    EXPECT_EQ(fileContents(), texts("A|B|C|a|A "));
    EXPECT_EQ(takeSaveCount(), 1); // one save for the whole command
    EXPECT_EQ(posted().count(QStringLiteral("QuoteRemoved")), 3);
    endOfEvent();

    step(true, "A|B|A|A|B|C|a|A ");
    EXPECT_EQ(memoryUIDs(), uids); // each back at its own index
    EXPECT_FALSE(mUndoManager.canUndo());
    step(false, "A|B|C|a|A ");
    step(true, "A|B|A|A|B|C|a|A ");

    repository().mQuotes.clear(); // nothing to remove: no save
    H::removeDuplicateQuotesWithUndoManager(&mUndoManager);
    EXPECT_EQ(takeSaveCount(), 0);
}

TEST_F(ModelTest, DuplicateCheckAsksAndRemovesOnlyOnYes)
{
    seed("same|other|same");
    int questions = 0;
    bool answerYes = false;
    H::setYesNoQuestion([&](const QString& title, const QString& message, int style,
                            std::function<void()> onYes, std::function<void()> onNo) {
        ++questions;
        EXPECT_EQ(title + message, QStringLiteral("DuplicatesDetectedTitle"
                                                  "CollectionContainsDuplicatesAskRemove"));
        EXPECT_EQ(style, 1);
        answerYes ? onYes() : onNo();
    });
    for (bool yes : {false, true, true}) {
        answerYes = yes;
        H::checkForDuplicateQuotesWithUndoManager(&mUndoManager);
    }
    EXPECT_EQ(questions, 2); // none once no duplicates are left
    EXPECT_EQ(fileContents(), texts("same|other"));
    endOfEvent();
    EXPECT_TRUE(mUndoManager.canUndo());
}

TEST_F(ModelTest, OnlyChangeNotificationsSaveAndBatchesSaveOnceAtTheEnd)
{
    seed("q");
    auto& center = QBNotificationCenter::defaultCenter();
    center.post(QBQuoteSelectedNotification); // not a change
    EXPECT_EQ(takeSaveCount(), 0);
    EXPECT_FALSE(QFile::exists(qs(repository().mFilePath)));
    for (const QString& name :
         {QBQuoteDidUpdateNotification, QBQuoteAddedNotification, QBQuoteRemovedNotification,
          QBQuotesModifiedNotification, QBQuotesImportedNotification})
        center.post(name);
    EXPECT_EQ(takeSaveCount(), 5);

    {
        const QBQuotesChangeBatch outer;
        center.post(QBQuoteAddedNotification);
        {
            const QBQuotesChangeBatch inner;
            center.post(QBQuoteRemovedNotification);
        }
        seed("late");
        EXPECT_EQ(takeSaveCount(), 0);
    }
    EXPECT_EQ(takeSaveCount(), 1);
    EXPECT_EQ(fileContents(), texts("q|late"));
    {
        const QBQuotesChangeBatch empty; // no changes: nothing written
    }
    EXPECT_EQ(takeSaveCount(), 0);
}

TEST_F(ModelTest, ValueObjectAsksForCommitsAndFollowsItsOwnRecord)
{
    const auto uids = seed("old|two");
    QBQuoteValueObject quote(uids[0]);
    QBQuoteValueObject second(uids[1]);
    QSignalSpy contentChanged(&quote, &QBQuoteValueObject::contentChanged);
    quote.setContent(QStringLiteral("new"));
    quote.setContent(QStringLiteral("new"));
    quote.setProperty("content", QStringLiteral("old")); // as a binding would
    quote.setContent(QString());
    QStringList asked;
    for (const QBNotification& note : notes) {
        EXPECT_EQ(note.object, &quote);
        EXPECT_EQ(note.userInfo.value(QBKeyQuoteUID).toString(), uids[0]);
        asked << note.userInfo.value(QBKeyStringContent, QStringLiteral("?")).toString();
    }
    EXPECT_EQ(posted(), texts("QuoteShouldUpdate|QuoteShouldUpdate|QuoteShouldUpdate"));
    EXPECT_EQ(asked, texts("new|old|"));
    EXPECT_EQ(contentChanged.count(), 3);
    EXPECT_EQ(memoryContents(), texts("old|two")); // the repository is not touched
    quote.resetContent();
    EXPECT_EQ(quote.content(), QStringLiteral("old"));

    notes.clear();
    repository().findQuote(uids[1].toStdString())->mContent = "zwei";
    QBNotificationCenter::defaultCenter().post(QBQuoteDidUpdateNotification, nullptr,
                                               {{QBKeyQuoteUID, uids[1]}});
    EXPECT_EQ(quote.content() + second.content(), QStringLiteral("oldzwei"));
    EXPECT_EQ(posted(), texts("QuoteDidUpdate|QuoteShouldUpdate")); // the editor is told
    repository().removeQuote(uids[0].toStdString());
    EXPECT_EQ(quote.quoteRecord(), nullptr);
    quote.setContent(QStringLiteral("edited"));
    quote.resetContent(); // record gone: content stays
    EXPECT_EQ(quote.content(), QStringLiteral("edited"));
}

TEST_F(ModelTest, SummaryIsTakenOnceAndCutAt511Bytes)
{
    const auto uids = seed(std::string(600, 'x').c_str());
    const auto quote = QBQuoteValueObject::quoteValueObjectWithQuote(uids[0]);
    const QString summary = quote->summaryContent();
    EXPECT_EQ(summary.size(), 511);
    EXPECT_TRUE(summary.startsWith(QStringLiteral("<CQuoteRecord 0x")));
    EXPECT_EQ(quote->content(), QString(600, QLatin1Char('x')));
    H::updateQuote(uids[0], QStringLiteral("short"), &mUndoManager);
    EXPECT_EQ(quote->content(), QStringLiteral("short"));
    EXPECT_EQ(quote->summaryContent(), summary);
}

// Counts deliveries; shared so that registrations outliving the test stay harmless.
std::shared_ptr<int> counting(QBNotificationObserverTracker& tracker, const QString& name)
{
    auto count = std::make_shared<int>(0);
    tracker.observeNotification(name, [count](const QBNotification&) { ++*count; });
    return count;
}

TEST(NotificationObserverTrackerTest, RegistrationsEndWithTheTrackerExceptReplacedOnes)
{
    const QString name = QStringLiteral("TrackerTestNotification");
    auto& center = QBNotificationCenter::defaultCenter();
    const std::size_t before = center.observerCount(name);
    std::shared_ptr<int> first, second, everything, removed;
    {
        QBNotificationObserverTracker tracker;
        first = counting(tracker, name);
        second = counting(tracker, name); // replaces the token; the first stays registered
        everything = counting(tracker, QString());
        tracker.observeNotifications({}, [](const QBNotification&) { FAIL(); });
        EXPECT_EQ(tracker.notificationObservers().size(), 2u);
        QBNotificationObserverTracker other;
        removed = counting(other, name);
        other.removeObservers();
        EXPECT_TRUE(other.notificationObservers().empty());
        center.post(name);
    }
    center.post(name);
    EXPECT_EQ((std::vector{*first, *second, *everything, *removed}), (std::vector{2, 1, 1, 0}));
    EXPECT_EQ(center.observerCount(name), before + 1);
}

} // namespace
