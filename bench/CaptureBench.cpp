#include <benchmark/benchmark.h>
#include <filesystem>

#include "print/Capture.h"
#include "print/PrintCommand.h"
#include "bench/ReceiptFixture.h"

namespace {

using zw::bench::fixture;

void captureForm(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    for (auto _ : state)
        benchmark::DoNotOptimize(capture(fixture().form));
}
BENCHMARK(captureForm)->Unit(benchmark::kMillisecond);

void captureAndWriteBitmap(benchmark::State& state)
{
    zw::Capture capture(fixture().paths);
    for (auto _ : state)
        zw::saveBitmap(capture(fixture().form), fixture().paths.tempFolder() / "temp_.bmp");
}
BENCHMARK(captureAndWriteBitmap)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) { return zw::bench::runBenchmarks(argc, argv); }
