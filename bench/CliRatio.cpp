// The command line as a whole process beside its floor, five rounds each: `words` beside /bin/true, and
// `ledger totals` of 1,000,000 rows beside awk summing the same column, with the peak memory of both.
//   zw_cli_ratio [ZETTELWERK-CLI]   (the one of this build without an argument)

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "bench/ProcessTiming.h"

namespace {

namespace fs = std::filesystem;

// belege.dat as the ledger benchmark writes it: realistic rows, a tenth with umlauts.
void writeLedger(const fs::path& file, long rows)
{
    std::ofstream out(file, std::ios::binary);
    for (long i = 0; i < rows; ++i) {
        const bool income = i % 3 != 0;
        out << "12.03.2011;" << i << ';' << (income ? "119,00" : "") << ';' << (income ? "" : "-35,50")
            << ";EUR;19;100,00;19,00;" << (i % 10 == 0 ? "f\xFCnfunddrei\xDFig" : "einhundertneunzehn")
            << ";Max Muster;;Beratung;Bonn;;Quittung\r\n";
    }
}

struct Runs
{
    std::vector<double> milliseconds;
    std::vector<double> cpuMilliseconds;
    long maxResidentKiB = 0;
};

Runs runFiveTimes(const std::vector<std::string>& command)
{
    Runs runs;
    for (int round = 0; round < 5; ++round) {
        const auto run = zw::bench::runProcess(command);
        if (run.exitCode != 0) {
            std::fprintf(stderr, "%s ended with %d\n", command.front().c_str(), run.exitCode);
            std::exit(1);
        }
        runs.milliseconds.push_back(run.milliseconds);
        runs.cpuMilliseconds.push_back(run.cpuMilliseconds);
        runs.maxResidentKiB = std::max(runs.maxResidentKiB, run.maxResidentKiB);
    }
    return runs;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string cli = argc > 1 ? argv[1] : ZW_CLI;
    const fs::path folder = fs::temp_directory_path() / ("zw-bench-cli-" + std::to_string(::getpid()));
    fs::create_directories(folder / "config");
    const std::string config = (folder / "config").string();
    const fs::path ledger = folder / "belege.dat";
    writeLedger(ledger, 1000000);
    const double ledgerMiB = static_cast<double>(fs::file_size(ledger)) / (1024.0 * 1024.0);
    // Warm: the binaries and the file in the page cache, as every round after the first finds them.
    zw::bench::runProcess({cli, "--config", config, "ledger", "totals", ledger.string()});

    using zw::bench::spreadOf;
    const auto words = runFiveTimes({cli, "--config", config, "words", "--rounding", "1234,56"});
    const auto trueRuns = runFiveTimes({"/bin/true"});
    std::printf("%s\n", cli.c_str());
    zw::bench::printSpread("words --rounding 1234,56 (goal <= 3 ms)", spreadOf(words.milliseconds), "ms");
    zw::bench::printSpread("/bin/true", spreadOf(trueRuns.milliseconds), "ms");
    zw::bench::printRatio("words / true", spreadOf(words.milliseconds), spreadOf(trueRuns.milliseconds), 0);
    // On a busy machine the clock counts the waits for a processor too.
    zw::bench::printSpread("words, processor time", spreadOf(words.cpuMilliseconds), "ms");
    zw::bench::printSpread("/bin/true, processor time", spreadOf(trueRuns.cpuMilliseconds), "ms");

    const auto totals = runFiveTimes({cli, "--config", config, "ledger", "totals", ledger.string()});
    const auto awk = runFiveTimes({"/usr/bin/awk", "-F;", "{ s += $3 } END { print s }", ledger.string()});
    std::printf("belege.dat: 1,000,000 rows, %.1f MiB\n", ledgerMiB);
    zw::bench::printSpread("ledger totals", spreadOf(totals.milliseconds), "ms");
    zw::bench::printSpread("awk summing the income column", spreadOf(awk.milliseconds), "ms");
    zw::bench::printRatio("ledger totals / awk", spreadOf(totals.milliseconds), spreadOf(awk.milliseconds), 0.5);
    std::printf("%-46s ledger totals %.1f MiB = %.2f x the file (goal <= 1.20 x), awk %.1f MiB\n", "peak memory",
                static_cast<double>(totals.maxResidentKiB) / 1024.0,
                static_cast<double>(totals.maxResidentKiB) / 1024.0 / ledgerMiB,
                static_cast<double>(awk.maxResidentKiB) / 1024.0);
    fs::remove_all(folder);
}
