// The quotes list's model: Qt's model checker watches it through filtering, removals and
// rebuilds, and the filter's word matching is checked case by case.
#include "model/QuotesListModel.h"
#include "core/QuotesRepository.h"
#include "model/Notifications.h"
#include "model/QuoteFilter.h"
#include "model/QuotesSource.h"
#include "util/NotificationCenter.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class QuotesListModelTest : public ::testing::Test
{
protected:
    QuotesListModelTest()
    {
        CQuotesRepository& repository = CQuotesRepository::getInstance();
        repository.removeAllQuotes();
        for (const char* text : {"Le cœur a ses raisons", "Café au lait", "Carpe diem",
                                 "Être ou ne pas être", "CAFE society", "tea\nand cake"})
            repository.addNewQuote()->mContent = text;
        mSource.rebuildQuotesArray();
    }
    ~QuotesListModelTest() override { CQuotesRepository::getInstance().removeAllQuotes(); }

    QStringList shown() const
    {
        QStringList lines;
        for (int row = 0; row < mModel.rowCount(); ++row)
            lines << mModel.data(mModel.index(row)).toString();
        return lines;
    }
    QBQuoteValueObject* object(int sourceIndex) { return mSource.valueObjectAt(sourceIndex).get(); }
    // The quote at |sourceIndex| gets |text| as an edit would store it.
    void update(int sourceIndex, const char* text)
    {
        CQuotesRepository::getInstance().mQuotes[std::size_t(sourceIndex)].mContent = text;
        QBNotificationCenter::defaultCenter().post(
            QBQuoteDidUpdateNotification, nullptr,
            {{QBKeyQuoteUID, object(sourceIndex)->quoteUID()}});
    }

    QBQuotesSource mSource;
    QBQuotesListModel mModel{&mSource};
    QAbstractItemModelTester mTester{&mModel,
                                     QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST(QuoteFilterTest, EveryWordMustAppearIgnoringCaseAndAccents)
{
    const auto matches = [](const char* filter, const char* text) {
        return QBQuoteFilter(QString::fromUtf8(filter))
            .matches(QBQuoteFilter::fold(QString::fromUtf8(text)));
    };
    EXPECT_TRUE(matches("cafe", "Café au lait"));
    EXPECT_TRUE(matches("CAFÉ", "cafe"));
    EXPECT_TRUE(matches("etre pas", "Être ou ne pas être"));
    EXPECT_TRUE(matches("  pas\tetre ", "Être ou ne pas être")); // any whitespace separates
    EXPECT_FALSE(matches("etre toujours", "Être ou ne pas être"));
    EXPECT_TRUE(matches("strasse coeur", "Straße; cœur")); // letters spelled out
    EXPECT_TRUE(matches("", "anything"));
    EXPECT_TRUE(
        QBQuoteFilter(QStringLiteral("ca")).isNarrowedBy(QBQuoteFilter(QStringLiteral("cafe x"))));
    EXPECT_FALSE(
        QBQuoteFilter(QStringLiteral("cafe")).isNarrowedBy(QBQuoteFilter(QStringLiteral("ca"))));
}

TEST_F(QuotesListModelTest, RowsShowEditsAndTheFilterNarrowsAndWidens)
{
    EXPECT_EQ(shown(),
              QStringList({QStringLiteral("Le cœur a ses raisons"), QStringLiteral("Café au lait"),
                           QStringLiteral("Carpe diem"), QStringLiteral("Être ou ne pas être"),
                           QStringLiteral("CAFE society"), QStringLiteral("tea / and cake")}));
    EXPECT_EQ(mModel.data(mModel.index(5), Qt::ToolTipRole), QStringLiteral("tea\nand cake"));
    EXPECT_EQ(mModel.data(mModel.index(1), QBQuotesListModel::QuoteUIDRole), object(1)->quoteUID());

    mModel.setFilterText(QStringLiteral("ca"));
    EXPECT_EQ(mModel.rowCount(), 4);
    mModel.setFilterText(QStringLiteral("caf")); // narrowed from the rows shown
    EXPECT_EQ(shown(),
              QStringList({QStringLiteral("Café au lait"), QStringLiteral("CAFE society")}));
    EXPECT_EQ(mModel.rowOfObject(object(4)), 1);
    EXPECT_EQ(mModel.rowOfObject(object(0)), -1);
    EXPECT_EQ(mModel.objectAtRow(1).get(), object(4));
    EXPECT_EQ(mModel.objectAtRow(2), nullptr);

    // A hidden quote edited to match shows when the filter next runs.
    update(2, "Carpe café");
    mModel.setFilterText(QStringLiteral("cafe"));
    EXPECT_EQ(mModel.rowCount(), 3);
    mModel.setFilterText(QString());
    EXPECT_EQ(mModel.rowCount(), 6);
}

TEST_F(QuotesListModelTest, RemovalKeepsOtherRowsAndPersistentIndicesWithAndWithoutFilter)
{
    const QPersistentModelIndex last(mModel.index(5));
    const QPersistentModelIndex doomed(mModel.index(1));
    mModel.removeQuotesWithUIDs({object(1)->quoteUID(), object(3)->quoteUID()});
    EXPECT_EQ(mModel.rowCount(), 4);
    EXPECT_FALSE(doomed.isValid());
    EXPECT_EQ(last.row(), 3);
    EXPECT_EQ(mSource.valueObjectForQuoteUID(mModel.objectAtRow(3)->quoteUID()).get(),
              mModel.objectAtRow(3).get());

    mModel.setFilterText(QStringLiteral("c"));
    ASSERT_EQ(shown(),
              QStringList({QStringLiteral("Le cœur a ses raisons"), QStringLiteral("Carpe diem"),
                           QStringLiteral("CAFE society"), QStringLiteral("tea / and cake")}));
    const QPersistentModelIndex cake(mModel.index(3));
    const QString removedUID = mModel.objectAtRow(1)->quoteUID();
    mModel.removeQuotesWithUIDs({removedUID});
    EXPECT_EQ(cake.row(), 2);
    EXPECT_EQ(mSource.count(), 3);
    EXPECT_EQ(mSource.valueObjectForQuoteUID(removedUID), nullptr);
    mModel.setFilterText(QStringLiteral("cake"));
    EXPECT_EQ(mModel.rowCount(), 1);

    // A rebuild keeps the filter on the fresh objects.
    mSource.rebuildQuotesArray();
    EXPECT_EQ(shown(), QStringList({QStringLiteral("tea / and cake")}));
}

TEST_F(QuotesListModelTest, QuotesTooLongAreMarkedAndCanBeTheOnlyRowsWithTheFilter)
{
    // "Too long" here: more than ten characters.
    mModel.setSignatureFitTest([](const QString& content) { return content.size() <= 10; });
    const auto tooLong = [this](int row) {
        return mModel.data(mModel.index(row), QBQuotesListModel::TooLongForSignatureRole).toBool();
    };
    EXPECT_TRUE(tooLong(0));  // Le cœur a ses raisons
    EXPECT_FALSE(tooLong(2)); // Carpe diem
    EXPECT_TRUE(mModel.data(mModel.index(0), Qt::ToolTipRole).toString().contains(u"\n\n"));

    mModel.setShowsOnlyTooLong(true);
    EXPECT_EQ(shown(),
              (QStringList{u"Le cœur a ses raisons"_s, u"Café au lait"_s, u"Être ou ne pas être"_s,
                           u"CAFE society"_s, u"tea / and cake"_s}));
    mModel.setFilterText(u"cafe"_s);
    EXPECT_EQ(shown(), (QStringList{u"Café au lait"_s, u"CAFE society"_s}));
    update(1, "Café"); // now it fits: it stays until the rows are arranged again
    mModel.setSignatureFitTest([](const QString& content) { return content.size() <= 10; });
    EXPECT_EQ(shown(), QStringList{u"CAFE society"_s});
    mModel.setShowsOnlyTooLong(false);
    EXPECT_EQ(shown(), (QStringList{u"Café"_s, u"CAFE society"_s}));
    mModel.setSignatureFitTest({}); // no limit: nothing is too long
    EXPECT_FALSE(tooLong(1));
}

} // namespace
