// Importing a 10 MB file of 40,000 quotes, from the chosen file to the rebuilt list with
// the one save done: reading and decoding, line ends, separator detection, splitting,
// the quotes added with their undo step, the value objects rebuilt, the file written.
#include "core/QuotesRepository.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/TextFileReader.h"
#include "logging/Log.h"
#include "model/NotificationObserverTracker.h"
#include "model/Notifications.h"
#include "model/QuotesAutoSaver.h"
#include "model/QuotesSource.h"
#include "util/UndoManager.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int kQuotes = 40000;

const char* const kSayings[] = {
    "The best way to predict the future is to invent it, and the second best is to write "
    "it down where you will find it again, next to the other things you meant to do.",
    "Simplicity is prerequisite for reliability; complexity sells better, which is why we "
    "keep drawing boxes and arrows until the whiteboard runs out of room.",
    "Où est la sagesse que nous avons perdue dans la connaissance, et où est la "
    "connaissance que nous avons perdue dans l’information ? On se le demande encore.",
    "Nothing is particularly hard if you divide it into small jobs, said the builder, and "
    "laid the first of the ten thousand bricks that would become a garden wall.",
};

// A quote of two lines, about 250 bytes, different for every |number|.
QString quoteText(int number)
{
    return QStringLiteral(
               "%1 (%2)\n    — Author number %2, in a letter to a friend written on a long "
               "winter evening")
        .arg(QString::fromUtf8(kSayings[number % 4]))
        .arg(number);
}

// The import as the running application has it: database file, auto-saver, the
// window's undo manager and its list rebuilt when quotes arrive.
class ImportSetup
{
public:
    explicit ImportSetup(const QString& separator)
    {
        CQuotesRepository::getInstance().mFilePath =
            mFolder.filePath(QStringLiteral("quotes.db")).toStdString();
        mUndoManager.setGroupsByEvent(false);
        QBQuoteBatchImportHelper::setUndoManager(&mUndoManager);
        mTracker.observeNotification(QBQuotesImportedNotification, [this](const QBNotification&) {
            mSource.rebuildQuotesArray();
        });
        QStringList quotes;
        for (int number = 0; number < kQuotes; ++number)
            quotes << quoteText(number);
        QFile file(path());
        if (file.open(QIODevice::WriteOnly))
            file.write((quotes.join(separator) + QLatin1Char('\n')).toUtf8());
        mFileSize = file.size();
    }
    ~ImportSetup()
    {
        QBQuoteBatchImportHelper::setUndoManager(nullptr);
        CQuotesRepository::getInstance().removeAllQuotes();
    }

    QString path() const { return mFolder.filePath(QStringLiteral("quotes.txt")); }
    void reset()
    {
        CQuotesRepository::getInstance().removeAllQuotes();
        mUndoManager.removeAllActions();
    }
    void report(benchmark::State& state) const
    {
        state.counters["file_MB"] = static_cast<double>(mFileSize) / 1e6;
        state.counters["quotes"] = static_cast<double>(mSource.count());
        if (mSource.count() != kQuotes)
            state.SkipWithError("the import did not add every quote");
    }

private:
    QTemporaryDir mFolder;
    QBQuotesAutoSaver mAutoSaver;
    QBUndoManager mUndoManager;
    QBQuotesSource mSource;
    QBNotificationObserverTracker mTracker;
    qint64 mFileSize = 0;
};

void importEndToEnd(benchmark::State& state, const QString& separator)
{
    ImportSetup setup(separator);
    for (auto _ : state) {
        state.PauseTiming();
        setup.reset();
        state.ResumeTiming();
        QBQuoteBatchImportHelper::importFromFile(setup.path());
    }
    setup.report(state);
}

void BM_ImportPercentSeparatedFile(benchmark::State& state)
{
    importEndToEnd(state, QStringLiteral("\n%\n"));
}
BENCHMARK(BM_ImportPercentSeparatedFile)->Unit(benchmark::kMillisecond)->Repetitions(5);

void BM_ImportBlankLineSeparatedFile(benchmark::State& state)
{
    importEndToEnd(state, QStringLiteral("\n\n"));
}
BENCHMARK(BM_ImportBlankLineSeparatedFile)->Unit(benchmark::kMillisecond)->Repetitions(5);

// The text work alone (no collection, no save), to tell where the time goes.
void BM_ReadDetectAndSplit(benchmark::State& state)
{
    ImportSetup setup(QStringLiteral("\n%\n"));
    qsizetype pieces = 0;
    for (auto _ : state) {
        const QString text = QBQuoteBatchImportHelper::normalizedLineEnds(
            QBTextFileReader::readTextFile(setup.path()).text);
        const QStringList candidates = QBQuoteBatchImportHelper::detectCandidateSeparators(text);
        pieces = QBQuoteBatchImportHelper::splitText(
                     text, QBQuoteBatchImportHelper::separatorForSplitting(candidates.value(0)))
                     .size();
    }
    if (pieces != kQuotes)
        state.SkipWithError("the text was not split into every quote");
}
BENCHMARK(BM_ReadDetectAndSplit)->Unit(benchmark::kMillisecond)->Repetitions(5);

} // namespace

