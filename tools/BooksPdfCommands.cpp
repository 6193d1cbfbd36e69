#include <QGuiApplication>
#include <ostream>

#include "app/AtomicFile.h"
#include "books/CashBook.h"
#include "core/ReceiptForm.h"
#include "ledger/ReceiptFile.h"
#include "print/ArchivePdf.h"
#include "print/Capture.h"
#include "print/PrintCommand.h"
#include "tools/BooksOptions.h"
#include "tools/CliContext.h"
#include "tools/Commands.h"
#include "tools/Environment.h"
#include "tools/OpenedReceipt.h"

// The cash book's commands that draw its PDF/A documents, run by the full command line.
namespace zw::cli {

using books::dateOption;
using books::kOutsideNotice;
using books::usage;

int runLedgerClose(CliContext& context)
{
    const auto counted = takeOption(context.arguments, "--counted");
    const auto note = takeOption(context.arguments, "--note");
    if (context.arguments.size() > 2 || !counted)
        return usage(context, "ledger close [TT.MM.JJJJ] --counted BETRAG [--note TEXT]");
    const auto application = startToolkit<QGuiApplication>();
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

int runLedgerReport(CliContext& context)
{
    bool bad = false;
    const auto day = dateOption(context, "--day", bad);
    if (bad)
        return 2;
    if (context.arguments.size() != 2 || !day)
        return usage(context, "ledger report --day TT.MM.JJJJ AUSGABE.pdf");
    const auto application = startToolkit<QGuiApplication>();
    const ProgramPaths paths = programPaths(context);
    CashBook book(paths);
    Capture capture(paths);
    writeFileAtomically(context.arguments[1], book.reportAgain(*day, firmLines(paths), ArchivePdf(capture)));
    return 0;
}

// `ledger file QUITTUNG.ZW5` with the cash book: the row on top as the ledger's own command files it, its PDF/A
// copy in the archive, both journaled.
int runLedgerFile(CliContext& context)
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

} // namespace zw::cli
