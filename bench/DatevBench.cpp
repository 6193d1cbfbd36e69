#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/ProgramPaths.h"
#include "books/DatevExport.h"
#include "core/CodePage.h"

namespace {

namespace fs = std::filesystem;

constexpr long kRows = 1'000'000;

// A program folder whose belege.dat holds a year of receipts of every kind, and the same ledger in UTF-8 for iconv.
const zw::ProgramPaths& ledgerFolder()
{
    static const zw::ProgramPaths paths = [] {
        const fs::path home = fs::temp_directory_path() / "zw-datev-bench";
        fs::remove_all(home);
        // The ledger, its twin and the batch take some 400 MB: they go when the bench ends.
        static const struct Cleanup
        {
            fs::path folder;
            ~Cleanup() { fs::remove_all(folder); }
        } cleanup{home};
        fs::create_directories(home / "daten");
        std::ofstream cp1252(home / "daten" / "belege.dat", std::ios::binary);
        std::ofstream utf8(home / "belege-utf8.dat", std::ios::binary);
        const char* const kinds[] = {
            ";119,00;;EUR;19;100,00;19,00;einhundertneunzehn;Jürgen Müller;;Beratung;Köln;;Quittung",
            ";;-35,50;EUR;7;33,18;2,32;fünfunddreißig;Bücherstube;;Fachbuch \"Kasse\";Bonn;;Ausgabebeleg",
            ";;-50,00;EUR;0;50,00;0,00;fünfzig;;;Taschengeld;Bonn;;Privatentnahme",
            ";-119,00;;EUR;19;-100,00;-19,00;;Jürgen Müller;;Storno zu Beleg 7: Beratung;Köln;;Quittung",
        };
        for (long i = 0; i < kRows; ++i) {
            const int day = static_cast<int>(i % 28) + 1;
            const int month = static_cast<int>(i / 28 % 12) + 1;
            std::string line = (day < 10 ? "0" : "") + std::to_string(day) + (month < 10 ? ".0" : ".") +
                               std::to_string(month) + ".2026;" + std::to_string(kRows - i) + kinds[i % 4] + "\r\n";
            utf8 << line;
            cp1252 << zw::utf8ToCp1252(line);
        }
        return zw::ProgramPaths(home);
    }();
    return paths;
}

double secondsOf(const std::function<void()>& run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// One run writes the batch of the whole year and converts the same ledger with iconv (its process start
// included, as the export's file is written and synced).
void BM_DatevExportAgainstIconv(benchmark::State& state)
{
    const auto& paths = ledgerFolder();
    zw::DatevRequest request{zw::defaultDatevSettings(), {2026, 1, 1}, {2026, 12, 31}, std::chrono::system_clock::now()};
    request.settings.consultantNumber = "29098";
    request.settings.clientNumber = "55003";
    // The importer takes 99,999 bookings a batch; the limit says nothing about the writer's speed.
    request.bookingLimit = kRows;
    const fs::path target = paths.home() / "EXTF_Jahr.csv";
    const std::string iconv = "iconv -f UTF-8 -t WINDOWS-1252 '" + (paths.home() / "belege-utf8.dat").string() +
                              "' > '" + (paths.home() / "iconv.out").string() + "'";
    for (auto _ : state) {
        const double ours = secondsOf([&] { zw::exportDatev(paths, request, target); });
        const double peer = secondsOf([&] {
            if (std::system(iconv.c_str()) != 0)
                std::abort();
        });
        state.SetIterationTime(ours);
        state.counters["ours_s"] = ours;
        state.counters["iconv_s"] = peer;
        state.counters["ratio"] = ours / peer;
    }
}

} // namespace

BENCHMARK(BM_DatevExportAgainstIconv)
    ->Iterations(1)
    ->Repetitions(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->ComputeStatistics("min", [](const std::vector<double>& values) {
        return *std::min_element(values.begin(), values.end());
    });
