#include "TelemetryTestSupport.h"

#include "telemetry/SignalManager.h"
#include "telemetry/TelemetryHashing.h"
#include "util/UserDefaults.h"

#include <QFile>
#include <QTest>

#include <thread>

namespace {
using Level = LogHandler::LogLevel;
using TelemetryManagerTest = TelemetryTest;

class FixedEnricher : public SignalEnricher
{
public:
    TelemetryParameters enrich(const QString& type, const QString&, std::optional<double>) override
    {
        return {{u"p.shared"_s, u"enricher"_s}, {u"fromEnricher"_s, type}};
    }
};
} // namespace

TEST_F(TelemetryManagerTest, PreviewRulesAndAnalyticsDisabledDropOrPassSignals)
{
    // Preview mode setting, preview variable (null: unset), disabled after start, sent.
    const std::tuple<std::optional<bool>, const char*, bool, bool> cases[] = {
        {std::nullopt, nullptr, false, true}, {std::nullopt, "1", false, false},
        {std::nullopt, "0", false, true},     {false, "1", false, true},
        {true, nullptr, false, false},        {std::nullopt, nullptr, true, false}};
    for (const auto& [previewMode, variable, disabled, sent] : cases) {
        if (variable) {
            qputenv("XCODE_RUNNING_FOR_PREVIEWS", variable);
        } else {
            qunsetenv("XCODE_RUNNING_FOR_PREVIEWS");
        }
        configuration._swiftUIPreviewMode = previewMode;
        auto manager = makeManager();
        manager->updateConfiguration(
            [&](TelemetryManagerConfiguration& changed) { changed.analyticsDisabled = disabled; });
        const qsizetype before = server.requests().size();
        manager->sendSignal(u"Quote.Added"_s);
        sentRecords(*manager);
        EXPECT_EQ(server.requests().size() - before, sent ? 1 : 0)
            << previewMode.value_or(-1) << (variable ? variable : "unset") << disabled;
    }
}

// The check sees the name the caller chose, not the prefixed type, and ignores case.
TEST_F(TelemetryManagerTest, ReservedNamesAreWarnedAboutWhateverTheirCaseAndStillSent)
{
    configuration.sendNewSessionBeganSignal = true; // the client's own signal is never warned about
    configuration.defaultSignalPrefix = u"App."_s;
    auto manager = makeManager();
    manager->sendSignal(u"TallyHub.Custom"_s, {{u"Platform"_s, u"x"_s}, {u"fine"_s, u"y"_s}});
    manager->sendSignal(u"type"_s);
    EXPECT_EQ(
        valuesOf(sentRecords(*manager)),
        (QStringList{u"App.Tallyhub.Session.started"_s, u"App.TallyHub.Custom"_s, u"App.type"_s}));
    EXPECT_EQ(log.messages(Level::error),
              (QStringList{u"Sending signal with reserved prefix 'Tallyhub.' will cause "
                           "unexpected behavior. Please use another prefix instead."_s,
                           u"Sending parameter with reserved key 'Platform' will cause "
                           "unexpected behavior. Please use another key instead."_s,
                           u"Sending signal with reserved name 'type' will cause unexpected "
                           "behavior. Please use another name instead."_s}));
}

TEST_F(TelemetryManagerTest, PrefixesAndTheParameterSourcesMergeInOrder)
{
    configuration.defaultSignalPrefix = u"App."_s;
    configuration.defaultParameterPrefix = u"p."_s;
    configuration._testMode = true;
    configuration.defaultParameters = [] {
        return TelemetryParameters{{u"p.shared"_s, u"defaults"_s},
                                   {u"fromDefaults"_s, u"1"_s},
                                   {u"Tallyhub.Device.platform"_s, u"custom"_s}};
    };
    configuration.metadataEnrichers.push_back(std::make_shared<FixedEnricher>());
    auto manager = makeManager();
    manager->setDisplayEnvironment({1080, 1920, 2.0, u"Dark"_s, true, false});
    manager->sendSignal(u"Thing"_s, {{u"shared"_s, u"request"_s}, {u"Tallyhub.Keep"_s, u"k"_s}});
    const QList<QJsonObject> records = sentRecords(*manager);
    ASSERT_EQ(records.size(), 1);
    EXPECT_EQ(records[0].value("type"_L1).toString(), u"App.Thing"_s);
    EXPECT_EQ(records[0].value("isTestMode"_L1).toString(), u"true"_s);
    const QJsonObject payload = records[0].value("payload"_L1).toObject();
    const std::pair<const char*, const char*> expected[] = {
        {"p.shared", "request"},
        {"fromDefaults", "1"},
        {"fromEnricher", "App.Thing"},
        {"Tallyhub.Keep", "k"},
        {"Tallyhub.Device.platform", "custom"},
        {"Tallyhub.Device.orientation", "Portrait"},
        {"Tallyhub.Device.screenScaleFactor", "2"},
        {"Tallyhub.UserPreference.colorScheme", "Dark"},
        {"Tallyhub.Accessibility.isReduceMotionEnabled", "true"},
        {"Tallyhub.Calendar.monthOfYear", "5"},
        {"Tallyhub.Calendar.quarterOfYear", "2"}};
    for (const auto& [key, value] : expected) {
        EXPECT_EQ(payload.value(QLatin1StringView(key)).toString(), QString::fromUtf8(value))
            << key;
    }
    EXPECT_FALSE(payload.contains("shared"_L1));
    EXPECT_FALSE(payload.contains("p.Tallyhub.Keep"_L1));
}

TEST_F(TelemetryManagerTest, UserIdentifierPrecedenceAndItsPersistedDefault)
{
    // The salt is appended to the identifier before hashing.
    EXPECT_EQ(qbtelemetryhash::sha256Hex(u"ab"_s, u"c"_s),
              u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"_s);
    configuration.salt = u"pepper"_s;
    auto manager = makeManager();
    manager->sendSignal(u"A"_s);
    manager->sendSignal(u"B"_s, {}, std::nullopt, u"custom"_s);
    manager->updateConfiguration(
        [](TelemetryManagerConfiguration& changed) { changed.defaultUser = u"chosen"_s; });
    manager->sendSignal(u"C"_s);
    manager->sendSignal(u"D"_s, {}, std::nullopt, u"custom"_s);
    const QString persisted = QBUserDefaults(TelemetryManager::suiteFilePath(kAppID))
                                  .stringForKey(u"defaultUserIdentifier"_s);
    ASSERT_FALSE(persisted.isEmpty());
    QStringList expected;
    for (const QString& user : {persisted, u"custom"_s, u"chosen"_s, u"custom"_s, persisted}) {
        expected.append(qbtelemetryhash::sha256Hex(user, u"pepper"_s));
    }
    EXPECT_EQ(valuesOf(sentRecords(*manager), "clientUser"), expected.mid(0, 4));
    manager.reset();
    auto restarted = makeManager();
    restarted->sendSignal(u"E"_s);
    EXPECT_EQ(valuesOf(sentRecords(*restarted), "clientUser"),
              expected); // the same server saw all five
}

// "More than ten seconds" counts milliseconds; other threads hand the request over.
TEST_F(TelemetryManagerTest, ImmediateSyncRunsAtMostOncePerTenSecondsFromAnyThread)
{
    auto manager = makeManager();
    SignalManager& signals_ = *manager->signalManager();
    const std::tuple<double, int, bool> steps[] = {
        {0, 1, true}, {10, 1, false}, {0.5, 2, false}, {5, 2, false}, {5.5, 3, true}};
    for (const auto& [secondsLater, expectedPosts, fromAnotherThread] : steps) {
        clock->advance(secondsLater);
        signals_.signalCache().push(makeRecords(expectedPosts, 1));
        if (fromAnotherThread) {
            std::thread([&manager] { manager->requestImmediateSync(); }).join();
        } else {
            manager->requestImmediateSync();
        }
        QTest::qWait(50);
        ASSERT_TRUE(
            QTest::qWaitFor([&signals_] { return signals_.batchesInFlight() == 0; }, 10000));
        EXPECT_EQ(server.requests().size(), expectedPosts) << "after +" << secondsLater << " s";
    }
}

TEST_F(TelemetryManagerTest, SwitchedOffItDeletesTheCacheAndPostsNothingUntilSwitchedOnAgain)
{
    // A first run ends before it could post its record, which goes to the cache file.
    auto firstRun = makeManager();
    firstRun->sendSignal(u"Unsent"_s);
    firstRun->signalManager()->waitForPendingSignals();
    firstRun->appWillTerminate();
    firstRun.reset();
    ASSERT_TRUE(QFile::exists(cachePath));

    // The next run starts with the switch off: the cached record is deleted unread.
    configuration.analyticsDisabled = true;
    auto manager = makeManager();
    EXPECT_TRUE(QFile::exists(cachePath)); // created off, it touched nothing yet
    manager->setEnabled(false);
    EXPECT_FALSE(QFile::exists(cachePath));
    EXPECT_EQ(manager->signalManager(), nullptr);

    // On again: it sends what is new, and never the deleted record.
    manager->setEnabled(true);
    manager->sendSignal(u"Sent"_s);
    EXPECT_EQ(valuesOf(sentRecords(*manager)), QStringList{u"Sent"_s});

    // Off while records wait: dropped, later signals ignored, no cache at exit.
    manager->sendSignal(u"Waiting"_s);
    manager->signalManager()->waitForPendingSignals();
    const qsizetype posts = server.requests().size();
    manager->setEnabled(false);
    manager->sendSignal(u"Ignored"_s);
    manager->requestImmediateSync();
    manager->appWillTerminate();
    QCoreApplication::processEvents();
    EXPECT_EQ(server.requests().size(), posts);
    EXPECT_FALSE(QFile::exists(cachePath));
    EXPECT_TRUE(manager->configuration().analyticsDisabled);
}
