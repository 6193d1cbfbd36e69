#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <unistd.h>

#include "app/ProgramPaths.h"
#include "books/CashBook.h"
#include "books/JournalCheck.h"
#include "books/LedgerJournal.h"
#include "books/Sha256.h"
#include "ledger/LedgerStore.h"

namespace {

namespace fs = std::filesystem;

const std::string kRow = "12.03.2011\t1047\t119,00\t\tEUR\t19\t100,00\t19,00\teinhundertneunzehn\tMax Muster\t\t"
                         "Beratung\tBonn\t\tQuittung";

// A program folder with a belege.dat of `rows` realistic lines and no journal yet.
zw::ProgramPaths freshFolder(const std::string& name, long rows)
{
    const fs::path home = fs::temp_directory_path() / ("zw-books-bench-" + name);
    fs::remove_all(home);
    fs::create_directories(home / "daten");
    std::ofstream out(home / "daten" / "belege.dat", std::ios::binary);
    std::string line = kRow;
    std::replace(line.begin(), line.end(), '\t', ';');
    for (long i = 0; i < rows; ++i)
        out << line << "\r\n";
    return zw::ProgramPaths(home);
}

void BM_Baseline_FileOneReceipt(benchmark::State& state)
{
    const auto paths = freshFolder("plain", state.range(0));
    zw::ReceiptLedger ledger;
    zw::loadLedger(ledger, paths);
    for (auto _ : state)
        zw::fileReceiptRow(ledger, {kRow}, paths);
}

void BM_JournaledFiling(benchmark::State& state)
{
    const auto paths = freshFolder("journaled", state.range(0));
    zw::CashBook book(paths);
    zw::ReceiptLedger ledger;
    for (auto _ : state) {
        book.change(ledger, [](zw::ReceiptLedger& current) -> std::optional<zw::LedgerEdit> {
            current.insertRow(0, kRow);
            return zw::LedgerEdit{zw::JournalOperation::Filing, 1, {}, kRow, std::nullopt};
        });
    }
}

// The window's filing: the ledger's store tells the journal, which hashes the file as it is written.
void BM_FilingThroughTheWatcher(benchmark::State& state)
{
    const auto paths = freshFolder("watched", state.range(0));
    zw::CashBook book(paths);
    zw::ReceiptLedger ledger;
    zw::LedgerJournal journal(book, ledger);
    ledger.setWatcher(&journal);
    zw::loadLedger(ledger, paths);
    for (auto _ : state)
        zw::fileReceiptRow(ledger, {kRow}, paths);
}

zw::JournalEntry typicalEntry()
{
    zw::JournalEntry entry;
    entry.operation = zw::JournalOperation::Filing;
    entry.row = 1;
    entry.after = kRow;
    entry.ledgerHash = zw::sha256Hex("belege");
    return entry;
}

void BM_JournalAppendWithFsync(benchmark::State& state)
{
    const auto paths = freshFolder("append", 0);
    zw::Journal journal(paths.dataFile("journal.dat"));
    for (auto _ : state)
        journal.append(typicalEntry());
}

// The entry's own work: the chain's last entry read from the file's end, the line and its hash.
void BM_JournalEntryWithoutFsync(benchmark::State& state)
{
    const auto paths = freshFolder("entry", 0);
    zw::Journal journal(paths.dataFile("journal.dat"));
    for (int i = 0; i < 1000; ++i)
        journal.append(typicalEntry());
    for (auto _ : state) {
        auto entry = typicalEntry();
        const auto last = journal.lastEntry();
        entry.previousHash = last->hash;
        benchmark::DoNotOptimize(zw::sha256Hex(zw::journalLine(entry)));
    }
}

void BM_Baseline_AppendLineWithFsync(benchmark::State& state)
{
    const auto paths = freshFolder("fsync", 0);
    const std::string line = zw::journalLine(typicalEntry()) + std::string(64, '0') + "\r\n";
    const int fd = ::open(paths.dataFile("plain.dat").c_str(), O_WRONLY | O_APPEND | O_CREAT, 0644);
    for (auto _ : state) {
        benchmark::DoNotOptimize(::write(fd, line.data(), line.size()));
        ::fsync(fd);
    }
    ::close(fd);
}

// A journal of `entries` filings from an empty ledger, written without fsync, and the ledger it ends in. Only
// the last entry's ledger hash is the true one; verify compares no other.
const zw::ProgramPaths& journalFolder(long entries)
{
    static std::map<long, zw::ProgramPaths> folders;
    if (auto found = folders.find(entries); found != folders.end())
        return found->second;
    auto paths = freshFolder("verify-" + std::to_string(entries), 0);
    zw::ReceiptLedger ledger;
    for (long i = 1; i < entries; ++i)
        ledger.appendRow(kRow);
    const std::string ledgerBytes = zw::ledgerBytes(ledger);
    std::ofstream(paths.dataFile("belege.dat"), std::ios::binary) << ledgerBytes;
    std::ofstream out(paths.dataFile("journal.dat"), std::ios::binary);
    std::string previous(zw::kNoHash);
    const std::string finalHash = zw::sha256Hex(ledgerBytes);
    for (long i = 1; i <= entries; ++i) {
        zw::JournalEntry entry;
        entry.sequence = i;
        entry.time = "2026-11-25T12:00:00Z";
        entry.user = "kasse";
        entry.version = "6.0.0";
        entry.operation = i == 1 ? zw::JournalOperation::Start : zw::JournalOperation::Filing;
        entry.row = i == 1 ? 0 : 1;
        entry.after = i == 1 ? std::string() : kRow;
        entry.ledgerHash = i == entries ? finalHash : previous;
        entry.previousHash = previous;
        const std::string line = zw::journalLine(entry);
        previous = zw::sha256Hex(line);
        out << line << previous << "\r\n";
    }
    return folders.emplace(entries, std::move(paths)).first->second;
}

void BM_VerifyJournal(benchmark::State& state)
{
    const auto& paths = journalFolder(state.range(0));
    for (auto _ : state)
        if (!zw::verifyJournal(paths).sound)
            state.SkipWithError("the journal did not verify");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fs::file_size(paths.dataFile("journal.dat"))));
}

void BM_Baseline_Sha256sumOfJournal(benchmark::State& state)
{
    const auto& paths = journalFolder(state.range(0));
    const std::string command = "sha256sum '" + paths.dataFile("journal.dat").string() + "' > /dev/null";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0)
            std::abort();
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fs::file_size(paths.dataFile("journal.dat"))));
}

} // namespace

BENCHMARK(BM_JournalAppendWithFsync)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_JournalEntryWithoutFsync)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_AppendLineWithFsync)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_FileOneReceipt)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_JournaledFiling)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilingThroughTheWatcher)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_VerifyJournal)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Baseline_Sha256sumOfJournal)->Arg(1000000)->Unit(benchmark::kMillisecond);
