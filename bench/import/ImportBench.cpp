// Importing a 10 MB file of 40,000 quotes, from the chosen file to the rebuilt list with
// the one save done: reading and decoding, line ends, separator detection, splitting,
// the quotes added with their undo step, the value objects rebuilt, the file written.
// Then a 2 MB fortune file cut alone, 400 files in one go, and an export.
#include "core/QuotesRepository.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/QuoteExport.h"
#include "import/QuoteFile.h"
#include "logging/Log.h"
#include "model/NotificationObserverTracker.h"
#include "model/Notifications.h"
#include "model/QuotesAutoSaver.h"
#include "model/QuotesSource.h"
#include "util/UndoManager.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
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

// Imports |paths| as the window does and returns once the quotes are in: the files are
// read on the thread pool, the rest follows on this thread's event loop.
void importAndWait(const QStringList& paths)
{
    QBQuoteBatchImportHelper::importFiles(paths);
    while (QBQuoteBatchImportHelper::isReadingFiles())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void importEndToEnd(benchmark::State& state, const QString& separator)
{
    ImportSetup setup(separator);
    for (auto _ : state) {
        state.PauseTiming();
        setup.reset();
        state.ResumeTiming();
        importAndWait({setup.path()});
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

// A fortune file of |bytes| bytes at |path|: quotes of two lines between "%" lines.
QStringList writeFortuneFile(const QString& path, qint64 bytes, int firstNumber = 0)
{
    QStringList quotes;
    qint64 size = 0;
    for (int number = firstNumber; size < bytes; ++number) {
        quotes << quoteText(number);
        size += quotes.last().toUtf8().size() + 3;
    }
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write((quotes.join(QStringLiteral("\n%\n")) + QStringLiteral("\n%\n")).toUtf8());
    return quotes;
}

// Reading, detecting and cutting a 2 MB fortune file (no collection, no save).
void BM_DetectAndSplitFortuneFile(benchmark::State& state)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("quotes"));
    const qsizetype expected = writeFortuneFile(path, 2'000'000).size();
    qsizetype quotes = 0;
    for (auto _ : state) {
        const QBQuoteFile file = QBQuoteFile::load(path);
        quotes = file.quotes(file.analysis.choices.value(0)).size();
    }
    state.counters["quotes"] = static_cast<double>(quotes);
    if (quotes != expected)
        state.SkipWithError("the text was not cut into every quote");
}
BENCHMARK(BM_DetectAndSplitFortuneFile)->Unit(benchmark::kMillisecond)->Repetitions(5);

// 400 fortune files, 10 MB in all, dropped in one go on a collection of 10,000 quotes:
// read, cut, added as one step, the list rebuilt, the file saved.
void BM_ImportFourHundredFilesIntoTenThousandQuotes(benchmark::State& state)
{
    constexpr int kFiles = 400;
    constexpr int kCollection = 10000;
    ImportSetup setup(QStringLiteral("\n%\n"));
    QTemporaryDir folder;
    QStringList paths;
    qsizetype expected = 0;
    for (int index = 0; index < kFiles; ++index) {
        paths << folder.filePath(QStringLiteral("fortune-%1").arg(index));
        expected += writeFortuneFile(paths.last(), 25'000, index * 1000).size();
    }
    for (auto _ : state) {
        state.PauseTiming();
        setup.reset();
        for (int number = 0; number < kCollection; ++number)
            CQuotesRepository::getInstance().addNewQuote()->mContent =
                quoteText(kQuotes + number).toStdString();
        state.ResumeTiming();
        importAndWait(paths);
    }
    const auto total = static_cast<qsizetype>(CQuotesRepository::getInstance().mQuotes.size());
    state.counters["quotes"] = static_cast<double>(total);
    if (total != kCollection + expected)
        state.SkipWithError("the import did not add every quote");
}
BENCHMARK(BM_ImportFourHundredFilesIntoTenThousandQuotes)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3);

// Exporting 100,000 quotes as a fortune file, written atomically.
void BM_ExportHundredThousandQuotes(benchmark::State& state)
{
    std::vector<CQuoteRecord> quotes;
    for (int number = 0; number < 100'000; ++number)
        quotes.emplace_back(quoteText(number).toStdString(), std::string());
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("export.fortune"));
    for (auto _ : state) {
        if (QBQuoteExport::writeExport(path, quotes, QBQuoteExport::Format::Fortune))
            state.SkipWithError("the export failed");
    }
    state.counters["file_MB"] = static_cast<double>(QFileInfo(path).size()) / 1e6;
}
BENCHMARK(BM_ExportHundredThousandQuotes)->Unit(benchmark::kMillisecond)->Repetitions(5);

// What the export does before writing: reading 100,000 quotes back as the import would,
// to count those that would not come back.
void BM_CheckHundredThousandQuotesReadBack(benchmark::State& state)
{
    std::vector<CQuoteRecord> quotes;
    for (int number = 0; number < 100'000; ++number)
        quotes.emplace_back(quoteText(number).toStdString(), std::string());
    for (auto _ : state) {
        if (QBQuoteExport::quotesNotReadingBack(quotes, QBQuoteExport::Format::Fortune) != 0)
            state.SkipWithError("quotes were lost");
    }
}
BENCHMARK(BM_CheckHundredThousandQuotesReadBack)->Unit(benchmark::kMillisecond)->Repetitions(5);

} // namespace
