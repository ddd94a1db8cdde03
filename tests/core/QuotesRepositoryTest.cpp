#include "core/QuotesRepository.h"
#include "logging/Log.h"

#include "TestHome.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

// A repository of its own for each test; the process-wide one stays untouched.
class TestRepository : public CQuotesRepository
{
public:
    TestRepository() = default;
};

class QuotesRepositoryTest : public ::testing::Test
{
protected:
    QuotesRepositoryTest()
    {
        QDir().mkpath(mFolder);
        mRepository.mFilePath = inFolder(QStringLiteral("quotes.db")).toStdString();
        qblog::clearLogHistory();
    }

    QString inFolder(const QString& name) const { return mFolder + QLatin1Char('/') + name; }
    QString databasePath() const { return QString::fromStdString(mRepository.mFilePath); }

    std::vector<std::string> contents() const
    {
        std::vector<std::string> result;
        for (const CQuoteRecord& record : mRepository.mQuotes) {
            result.push_back(record.mContent);
        }
        return result;
    }

    QBTestHome mHome;
    const QString mFolder = mHome.filePath(QStringLiteral("db"));
    TestRepository mRepository;
};

// Messages logged at |level| since the test began, oldest first.
std::vector<std::string> loggedMessages(qblog::Level level)
{
    std::vector<std::string> messages;
    for (const std::string& line : qblog::recentLogLines(100, level)) {
        messages.insert(messages.begin(), line.substr(line.find("] :  ") + 5));
    }
    return messages;
}

using Messages = std::vector<std::string>;

} // namespace

TEST_F(QuotesRepositoryTest, InsertFollowsTheUnsignedIndexRule)
{
    mRepository.insertQuote(CQuoteRecord("b", "id-b"), 0);
    mRepository.insertQuote(CQuoteRecord("c", "id-c"), -1);
    mRepository.insertQuote(CQuoteRecord("d", "id-d"), 2);
    mRepository.insertQuote(CQuoteRecord("a", "id-a"), 0);
    mRepository.insertQuote(CQuoteRecord("x", ""), 1);
    EXPECT_EQ((std::vector<std::string>{"a", "x", "b", "c", "d"}), contents());
    EXPECT_EQ(36u, mRepository.mQuotes[1].mUID.size());
}

TEST_F(QuotesRepositoryTest, FindIndexAndRemoveMatchIdentifiersExactly)
{
    for (const char* uid : {"one", "two", "one", "ONE"}) {
        mRepository.insertQuote(CQuoteRecord(uid, uid), -1);
    }
    CQuoteRecord* added = mRepository.addNewQuote();
    EXPECT_EQ(mRepository.findQuote(added->mUID), added);
    EXPECT_EQ(4u, mRepository.indexOfQuote(added->mUID));
    EXPECT_EQ(&mRepository.mQuotes[3], mRepository.findQuote("ONE"));
    EXPECT_EQ(nullptr, mRepository.findQuote("on"));
    EXPECT_EQ(5u, mRepository.indexOfQuote("unknown"));

    mRepository.removeQuote("one");
    EXPECT_EQ((std::vector<std::string>{"two", "ONE", ""}), contents());
    mRepository.removeAllQuotes();
    EXPECT_TRUE(mRepository.mQuotes.empty());
}

TEST_F(QuotesRepositoryTest, SaveAndLoadRoundTripAndLog)
{
    mRepository.insertQuote(CQuoteRecord("first", "id-1"), -1);
    mRepository.insertQuote(CQuoteRecord("second", ""), -1);
    const std::string freshUID = mRepository.mQuotes[1].mUID;
    EXPECT_TRUE(mRepository.saveQuotes());
    EXPECT_TRUE(mRepository.loadQuotes());

    EXPECT_EQ((std::vector<std::string>{"first", "second"}), contents());
    EXPECT_EQ(freshUID, mRepository.mQuotes[1].mUID);
    EXPECT_EQ((Messages{"Saving quotes",
                        "2 quotes read from database at '" + mRepository.mFilePath + "'"}),
              loggedMessages(qblog::Level::Info));
    EXPECT_TRUE(loggedMessages(qblog::Level::Warning).empty());
    EXPECT_EQ(QStringList{QStringLiteral("quotes.db")},
              QDir(mFolder).entryList(QDir::Files | QDir::Hidden));
}

TEST_F(QuotesRepositoryTest, EmptyPathSavesNothing)
{
    mRepository.mFilePath.clear();
    mRepository.insertQuote(CQuoteRecord("kept", "id"), -1);
    EXPECT_TRUE(mRepository.saveQuotes());
    EXPECT_EQ(Messages{"Saving quotes"}, loggedMessages(qblog::Level::Info));
    EXPECT_EQ(Messages{"No file path for quotes specified - Cannot save quotes."},
              loggedMessages(qblog::Level::Warning));
    EXPECT_EQ(1u, mRepository.mQuotes.size());
}

TEST_F(QuotesRepositoryTest, DamagedFileIsCopiedAsideAndLeftAlone)
{
    const QByteArray damaged =
        R"({"Quotes": [{"UID": "a", "Content": "1"}, {"UID": "b", "Content": "2"}, {"UID": "c"}]})";
    ASSERT_TRUE(writeFileBytes(databasePath(), damaged));
    mRepository.addNewQuote();

    for (int load = 0; load < 2; ++load) {
        EXPECT_TRUE(mRepository.loadQuotes());
        EXPECT_EQ((std::vector<std::string>{"1", "2"}), contents());
    }
    EXPECT_EQ(damaged, readFileBytes(databasePath()));
    const QStringList copies =
        QDir(mFolder).entryList({QStringLiteral("quotes.db.damaged-*")}, QDir::Files);
    ASSERT_EQ(2, copies.size()); // a second copy never replaces the first
    for (const QString& copy : copies) {
        EXPECT_EQ(damaged, readFileBytes(inFolder(copy)));
    }
    const std::string copyPath = inFolder(copies[0]).toStdString();
    const Messages warnings = loggedMessages(qblog::Level::Warning);
    ASSERT_EQ(4u, warnings.size());
    EXPECT_EQ("Failed to read quotes from disk", warnings[0]);
    EXPECT_EQ("Kept a copy of the damaged quotes database at '" + copyPath + "'", warnings[1]);
    EXPECT_EQ("2 quotes read from database at '" + mRepository.mFilePath + "'",
              loggedMessages(qblog::Level::Info).back());
}

TEST_F(QuotesRepositoryTest, MissingFileLoadsNothingAndCopiesNothing)
{
    EXPECT_TRUE(mRepository.loadQuotes());
    EXPECT_TRUE(mRepository.mQuotes.empty());
    EXPECT_EQ(Messages{"Failed to read quotes from disk"}, loggedMessages(qblog::Level::Warning));
    EXPECT_EQ(Messages{"0 quotes read from database at '" + mRepository.mFilePath + "'"},
              loggedMessages(qblog::Level::Info));
    EXPECT_TRUE(QDir(mFolder).isEmpty());
}
