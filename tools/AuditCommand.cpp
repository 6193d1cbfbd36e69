#include <filesystem>
#include <ostream>

#include "books/AuditExport.h"
#include "core/RunError.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {

// `ledger gdpdu --from TT.MM.JJJJ --to TT.MM.JJJJ ORDNER`: the data for a tax audit, as the window writes
// them.
int runAuditExport(CliContext& context)
{
    auto& arguments = context.arguments;
    const auto from = takeOption(arguments, "--from");
    const auto to = takeOption(arguments, "--to");
    if (arguments.size() != 2 || !from || !to) {
        context.err << "Aufruf: zettelwerk-cli ledger gdpdu --from TT.MM.JJJJ --to TT.MM.JJJJ ORDNER\n";
        return 2;
    }
    AuditPeriod period;
    try {
        period = auditPeriod(*from, *to);
    } catch (const RunError& error) {
        context.err << error.description() << "\n";
        return 2;
    }
    try {
        const std::filesystem::path folder = arguments[1];
        context.out << auditSummary(exportAuditData(programPaths(context), period, folder), folder) << "\n";
        return 0;
    } catch (const RunError& error) {
        context.err << "Fehler " << error.number() << ": " << error.description() << "\n";
        return 1;
    }
}

} // namespace zw::cli
