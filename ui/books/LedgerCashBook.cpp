#include "ui/books/LedgerCashBook.h"

#include <QAction>
#include <QMenu>
#include <QTableView>
#include <QToolBar>

#include "app/FaultReporter.h"
#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "ledger/LedgerStore.h"
#include "print/ArchivePdf.h"
#include "ui/books/OutsideChangeNotice.h"
#include "ui/frame/MessageDialog.h"

namespace zw {

LedgerCashBook::LedgerCashBook(QWidget& window, const Capture& capture, ReceiptForm& form, ReceiptLedger& ledger,
                               const ProgramPaths& paths)
    : m_window(window), m_capture(capture), m_form(form), m_ledger(ledger), m_book(paths), m_journal(m_book, ledger)
{
    ledger.setWatcher(&m_journal);
}

LedgerCashBook::~LedgerCashBook() { m_ledger.setWatcher(nullptr); }

void LedgerCashBook::addStornoKeys(QToolBar* toolbar, QTableView* grid, Update update)
{
    auto* key = toolbar->addAction(QStringLiteral("Beleg stornieren"), this, [this, update] { storno(update); });
    key->setObjectName("storno");
    grid->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(grid, &QTableView::customContextMenuRequested, this, [this, grid, update](const QPoint& at) {
        QMenu menu(grid);
        menu.addAction(QStringLiteral("Beleg stornieren"), this, [this, update] { storno(update); });
        menu.exec(grid->viewport()->mapToGlobal(at));
    });
}

void LedgerCashBook::storno(const Update& update)
{
    const std::size_t row = m_ledger.currentRow();
    if (row == ReceiptLedger::kNoRow || row >= m_ledger.rowCount())
        return;
    const std::string number(m_ledger.cell(row, LedgerColumn::belegnr));
    if (MessageDialog::askWithCaptions(&m_window,
                                       "Soll der Beleg " + number +
                                           " storniert werden?\r\rEr bleibt in der Belegliste stehen; eine "
                                           "Gegenbuchung mit der nächsten Belegnummer gleicht ihn aus.",
                                       MessageStyle::QuestionYesNo, "Beleg stornieren",
                                       {QStringLiteral("&Ja"), QStringLiteral("&Nein")}) != kAnswerYes)
        return;
    try {
        const BookDate today = m_book.today();
        // The counter row is dated today, so today must still be open.
        if (const auto close = m_book.lastClose(); close && today <= close->to)
            throw RunError(5, closedFilingMessage(today));
        update([&](ReceiptLedger& current, const std::vector<LedgerRow>*) {
            std::string counter = stornoRow(current, number, today);
            m_journal.labelNextFiling(JournalOperation::Storno);
            current.insertRow(0, std::move(counter));
            current.setCurrentRow(0);
            return true;
        });
    } catch (const RunError& error) {
        MessageDialog::messageBox(&m_window, error.description(), MessageStyle::Warning, "Beleg stornieren");
    }
    tellOutsideChange();
}

std::optional<std::vector<std::string>> LedgerCashBook::prepareFiling(std::vector<std::string> fields)
{
    // The form's own receipt comes as its ledger row.
    if (fields.empty()) {
        const std::string row = ledgerRowText(m_form);
        for (std::size_t start = 0;;) {
            const auto tab = row.find('\t', start);
            fields.push_back(row.substr(start, tab == std::string::npos ? tab : tab - start));
            if (tab == std::string::npos)
                break;
            start = tab + 1;
        }
    }
    const BookDate today = m_book.today();
    const auto day = parseGermanDate(fields.front());
    if (const auto close = m_book.lastClose(); day && close && *day <= close->to) {
        if (MessageDialog::askWithCaptions(&m_window, closedFilingQuestion(*day, today), MessageStyle::QuestionYesNo,
                                           "Tagesabschluss", {QStringLiteral("&Ja"), QStringLiteral("&Nein")}) !=
            kAnswerYes)
            return std::nullopt;
        fields.front() = today.german();
    }
    // A payout that takes the cash below zero is filed all the same, after the warning.
    if (fields.size() > 3 && !fields[3].empty()) {
        try {
            const std::string_view payout = std::string_view(fields[3]).substr(fields[3].front() == '-' ? 1 : 0);
            if (const auto warning = cashMinusWarning(m_ledger, centsOf(payout)))
                MessageDialog::messageBox(&m_window, *warning, MessageStyle::Warning, "Kassenminus");
        } catch (const RunError&) {
            // An amount that is no number is the ledger's business, as it always was.
        }
    }
    const BookDate filed = parseGermanDate(fields.front()).value_or(today);
    const std::string number = fields.size() > 1 ? fields[1] : std::string();
    m_journal.labelNextFiling(JournalOperation::Filing,
                              archiveFile(m_book.paths(), filed.year, receiptArchiveStem(number, filed), ".pdf",
                                          ArchivePdf(m_capture).receiptPdf(m_form)));
    return fields;
}

void LedgerCashBook::tellOutsideChange()
{
    if (m_journal.takeOutsideChange())
        MessageDialog::messageBox(&m_window, kOutsideChangeNotice, MessageStyle::Warning, "Belegliste");
}

} // namespace zw
