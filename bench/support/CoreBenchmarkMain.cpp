// The main() of the benchmarks that need a Qt event loop object but no window: only
// warnings are logged, because one line per save would drown the figures.
#include "logging/Log.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    qblog::setLogLevel(qblog::Level::Warning);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
