#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "books/CashBook.h"
#include "books/LedgerJournal.h"
#include "ledger/ReceiptLedger.h"

class QTableView;
class QToolBar;
class QWidget;

namespace zw {

class Capture;
class ReceiptForm;

// The cash book beside the ledger window: every change of its grid is journaled, a filed receipt keeps its PDF/A
// copy in the archive, no receipt is filed on a closed day, and "Beleg stornieren" files a counter row.
class LedgerCashBook : public QObject
{
public:
    using Update = std::function<bool(const LedgerChangeRoutine&)>;

    // Before the grid's model listens to the ledger, so that a refused change never reaches the view. Owned by the
    // ledger window's part, which keeps the ledger.
    LedgerCashBook(QWidget& window, const Capture& capture, ReceiptForm& form, ReceiptLedger& ledger,
                   const ProgramPaths& paths);
    ~LedgerCashBook() override;

    // The key "Beleg stornieren" in the toolbar and in the grid's context menu.
    void addStornoKeys(QToolBar* toolbar, QTableView* grid, Update update);
    // Before a receipt is filed: the fields to file (with today's date when the user takes it for a closed day),
    // or nothing when it is not filed. The filing gets the receipt's archive copy.
    std::optional<std::vector<std::string>> prepareFiling(std::vector<std::string> fields);
    // After a change: a ledger found changed outside the program is told once.
    void tellOutsideChange();

private:
    void storno(const Update& update);

    QWidget& m_window;
    const Capture& m_capture;
    ReceiptForm& m_form;
    ReceiptLedger& m_ledger;
    CashBook m_book;
    LedgerJournal m_journal;
};

} // namespace zw
