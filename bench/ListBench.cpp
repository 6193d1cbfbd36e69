#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "lists/ListReport.h"
#include "lists/ListTable.h"

namespace {

namespace fs = std::filesystem;
constexpr int kRows = 100000;

// An article list as a shop keeps it: purpose, amount with a comma, rate; umlauts in Windows-1252.
fs::path articleFile(int rows)
{
    const fs::path file = fs::temp_directory_path() / ("zw-bench-artikel-" + std::to_string(::getpid()));
    std::ofstream out(file, std::ios::binary);
    for (int i = 0; i < rows; ++i)
        out << "B\xfcromaterial Nr. " << i << ';' << (i % 997 + 1) << ',' << (i % 100) << ';' << (i % 2 ? 19 : 7)
            << "\r\n";
    return file;
}

void LoadArticleList(benchmark::State& state)
{
    const fs::path file = articleFile(kRows);
    zw::ListTable table(zw::articleList());
    for (auto _ : state)
        table.load(file);
    state.SetLabel(std::to_string(fs::file_size(file) / 1024) + " KiB");
    fs::remove(file);
}
BENCHMARK(LoadArticleList)->Unit(benchmark::kMillisecond);

void SaveArticleList(benchmark::State& state)
{
    const fs::path file = articleFile(kRows);
    zw::ListTable table(zw::articleList());
    table.load(file);
    for (auto _ : state)
        table.save(file);
    fs::remove(file);
}
BENCHMARK(SaveArticleList)->Unit(benchmark::kMillisecond);

// The system's tools on the same file, for scale: cat reads it, cp copies it (with their process start).
void SystemCatAndCopy(benchmark::State& state)
{
    const fs::path file = articleFile(kRows);
    const std::string command = "cat '" + file.string() + "' >/dev/null && cp '" + file.string() + "' '" +
                                file.string() + ".copy' && sync -f '" + file.string() + ".copy'";
    for (auto _ : state)
        benchmark::DoNotOptimize(std::system(command.c_str()));
    fs::remove(file);
    fs::remove(file.string() + ".copy");
}
BENCHMARK(SystemCatAndCopy)->Unit(benchmark::kMillisecond);

void ReportOfTenThousandRows(benchmark::State& state)
{
    const fs::path file = articleFile(10000);
    zw::ListTable table(zw::articleList());
    table.load(file);
    for (auto _ : state) {
        // Each report starts from a fresh sum, as a window opened anew does; one kept across runs overflows.
        std::int32_t sum = 0;
        benchmark::DoNotOptimize(zw::listReportHtml(table, {}, nullptr, "24.11.2026", sum));
    }
    fs::remove(file);
}
BENCHMARK(ReportOfTenThousandRows)->Unit(benchmark::kMillisecond);

} // namespace
