#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ledger/Currency.h"
#include "ledger/LedgerOperations.h"
#include "ledger/ReceiptFile.h"
#include "ledger/ReceiptLedger.h"
#include "ui/frame/PartContext.h"

class QLabel;
class QPrinter;
class QTableView;
class QTabWidget;
class QToolBar;

namespace zw {

class LedgerCashBook;
class LedgerModel;
class ProgramPaths;
class Quittung;
class ReceiptForm;
class Settings;

// The ledger, receipt files, totals, currency and report as parts of the main window. It offers the window its
// receipt filer, through which printing files a receipt without knowing the ledger.
class LedgerPart : public QObject
{
public:
    LedgerPart(Quittung& window, ReceiptForm& form, Settings& settings, const ProgramPaths& paths);
    ~LedgerPart() override;

    ReceiptLedger& ledger() { return m_ledger; }
    LedgerOperations& operations() { return m_operations; }
    QTableView* grid() const { return m_grid; }
    QTabWidget* tabs() const { return m_tabs; }
    QToolBar* toolbar() const { return m_toolbar; }

    // Filing with Save_Check on: the receipt becomes row 1 and belege.dat is rewritten.
    void fileReceipt();
    void fileReceiptRow(const std::vector<std::string>& fields);

    // A key of the ledger toolbar Coolbar2, under the common error trap.
    void runToolbarKey(const std::string& key);
    // Button3 "Daten &aktualisieren".
    void refreshTotals();
    // Reloads the grid when another program changed belege.dat; the window runs it whenever it is activated.
    void followOtherPrograms();

    // Stand-ins for the common dialogs, so that the commands run without a person.
    enum class FileDialog { Open, OpenOld, Save };
    std::function<QString(FileDialog)> askFileName;
    std::function<void(QPrinter&)> printerDialog;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void buildPage();
    void registerCommands();
    void buildBooksPanel();
    void trapped(const char* formName, const std::function<void()>& routine);
    void printList(LedgerList kind);
    bool update(const LedgerChangeRoutine& change);

    Quittung& m_window;
    ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    ReceiptLedger m_ledger;
    // Before the grid's model, so that the cash book hears a change first and can refuse it.
    std::unique_ptr<LedgerCashBook> m_books;
    LedgerOperations m_operations;
    ReceiptFileCommands m_files;
    CurrencyChoice m_currency;
    LedgerModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QTabWidget* m_tabs = nullptr;
    QToolBar* m_toolbar = nullptr;
    // The totals of the shortcut bar's panel "Buchhaltung".
    struct BooksPanel
    {
        QLabel* income = nullptr;   // Label21
        QLabel* expense = nullptr;  // Label23
        QLabel* balance = nullptr;  // Label25
        QLabel* currency = nullptr; // Label28
    } m_booksPanel;
};

// Builds the ledger tab, loads belege.dat and registers the commands and windows of the ledger; the part's state
// is returned for the tests that look into it.
LedgerPart& installLedgerPart(const PartContext& context);
void installLedger(const PartContext& context);

} // namespace zw
