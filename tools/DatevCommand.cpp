#include <ostream>

#include "app/SettingsStore.h"
#include "books/DatevExport.h"
#include "core/RunError.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {

// `ledger datev --from TT.MM.JJJJ --to TT.MM.JJJJ OUT.csv`: the booking batch the window "DATEV-Export" writes,
// with the settings it stored.
int runLedgerDatev(CliContext& context)
{
    auto& arguments = context.arguments;
    const auto fromText = takeOption(arguments, "--from");
    const auto toText = takeOption(arguments, "--to");
    if (arguments.size() != 2 || arguments[0] != "datev" || !fromText || !toText) {
        context.err << "Aufruf: zettelwerk-cli ledger datev --from TT.MM.JJJJ --to TT.MM.JJJJ AUSGABE.csv\n";
        return 2;
    }
    const auto from = parseGermanDate(*fromText);
    const auto to = parseGermanDate(*toText);
    if (!from || !to) {
        context.err << "\"" << (from ? *toText : *fromText) << "\" ist kein Datum der Form TT.MM.JJJJ.\n";
        return 2;
    }
    try {
        SettingsStore settings(settingsFolder(context));
        tellNoticesOnStandardError(settings);
        const DatevRequest request{loadDatevSettings(settings), *from, *to, std::chrono::system_clock::now()};
        const std::filesystem::path target = arguments[1];
        context.out << datevSummaryText(exportDatev(programPaths(context), request, target), target) << "\n";
        return 0;
    } catch (const RunError& error) {
        context.err << "Fehler " << error.number() << ": " << error.description() << "\n";
        return 1;
    }
}

} // namespace zw::cli
