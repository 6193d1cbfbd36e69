#include <QGuiApplication>
#include <ostream>

#include "app/AtomicFile.h"
#include "books/CashBook.h"
#include "books/JournalCheck.h"
#include "core/ReceiptForm.h"
#include "ledger/ReceiptFile.h"
#include "print/PrintCommand.h"
#include "core/RunError.h"
#include "print/ArchivePdf.h"
#include "print/Capture.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"
#include "tools/OpenedReceipt.h"

namespace zw::cli {
namespace {

constexpr const char* kOutsideNotice =
    "Die Belegliste wurde außerhalb von Zettelwerk geändert. Die Änderung ist im Änderungsprotokoll vermerkt.\n";

std::optional<BookDate> dateOption(CliContext& context, const std::string& name, bool& bad)
{
    const auto text = takeOption(context.arguments, name);
    if (!text)
        return std::nullopt;
    const auto date = parseGermanDate(*text);
    if (!date) {
        context.err << "\"" << *text << "\" ist kein Datum der Form TT.MM.JJJJ.\n";
        bad = true;
    }
    return date;
}

int usage(CliContext& context, const char* text)
{
    context.err << "Aufruf: zettelwerk-cli " << text << "\n";
    return 2;
}

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

int close(CliContext& context)
{
    const auto counted = takeOption(context.arguments, "--counted");
    const auto note = takeOption(context.arguments, "--note");
    if (context.arguments.size() > 2 || !counted)
        return usage(context, "ledger close [TT.MM.JJJJ] --counted BETRAG [--note TEXT]");
    const auto application = OpenedReceipt::startToolkit();
    const ProgramPaths paths = programPaths(context);
    CashBook book(paths);
    CashBook::CloseRequest request;
    request.day = book.today();
    if (context.arguments.size() == 2) {
        const auto day = parseGermanDate(context.arguments[1]);
        if (!day) {
            context.err << "\"" << context.arguments[1] << "\" ist kein Datum der Form TT.MM.JJJJ.\n";
            return 2;
        }
        request.day = *day;
    }
    request.counted = parseTypedAmount(*counted);
    request.note = note.value_or("");
    request.firm = firmLines(paths);
    Capture capture(paths);
    ReceiptLedger ledger;
    const auto result = book.close(ledger, request, ArchivePdf(capture));
    if (result.changedOutside)
        context.err << kOutsideNotice;
    const auto& record = result.record;
    context.out << "Tagesabschluss " << record.to.german() << "\n"
                << "Anfangsbestand: " << centsText(record.opening) << "\n"
                << "Einnahmen: " << centsText(record.takings) << "\n"
                << "Ausgaben: " << centsText(record.payouts) << "\n"
                << "Kassensoll: " << centsText(record.expected()) << "\n"
                << "Gezählt: " << centsText(record.counted) << "\n"
                << "Differenz: " << centsText(record.difference()) << "\n"
                << "Kassenbericht: " << (paths.dataFolder() / result.report.name).string() << "\n";
    return 0;
}

int report(CliContext& context)
{
    bool bad = false;
    const auto day = dateOption(context, "--day", bad);
    if (bad)
        return 2;
    if (context.arguments.size() != 2 || !day)
        return usage(context, "ledger report --day TT.MM.JJJJ AUSGABE.pdf");
    const auto application = OpenedReceipt::startToolkit();
    const ProgramPaths paths = programPaths(context);
    CashBook book(paths);
    Capture capture(paths);
    writeFileAtomically(context.arguments[1], book.reportAgain(*day, firmLines(paths), ArchivePdf(capture)));
    return 0;
}

// `ledger file QUITTUNG.ZW5` with the cash book: the row on top as the ledger's own command files it, its PDF/A
// copy in the archive, both journaled.
int file(CliContext& context)
{
    if (context.arguments.size() != 2)
        return runLedger(context);
    const std::filesystem::path receipt = context.arguments[1];
    ReceiptForm form;
    openReceiptFile(receipt, form);
    std::string rowText;
    for (const auto& field : ledgerRow(form))
        rowText += field + "\t";
    rowText.pop_back();
    const OpenedReceipt opened(context, receipt);
    const ProgramPaths& paths = opened.paths;
    CashBook book(paths);
    const BookDate day = parseGermanDate(form.text(FormElement::Text9)).value_or(book.today());
    Capture capture(paths);
    const auto outcome = book.fileOnTop(rowText, [&]() -> std::optional<ArchivedFile> {
        return archiveFile(paths, day.year, receiptArchiveStem(form.text(FormElement::Text1), day), ".pdf",
                           ArchivePdf(capture).receiptPdf(opened.form));
    });
    if (outcome.changedOutside)
        context.err << kOutsideNotice;
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
            return file(context);
        if (what == "storno")
            return storno(context);
        if (what == "close")
            return close(context);
        return report(context);
    } catch (const RunError& error) {
        return failed(context, error);
    }
}

} // namespace zw::cli
