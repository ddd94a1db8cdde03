#include "core/QuotesRepository.h"
#include "logging/Log.h"
#include "model/NotificationObserverTracker.h"
#include "model/Notifications.h"
#include "model/QuoteEditHelper.h"
#include "model/QuotesAutoSaver.h"
#include "model/QuotesChangeBatch.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"

#include "TestHome.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

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

// The shared repository on a temporary quotes.db with auto-saver and undo; quote notes kept.
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

    repository().mQuotes.clear(); // nothing to remove: no save
    H::removeDuplicateQuotesWithUndoManager(&mUndoManager);
    EXPECT_EQ(takeSaveCount(), 0);
}

TEST_F(ModelTest, NestedBatchesSaveOnceAtTheEndAndEmptyOnesNever)
{
    seed("q");
    auto& center = QBNotificationCenter::defaultCenter();
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

} // namespace
