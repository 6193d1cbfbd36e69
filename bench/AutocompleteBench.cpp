#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <unistd.h>

#include "lists/Autocomplete.h"

namespace {

constexpr int kEntries = 100000;

// Names, streets and places with umlauts, as users type them; the one entry beginning "Zahnarzt" is the last.
zw::Autocomplete hundredThousandEntries(const std::filesystem::path& file = "autocom.dat")
{
    const char* stems[] = {"Müller GmbH ", "Bäckerei Schröder ", "Hauptstraße ", "Öko-Markt Süd ",
                           "Beratung "};
    zw::Autocomplete list(file);
    for (int i = 0; i < kEntries - 1; ++i)
        list.AddEntry(stems[i % 5] + std::to_string(i));
    list.AddEntry("Zahnarztpraxis Dr. Özdemir");
    return list;
}

void CompleteMatchingTheLastEntry(benchmark::State& state)
{
    const auto list = hundredThousandEntries();
    for (auto _ : state)
        benchmark::DoNotOptimize(list.Complete("zahn", zw::IgnoreCase::Yes));
    state.SetLabel(list.Complete("zahn", zw::IgnoreCase::Yes));
}
BENCHMARK(CompleteMatchingTheLastEntry)->Unit(benchmark::kMillisecond);

void CompleteMatchingNothing(benchmark::State& state)
{
    const auto list = hundredThousandEntries();
    for (auto _ : state)
        benchmark::DoNotOptimize(list.Complete("müllerei", zw::IgnoreCase::Yes));
}
BENCHMARK(CompleteMatchingNothing)->Unit(benchmark::kMillisecond);

void LoadEntries(benchmark::State& state)
{
    const auto file =
        std::filesystem::temp_directory_path() / ("zw-bench-autocom-" + std::to_string(::getpid()));
    hundredThousandEntries(file).SaveEntries();
    zw::Autocomplete list(file);
    for (auto _ : state)
        list.LoadEntries();
    std::filesystem::remove(file);
}
BENCHMARK(LoadEntries)->Unit(benchmark::kMillisecond);

} // namespace
