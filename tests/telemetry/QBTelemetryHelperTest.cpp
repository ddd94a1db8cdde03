#include "TelemetryTestSupport.h"

#include "core/QuotesRepository.h"
#include "model/QuoteEditHelper.h"
#include "telemetry/QBTelemetryHelper.h"
#include "telemetry/SignalManager.h"
#include "telemetry/TelemetryManager.h"
#include "util/UndoManager.h"

#include <QDir>

namespace {
class QBTelemetryHelperTest : public ::testing::Test
{
protected:
    // The records the server received since the last call.
    QList<QJsonObject> newRecords()
    {
        const QList<QJsonObject> all =
            drainToServer(*TelemetryManager::shared()->signalManager(), server);
        const QList<QJsonObject> records = all.mid(mRecordsSeen);
        mRecordsSeen = all.size();
        return records;
    }

    qsizetype mRecordsSeen = 0;
    QBTestHome home;
    LocalHttpServer server;
    QBTelemetryHelper& helper = QBTelemetryHelper::shared();
};
} // namespace

TEST_F(QBTelemetryHelperTest, WithoutAnEndpointUsageSignalsAreOffAndNothingIsWritten)
{
    helper.configureWithAppID(kAppID, QUrl());
    helper.trackQuoteAdded();
    ASSERT_NE(TelemetryManager::shared(), nullptr);
    EXPECT_EQ(TelemetryManager::shared()->signalManager(), nullptr);
    TelemetryManager::shared()->appWillTerminate();

    for (const char* variable : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
        EXPECT_TRUE(
            QDir(qEnvironmentVariable(variable)).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot))
            << variable;
    }
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(QBTelemetryHelperTest, TheEditOperationsSendOneSignalPerUserCommand)
{
    auto& repository = CQuotesRepository::getInstance();
    repository.removeAllQuotes();
    repository.mFilePath = home.stdPath(u"quotes.db"_s);
    helper.configureWithAppID(kAppID, server.baseURL());
    newRecords(); // the client's own start-up signals are not ours
    QBUndoManager undoManager;

    QStringList twenty;
    for (int i = 0; i < 20; ++i) {
        twenty << u"Quote %1"_s.arg(i % 17); // three of them repeat
    }
    QBQuoteEditHelper::addQuotesFromStringArray(twenty);
    EXPECT_EQ(valuesOf(newRecords()), QStringList{u"Quote.Added"_s});

    QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(&undoManager);
    EXPECT_EQ(valuesOf(newRecords()), QStringList(3, u"Quote.Removed"_s));

    const QString last = QString::fromStdString(repository.mQuotes.back().mUID);
    QBQuoteEditHelper::removeQuote(last, &undoManager, false);
    QBQuoteEditHelper::removeQuote(u"no-such-quote"_s, &undoManager, true);
    QBQuoteEditHelper::removeAllQuotesWithUndoManager(&undoManager);
    undoManager.undo(); // undo sends nothing either
    EXPECT_TRUE(newRecords().isEmpty());
    EXPECT_FALSE(repository.mQuotes.empty());

    QBQuoteEditHelper::addQuoteWithUndoManager(&undoManager);
    EXPECT_EQ(valuesOf(newRecords()), QStringList{u"Quote.Added"_s});

    repository.removeAllQuotes();
    repository.mFilePath.clear();
}
