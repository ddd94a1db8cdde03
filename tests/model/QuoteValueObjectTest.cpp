#include "model/Notifications.h"
#include "model/QuotesSource.h"

#include "ModelTestFixture.h"

#include <QSignalSpy>

namespace {

class QuoteValueObjectTest : public ModelTest
{
protected:
    QuoteValueObjectTest()
    {
        mTracker.observeNotification(QBQuoteShouldUpdateNotification,
                                     [this](const QBNotification& notification) {
                                         requests.push_back(notification.userInfo);
                                         senders.push_back(notification.object);
                                     });
    }

    QBNotificationObserverTracker mTracker;
    std::vector<QVariantMap> requests;
    std::vector<QObject*> senders;
};

TEST_F(QuoteValueObjectTest, SetContentAsksForACommitOnlyOnARealChange)
{
    const auto uids = seed({QStringLiteral("old")});
    QBQuoteValueObject quote(uidText(uids[0]));
    QSignalSpy contentChanged(&quote, &QBQuoteValueObject::contentChanged);
    EXPECT_EQ(quote.content(), QStringLiteral("old"));

    quote.setContent(QStringLiteral("new"));
    quote.setContent(QStringLiteral("new"));
    quote.setProperty("content", QStringLiteral("old")); // as a binding would
    quote.setContent(QString());

    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].value(QBKeyQuoteUID).toString(), uidText(uids[0]));
    EXPECT_EQ(requests[0].value(QBKeyStringContent).toString(), QStringLiteral("new"));
    EXPECT_EQ(requests[1].value(QBKeyStringContent).toString(), QStringLiteral("old"));
    EXPECT_TRUE(requests[2].value(QBKeyStringContent).toString().isEmpty());
    EXPECT_TRUE(requests[2].contains(QBKeyStringContent));
    EXPECT_EQ(senders[0], &quote);
    EXPECT_EQ(contentChanged.count(), 3);
    // The repository is not touched by the value object.
    EXPECT_EQ(memoryContents(), QStringList{QStringLiteral("old")});
}

TEST_F(QuoteValueObjectTest, FollowsUpdatesOfItsOwnRecordOnly)
{
    const auto uids = seed({QStringLiteral("one"), QStringLiteral("two")});
    QBQuoteValueObject first(uidText(uids[0]));
    QBQuoteValueObject second(uidText(uids[1]));

    repository().findQuote(uids[1])->mContent = "zwei";
    QBNotificationCenter::defaultCenter().post(QBQuoteDidUpdateNotification, nullptr,
                                               {{QBKeyQuoteUID, uidText(uids[1])}});
    EXPECT_EQ(first.content(), QStringLiteral("one"));
    EXPECT_EQ(second.content(), QStringLiteral("zwei"));
    EXPECT_EQ(requests.size(), 1u); // the refreshed object tells the editor

    first.setContent(QStringLiteral("edited, not committed"));
    first.resetContent();
    EXPECT_EQ(first.content(), QStringLiteral("one"));

    repository().removeQuote(uids[0]);
    EXPECT_EQ(first.quoteRecord(), nullptr);
    first.resetContent(); // record gone: content stays
    EXPECT_EQ(first.content(), QStringLiteral("one"));
}

TEST_F(QuoteValueObjectTest, SummaryIsTakenOnceAndCutAt511Bytes)
{
    const QString longText(600, QLatin1Char('x'));
    const auto uids = seed({longText});
    const auto quote = QBQuoteValueObject::quoteValueObjectWithQuote(uidText(uids[0]));
    EXPECT_EQ(quote->summaryContent().size(), 511);
    EXPECT_TRUE(quote->summaryContent().startsWith(QStringLiteral("<CQuoteRecord 0x")));
    EXPECT_EQ(quote->content(), longText);

    const QString summary = quote->summaryContent();
    QBQuoteEditHelper::updateQuote(uidText(uids[0]), QStringLiteral("short"), &mUndoManager);
    EXPECT_EQ(quote->content(), QStringLiteral("short"));
    EXPECT_EQ(quote->summaryContent(), summary);
}

TEST_F(QuoteValueObjectTest, SourceMirrorsTheRepositoryInOrder)
{
    QBQuotesSource source;
    EXPECT_TRUE(source.quotes().empty());

    const auto uids = seed({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    QSignalSpy changed(&source, &QBQuotesSource::quotesChanged);
    source.rebuildQuotesArray();
    EXPECT_EQ(changed.count(), 1);
    ASSERT_EQ(source.quotes().size(), 3u);
    for (std::size_t index = 0; index < uids.size(); ++index)
        EXPECT_EQ(source.quotes()[index]->quoteUID(), uidText(uids[index]));
    EXPECT_EQ(source.quotes()[2]->content(), QStringLiteral("c"));

    EXPECT_EQ(source.valueObjectForQuoteUID(uidText(uids[1])), source.quotes()[1]);
    EXPECT_EQ(source.valueObjectForQuoteUID(QStringLiteral("unknown")), nullptr);
}

} // namespace
