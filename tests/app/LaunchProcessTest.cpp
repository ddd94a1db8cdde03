// Runs the built quillbox2 executable the way a desktop session does, with HOME and
// XDG_* in a temporary folder, and ends it with the signals sessions and terminals send.
#include "core/QuotesRepository.h"

#include "AppTestSupport.h"
#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <functional>

namespace {

struct AppRun
{
    bool exitedNormally = false;
    int exitCode = -1;
    std::vector<std::string> lines; // standard output
};

// Starts |program|, waits until the launch has dealt with the database, then sends
// |signalNumber| (handled once the event loop runs, i.e. after the window opened).
AppRun runApp(const QString& program, int signalNumber)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.start(program, {});
    AppRun run;
    if (!process.waitForStarted(30000)) {
        return run;
    }
    QByteArray output;
    for (int waited = 0; waited < 60000; waited += 100) {
        process.waitForReadyRead(100);
        output += process.readAllStandardOutput();
        if (output.contains("quotes read from database") ||
            output.contains("no quotes DB after initialization")) {
            break;
        }
    }
    ::kill(static_cast<pid_t>(process.processId()), signalNumber);
    process.waitForFinished(30000);
    output += process.readAllStandardOutput();
    run.exitedNormally = process.exitStatus() == QProcess::NormalExit;
    run.exitCode = process.exitCode();
    run.lines = splitLines(output.toStdString());
    return run;
}

void expectCleanShutdown(const AppRun& run, const char* name)
{
    EXPECT_TRUE(run.exitedNormally) << name;
    EXPECT_EQ(run.exitCode, 0) << name;
    ASSERT_FALSE(run.lines.empty()) << name;
    EXPECT_NE(run.lines.back().find("Shutting down."), std::string::npos)
        << name << ": " << run.lines.back();
}

QString dbPathIn(const QBTestHome& home)
{
    return home.filePath(QStringLiteral("xdg_data_home/group.Q8B2X4K7LM.org.quillbox2/Library/"
                                        "Application Support/quotes.db"));
}

TEST(LaunchProcessTest, FirstLaunchSeedsAndSecondCopiesNothing)
{
    QBTestHome home;
    const QString db = dbPathIn(home);
    std::vector<CQuoteRecord> seed;
    readQuotesFile(QB_SEED_PATH, seed);

    const AppRun first = runApp(QStringLiteral(QB_APP_PATH), SIGTERM);
    expectCleanShutdown(first, "first run");
    const int established = findLine(first.lines, "Logging established (level: debug)");
    const int launched = findLine(first.lines, "Launch of quillbox2 ", established);
    const int loaded = findLine(first.lines,
                                std::to_string(seed.size()) + " quotes read from database at '" +
                                    db.toStdString() + "'",
                                launched);
    EXPECT_GE(established, 0);
    EXPECT_GT(launched, established);
    EXPECT_NE(first.lines[static_cast<size_t>(launched)].find(" completed."), std::string::npos);
    EXPECT_GT(loaded, launched);
    EXPECT_EQ(findLine(first.lines, "[warning]"), -1);
    EXPECT_EQ(readFileBytes(db), readFileBytes(QStringLiteral(QB_SEED_PATH)));
    // The log file holds the same lines.
    const std::vector<std::string> logFile =
        splitLines(readFileBytes(home.filePath(QStringLiteral("xdg_state_home/Logs/quillbox2.log")))
                       .toStdString());
    EXPECT_GE(findLine(logFile, std::to_string(seed.size()) + " quotes read from database"), 0);
    EXPECT_GE(findLine(logFile, "Shutting down."), 0);

    // A database of the user's own is read and left as it is.
    writeQuotesFile(db.toStdString(), {CQuoteRecord("Mine.", "")});
    const QByteArray mine = readFileBytes(db);
    const AppRun second = runApp(QStringLiteral(QB_APP_PATH), SIGINT);
    expectCleanShutdown(second, "second run");
    EXPECT_GE(findLine(second.lines, "1 quotes read from database at '" + db.toStdString()), 0);
    EXPECT_EQ(readFileBytes(db), mine);
}

TEST(LaunchProcessTest, DatabaseFailuresOnlyWarnAndNothingIsOverwritten)
{
    struct Case
    {
        const char* name;
        std::function<QString(QBTestHome&)> prepare; // gives the program to run
        std::vector<std::string> expectedWarnings;
        std::optional<QByteArray> dbBytesAfter; // the database's bytes, when it exists
    };
    const QString app = QStringLiteral(QB_APP_PATH);
    const Case cases[] = {
        {"bundle without the seed",
         [](QBTestHome& home) {
             // The same program in a tree without share/quillbox2.
             const QString copy = home.filePath(QStringLiteral("bare/bin/quillbox2"));
             QDir().mkpath(home.filePath(QStringLiteral("bare/bin")));
             QFile::copy(QStringLiteral(QB_APP_PATH), copy);
             return copy;
         },
         {"Failed to locate sample quotes db in app bundle: (null)",
          "(Still) no quotes DB after initialization found at "},
         std::nullopt},
        {"container cannot be created",
         [app](QBTestHome& home) {
             const QString blocker = home.filePath(QStringLiteral("blocker"));
             writeFileBytes(blocker, "x");
             ::setenv("XDG_DATA_HOME", blocker.toLocal8Bit().constData(), 1);
             return app;
         },
         {"Failed to create folder for application group: ",
          "Failed to copy default quotes db to app support folder: ",
          "(Still) no quotes DB after initialization found at "},
         std::nullopt},
        {"empty quotes.db",
         [app](QBTestHome& home) {
             writeFileBytes(dbPathIn(home), QByteArray());
             return app;
         },
         {"Failed to read quotes from disk"},
         QByteArray()},
        {"damaged quotes.db",
         [app](QBTestHome& home) {
             writeFileBytes(dbPathIn(home), "{\"Quotes\": [ {\"UID\": ");
             return app;
         },
         {"Failed to read quotes from disk"},
         QByteArray("{\"Quotes\": [ {\"UID\": ")},
    };
    for (const Case& c : cases) {
        QBTestHome home;
        const QString program = c.prepare(home);
        const AppRun run = runApp(program, SIGTERM);
        expectCleanShutdown(run, c.name);
        int from = 0;
        for (const std::string& warning : c.expectedWarnings) {
            const int found = findLine(run.lines, warning, from);
            EXPECT_GE(found, from) << c.name << ": " << warning;
            from = std::max(found, from);
        }
        if (c.dbBytesAfter) {
            EXPECT_EQ(readFileBytes(dbPathIn(home)), *c.dbBytesAfter) << c.name;
        } else {
            EXPECT_FALSE(QFile::exists(dbPathIn(home))) << c.name;
        }
    }
}

} // namespace
