#include <ostream>

#include "books/CashBook.h"
#include "books/JournalCheck.h"
#include "core/RunError.h"
#include "tools/BooksOptions.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"

namespace zw::cli {
namespace {

using books::dateOption;
using books::kOutsideNotice;
using books::usage;

int storno(CliContext& context)
{
    if (context.arguments.size() != 2)
        return usage(context, "ledger storno NUMMER");
    const ProgramPaths paths = programPaths(context);
    CashBook book(paths);
    ReceiptLedger ledger;
    const auto outcome = book.storno(ledger, context.arguments[1]);
    if (outcome.changedOutside)
        context.err << kOutsideNotice;
    context.out << "Beleg " << context.arguments[1] << " storniert mit Beleg "
                << ledger.cell(0, LedgerColumn::belegnr) << ".\n";
    return 0;
}

int failed(CliContext& context, const RunError& error)
{
    context.err << "Fehler " << error.number() << ": " << error.description() << "\n";
    return 1;
}

} // namespace

// `journal verify` and `journal show [--from TT.MM.JJJJ] [--to TT.MM.JJJJ]`.
int runJournal(CliContext& context)
{
    try {
        bool bad = false;
        const auto from = dateOption(context, "--from", bad);
        const auto to = dateOption(context, "--to", bad);
        if (bad)
            return 2;
        const ProgramPaths paths = programPaths(context);
        if (context.arguments.size() == 1 && context.arguments[0] == "verify" && !from && !to) {
            const auto verdict = verifyJournal(paths);
            (verdict.sound ? context.out : context.err) << verdict.message << "\n";
            return verdict.sound ? 0 : 1;
        }
        if (context.arguments.size() == 1 && context.arguments[0] == "show") {
            if (showJournal(paths, from, to, context.out) == 0)
                context.out << "Keine Einträge.\n";
            return 0;
        }
        return usage(context, "journal verify | journal show [--from TT.MM.JJJJ] [--to TT.MM.JJJJ]");
    } catch (const RunError& error) {
        return failed(context, error);
    }
}

// The cash book's commands of `ledger`; the others go on to the ledger's own.
int runLedgerWithBooks(CliContext& context)
{
    const std::string what = context.arguments.empty() ? std::string() : context.arguments[0];
    if (what == "chart")
        return runLedgerChart(context);
    if (what == "gdpdu")
        return runAuditExport(context);
    if (what != "storno" && what != "close" && what != "report" && what != "file")
        return runLedger(context);
    try {
        if (what == "file")
            return runLedgerFile(context);
        if (what == "storno")
            return storno(context);
        if (what == "close")
            return runLedgerClose(context);
        return runLedgerReport(context);
    } catch (const RunError& error) {
        return failed(context, error);
    }
}

} // namespace zw::cli
