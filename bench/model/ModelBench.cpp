// The quote model on a collection of 10,000 quotes: the duplicate check, removing
// 1,000 duplicates and undoing it (notifications, value objects and the save
// included), rebuilding the value objects, and one update reaching 10,000 of them.
#include "core/QuotesRepository.h"
#include "logging/Log.h"
#include "model/Notifications.h"
#include "model/QuoteEditHelper.h"
#include "model/QuotesAutoSaver.h"
#include "model/QuotesSource.h"
#include "util/NotificationCenter.h"
#include "util/UndoManager.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr int kQuotes = 10000;
constexpr int kDuplicates = 1000;

// A quote of typical signature length, different for every |number|.
std::string quoteText(int number)
{
    return "Quote number " + std::to_string(number) +
           ": the best way to predict the future is to invent it, said someone once, "
           "and wrote it down for the rest of us.";
}

// |kQuotes| records; when |duplicates| is set, the last kDuplicates repeat earlier texts.
void fillRepository(bool duplicates)
{
    auto& repository = CQuotesRepository::getInstance();
    repository.removeAllQuotes();
    for (int number = 0; number < kQuotes; ++number) {
        const bool repeat = duplicates && number >= kQuotes - kDuplicates;
        repository.addNewQuote()->mContent = quoteText(repeat ? number % 500 : number);
    }
}

// The model as the running application has it: file, auto-saver, window undo manager
// and the list's value objects.
class ModelSetup
{
public:
    ModelSetup()
    {
        CQuotesRepository::getInstance().mFilePath =
            mFolder.filePath(QStringLiteral("quotes.db")).toStdString();
        mUndoManager.setGroupsByEvent(false);
    }
    ~ModelSetup() { CQuotesRepository::getInstance().removeAllQuotes(); }

    // A collection with duplicates, its list and an empty undo history (untimed).
    void resetWithDuplicates()
    {
        fillRepository(true);
        mSource.rebuildQuotesArray();
        mUndoManager.removeAllActions();
    }

    QTemporaryDir mFolder;
    QBQuotesAutoSaver mAutoSaver;
    QBUndoManager mUndoManager;
    QBQuotesSource mSource;
};

void BM_DuplicateCheckWithoutDuplicates(benchmark::State& state)
{
    ModelSetup setup;
    fillRepository(false);
    for (auto _ : state)
        QBQuoteEditHelper::checkForDuplicateQuotesWithUndoManager(&setup.mUndoManager);
}
BENCHMARK(BM_DuplicateCheckWithoutDuplicates)->Unit(benchmark::kMillisecond)->Repetitions(5);

void BM_RemoveDuplicates(benchmark::State& state)
{
    ModelSetup setup;
    for (auto _ : state) {
        state.PauseTiming();
        setup.resetWithDuplicates();
        state.ResumeTiming();
        QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(&setup.mUndoManager);
    }
    if (CQuotesRepository::getInstance().mQuotes.size() != kQuotes - kDuplicates)
        state.SkipWithError("duplicates were not removed");
}
BENCHMARK(BM_RemoveDuplicates)->Unit(benchmark::kMillisecond)->Repetitions(5);

void BM_UndoRemoveDuplicates(benchmark::State& state)
{
    ModelSetup setup;
    for (auto _ : state) {
        state.PauseTiming();
        setup.resetWithDuplicates();
        QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(&setup.mUndoManager);
        state.ResumeTiming();
        setup.mUndoManager.undo();
    }
    if (CQuotesRepository::getInstance().mQuotes.size() != kQuotes)
        state.SkipWithError("undo did not restore the duplicates");
}
BENCHMARK(BM_UndoRemoveDuplicates)->Unit(benchmark::kMillisecond)->Repetitions(5);

void BM_RebuildQuotesArray(benchmark::State& state)
{
    ModelSetup setup;
    fillRepository(false);
    for (auto _ : state)
        setup.mSource.rebuildQuotesArray();
    state.counters["quotes"] = static_cast<double>(setup.mSource.count());
}
BENCHMARK(BM_RebuildQuotesArray)->Unit(benchmark::kMillisecond)->Repetitions(5);

void BM_PostQuoteDidUpdateToAllValueObjects(benchmark::State& state)
{
    ModelSetup setup;
    fillRepository(false);
    setup.mSource.rebuildQuotesArray();
    const QVariantMap userInfo{
        {QBKeyQuoteUID,
         QString::fromStdString(CQuotesRepository::getInstance().mQuotes[kQuotes / 2].mUID)}};
    // Only the value objects listen here: the auto-saver's save is measured elsewhere.
    setup.mAutoSaver.notificationTracker().removeObservers();
    for (auto _ : state)
        QBNotificationCenter::defaultCenter().post(QBQuoteDidUpdateNotification, nullptr, userInfo);
}
BENCHMARK(BM_PostQuoteDidUpdateToAllValueObjects)->Unit(benchmark::kMicrosecond)->Repetitions(5);

} // namespace

