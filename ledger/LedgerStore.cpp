#include "ledger/LedgerStore.h"

#include "app/AtomicFile.h"
#include "app/FileLock.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "ledger/LedgerWatcher.h"

namespace zw {
namespace {

std::filesystem::path ledgerFile(const ProgramPaths& paths) { return paths.dataFile("belege.dat"); }

// Reads the file in blocks and hands the rows over only when the whole file was read, so a failed read leaves
// the ledger as it was. The stamp is taken before the read: should a save slip in between, the next look reads
// once more instead of missing it.
void readLedgerFile(ReceiptLedger& ledger, const ProgramPaths& paths)
{
    const auto file = ledgerFile(paths);
    const FileStamp stamp = stampOf(file);
    LedgerReader reader;
    if (stamp.exists && stamp.size > 0)
        reader.reserve(static_cast<std::size_t>(stamp.size));
    try {
        readFileInBlocks(file, [&reader](std::string_view block) { reader.feed(block); });
    } catch (const RunError& error) {
        if (error.number() == RunError::fileNotFound().number())
            throw;
        throw unreadableError(file); // marked: the grid is never saved over the file
    }
    ledger.setDiskStamp(stamp);
    reader.finishInto(ledger);
}

// Refused before the row enters the grid, so the grid never shows a receipt that was not filed.
void checkWritable(const ProgramPaths& paths)
{
    const auto file = ledgerFile(paths);
    if (isUnreadable(file))
        throw unreadableError(file);
}

// Reads the file again if it is not the version the ledger holds; a missing file is an empty ledger. Returns
// whether it did; `seen` then gets the rows the ledger held before.
bool followDisk(ReceiptLedger& ledger, const ProgramPaths& paths, std::vector<LedgerRow>* seen)
{
    const FileStamp onDisk = stampOf(ledgerFile(paths));
    if (onDisk == ledger.diskStamp())
        return false;
    if (seen != nullptr)
        *seen = ledger.copyRows();
    if (!onDisk.exists) {
        ledger.setDiskStamp(onDisk);
        ledger.assignRows({}, {});
        return true;
    }
    readLedgerFile(ledger, paths);
    return true;
}

// A watcher sees every piece as it is written and has the last word before the new file replaces the old.
void writeLedger(ReceiptLedger& ledger, const ProgramPaths& paths)
{
    const auto file = ledgerFile(paths);
    LedgerWatcher* watcher = ledger.watcher();
    writeFileAtomicallyInPieces(file, [&ledger, watcher](const auto& write) {
        if (watcher == nullptr)
            return writeLedgerBytes(ledger, write);
        writeLedgerBytes(ledger, [&](std::string_view piece) {
            watcher->piece(piece);
            write(piece);
        });
        watcher->end(ledger);
    });
    ledger.setDiskStamp(stampOf(file));
}

std::string joinedRow(const std::vector<std::string>& fields)
{
    std::string row;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0)
            row += '\t';
        row += fields[i];
    }
    return row;
}

} // namespace

void loadLedger(ReceiptLedger& ledger, const ProgramPaths& paths)
{
    try {
        readLedgerFile(ledger, paths);
    } catch (const RunError&) {
        ledger.setDiskStamp({});
        ledger.assignRows({}, {});
        throw;
    }
    std::error_code error;
    std::filesystem::create_directories(paths.reportFolder(), error);
}

bool reloadLedgerIfChanged(ReceiptLedger& ledger, const ProgramPaths& paths)
{
    return followDisk(ledger, paths, nullptr);
}

void saveLedger(ReceiptLedger& ledger, const ProgramPaths& paths)
{
    FileLock lock(ledgerFile(paths));
    writeLedger(ledger, paths);
}

bool updateLedger(ReceiptLedger& ledger, const ProgramPaths& paths, const LedgerChangeRoutine& change)
{
    checkWritable(paths);
    FileLock lock(ledgerFile(paths));
    std::vector<LedgerRow> seen;
    const bool reread = followDisk(ledger, paths, &seen);
    if (LedgerWatcher* watcher = ledger.watcher())
        watcher->begin(ledger);
    if (!change(ledger, reread ? &seen : nullptr))
        return false;
    writeLedger(ledger, paths);
    return true;
}

std::string ledgerRowText(const ReceiptForm& form)
{
    using F = FormElement;
    const bool income = form.income() == 1;
    const std::string& gross = form.text(F::Text12);
    std::string row;
    auto add = [&row](std::string_view value) {
        row += '\t';
        row += value;
    };
    row = form.text(F::Text9);
    add(form.text(F::Text1));
    add(income ? gross : std::string());
    add(income ? std::string() : "-" + gross);
    for (F field : {F::Text2, F::Text3, F::Text10, F::Text11, F::Text4, F::Text5, F::Text6, F::Text7, F::Text8,
                    F::Text14, F::Label1})
        add(form.text(field));
    return row;
}

void fileReceipt(ReceiptLedger& ledger, const ReceiptForm& form, const ProgramPaths& paths)
{
    std::vector<std::string> fields{ledgerRowText(form)};
    fileReceiptRow(ledger, fields, paths);
}

void fileReceiptRow(ReceiptLedger& ledger, const std::vector<std::string>& fields, const ProgramPaths& paths)
{
    std::string row = joinedRow(fields);
    updateLedger(ledger, paths, [&row](ReceiptLedger& current, const std::vector<LedgerRow>*) {
        current.insertRow(0, std::move(row));
        current.setCurrentRow(0);
        return true;
    });
}

void fileReceiptRowOnTop(const std::vector<std::string>& fields, const ProgramPaths& paths)
{
    checkWritable(paths);
    const auto file = ledgerFile(paths);
    FileLock lock(file);
    std::string line;
    appendLedgerLine(line, joinedRow(fields));
    const bool exists = stampOf(file).exists;
    writeFileAtomicallyInPieces(file, [&](const std::function<void(std::string_view)>& write) {
        write(line);
        if (!exists)
            return;
        try {
            readFileInBlocks(file, write);
        } catch (const RunError&) {
            throw unreadableError(file);
        }
    });
}

} // namespace zw
