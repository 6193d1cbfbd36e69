#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "core/ReceiptForm.h"
#include "ledger/LedgerStore.h"
#include "ledger/ReceiptLedger.h"
#include "ledger/Totals.h"
#include "tests/core/FakeHost.h"

// Every benchmark here times the program and the machine's floor for the same work in each iteration, so both
// meet the same load of a shared machine, and reports both with their ratio: min and median over the iterations.

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

// A belege.dat of 100 MB of empty lines (CR LF): 50 million rows that must not cost more than the file.
const zw::ProgramPaths& emptyLineFolder()
{
    static const zw::ProgramPaths paths = [] {
        const fs::path home = fs::temp_directory_path() / "zw-ledger-bench-empty-lines";
        const fs::path file = home / "daten" / "belege.dat";
        constexpr std::size_t kBytes = 100 << 20;
        if (!fs::exists(file) || fs::file_size(file) != kBytes) {
            fs::create_directories(file.parent_path());
            std::ofstream out(file, std::ios::binary);
            std::string lines;
            for (int i = 0; i < (1 << 19); ++i)
                lines += "\r\n";
            for (std::size_t written = 0; written < kBytes; written += lines.size())
                out.write(lines.data(), static_cast<std::streamsize>(std::min(lines.size(), kBytes - written)));
        }
        return zw::ProgramPaths(home);
    }();
    return paths;
}

double secondsOf(const auto& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Program and floor times of each iteration; the iteration's time is the program's.
class Pairs
{
public:
    explicit Pairs(benchmark::State& state) : m_state(state) {}
    // Alternates which of the two runs first, so neither always finds the caches and the disk as the other left them.
    void measure(const auto& floorWork, const auto& programWork)
    {
        double floor = 0;
        double program = 0;
        if (m_program.size() % 2 == 0) {
            floor = secondsOf(floorWork);
            program = secondsOf(programWork);
        } else {
            program = secondsOf(programWork);
            floor = secondsOf(floorWork);
        }
        add(program, floor);
    }
    ~Pairs()
    {
        report("program_ms", m_program);
        report("floor_ms", m_floor);
        report("ratio", m_ratio);
    }

private:
    void add(double program, double floor)
    {
        m_program.push_back(program * 1e3);
        m_floor.push_back(floor * 1e3);
        m_ratio.push_back(program / floor);
        m_state.SetIterationTime(program);
    }
    void report(const std::string& name, std::vector<double> values)
    {
        if (values.empty())
            return;
        std::sort(values.begin(), values.end());
        m_state.counters[name + "_min"] = values.front();
        m_state.counters[name + "_med"] = values[values.size() / 2];
    }

    benchmark::State& m_state;
    std::vector<double> m_program;
    std::vector<double> m_floor;
    std::vector<double> m_ratio;
};

// The floor of a load: read() of the file in blocks of a mebibyte and memchr over each for the line ends.
std::size_t readAndCountLines(const fs::path& file)
{
    const int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        std::abort();
    static std::vector<char> buffer(1 << 20);
    std::size_t lines = 0;
    for (ssize_t got; (got = ::read(fd, buffer.data(), buffer.size())) > 0;) {
        const char* end = buffer.data() + got;
        for (const char* p = buffer.data(); (p = static_cast<const char*>(std::memchr(p, '\n', end - p)));
             ++p)
            ++lines;
    }
    ::close(fd);
    return lines;
}

// The floor of a save: write() of the same bytes in blocks of a mebibyte into a new file, and fsync.
void writeAndSync(const fs::path& file, const std::string& bytes)
{
    ::unlink(file.c_str());
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        std::abort();
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t wrote = ::write(fd, bytes.data() + at, std::min<std::size_t>(1 << 20, bytes.size() - at));
        if (wrote <= 0)
            std::abort();
        at += static_cast<std::size_t>(wrote);
    }
    if (::fsync(fd) != 0)
        std::abort();
    ::close(fd);
}

std::size_t heapInUse()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd; // large blocks are mapped apart from the heap; both count
}

// Load: LoadLedger against read() + memchr of the file; and the heap the loaded ledger holds per byte of file.
void loadAgainstFloor(benchmark::State& state, const zw::ProgramPaths& paths)
{
    const auto file = paths.dataFile("belege.dat");
    const auto fileSize = static_cast<double>(fs::file_size(file));
    double heapPerFileByte = 0;
    {
        Pairs pairs(state);
        for (auto _ : state) {
            malloc_trim(0);
            const auto before = heapInUse();
            auto ledger = std::make_unique<zw::ReceiptLedger>();
            pairs.measure([&] { benchmark::DoNotOptimize(readAndCountLines(file)); },
                          [&] { zw::loadLedger(*ledger, paths); });
            heapPerFileByte = static_cast<double>(heapInUse() - before) / fileSize;
        }
    }
    state.counters["heap_per_file_byte"] = heapPerFileByte;
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize));
}

void BM_Load(benchmark::State& state) { loadAgainstFloor(state, programFolder(state.range(0))); }

void BM_LoadEmptyLines(benchmark::State& state) { loadAgainstFloor(state, emptyLineFolder()); }

// Save: SaveLedger against write() + fsync of the same bytes.
void BM_Save(benchmark::State& state)
{
    const auto& paths = programFolder(state.range(0));
    const auto floorFile = paths.dataFile("floor.dat");
    zw::ReceiptLedger ledger;
    zw::loadLedger(ledger, paths);
    const std::string bytes = zw::readFileBytes(paths.dataFile("belege.dat"));
    Pairs pairs(state);
    for (auto _ : state) {
        pairs.measure([&] { writeAndSync(floorFile, bytes); }, [&] { zw::saveLedger(ledger, paths); });
    }
    fs::remove(floorFile);
}

// Filing one receipt on top of the ledger against write() + fsync of the file it makes.
void BM_FileOneReceipt(benchmark::State& state)
{
    const auto& paths = programFolder(state.range(0));
    const auto floorFile = paths.dataFile("floor.dat");
    zw::ReceiptLedger ledger;
    zw::loadLedger(ledger, paths);
    zw::test::MemorySettings settings;
    zw::ReceiptForm form;
    form.attach(&settings, nullptr);
    form.setText(zw::FormElement::Text12, "119,00");
    std::string bytes = zw::readFileBytes(paths.dataFile("belege.dat"));
    bytes.insert(0, "12.03.2011;;119,00;;;;;;;;;;;;\r\n");
    {
        Pairs pairs(state);
        for (auto _ : state) {
            pairs.measure([&] { writeAndSync(floorFile, bytes); }, [&] { zw::fileReceipt(ledger, form, paths); });
            ledger.removeRow(0); // keep the ledger at its size
        }
    }
    zw::saveLedger(ledger, paths);
    fs::remove(floorFile);
}

// Totals: the panel's sums against one memchr pass over the file's bytes in memory, the least a pass that reads
// each cell once must do.
void BM_Totals(benchmark::State& state)
{
    const auto& paths = programFolder(state.range(0));
    zw::ReceiptLedger ledger;
    zw::loadLedger(ledger, paths);
    const std::string bytes = zw::readFileBytes(paths.dataFile("belege.dat"));
    zw::test::MemorySettings settings;
    Pairs pairs(state);
    for (auto _ : state) {
        pairs.measure(
            [&] {
                std::size_t lines = 0;
                const char* end = bytes.data() + bytes.size();
                for (const char* p = bytes.data(); (p = static_cast<const char*>(std::memchr(p, '\n', end - p)));
                     ++p)
                    ++lines;
                benchmark::DoNotOptimize(lines);
            },
            [&] { benchmark::DoNotOptimize(zw::panelTotals(ledger, settings)); });
    }
}

} // namespace

BENCHMARK(BM_Load)->Arg(100000)->Arg(1000000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadEmptyLines)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Save)->Arg(100000)->Arg(1000000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FileOneReceipt)->Arg(100000)->Arg(1000000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Totals)->Arg(100000)->Arg(1000000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
