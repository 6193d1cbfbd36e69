#include "ledger/LedgerStore.h"

#include "app/AtomicFile.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"

namespace zw {

void loadLedger(ReceiptLedger& ledger, const ProgramPaths& paths)
{
    const auto file = paths.dataFile("belege.dat");
    LedgerReader reader;
    try {
        readFileInBlocks(file, [&reader](std::string_view block) { reader.feed(block); });
    } catch (const RunError& error) {
        ledger.assignRows({}, {});
        if (error.number() == RunError::fileNotFound().number())
            throw;
        throw unreadableError(file); // marked: the empty grid is never saved over the file
    }
    reader.finish(ledger);
    std::error_code error;
    std::filesystem::create_directories(paths.reportFolder(), error);
}

void saveLedger(const ReceiptLedger& ledger, const ProgramPaths& paths)
{
    writeFileAtomically(paths.dataFile("belege.dat"), ledgerBytes(ledger));
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

namespace {

// Refused before the row enters the grid, so the grid never shows a receipt that was not filed.
void checkWritable(const ProgramPaths& paths)
{
    const auto file = paths.dataFile("belege.dat");
    if (isUnreadable(file))
        throw unreadableError(file);
}

} // namespace

void fileReceipt(ReceiptLedger& ledger, const ReceiptForm& form, const ProgramPaths& paths)
{
    checkWritable(paths);
    ledger.insertRow(0, ledgerRowText(form));
    ledger.setCurrentRow(0);
    saveLedger(ledger, paths);
}

void fileReceiptRow(ReceiptLedger& ledger, const std::vector<std::string>& fields, const ProgramPaths& paths)
{
    checkWritable(paths);
    std::string row;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0)
            row += '\t';
        row += fields[i];
    }
    ledger.insertRow(0, std::move(row));
    ledger.setCurrentRow(0);
    saveLedger(ledger, paths);
}

} // namespace zw
