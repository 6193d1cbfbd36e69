#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "app/ProgramPaths.h"
#include "app/SmallFiles.h"
#include "core/ReceiptForm.h"
#include "ledger/ReceiptFile.h"

namespace {

namespace fs = std::filesystem;

// A program folder whose nummer.dat, druck.dat and a receipt file have the given number of lines.
zw::ProgramPaths programFolder(long lines)
{
    const fs::path home = fs::temp_directory_path() / ("zw-form-load-bench-" + std::to_string(lines));
    fs::create_directories(home / "daten");
    std::ofstream number(home / "daten" / "nummer.dat", std::ios::binary);
    std::ofstream print(home / "daten" / "druck.dat", std::ios::binary);
    std::ofstream receipt(home / "beleg.ZW5", std::ios::binary);
    for (long i = 0; i < lines; ++i) {
        number << i % 10 << "\r\n";
        print << (i % 3 == 0 ? "10" : i % 3 == 1 ? "1" : "20") << "\r\n";
    }
    // Records of 14 lines, the gross amount in line 7 so that its change handling runs once per record.
    for (long i = 0; i < lines / 14; ++i)
        receipt << "Quittung\r\n" << i << "\r\nEUR\r\n19\r\n100,00\r\n19,00\r\n119,00\r\n\r\nMax Muster\r\n"
                << "Beratung\r\n\r\nBonn\r\n12.03.2011\r\n\r\n";
    return zw::ProgramPaths(home);
}

// Each load with a listener that counts what a window would mirror.
template <typename Load> void loadCounting(benchmark::State& state, Load load)
{
    const auto paths = programFolder(state.range(0));
    long told = 0;
    for (auto _ : state) {
        zw::ReceiptForm form;
        form.addListener([&told](const zw::FormChange&) { ++told; });
        load(form, paths);
    }
    state.counters["told_per_load"] = static_cast<double>(told) / static_cast<double>(state.iterations());
}

void BM_LoadNumber(benchmark::State& state) { loadCounting(state, zw::smallfiles::loadNumber); }

void BM_LoadPrintSetup(benchmark::State& state) { loadCounting(state, zw::smallfiles::loadPrintSetup); }

void BM_OpenReceiptFile(benchmark::State& state)
{
    loadCounting(state, [](zw::ReceiptForm& form, const zw::ProgramPaths& paths) {
        zw::openReceiptFile(paths.home() / "beleg.ZW5", form);
    });
}

} // namespace

BENCHMARK(BM_LoadNumber)->Arg(300000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadPrintSetup)->Arg(300000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenReceiptFile)->Arg(300000)->Unit(benchmark::kMillisecond);
