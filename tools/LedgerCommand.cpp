#include <ostream>
#include <string>

#include "app/SettingsStore.h"
#include "app/TextFile.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "ledger/LedgerStore.h"
#include "ledger/ReceiptFile.h"
#include "ledger/ReceiptLedger.h"
#include "ledger/Totals.h"
#include "print/PrintCommand.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {
namespace {

// `ledger file RECEIPT.ZW5`: the receipt goes to the top of the program folder's ledger, the row the print
// command files with Save_Check on. The ledger is copied under its lock, so filings of other programs meanwhile
// stay; one that exists but cannot be read is left untouched.
int fileReceiptFile(CliContext& context, const std::filesystem::path& receipt)
{
    const ProgramPaths paths = programPaths(context);
    ReceiptForm form;
    openReceiptFile(receipt, form);
    fileReceiptRowOnTop(ledgerRow(form), paths);
    return 0;
}

} // namespace

// `ledger totals BELEGE.DAT`: the totals panel after "Daten aktualisieren", then the lines of kassenstand,
// whose currency is the one the form starts with.
int runLedger(CliContext& context)
{
    auto& arguments = context.arguments;
    if (!arguments.empty() && arguments[0] == "datev")
        return runLedgerDatev(context);
    if (arguments.size() != 2 || (arguments[0] != "totals" && arguments[0] != "file")) {
        context.err << "Aufruf: zettelwerk-cli ledger totals BELEGE.DAT | ledger file QUITTUNG.ZW5\n";
        return 2;
    }
    try {
        if (arguments[0] == "file")
            return fileReceiptFile(context, arguments[1]);
        // The sums are gathered as the rows come, so no row is kept, however long the ledger.
        LedgerSums sums;
        LedgerReader reader([&sums](std::string_view row) { sums.add(row); });
        readFileInBlocks(arguments[1], [&reader](std::string_view block) { reader.feed(block); });
        reader.finish();
        SettingsStore settings(settingsFolder(context));
        tellNoticesOnStandardError(settings);
        const auto panel = panelTotals(sums, settings);
        std::string currency = settings.get(kApplicationName, "Waehrung", "waehr.Text", "");
        if (currency.empty())
            currency = "EUR";
        const auto cash = cashBalance(sums, currency);
        context.out << "Einnahmen: " << panel.income << "\n"
                    << "Ausgaben: " << panel.expense << "\n"
                    << "Differenz: " << panel.balance << "\n"
                    << "Aktuelle Währung: " << panel.currency << "\n"
                    << "Einnahmen " << cash.income << "\n"
                    << "Ausgaben " << cash.expense << "\n"
                    << "+/- " << cash.balance << "\n";
        return 0;
    } catch (const RunError& error) {
        context.err << "Fehler " << error.number() << ": " << error.description() << "\n";
        return 1;
    }
}

} // namespace zw::cli
