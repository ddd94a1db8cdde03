// What the window does after the signature file changed, on a collection of 100,000
// quotes: recognising the quote in the file and marking its row, and a status update
// that finds nothing changed. The one-time indexing of the collection is measured too.
#include "core/QuotesRepository.h"
#include "model/QuotesListModel.h"
#include "model/QuotesSource.h"
#include "model/SignatureState.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/SettingsKeys.h"
#include "util/UserDefaults.h"

#include <QSaveFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr int kQuotes = 100000;

class SignatureSetup
{
public:
    SignatureSetup()
        : mDefaults(mFolder.filePath(QStringLiteral("defaults.conf"))),
          mSignaturePath(mFolder.filePath(QStringLiteral("sig.txt")))
    {
        // The helper's files are looked for here, never in the real home.
        for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
            qputenv(name, mFolder.path().toUtf8());
        auto& repository = CQuotesRepository::getInstance();
        repository.mFilePath = mFolder.filePath(QStringLiteral("quotes.db")).toStdString();
        repository.removeAllQuotes();
        for (int number = 0; number < kQuotes; ++number) {
            repository.addNewQuote()->mContent =
                "Quote number " + std::to_string(number) +
                ": the best way to predict the future is to invent it, said someone once.";
        }
        mSource.rebuildQuotesArray();
        mDefaults.setObject(mSignaturePath, QBDefaultsSignatureOutputPath);
    }
    ~SignatureSetup() { CQuotesRepository::getInstance().removeAllQuotes(); }

    // The helper's way: the file is replaced by a rename.
    void writeQuote(int number) const
    {
        const CQuoteRecord& quote = CQuotesRepository::getInstance().mQuotes[std::size_t(number)];
        QSaveFile file(mSignaturePath);
        file.open(QIODevice::WriteOnly);
        file.write(
            QBCurrentSignatureFileHelper::signatureBytes(QString::fromStdString(quote.mContent)));
        file.commit();
    }
    QString uidOf(int number) const
    {
        return QString::fromStdString(
            CQuotesRepository::getInstance().mQuotes[std::size_t(number)].mUID);
    }

    QTemporaryDir mFolder;
    QBUserDefaults mDefaults;
    QString mSignaturePath;
    QBQuotesSource mSource;
};

void BM_IndexCollectionOnce(benchmark::State& state)
{
    SignatureSetup setup;
    setup.writeQuote(kQuotes / 2);
    for (auto _ : state) {
        QBSignatureState signature(setup.mDefaults);
        signature.refresh(); // indexes the collection and recognises the file
        if (signature.currentQuoteUID() != setup.uidOf(kQuotes / 2))
            state.SkipWithError("the quote in the file was not recognised");
    }
}
BENCHMARK(BM_IndexCollectionOnce)->Unit(benchmark::kMillisecond)->Repetitions(3);

void BM_MarkCurrentSignatureAfterRotation(benchmark::State& state)
{
    SignatureSetup setup;
    QBQuotesListModel list(&setup.mSource);
    QBSignatureState signature(setup.mDefaults);
    QObject::connect(&signature, &QBSignatureState::currentQuoteChanged, &list,
                     &QBQuotesListModel::setCurrentSignatureUID);
    int number = 0;
    for (auto _ : state) {
        state.PauseTiming();
        number = (number + 7919) % kQuotes; // anywhere in the list
        setup.writeQuote(number);
        state.ResumeTiming();
        signature.refresh();
        if (list.currentSignatureUID() != setup.uidOf(number))
            state.SkipWithError("the row was not marked");
    }
}
BENCHMARK(BM_MarkCurrentSignatureAfterRotation)->Unit(benchmark::kMillisecond)->Repetitions(5);

void BM_StatusUpdate(benchmark::State& state)
{
    SignatureSetup setup;
    setup.writeQuote(kQuotes - 1);
    QBSignatureState signature(setup.mDefaults);
    for (auto _ : state)
        signature.refresh();
    if (signature.currentQuoteUID() != setup.uidOf(kQuotes - 1))
        state.SkipWithError("the quote in the file was not recognised");
}
BENCHMARK(BM_StatusUpdate)->Unit(benchmark::kMillisecond)->Repetitions(5);

} // namespace
