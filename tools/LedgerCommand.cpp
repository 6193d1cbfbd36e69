#include <fstream>
#include <ostream>
#include <string>

#include "app/SettingsStore.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "ledger/ReceiptLedger.h"
#include "ledger/Totals.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {

// `ledger totals BELEGE.DAT`: the totals panel after "Daten aktualisieren", then the lines of kassenstand, whose
// currency is the one the form starts with.
int runLedger(CliContext& context)
{
    auto& arguments = context.arguments;
    if (arguments.size() != 2 || arguments[0] != "totals") {
        context.err << "Aufruf: zettelwerk-cli ledger totals BELEGE.DAT\n";
        return 2;
    }
    try {
        std::ifstream in(arguments[1], std::ios::binary);
        if (!in)
            throw RunError::fileNotFound();
        ReceiptLedger ledger;
        readLedger(in, ledger);
        SettingsStore settings(settingsFolder(context));
        const auto panel = panelTotals(ledger, settings);
        std::string currency = settings.get(kApplicationName, "Waehrung", "waehr.Text", "");
        if (currency.empty())
            currency = "EUR";
        const auto cash = cashBalance(ledger, currency);
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
