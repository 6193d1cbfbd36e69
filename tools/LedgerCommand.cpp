#include <ostream>
#include <string>

#include "app/SettingsStore.h"
#include "app/TextFile.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "ledger/ReceiptLedger.h"
#include "ledger/Totals.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {

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
    if (arguments[0] == "file")
        return runLedgerFile(context); // with the cash book, which journals the filing
    try {
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
