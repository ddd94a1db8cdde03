#include "model/Actions.h"
#include "model/Notifications.h"
#include "model/QuotesSource.h"

#include "ModelTestFixture.h"

namespace {

class QuoteEditOperationsTest : public ModelTest
{
protected:
    QuoteEditOperationsTest()
    {
        mTracker.observeNotification(QString(), [this](const QBNotification& notification) {
            if (notification.name.startsWith(QStringLiteral("QBQuote")) &&
                notification.name != QBQuotesChangeBatchDidEndNotification)
                posted << notification.name;
        });
    }

    // Undo, then check memory and file; the same for redo.
    void undoExpecting(const QStringList& contents)
    {
        mUndoManager.undo();
        EXPECT_EQ(memoryContents(), contents);
        EXPECT_EQ(fileContents(), contents);
    }
    void redoExpecting(const QStringList& contents)
    {
        mUndoManager.redo();
        EXPECT_EQ(memoryContents(), contents);
        EXPECT_EQ(fileContents(), contents);
    }

    QBNotificationObserverTracker mTracker;
    QStringList posted;
};

// The editor's part of an edit, as the quotes editor does it: a confirmed edit that
// arrives as QBQuoteShouldUpdateNotification is committed with the window's undo manager.
class ConfirmingEditor
{
public:
    explicit ConfirmingEditor(QBUndoManager& undoManager)
    {
        mTracker.observeNotification(
            QBQuoteShouldUpdateNotification,
            [this, &undoManager](const QBNotification& notification) {
                if (!editIsConfirmed)
                    return;
                editIsConfirmed = false;
                QBQuoteEditHelper::updateQuote(
                    notification.userInfo.value(QBKeyQuoteUID).toString(),
                    notification.userInfo.value(QBKeyStringContent).toString(), &undoManager);
            });
    }
    bool editIsConfirmed = false;

private:
    QBNotificationObserverTracker mTracker;
};

TEST_F(QuoteEditOperationsTest, TheRoadOfOneEdit)
{
    const auto uids = seed({QStringLiteral("Before")});
    QBQuotesSource source;
    ConfirmingEditor editor(mUndoManager);
    const auto quote = source.quotes().front();

    editor.editIsConfirmed = true;
    quote->setContent(QStringLiteral("After"));
    // Committed, saved and undoable before setContent returns.
    EXPECT_EQ(fileContents(), QStringList{QStringLiteral("After")});
    EXPECT_EQ(takeSaveCount(), 1);
    EXPECT_TRUE(mUndoManager.canUndo());
    EXPECT_EQ(posted, (QStringList{QBQuoteShouldUpdateNotification, QBQuoteDidUpdateNotification}));
    endOfEvent();

    undoExpecting({QStringLiteral("Before")});
    EXPECT_EQ(quote->content(), QStringLiteral("Before")); // the list and editor follow
    EXPECT_EQ(takeSaveCount(), 1);
    redoExpecting({QStringLiteral("After")});
    EXPECT_EQ(quote->content(), QStringLiteral("After"));
    undoExpecting({QStringLiteral("Before")});
    EXPECT_EQ(repository().mQuotes.front().mUID, uids[0]);
}

TEST_F(QuoteEditOperationsTest, AddUndoRedoUndo)
{
    seed({QStringLiteral("kept")});
    QBQuoteEditHelper::addQuoteWithUndoManager(&mUndoManager);
    const std::string added = repository().mQuotes.back().mUID;
    EXPECT_EQ(fileContents(), (QStringList{QStringLiteral("kept"), QString()}));
    EXPECT_EQ(posted, QStringList{QBQuoteAddedNotification});
    endOfEvent();

    posted.clear();
    undoExpecting({QStringLiteral("kept")});
    EXPECT_EQ(posted, (QStringList{QBQuoteWillRemoveNotification, QBQuoteRemovedNotification}));
    redoExpecting({QStringLiteral("kept"), QString()});
    EXPECT_EQ(repository().mQuotes.back().mUID, added);
    undoExpecting({QStringLiteral("kept")});
}

TEST_F(QuoteEditOperationsTest, RemoveUndoRedoUndoRestoresTheIndex)
{
    const auto uids = seed({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    QBQuoteEditHelper::removeQuote(uidText(uids[1]), &mUndoManager, true);
    EXPECT_EQ(fileContents(), (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
    EXPECT_EQ(posted, (QStringList{QBQuoteWillRemoveNotification, QBQuoteRemovedNotification}));
    endOfEvent();

    undoExpecting({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    EXPECT_EQ(memoryUIDs(), uids);
    redoExpecting({QStringLiteral("a"), QStringLiteral("c")});
    undoExpecting({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});

    // Silently: undoable, but nothing posted and so nothing saved until the caller posts.
    posted.clear();
    takeSaveCount();
    QBQuoteEditHelper::removeQuote(uidText(uids[0]), &mUndoManager, false);
    EXPECT_TRUE(posted.isEmpty());
    EXPECT_EQ(takeSaveCount(), 0);
    endOfEvent();
    mUndoManager.undo();
    EXPECT_EQ(memoryUIDs(), uids);
}

TEST_F(QuoteEditOperationsTest, EditUndoRedoUndo)
{
    const auto uids = seed({QStringLiteral("A")});
    QBQuoteEditHelper::updateQuote(uidText(uids[0]), QStringLiteral("B"), &mUndoManager);
    EXPECT_EQ(fileContents(), QStringList{QStringLiteral("B")});
    endOfEvent();
    undoExpecting({QStringLiteral("A")});
    redoExpecting({QStringLiteral("B")});
    undoExpecting({QStringLiteral("A")});
}

TEST_F(QuoteEditOperationsTest, RemoveAllUndoRedoUndo)
{
    const QStringList five{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                           QStringLiteral("4"), QStringLiteral("5")};
    const auto uids = seed(five);
    QBQuoteEditHelper::removeAllQuotesWithUndoManager(&mUndoManager);
    EXPECT_EQ(fileContents(), QStringList());
    EXPECT_EQ(takeSaveCount(), 1);
    endOfEvent();

    undoExpecting(five);
    EXPECT_EQ(memoryUIDs(), uids);
    redoExpecting({});
    undoExpecting(five);
}

TEST_F(QuoteEditOperationsTest, AddAllActionUndoRedoUndo)
{
    const auto uids = seed({QStringLiteral("x"), QStringLiteral("y")});
    std::make_shared<QBAddAllQuotesAction>(&mUndoManager, repository().mQuotes)->registerUndo();
    endOfEvent();
    undoExpecting({});
    redoExpecting({QStringLiteral("x"), QStringLiteral("y")});
    EXPECT_EQ(memoryUIDs(), uids);
    undoExpecting({});
}

TEST_F(QuoteEditOperationsTest, TextTypedIntoANewQuoteIsUndoneWithTheAdd)
{
    seed({QStringLiteral("kept")});
    QBQuoteEditHelper::addQuoteWithUndoManager(&mUndoManager);
    endOfEvent();
    const QString added = uidText(repository().mQuotes.back().mUID);
    QBQuoteEditHelper::updateQuote(added, QStringLiteral("first words"), &mUndoManager);
    EXPECT_FALSE(mUndoManager.canRedo());
    EXPECT_EQ(fileContents(), (QStringList{QStringLiteral("kept"), QStringLiteral("first words")}));
    endOfEvent();

    undoExpecting({QStringLiteral("kept")});
    EXPECT_FALSE(mUndoManager.canUndo());
    redoExpecting({QStringLiteral("kept"), QStringLiteral("first words")});
}

TEST_F(QuoteEditOperationsTest, UnknownUIDsAreLoggedAndChangeNothing)
{
    seed({QStringLiteral("a")});
    QBQuoteEditHelper::updateQuote(QStringLiteral("nope"), QStringLiteral("x"), &mUndoManager);
    QBQuoteEditHelper::removeQuote(QStringLiteral("gone"), &mUndoManager, true);
    EXPECT_EQ(loggedWarnings(),
              (std::vector<std::string>{"Quote <nope> not found", "Quote <gone> not found"}));
    EXPECT_FALSE(mUndoManager.canUndo());
    EXPECT_TRUE(posted.isEmpty());
    EXPECT_EQ(memoryContents(), QStringList{QStringLiteral("a")});
}

TEST_F(QuoteEditOperationsTest, WithoutAnUndoManagerTheChangeIsMadeButNotUndoable)
{
    const auto uids = seed({QStringLiteral("a")});
    QBQuoteEditHelper::updateQuote(uidText(uids[0]), QStringLiteral("b"), nullptr);
    EXPECT_EQ(fileContents(), QStringList{QStringLiteral("b")});
    EXPECT_EQ(loggedWarnings(), std::vector<std::string>{
                                    "Invalid undo manager reference @ initWithUndoManager:name:"});
}

TEST_F(QuoteEditOperationsTest, ImportSkipsBlanksAndPostsTheCount)
{
    QList<int> counts;
    mTracker.observeNotification(QBQuotesImportedNotification, [&](const QBNotification& note) {
        counts << note.userInfo.value(QBKeyImportedQuotesCount).toInt();
    });
    QBQuoteEditHelper::addQuotesFromStringArray(
        {QStringLiteral("  "), QStringLiteral("x"), QStringLiteral("\n")});
    QBQuoteEditHelper::addQuotesFromStringArray({});
    EXPECT_EQ(counts, (QList<int>{1, 0}));
    EXPECT_EQ(fileContents(), QStringList{QStringLiteral("x")});
    EXPECT_EQ(takeSaveCount(), 2);
    EXPECT_FALSE(mUndoManager.canUndo());
}

TEST_F(QuoteEditOperationsTest, ImportClearsTrailingEmptyLinesOnlyWhenSet)
{
    const QStringList input{QStringLiteral("x\n\n"), QStringLiteral("  lead")};
    QBQuoteEditHelper::addQuotesFromStringArray(input);
    QBUserDefaults::standardUserDefaults().setObject(
        true, QStringLiteral("QBDefaultsClearTrailingEmptyLines"));
    QBQuoteEditHelper::addQuotesFromStringArray(input);
    EXPECT_EQ(memoryContents(), (QStringList{QStringLiteral("x\n\n"), QStringLiteral("  lead"),
                                             QStringLiteral("x"), QStringLiteral("  lead")}));
}

TEST_F(QuoteEditOperationsTest, DuplicatesAreByteEqualTextsOfDifferentUIDs)
{
    seed({QStringLiteral("Quote"), QStringLiteral("quote"), QStringLiteral("Quote ")});
    EXPECT_FALSE(QBQuoteEditHelper::hasDuplicateQuotes());
    // The same record twice (same UID) is not a duplicate pair either.
    repository().insertQuote(repository().mQuotes.front(), -1);
    EXPECT_FALSE(QBQuoteEditHelper::hasDuplicateQuotes());
    seed({QStringLiteral("quote")});
    EXPECT_TRUE(QBQuoteEditHelper::hasDuplicateQuotes());
}

TEST_F(QuoteEditOperationsTest, DuplicateRemovalKeepsTheFirstAndUndoesInOneStep)
{
    const auto uids = seed({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("A"),
                            QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
    EXPECT_EQ(QBQuoteEditHelper::duplicateQuoteUIDs(),
              (std::vector<std::string>{uids[2], uids[3], uids[4]}));

    QStringList removedOrder;
    mTracker.observeNotification(QBQuoteRemovedNotification, [&](const QBNotification& note) {
        removedOrder << note.userInfo.value(QBKeyQuoteUID).toString();
    });
    QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(&mUndoManager);
    const QStringList deduplicated{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")};
    EXPECT_EQ(fileContents(), deduplicated);
    EXPECT_EQ(takeSaveCount(), 1); // one save for the whole command
    EXPECT_EQ(removedOrder, (QStringList{uidText(uids[2]), uidText(uids[3]), uidText(uids[4])}));
    endOfEvent();

    undoExpecting({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("A"),
                   QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
    EXPECT_EQ(memoryUIDs(), uids); // each back at its own index
    EXPECT_EQ(takeSaveCount(), 1);
    EXPECT_FALSE(mUndoManager.canUndo());
    redoExpecting(deduplicated);
    EXPECT_EQ(takeSaveCount(), 1);
    undoExpecting({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("A"),
                   QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});

    // Nothing to remove: no group, no log line, no save.
    QBQuoteEditHelper::removeQuote(uidText(uids[2]), nullptr, false);
    repository().mQuotes.clear();
    takeSaveCount();
    QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(&mUndoManager);
    EXPECT_EQ(takeSaveCount(), 0);
}

TEST_F(QuoteEditOperationsTest, DuplicateCheckAsksAndRemovesOnlyOnYes)
{
    seed({QStringLiteral("same"), QStringLiteral("other"), QStringLiteral("same")});
    int questions = 0;
    bool answerYes = false;
    QBQuoteEditHelper::setYesNoQuestion([&](const QString& title, const QString& message, int style,
                                            std::function<void()> onYes,
                                            std::function<void()> onNo) {
        ++questions;
        EXPECT_EQ(title, QStringLiteral("DuplicatesDetectedTitle")); // no translation loaded
        EXPECT_EQ(message, QStringLiteral("CollectionContainsDuplicatesAskRemove"));
        EXPECT_EQ(style, 1);
        answerYes ? onYes() : onNo();
    });

    QBQuoteEditHelper::checkForDuplicateQuotesWithUndoManager(&mUndoManager);
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(memoryContents().size(), 3);

    answerYes = true;
    QBQuoteEditHelper::checkForDuplicateQuotesWithUndoManager(&mUndoManager);
    EXPECT_EQ(questions, 2);
    EXPECT_EQ(fileContents(), (QStringList{QStringLiteral("same"), QStringLiteral("other")}));
    endOfEvent();
    EXPECT_TRUE(mUndoManager.canUndo());

    QBQuoteEditHelper::checkForDuplicateQuotesWithUndoManager(&mUndoManager);
    EXPECT_EQ(questions, 2); // no duplicates left: no question
}

} // namespace
