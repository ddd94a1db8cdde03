#include "TelemetryTestSupport.h"
#include "TestHome.h"

#include "telemetry/ReservedNames.h"
#include "telemetry/SessionManager.h"
#include "telemetry/SignalManager.h"
#include "telemetry/TelemetryHashing.h"
#include "telemetry/TelemetryManager.h"
#include "util/UserDefaults.h"

#include <QRegularExpression>
#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace {
using Level = LogHandler::LogLevel;
const QString kAppID = QStringLiteral("11111111-2222-3333-4444-555555555555");

class TelemetryManagerTest : public ::testing::Test
{
protected:
    TelemetryManagerTest()
    {
        qunsetenv("XCODE_RUNNING_FOR_PREVIEWS");
        configuration.logHandler = log.handler();
        // Tests that are not about sessions keep the client's own signals out of the way.
        configuration.sessionStatsEnabled = false;
        configuration.sendNewSessionBeganSignal = false;
    }
    ~TelemetryManagerTest() override { qunsetenv("XCODE_RUNNING_FOR_PREVIEWS"); }

    std::unique_ptr<TelemetryManager> makeManager()
    {
        TelemetryEnvironment environment;
        environment.clock = clock;
        environment.sendInterval = std::chrono::hours(1);
        return std::make_unique<TelemetryManager>(configuration, environment);
    }

    QList<QJsonObject> sentRecords(TelemetryManager& manager)
    {
        return drainToServer(*manager.signalManager(), server);
    }

    QBTestHome home;
    LogRecorder log;
    LocalHttpServer server;
    std::shared_ptr<ManualClock> clock =
        std::make_shared<ManualClock>(QDateTime(QDate(2026, 5, 6), QTime(12, 0), QTimeZone::utc()));
    TelemetryManagerConfiguration configuration{kAppID, std::nullopt, server.baseURL()};
};

// Holds the record-building thread inside an enricher until the test lets it go.
class BlockingEnricher : public SignalEnricher
{
public:
    TelemetryParameters enrich(const QString&, const QString&, std::optional<double>) override
    {
        thread = QThread::currentThread();
        entered.release();
        mayLeave.tryAcquire(1, 5000);
        return {};
    }
    QSemaphore entered;
    QSemaphore mayLeave;
    QThread* thread = nullptr;
};

class FixedEnricher : public SignalEnricher
{
public:
    TelemetryParameters enrich(const QString& type, const QString&, std::optional<double>) override
    {
        return {{QStringLiteral("p.shared"), QStringLiteral("enricher")},
                {QStringLiteral("fromEnricher"), type}};
    }
};
} // namespace

TEST_F(TelemetryManagerTest, PreviewRulesDropOrPassSignals)
{
    struct Case
    {
        std::optional<bool> previewMode;
        const char* environmentValue; // null: variable unset
        bool sent;
    };
    const Case cases[] = {
        {std::nullopt, nullptr, true}, {std::nullopt, "1", false},
        {std::nullopt, "0", true},     {false, "1", true},
        {true, nullptr, false},
    };
    for (const Case& c : cases) {
        if (c.environmentValue) {
            qputenv("XCODE_RUNNING_FOR_PREVIEWS", c.environmentValue);
        } else {
            qunsetenv("XCODE_RUNNING_FOR_PREVIEWS");
        }
        configuration._swiftUIPreviewMode = c.previewMode;
        auto manager = makeManager();
        const qsizetype before = server.requests().size();
        manager->sendSignal(QStringLiteral("Quote.Added"));
        sentRecords(*manager);
        EXPECT_EQ(server.requests().size() - before, c.sent ? 1 : 0)
            << "preview " << (c.previewMode ? int(*c.previewMode) : -1) << " env "
            << (c.environmentValue ? c.environmentValue : "unset");
    }
}

TEST_F(TelemetryManagerTest, ReservedNamesAreWarnedAboutAndStillSent)
{
    configuration.sendNewSessionBeganSignal = true; // the client's own signal is never warned about
    EXPECT_EQ(qbreservednames::reservedNames().size(), 25);
    auto manager = makeManager();
    manager->sendSignal(QStringLiteral("TallyHub.Custom"),
                        {{QStringLiteral("Platform"), QStringLiteral("x")},
                         {QStringLiteral("fine"), QStringLiteral("y")}});
    EXPECT_EQ(typesOf(sentRecords(*manager)),
              (textList({"Tallyhub.Session.started", "TallyHub.Custom"})));
    EXPECT_EQ(
        log.messages(Level::error),
        (QStringList{QStringLiteral("Sending signal with reserved prefix 'Tallyhub.' will cause "
                                    "unexpected behavior. Please use another prefix instead."),
                     QStringLiteral("Sending parameter with reserved key 'Platform' will cause "
                                    "unexpected behavior. Please use another key instead.")}));

    log.clear();
    manager->updateConfiguration([](TelemetryManagerConfiguration& configuration) {
        configuration.reservedParameterWarningsEnabled = false;
    });
    manager->sendSignal(QStringLiteral("type"), {{QStringLiteral("locale"), QStringLiteral("x")}});
    EXPECT_EQ(typesOf(sentRecords(*manager)).last(), QStringLiteral("type"));
    EXPECT_TRUE(log.messages(Level::error).isEmpty());
}

TEST_F(TelemetryManagerTest, PrefixesAndTheFourParameterSourcesMergeInOrder)
{
    configuration.defaultSignalPrefix = QStringLiteral("App.");
    configuration.defaultParameterPrefix = QStringLiteral("p.");
    configuration._testMode = true;
    configuration.defaultParameters = [] {
        return TelemetryParameters{
            {QStringLiteral("p.shared"), QStringLiteral("defaults")},
            {QStringLiteral("fromDefaults"), QStringLiteral("1")},
            {QStringLiteral("Tallyhub.Device.platform"), QStringLiteral("custom")}};
    };
    configuration.metadataEnrichers.push_back(std::make_shared<FixedEnricher>());
    auto manager = makeManager();
    manager->sendSignal(QStringLiteral("Thing"),
                        {{QStringLiteral("shared"), QStringLiteral("request")},
                         {QStringLiteral("Tallyhub.Keep"), QStringLiteral("k")}});
    const QList<QJsonObject> records = sentRecords(*manager);
    ASSERT_EQ(records.size(), 1);
    EXPECT_EQ(records[0].value(QStringLiteral("type")).toString(), QStringLiteral("App.Thing"));
    EXPECT_EQ(records[0].value(QStringLiteral("isTestMode")).toString(), QStringLiteral("true"));
    const QJsonObject payload = records[0].value(QStringLiteral("payload")).toObject();
    const std::pair<const char*, const char*> expected[] = {
        {"p.shared", "request"},
        {"fromDefaults", "1"},
        {"fromEnricher", "App.Thing"},
        {"Tallyhub.Keep", "k"},
        {"Tallyhub.Device.platform", "custom"},
        {"Tallyhub.RunContext.targetEnvironment", "native"},
    };
    for (const auto& [key, value] : expected) {
        EXPECT_EQ(payload.value(QString::fromUtf8(key)).toString(), QString::fromUtf8(value))
            << key;
    }
    EXPECT_FALSE(payload.contains(QStringLiteral("shared")));
    EXPECT_FALSE(payload.contains(QStringLiteral("p.Tallyhub.Keep")));
}

TEST_F(TelemetryManagerTest, EveryDefaultPayloadParameterIsAttached)
{
    auto manager = makeManager();
    manager->setDisplayEnvironment({1080, 1920, 2.0, QStringLiteral("Dark"), true, false});
    manager->sendSignal(QStringLiteral("Quote.Added"));
    const QList<QJsonObject> records = sentRecords(*manager);
    ASSERT_EQ(records.size(), 1);
    const QJsonObject payload = records[0].value(QStringLiteral("payload")).toObject();
    // 3 application, 12 device, 7 run-context, 3 client, 4 preference, 8 calendar and 2
    // accessibility names; the session figures come on top.
    const QStringList defaults =
        QStringList(payload.keys())
            .filter(QRegularExpression(QStringLiteral("^Tallyhub\\.(?!Retention|Acquisition)")));
    EXPECT_EQ(defaults.size(), 39) << defaults.join(u' ').toStdString();
    const std::pair<const char*, const char*> expected[] = {
        {"Device.operatingSystem", "Linux"},
        {"Device.orientation", "Portrait"},
        {"Device.screenScaleFactor", "2"},
        {"UserPreference.colorScheme", "Dark"},
        {"Accessibility.isReduceMotionEnabled", "true"},
        {"Calendar.monthOfYear", "5"},
        {"Calendar.quarterOfYear", "2"}};
    for (const auto& [name, value] : expected) {
        EXPECT_EQ(payload.value(QStringLiteral("Tallyhub.") + QString::fromUtf8(name)).toString(),
                  QString::fromUtf8(value))
            << name;
    }
}

TEST_F(TelemetryManagerTest, UserIdentifierPrecedenceAndItsPersistedDefault)
{
    configuration.salt = QStringLiteral("pepper");
    QString persisted;
    {
        auto manager = makeManager();
        manager->sendSignal(QStringLiteral("A"));
        manager->sendSignal(QStringLiteral("B"), {}, std::nullopt, QStringLiteral("custom"));
        manager->updateConfiguration([](TelemetryManagerConfiguration& configuration) {
            configuration.defaultUser = QStringLiteral("chosen");
        });
        manager->sendSignal(QStringLiteral("C"));
        manager->sendSignal(QStringLiteral("D"), {}, std::nullopt, QStringLiteral("custom"));
        const QList<QJsonObject> records = sentRecords(*manager);
        ASSERT_EQ(records.size(), 4);
        QBUserDefaults suite(TelemetryManager::suiteFilePath(kAppID));
        persisted = suite.stringForKey(QStringLiteral("defaultUserIdentifier"));
        ASSERT_FALSE(persisted.isEmpty());
        const QString expected[] = {persisted, QStringLiteral("custom"), QStringLiteral("chosen"),
                                    QStringLiteral("custom")};
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(records[i].value(QStringLiteral("clientUser")).toString(),
                      qbtelemetryhash::sha256Hex(expected[i], QStringLiteral("pepper")))
                << i;
        }
    }
    EXPECT_TRUE(TelemetryManager::suiteFilePath(kAppID).startsWith(
        qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/com.tallyhub.")));
    auto restarted = makeManager();
    restarted->sendSignal(QStringLiteral("E"));
    EXPECT_EQ(sentRecords(*restarted).last().value(QStringLiteral("clientUser")).toString(),
              qbtelemetryhash::sha256Hex(persisted, QStringLiteral("pepper")));
}

TEST_F(TelemetryManagerTest, ImmediateSyncRunsAtMostOncePerTenSeconds)
{
    auto manager = makeManager();
    SignalManager& signals_ = *manager->signalManager();
    const std::pair<qint64, int> steps[] = {{0, 1}, {10, 1}, {1, 2}, {5, 2}, {6, 3}};
    for (const auto& [secondsLater, expectedPosts] : steps) {
        clock->advance(secondsLater);
        signals_.signalCache().push(makeRecord(expectedPosts));
        manager->requestImmediateSync();
        ASSERT_TRUE(
            QTest::qWaitFor([&signals_] { return signals_.batchesInFlight() == 0; }, 10000));
        EXPECT_EQ(server.requests().size(), expectedPosts) << "after +" << secondsLater << " s";
    }
}

TEST_F(TelemetryManagerTest, BackgroundStayOfMoreThanThreeHundredSecondsStartsANewSession)
{
    configuration.sessionStatsEnabled = true;
    configuration.sendNewSessionBeganSignal = true;
    auto manager = makeManager();
    const QUuid firstSession = manager->configuration().sessionID;

    manager->applicationDidEnterBackground();
    clock->advance(299);
    manager->applicationWillEnterForeground();
    EXPECT_EQ(manager->configuration().sessionID, firstSession);

    manager->applicationDidEnterBackground();
    clock->advance(301);
    manager->applicationWillEnterForeground();
    EXPECT_NE(manager->configuration().sessionID, firstSession);
    EXPECT_EQ(typesOf(sentRecords(*manager)).count(QStringLiteral("Tallyhub.Session.started")), 2);
}

TEST_F(TelemetryManagerTest, TheCallerNeverWaitsForRecordBuilding)
{
    auto enricher = std::make_shared<BlockingEnricher>();
    configuration.metadataEnrichers.push_back(enricher);
    auto manager = makeManager();
    manager->sendSignal(QStringLiteral("Quote.Added"));
    // The call has returned while the record is still being built elsewhere.
    ASSERT_TRUE(enricher->entered.tryAcquire(1, 5000));
    EXPECT_NE(enricher->thread, QThread::currentThread());
    EXPECT_EQ(manager->signalManager()->signalCache().count(), 0);
    enricher->mayLeave.release();
    manager->signalManager()->waitForPendingSignals();
    EXPECT_EQ(manager->signalManager()->signalCache().count(), 1);
}

namespace {
// Stands in for a GUI application object: the same signals, by name.
class FakeApplication : public QObject
{
    Q_OBJECT
signals:
    void applicationStateChanged(Qt::ApplicationState state);
    void aboutToQuit();
};
} // namespace

TEST_F(TelemetryManagerTest, ApplicationSignalsDriveBackgroundForegroundAndTermination)
{
    configuration.sessionStatsEnabled = true;
    configuration.apiBaseURL = refusingURL(); // nothing leaves, so everything is saved at exit
    auto manager = makeManager();
    FakeApplication application;
    manager->connectToApplication(&application);
    const QUuid firstSession = manager->configuration().sessionID;

    emit application.applicationStateChanged(Qt::ApplicationInactive);
    emit application.applicationStateChanged(Qt::ApplicationActive); // start-up activation
    emit application.applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_FALSE(manager->sessionManager()->isTicking());
    clock->advance(400);
    emit application.applicationStateChanged(Qt::ApplicationActive);
    EXPECT_TRUE(manager->sessionManager()->isTicking());
    EXPECT_NE(manager->configuration().sessionID, firstSession);

    manager->sendSignal(QStringLiteral("Quote.Added"));
    emit application.aboutToQuit();
    const std::optional<QList<SignalPostBody>> saved = SignalPostBody::decodeList(
        readFileBytes(qEnvironmentVariable("XDG_CACHE_HOME") +
                      QStringLiteral("/org.quillbox2.Quillbox2/telemetrysignalcache")));
    ASSERT_TRUE(saved.has_value());
    QStringList savedTypes;
    for (const SignalPostBody& record : *saved) {
        savedTypes.append(record.type);
    }
    EXPECT_TRUE(savedTypes.contains(QStringLiteral("Quote.Added")))
        << savedTypes.join(u' ').toStdString();
}

#include "TelemetryManagerTest.moc"
