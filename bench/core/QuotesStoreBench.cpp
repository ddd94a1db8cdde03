// Saving and loading the quotes database, next to plain file I/O of the same bytes.
// Each benchmark reports "plain_ms" (the plain I/O median) and "x_plain" (its own median
// divided by that), so the cost of the JSON layer shows apart from the disk.
#include "core/AtomicFileWriter.h"
#include "core/QuotesDocument.h"
#include "core/QuotesRepository.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kPlainRuns = 7;

// A temporary folder for the benchmark files, removed at exit. It honours TMPDIR so
// the figures can be taken on the file system that holds the real database.
const std::string& benchFolder()
{
    static const struct Folder
    {
        std::string path;
        Folder()
        {
            const char* base = std::getenv("TMPDIR");
            std::string pattern = std::string(base && *base ? base : "/tmp") + "/qb-bench-XXXXXX";
            if (!::mkdtemp(pattern.data())) {
                throw std::runtime_error("cannot create " + pattern);
            }
            path = pattern;
        }
        ~Folder() { std::filesystem::remove_all(path); }
    } folder;
    return folder.path;
}

// Quotes of about 160 bytes (about 270 bytes each in the file, as in a typical collection) with the
// characters that need escaping now and then.
std::vector<CQuoteRecord> makeRecords(int count)
{
    static const std::string kWords[] = {"the",
                                         "quiet",
                                         "river",
                                         "remembers",
                                         "every",
                                         "stone",
                                         "\"mind\"",
                                         "and/or",
                                         "Gr\xc3\xbc\xc3\x9f"
                                         "e",
                                         "sky",
                                         "line\nbreak",
                                         "C:\\path"};
    std::vector<CQuoteRecord> records;
    records.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        std::string content;
        for (std::size_t word = static_cast<std::size_t>(index); content.size() < 155; ++word) {
            content += kWords[(word * 7 + content.size()) % std::size(kWords)];
            content += ' ';
        }
        records.emplace_back(content, "");
    }
    return records;
}

double milliseconds(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double medianOfRuns(int runs, const std::function<void()>& work)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(milliseconds(std::chrono::steady_clock::now() - start));
    }
    return median(times);
}

void checked(bool ok, const char* what)
{
    if (!ok) {
        throw std::runtime_error(what);
    }
}

// Plain I/O with the same durability as a save: write and fsync.
void plainWrite(const std::string& path, const std::string& bytes)
{
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    checked(descriptor >= 0, "open for writing");
    checked(::write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "write");
    checked(::fsync(descriptor) == 0, "fsync");
    ::close(descriptor);
}

std::string plainRead(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    checked(descriptor >= 0, "open for reading");
    std::string bytes(static_cast<std::size_t>(::lseek(descriptor, 0, SEEK_END)), '\0');
    checked(::pread(descriptor, bytes.data(), bytes.size(), 0) ==
                static_cast<ssize_t>(bytes.size()),
            "read");
    ::close(descriptor);
    return bytes;
}

// Runs |work| as the benchmark body and adds its median and the plain I/O comparison.
void runAgainstPlain(benchmark::State& state, const std::function<void()>& work,
                     const std::function<void()>& plain, std::size_t bytes)
{
    std::vector<double> times;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(milliseconds(std::chrono::steady_clock::now() - start));
    }
    const double plainMs = medianOfRuns(kPlainRuns, plain);
    state.counters["median_ms"] = median(times);
    state.counters["plain_ms"] = plainMs;
    state.counters["x_plain"] = median(times) / plainMs;
    state.counters["file_MB"] = static_cast<double>(bytes) / 1e6;
    state.SetBytesProcessed(static_cast<int64_t>(bytes * state.iterations()));
}

void BM_SaveQuotes(benchmark::State& state)
{
    const std::vector<CQuoteRecord> records = makeRecords(static_cast<int>(state.range(0)));
    const std::string path = benchFolder() + "/save.db";
    const std::string plainPath = benchFolder() + "/plain-save.db";
    writeQuotesFile(path, records);
    const std::string bytes = plainRead(path);
    runAgainstPlain(
        state, [&] { writeQuotesFile(path, records); }, [&] { plainWrite(plainPath, bytes); },
        bytes.size());
}

// The same save with the document printed by Boost's writer from a property tree, to
// show what the direct writer saves.
void BM_SaveQuotesThroughPropertyTree(benchmark::State& state)
{
    const std::vector<CQuoteRecord> records = makeRecords(static_cast<int>(state.range(0)));
    const std::string path = benchFolder() + "/save-tree.db";
    const std::string plainPath = benchFolder() + "/plain-save-tree.db";
    writeQuotesFile(path, records);
    const std::string bytes = plainRead(path);
    const auto save = [&] {
        replaceFileAtomically(path, [&records](std::ostream& stream) {
            writeQuotesDocumentWithPropertyTree(stream, records);
        });
    };
    runAgainstPlain(
        state, save, [&] { plainWrite(plainPath, bytes); }, bytes.size());
}

void BM_LoadQuotes(benchmark::State& state)
{
    const std::string path = benchFolder() + "/load.db";
    writeQuotesFile(path, makeRecords(static_cast<int>(state.range(0))));
    const std::size_t size = plainRead(path).size();
    std::vector<CQuoteRecord> records;
    runAgainstPlain(
        state,
        [&] {
            records.clear();
            readQuotesFile(path, records);
            benchmark::DoNotOptimize(records.data());
        },
        [&] { benchmark::DoNotOptimize(plainRead(path)); }, size);
}

} // namespace

BENCHMARK(BM_SaveQuotes)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveQuotesThroughPropertyTree)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadQuotes)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
