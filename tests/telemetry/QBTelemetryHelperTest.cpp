#include "TelemetryTestSupport.h"
#include "TestHome.h"

#include "core/QuotesRepository.h"
#include "logging/Log.h"
#include "model/QuoteEditHelper.h"
#include "telemetry/QBTelemetryHelper.h"
#include "telemetry/SignalManager.h"
#include "telemetry/TelemetryManager.h"
#include "util/UndoManager.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {
const QString kAppID = QStringLiteral("5D2A9F10-7B3C-4E81-9A6D-2C4F8B1E0A37");

class QBTelemetryHelperTest : public ::testing::Test
{
protected:
    // The application's records the server received since the last call, without the
    // client's own.
    QList<QJsonObject> applicationRecords()
    {
        const QList<QJsonObject> all =
            drainToServer(*TelemetryManager::shared()->signalManager(), server);
        QList<QJsonObject> records;
        for (const QJsonObject& record : all.mid(mRecordsSeen)) {
            if (!record.value(QStringLiteral("type"))
                     .toString()
                     .startsWith(QStringLiteral("Tallyhub."))) {
                records.append(record);
            }
        }
        mRecordsSeen = all.size();
        return records;
    }

    qsizetype mRecordsSeen = 0;
    QBTestHome home;
    LocalHttpServer server;
    QBTelemetryHelper& helper = QBTelemetryHelper::shared();
};
} // namespace

TEST_F(QBTelemetryHelperTest, EachEventSendsItsOneSignalThroughTheClient)
{
    helper.configureWithAppID(kAppID, server.baseURL());
    helper.trackQuoteAdded();
    for (int duplicate = 0; duplicate < 3; ++duplicate) {
        helper.trackQuoteRemoved();
    }
    helper.trackAppLaunch();
    helper.trackBatchImportWithCount(0);
    helper.trackBatchImportWithCount(-3);
    helper.trackEvent(QStringLiteral("Custom"));
    helper.trackEvent(QStringLiteral("Custom"), {});

    const QList<QJsonObject> records = applicationRecords();
    EXPECT_EQ(typesOf(records), (textList({"Quote.Added", "Quote.Removed", "Quote.Removed",
                                           "Quote.Removed", "App.Launched", "Quotes.BatchImported",
                                           "Quotes.BatchImported", "Custom", "Custom"})));
    ASSERT_EQ(records.size(), 9);
    const auto payloadOf = [&records](int index) {
        return records[index].value(QStringLiteral("payload")).toObject();
    };
    EXPECT_EQ(payloadOf(5).value(QStringLiteral("count")).toString(), QStringLiteral("0"));
    EXPECT_EQ(payloadOf(6).value(QStringLiteral("count")).toString(), QStringLiteral("-3"));
    EXPECT_FALSE(payloadOf(0).contains(QStringLiteral("count")));
    EXPECT_EQ(payloadOf(7).keys(), payloadOf(8).keys());
    EXPECT_EQ(records[0].value(QStringLiteral("appID")).toString(), kAppID);
}

TEST_F(QBTelemetryHelperTest, ConfigurationStartsTheClientsOwnSessionHandling)
{
    helper.configureWithAppID(kAppID, server.baseURL());
    const QStringList types =
        typesOf(drainToServer(*TelemetryManager::shared()->signalManager(), server));
    EXPECT_EQ(types,
              (textList({"Tallyhub.Acquisition.newInstallDetected", "Tallyhub.Session.started"})));
}

TEST_F(QBTelemetryHelperTest, WithoutAnEndpointUsageSignalsAreOffAndNothingIsWritten)
{
    qblog::clearLogHistory();
    helper.configureWithAppID(kAppID, QUrl());
    helper.trackQuoteAdded();
    ASSERT_NE(TelemetryManager::shared(), nullptr);
    EXPECT_EQ(TelemetryManager::shared()->signalManager(), nullptr);
    TelemetryManager::shared()->appWillTerminate();

    const std::vector<std::string> infoLines = qblog::recentLogLines(10, qblog::Level::Info);
    const auto mentionsOff = [](const std::string& line) {
        return line.find("Usage signals are off") != std::string::npos;
    };
    EXPECT_EQ(std::count_if(infoLines.begin(), infoLines.end(), mentionsOff), 1);
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
    repository.mFilePath = home.stdPath(QStringLiteral("quotes.db"));
    helper.configureWithAppID(kAppID, server.baseURL());
    applicationRecords(); // the client's own start-up signals are not ours
    QBUndoManager undoManager;

    QStringList twenty;
    for (int i = 0; i < 20; ++i) {
        twenty << QStringLiteral("Quote %1").arg(i % 17); // three of them repeat
    }
    QBQuoteEditHelper::addQuotesFromStringArray(twenty);
    EXPECT_EQ(typesOf(applicationRecords()), textList({"Quote.Added"}));

    QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(&undoManager);
    EXPECT_EQ(typesOf(applicationRecords()),
              textList({"Quote.Removed", "Quote.Removed", "Quote.Removed"}));

    const QString last = QString::fromStdString(repository.mQuotes.back().mUID);
    QBQuoteEditHelper::removeQuote(last, &undoManager, false);
    QBQuoteEditHelper::removeQuote(QStringLiteral("no-such-quote"), &undoManager, true);
    QBQuoteEditHelper::removeAllQuotesWithUndoManager(&undoManager);
    undoManager.undo(); // undo sends nothing either
    EXPECT_TRUE(applicationRecords().isEmpty());
    EXPECT_FALSE(repository.mQuotes.empty());

    QBQuoteEditHelper::addQuoteWithUndoManager(&undoManager);
    EXPECT_EQ(typesOf(applicationRecords()), textList({"Quote.Added"}));

    repository.removeAllQuotes();
    repository.mFilePath.clear();
}
