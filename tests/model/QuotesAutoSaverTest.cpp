#include "model/Notifications.h"
#include "model/QuotesChangeBatch.h"

#include "ModelTestFixture.h"

#include <QFile>

namespace {

using QuotesAutoSaverTest = ModelTest;

TEST_F(QuotesAutoSaverTest, OnlyChangeNotificationsSave)
{
    seed({QStringLiteral("q")});
    auto& center = QBNotificationCenter::defaultCenter();
    for (const QString& name :
         {QBQuoteSelectedNotification, QBQuoteShouldUpdateNotification,
          QBQuoteWillRemoveNotification, QBCheckForDuplicateQuotesNotification,
          QBQuoteDoubleClickedNotification, QBWriteCurrentQuoteNotification,
          QBSwitchToSettingsNotification})
        center.post(name);
    EXPECT_EQ(takeSaveCount(), 0);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(repository().mFilePath)));

    for (const QString& name :
         {QBQuoteDidUpdateNotification, QBQuoteAddedNotification, QBQuoteRemovedNotification,
          QBQuotesModifiedNotification, QBQuotesImportedNotification})
        center.post(name);
    EXPECT_EQ(takeSaveCount(), 5);
    EXPECT_EQ(fileContents(), QStringList{QStringLiteral("q")});
}

TEST_F(QuotesAutoSaverTest, NestedBatchesSaveOnceAtTheOutermostEnd)
{
    auto& center = QBNotificationCenter::defaultCenter();
    {
        const QBQuotesChangeBatch outer;
        center.post(QBQuoteAddedNotification);
        {
            const QBQuotesChangeBatch inner;
            center.post(QBQuoteRemovedNotification);
        }
        seed({QStringLiteral("late")});
        EXPECT_EQ(takeSaveCount(), 0);
    }
    EXPECT_EQ(takeSaveCount(), 1);
    EXPECT_EQ(fileContents(), QStringList{QStringLiteral("late")});

    { // a batch without changes writes nothing
        const QBQuotesChangeBatch empty;
    }
    EXPECT_EQ(takeSaveCount(), 0);
}

TEST_F(QuotesAutoSaverTest, UndoOfAGroupSavesOnce)
{
    const auto uids = seed({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    for (const auto& uid : uids)
        QBQuoteEditHelper::updateQuote(uidText(uid), QStringLiteral("x"), &mUndoManager);
    EXPECT_EQ(takeSaveCount(), 3); // outside a batch: one notification, one save
    endOfEvent();

    mUndoManager.undo();
    EXPECT_EQ(takeSaveCount(), 1);
    EXPECT_EQ(fileContents(),
              (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    mUndoManager.redo();
    EXPECT_EQ(takeSaveCount(), 1);
    EXPECT_EQ(fileContents(),
              (QStringList{QStringLiteral("x"), QStringLiteral("x"), QStringLiteral("x")}));
}

} // namespace
