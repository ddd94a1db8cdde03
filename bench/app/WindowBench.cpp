// The quotes window at the scale of a large import (100,000 quotes; 10,000 for
// comparison), with a real list view on the offscreen platform: selecting a quote,
// one confirmed edit with its save, removing 1,000 duplicates and its undo, and the
// list following a key typed into the filter field.
#include "app/EditorAreaViewController.h"
#include "app/QuotesEditorViewController.h"
#include "app/QuotesWindowController.h"
#include "core/Bundle.h"
#include "core/QuotesRepository.h"
#include "i18n/Translations.h"
#include "logging/Log.h"
#include "model/QuoteEditHelper.h"
#include "model/QuotesAutoSaver.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTextEdit>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace {

constexpr int kDuplicates = 1000;

// Signature-length quotes with a few words that the filter benchmark types.
std::string quoteText(int number)
{
    static const char* const kWords[] = {"time", "love", "truth", "river", "light", "winter"};
    return "Quote number " + std::to_string(number) + ": the " + kWords[number % 6] +
           " of a life is measured by what it gives, said someone once, and wrote it down "
           "for the rest of us.";
}

// The application as it runs: the collection in a file, the auto-saver, the window's
// undo manager and the window itself, shown.
class WindowSetup
{
public:
    explicit WindowSetup(int quotes, bool duplicates = false)
    {
        auto& repository = CQuotesRepository::getInstance();
        repository.mFilePath = mFolder.filePath(QStringLiteral("quotes.db")).toStdString();
        fill(quotes, duplicates);
        mUndoManager.setGroupsByEvent(false);
        mWindow = std::make_unique<QBQuotesWindowController>(&mUndoManager);
        mWindow->resize(960, 620);
        mWindow->show();
        QApplication::processEvents();
    }
    ~WindowSetup()
    {
        mWindow.reset();
        CQuotesRepository::getInstance().removeAllQuotes();
    }

    // |quotes| records; with |duplicates| the last kDuplicates repeat earlier texts.
    static void fill(int quotes, bool duplicates)
    {
        auto& repository = CQuotesRepository::getInstance();
        repository.removeAllQuotes();
        repository.mQuotes.reserve(std::size_t(quotes));
        for (int number = 0; number < quotes; ++number) {
            const bool repeat = duplicates && number >= quotes - kDuplicates;
            repository.addNewQuote()->mContent = quoteText(repeat ? number % 500 : number);
        }
    }
    void select(int row) const
    {
        mWindow->quotesListView()->selectionModel()->setCurrentIndex(
            mWindow->quotesArrayController().index(row), QItemSelectionModel::ClearAndSelect);
    }
    QBQuotesEditorViewController* editor() const
    {
        return mWindow->editorAreaViewController()->quotesEditorViewController();
    }

    QTemporaryDir mFolder;
    QBQuotesAutoSaver mAutoSaver;
    QBUndoManager mUndoManager;
    std::unique_ptr<QBQuotesWindowController> mWindow;
};

void BM_SelectQuote(benchmark::State& state)
{
    WindowSetup setup(int(state.range(0)));
    int row = 0;
    for (auto _ : state) {
        row = (row + 7919) % int(state.range(0));
        setup.select(row);
        QApplication::processEvents(); // the editor and the list repaint
    }
    if (setup.editor()->quoteTextView()->toPlainText().isEmpty())
        state.SkipWithError("the editor shows no text");
}
BENCHMARK(BM_SelectQuote)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ConfirmedEdit(benchmark::State& state)
{
    WindowSetup setup(int(state.range(0)));
    setup.select(int(state.range(0)) / 2);
    int number = 0;
    for (auto _ : state) {
        // What typing and the confirm command do: the text changes, then it is confirmed.
        setup.editor()->quoteTextView()->setPlainText(
            QStringLiteral("Edited quote %1").arg(++number));
        setup.editor()->forceOk();
        QApplication::processEvents();
    }
    if (CQuotesRepository::getInstance().mQuotes[std::size_t(state.range(0) / 2)].mContent !=
        "Edited quote " + std::to_string(number))
        state.SkipWithError("the edit was not stored");
}
BENCHMARK(BM_ConfirmedEdit)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_RemoveDuplicatesAndUndo(benchmark::State& state)
{
    const bool undo = state.range(1) != 0;
    for (auto _ : state) {
        state.PauseTiming();
        {
            WindowSetup setup(int(state.range(0)), true);
            if (undo)
                QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(&setup.mUndoManager);
            state.ResumeTiming();
            if (undo)
                setup.mUndoManager.undo();
            else
                QBQuoteEditHelper::removeDuplicateQuotesWithUndoManager(&setup.mUndoManager);
            QApplication::processEvents();
            state.PauseTiming();
            const auto expected = std::size_t(state.range(0) - (undo ? 0 : kDuplicates));
            if (CQuotesRepository::getInstance().mQuotes.size() != expected ||
                setup.mWindow->quotesArrayController().rowCount() != int(expected))
                state.SkipWithError("wrong number of quotes");
        }
        state.ResumeTiming();
    }
}
BENCHMARK(BM_RemoveDuplicatesAndUndo)
    ->ArgNames({"quotes", "undo"})
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Args({100000, 0})
    ->Args({100000, 1})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

void BM_FilterKeystroke(benchmark::State& state)
{
    WindowSetup setup(int(state.range(0)));
    auto* field = setup.mWindow->findChild<QLineEdit*>(QStringLiteral("filterField"));
    const QString typed = QStringLiteral("winter li");
    int length = 0;
    for (auto _ : state) {
        // One key: the text grows by a letter, or starts again after the last one.
        length = length % typed.size() + 1;
        field->setText(typed.left(length));
        QApplication::processEvents();
    }
}
BENCHMARK(BM_FilterKeystroke)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    // Settings and logs of the run stay in a folder of their own.
    QTemporaryDir home;
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        ::setenv(variable, home.path().toLocal8Bit().constData(), 1);
    QApplication application(argc, argv);
    qblog::setLogLevel(qblog::Level::Warning);
    QBUserDefaults::resetStandardUserDefaults();
    QBBundle::setMainBundleResourcePath(QB_BUILD_SHARE_DIR);
    installTranslations();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
