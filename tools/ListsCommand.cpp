#include <ostream>

#include "app/AtomicFile.h"
#include "core/RunError.h"
#include "lists/ListReport.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {

// `lists report von_liste|artikel_fuer [--rows N] [--title TEXT] OUT.htm`: the list window's report of the
// program folder's list file, with the window's defaults.
int runLists(CliContext& context)
{
    auto& arguments = context.arguments;
    ReportOptions options;
    const auto rows = takeOption(arguments, "--rows");
    if (const auto title = takeOption(arguments, "--title"))
        options.title = *title;
    const ListKind* kind = arguments.size() == 3 && arguments[0] == "report" ? listKindNamed(arguments[1]) : nullptr;
    if (rows) {
        try {
            options.rowsPerPage = std::stoi(*rows);
        } catch (const std::exception&) {
            options.rowsPerPage = 0;
        }
    }
    if (kind == nullptr || options.rowsPerPage < 1) {
        context.err << "Aufruf: zettelwerk-cli lists report von_liste|artikel_fuer [--rows N] [--title TEXT] "
                       "BERICHT.htm\n";
        return 2;
    }
    try {
        ListTable table(*kind);
        table.load(programPaths(context).home() / kind->file);
        std::int32_t sum = 0;
        writeFileAtomically(arguments[2], listReportHtml(table, options, nullptr, todayText(), sum));
        return 0;
    } catch (const RunError& error) {
        context.err << "Fehler " << error.number() << ": " << error.description() << "\n";
        return 1;
    }
}

} // namespace zw::cli
