// The article list's load of 100,000 rows beside cat of the same file, five rounds, each measuring both.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "bench/ProcessTiming.h"
#include "lists/ListTable.h"

int main()
{
    namespace fs = std::filesystem;
    constexpr int kRows = 100000;
    const fs::path file = fs::temp_directory_path() / ("zw-bench-artikel-ratio-" + std::to_string(::getpid()));
    {
        // As a shop keeps it: purpose with an umlaut in Windows-1252, amount with a comma, rate.
        std::ofstream out(file, std::ios::binary);
        for (int i = 0; i < kRows; ++i)
            out << "B\xfcromaterial Nr. " << i << ';' << (i % 997 + 1) << ',' << (i % 100) << ';' << (i % 2 ? 19 : 7)
                << "\r\n";
    }
    std::vector<double> loads, loadsCpu, cats, catsCpu;
    for (int round = 0; round < 5; ++round) {
        const auto cat = zw::bench::runProcess({"/bin/cat", file.string()});
        cats.push_back(cat.milliseconds);
        catsCpu.push_back(cat.cpuMilliseconds);
        zw::ListTable table(zw::articleList());
        const auto load = zw::bench::timeOf([&] { table.load(file); });
        loads.push_back(load.milliseconds);
        loadsCpu.push_back(load.cpuMilliseconds);
    }
    std::printf("article list, %d rows, %ju KiB, 5 rounds\n", kRows,
                static_cast<std::uintmax_t>(fs::file_size(file) / 1024));
    using zw::bench::spreadOf;
    zw::bench::printSpread("ListTable::load", spreadOf(loads), "ms");
    zw::bench::printSpread("cat FILE >/dev/null (whole process)", spreadOf(cats), "ms");
    zw::bench::printRatio("load / cat", spreadOf(loads), spreadOf(cats), 3.0);
    zw::bench::printSpread("ListTable::load, processor time", spreadOf(loadsCpu), "ms");
    zw::bench::printSpread("cat, processor time", spreadOf(catsCpu), "ms");
    zw::bench::printRatio("load / cat, processor time", spreadOf(loadsCpu), spreadOf(catsCpu), 3.0);
    fs::remove(file);
}
