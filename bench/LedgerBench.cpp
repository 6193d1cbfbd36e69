#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <map>
#include <string>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "ledger/LedgerStore.h"
#include "ledger/ReceiptLedger.h"
#include "ledger/Totals.h"
#include "tests/core/FakeHost.h"

namespace {

namespace fs = std::filesystem;

// One program folder per ledger size, with a belege.dat of realistic lines (a tenth with umlauts).
const zw::ProgramPaths& programFolder(long rows)
{
    static std::map<long, zw::ProgramPaths> folders;
    auto found = folders.find(rows);
    if (found != folders.end())
        return found->second;
    const fs::path home = fs::temp_directory_path() / ("zw-ledger-bench-" + std::to_string(rows));
    fs::create_directories(home / "daten");
    std::ofstream out(home / "daten" / "belege.dat", std::ios::binary);
    for (long i = 0; i < rows; ++i) {
        const bool income = i % 3 != 0;
        out << "12.03.2011;" << i << ';' << (income ? "119,00" : "") << ';' << (income ? "" : "-35,50")
            << ";EUR;19;100,00;19,00;" << (i % 10 == 0 ? "f\xFCnfunddrei\xDFig" : "einhundertneunzehn")
            << ";Max Muster;;Beratung;Bonn;;Quittung\r\n";
    }
    return folders.emplace(rows, zw::ProgramPaths(home)).first->second;
}

std::string ledgerFile(long rows) { return programFolder(rows).dataFile("belege.dat").string(); }

void run(const std::string& command)
{
    if (std::system(command.c_str()) != 0)
        std::abort();
}

void BM_Baseline_CatFile(benchmark::State& state)
{
    const auto file = ledgerFile(state.range(0));
    for (auto _ : state)
        run("cat '" + file + "' > /dev/null");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fs::file_size(file)));
}

void BM_Baseline_CopyFileAndSync(benchmark::State& state)
{
    const auto file = ledgerFile(state.range(0));
    for (auto _ : state)
        run("cp '" + file + "' '" + file + ".copy' && sync '" + file + ".copy'");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fs::file_size(file)));
}

void BM_LoadLedger(benchmark::State& state)
{
    const auto& paths = programFolder(state.range(0));
    const auto fileSize = static_cast<double>(fs::file_size(paths.dataFile("belege.dat")));
    double heapPerFileByte = 0;
    for (auto _ : state) {
        const auto before = mallinfo2().uordblks;
        zw::ReceiptLedger ledger;
        zw::loadLedger(ledger, paths);
        heapPerFileByte = static_cast<double>(mallinfo2().uordblks - before) / fileSize;
        benchmark::DoNotOptimize(ledger.rowCount());
    }
    state.counters["heap_per_file_byte"] = heapPerFileByte;
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize));
}

// A belege.dat of 100 MB of empty lines (CR LF): 50 million rows that must not cost gigabytes.
void BM_LoadEmptyLineLedger(benchmark::State& state)
{
    const fs::path home = fs::temp_directory_path() / "zw-ledger-bench-empty-lines";
    const fs::path file = home / "daten" / "belege.dat";
    const auto bytes = static_cast<std::size_t>(state.range(0));
    if (!fs::exists(file) || fs::file_size(file) != bytes) {
        fs::create_directories(file.parent_path());
        std::ofstream out(file, std::ios::binary);
        std::string lines;
        for (int i = 0; i < (1 << 19); ++i)
            lines += "\r\n";
        for (std::size_t written = 0; written < bytes; written += lines.size())
            out.write(lines.data(), static_cast<std::streamsize>(std::min(lines.size(), bytes - written)));
    }
    const zw::ProgramPaths paths(home);
    double heapPerRow = 0;
    for (auto _ : state) {
        // Large blocks are mapped apart from the heap; both count.
        const auto before = mallinfo2();
        zw::ReceiptLedger ledger;
        zw::loadLedger(ledger, paths);
        const auto after = mallinfo2();
        heapPerRow = static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) /
                     static_cast<double>(ledger.rowCount());
        benchmark::DoNotOptimize(ledger.rowCount());
    }
    state.counters["heap_per_row"] = heapPerRow;
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * state.range(0)));
}

void BM_SaveLedger(benchmark::State& state)
{
    const auto& paths = programFolder(state.range(0));
    zw::ReceiptLedger ledger;
    zw::loadLedger(ledger, paths);
    for (auto _ : state)
        zw::saveLedger(ledger, paths);
}

void BM_FileOneReceipt(benchmark::State& state)
{
    const auto& paths = programFolder(state.range(0));
    zw::ReceiptLedger ledger;
    zw::loadLedger(ledger, paths);
    zw::test::MemorySettings settings;
    zw::ReceiptForm form;
    form.attach(&settings, nullptr);
    form.setText(zw::FormElement::Text12, "119,00");
    for (auto _ : state) {
        zw::fileReceipt(ledger, form, paths);
        state.PauseTiming();
        ledger.removeRow(0); // keep the ledger at its size
        state.ResumeTiming();
    }
    zw::saveLedger(ledger, paths);
}

void BM_Totals(benchmark::State& state)
{
    const auto& paths = programFolder(state.range(0));
    zw::ReceiptLedger ledger;
    zw::loadLedger(ledger, paths);
    zw::test::MemorySettings settings;
    for (auto _ : state)
        benchmark::DoNotOptimize(zw::panelTotals(ledger, settings));
}

} // namespace

BENCHMARK(BM_Baseline_CatFile)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_CopyFileAndSync)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadLedger)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadEmptyLineLedger)->Arg(100 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveLedger)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FileOneReceipt)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Totals)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
