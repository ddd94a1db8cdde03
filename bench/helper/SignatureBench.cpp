// What --print does for one mail, in process: quotes.db read in place, one step of the
// shared cycle (passing over quotes longer than the limit) and the composed signature.
// The whole process, with its start-up, is timed by helper-bench.sh beside this file.
#include "core/QuoteRecord.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "helper/QuoteSource.h"
#include "logging/Log.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

// Quotes of one to three lines of about 60 characters; one in five has seven lines, so
// the limit of four lines at 72 columns passes over some.
void writeCollection(int count)
{
    std::vector<CQuoteRecord> records;
    records.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        std::string text = "Quote number " + std::to_string(index) + ": ";
        const int lines = index % 5 == 0 ? 7 : 1 + index % 3;
        for (int line = 0; line < lines; ++line) {
            text += "words of some length, with an ümlaut now and then;\n";
        }
        text += "— Someone";
        records.emplace_back(text, std::string());
    }
    const std::string path = QBQuotesDBHelper::getPathToQuotesDb().value();
    QDir().mkpath(QFileInfo(QString::fromStdString(path)).absolutePath());
    writeQuotesFile(path, records);
}

void BM_PrintSignatureWithTemplateAndLimits(benchmark::State& state)
{
    writeCollection(static_cast<int>(state.range(0)));
    QBSharedUserDefaults& suite = QBSharedUserDefaults::sharedInstance();
    suite.setObject(QStringLiteral("Jane Doe · +1 555 0100 · example.org\n{quote}"),
                    QBDefaultsSignatureTemplate);
    suite.setObject(72, QBDefaultsSignatureWrapColumn);
    suite.setObject(4, QBDefaultsSignatureMaxLines);
    suite.suiteUserDefaults().synchronize();
    for (auto _ : state) {
        const QBHelperQuoteSource::Signature signature = QBHelperQuoteSource::nextSignature(
            QBHelperQuoteSource::Access::Mapped, QBHelperQuoteSource::Output::StandardOutput);
        if (signature.bytes.isEmpty()) {
            state.SkipWithError("no signature");
            break;
        }
        benchmark::DoNotOptimize(signature.bytes.data());
    }
}
BENCHMARK(BM_PrintSignatureWithTemplateAndLimits)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    // The collection, the suite and the cycle of the run stay in a folder of their own.
    QTemporaryDir home;
    for (const char* variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"}) {
        ::setenv(variable, home.path().toLocal8Bit().constData(), 1);
    }
    QCoreApplication application(argc, argv);
    qblog::setLogLevel(qblog::Level::Warning);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
