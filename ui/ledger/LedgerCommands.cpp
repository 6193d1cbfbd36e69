#include "ui/ledger/LedgerCommands.h"
#include "ui/frame/QtText.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <tuple>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "app/SettingsStore.h"
#include "ledger/LedgerStore.h"
#include "ledger/Totals.h"
#include "print/LedgerPrint.h"
#include "ui/books/LedgerCashBook.h"
#include "ui/ledger/CashBalanceWindow.h"
#include "ui/ledger/CurrencyWindow.h"
#include "ui/ledger/LedgerModel.h"
#include "ui/ledger/ReportWindow.h"
#include "ui/ledger/TotalWindow.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/ShortcutBar.h"

namespace zw {
namespace {


// The hourglass of LoadLedger and SaveLedger.
struct WaitCursor
{
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

} // namespace

LedgerPart::LedgerPart(Quittung& window, ReceiptForm& form, Settings& settings, const ProgramPaths& paths)
    : QObject(&window), m_window(window), m_form(form), m_settings(settings), m_paths(paths),
      m_operations(m_ledger, form, window, [this](const LedgerChangeRoutine& change) { return update(change); }),
      m_files(form, settings, window),
      m_currency(form, settings, window)
{
    setObjectName("LedgerPart");
    askFileName = [this](FileDialog kind) {
        if (kind == FileDialog::Save)
            return QFileDialog::getSaveFileName(&m_window, "Quittung speichern unter", {}, "Zettelwerk Datei (*.ZW5)");
        return QFileDialog::getOpenFileName(&m_window, "Quittung öffnen", {},
                                            kind == FileDialog::Open ? "Zettelwerk Datei (*.ZW5)"
                                                                     : "Zettelwerk Datei bis V4.x (*.ZWI)");
    };
    printerDialog = [this](QPrinter& printer) {
        QPrintDialog dialog(&printer, &m_window);
        dialog.exec(); // the answer is not looked at: the list goes to the default printer in any case
    };
    m_books = std::make_unique<LedgerCashBook>(window, window.capture(), form, m_ledger, paths);
    buildPage();
    m_books->addStornoKeys(m_toolbar, m_grid, [this](const LedgerChangeRoutine& change) { return update(change); });
    registerCommands();
    buildBooksPanel();
    {
        WaitCursor hourglass;
        try {
            loadLedger(m_ledger, m_paths);
        } catch (const RunError& error) {
            // The first run has no belege.dat; the start goes on with an empty grid. A ledger that exists but
            // could not be read is said once; filing is then refused, so the file is never written over.
            if (error.number() != RunError::fileNotFound().number())
                m_window.faultReporter().report(error, "Quittung");
        }
    }
    if (m_ledger.rowCount() > 0)
        m_grid->setCurrentIndex(m_model->index(0, 0));
    m_operations.alle_felder();
    m_window.installEventFilter(this);
}

bool LedgerPart::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_window && event->type() == QEvent::WindowActivate)
        followOtherPrograms();
    return QObject::eventFilter(watched, event);
}

void LedgerPart::followOtherPrograms()
{
    try {
        WaitCursor hourglass;
        if (reloadLedgerIfChanged(m_ledger, m_paths) && m_ledger.rowCount() > 0)
            m_grid->setCurrentIndex(m_model->index(0, 0));
    } catch (const RunError&) {
        // The grid stays as it was; filing says why the file cannot be used, activating the window does not.
    }
}

LedgerPart::~LedgerPart() = default;

void LedgerPart::buildPage()
{
    auto* page = new QWidget;
    page->setObjectName("ledgerPage");
    auto* layout = new QVBoxLayout(page);
    m_toolbar = new QToolBar(page);
    m_toolbar->setObjectName("Coolbar2");
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const std::pair<const char*, const char*> keys[] = {{"anzeigen", "Anzeigen"},
                                                        {"bearbeiten", "Bearbeiten"},
                                                        {"loeschen", "Löschen"},
                                                        {"alle_felder", "Alle Felder"},
                                                        {"drucken", "Drucken"}};
    for (auto [key, caption] : keys) {
        QAction* action = m_toolbar->addAction(caption, this, [this, name = std::string(key)] { runToolbarKey(name); });
        action->setObjectName(key);
    }
    auto* more = new QMenu(m_toolbar);
    for (auto [key, caption] : {std::pair{"einnahmen_drucken", "Nur Einnahmen drucken"},
                                {"ausgaben_drucken", "Nur Ausgaben drucken"},
                                {"loeschen_gesamt", "Gesamte Belegliste löschen"}}) {
        QAction* action = more->addAction(caption, this, [this, name = std::string(key)] { runToolbarKey(name); });
        action->setObjectName(key);
    }
    if (auto* printButton = qobject_cast<QToolButton*>(m_toolbar->widgetForAction(m_toolbar->actions().last()))) {
        printButton->setMenu(more);
        printButton->setPopupMode(QToolButton::MenuButtonPopup);
    }
    layout->addWidget(m_toolbar);

    m_model = new LedgerModel(m_ledger, this);
    m_model->cellEdited = [this](std::size_t row, int column, const std::string& value) {
        trapped("Quittung", [&] { m_operations.cellEdited(row, column, value); });
    };
    m_grid = new QTableView(page);
    m_grid->setObjectName("Grid1");
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    for (int column = 0; column < kLedgerColumnCount; ++column)
        m_grid->setColumnWidth(column, ledgerColumns()[static_cast<std::size_t>(column)].widthTwips / kTwipsPerPixel);
    layout->addWidget(m_grid, 1);

    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (!current.isValid())
                    return;
                m_ledger.setCurrentRow(static_cast<std::size_t>(current.row()));
                selectRow(m_operations.buffer(), m_ledger, current.row() + 1);
            });
    m_ledger.addListener([this](const LedgerChange& change, LedgerPhase phase) {
        if (phase == LedgerPhase::After && change.kind == LedgerChange::Kind::Columns)
            m_grid->setColumnHidden(change.column, !m_ledger.isColumnVisible(change.column));
    });

    // The form and the ledger share the window as the two tabs of sevTabStrip1.
    m_tabs = m_window.addTabBesideReceipt(page, "Belegliste");
}

void LedgerPart::registerCommands()
{
    auto fileCommand = [this](const char* name, std::function<void()> routine) {
        m_window.setCommand(name, [this, routine] { trapped("Quittung", routine); });
    };
    fileCommand("save", [this] { m_files.save(askFileName(FileDialog::Save).toStdString()); });
    fileCommand("oeffnen", [this] { m_files.open(askFileName(FileDialog::Open).toStdString()); });
    fileCommand("oeffnen_vorv5", [this] { m_files.openOld(askFileName(FileDialog::OpenOld).toStdString()); });
    fileCommand("men_dat", [this] {
        QAction* last = m_window.action("men_dat");
        m_files.openLast(last ? last->text().toStdString() : std::string());
    });

    m_window.setCommand("waehrungfestlegen", [this] { m_window.openWindow("waehrung1"); });
    m_window.setWindowOpener("waehrung1", [this] {
        CurrencyWindow window(&m_window, m_currency, m_paths);
        window.exec();
    });
    m_window.setCommand("report", [this] { m_window.openWindow("report1"); });
    m_window.setWindowOpener("report1", [this] {
        ReportWindow window(&m_window, m_ledger, m_paths, m_window.faultReporter());
        window.exec();
    });
    m_window.setCommand("einnahmenn", [this] { m_window.openWindow("ein1"); });
    m_window.setWindowOpener("ein1", [this] {
        TotalWindow window(&m_window, TotalWindow::Kind::Income, m_ledger, m_form.text(FormElement::Text2),
                           m_settings, m_window.faultReporter());
        window.exec();
    });
    m_window.setCommand("ausgabenn", [this] { m_window.openWindow("aus1"); });
    m_window.setWindowOpener("aus1", [this] {
        TotalWindow window(&m_window, TotalWindow::Kind::Expense, m_ledger, m_form.text(FormElement::Text2),
                           m_settings, m_window.faultReporter());
        window.exec();
    });
    m_window.setCommand("kasse", [this] { m_window.openWindow("kassenstand"); });
    m_window.setWindowOpener("kassenstand", [this] {
        CashBalanceWindow window(&m_window, m_ledger, m_form.text(FormElement::Text2), m_window.faultReporter());
        window.exec();
    });

}

void LedgerPart::buildBooksPanel()
{
    ShortcutBar& bar = m_window.shortcutBar();
    using P = ShortcutPanel;
    QWidget* panel = bar.addPanel(P::Books, "OutlookContainer4", "Buchhaltung");
    auto* caption = new QLabel("Einnahmen und Ausgaben", panel);
    caption->setWordWrap(true);
    bar.addControl({P::Books, 0}, caption);
    int row = 0;
    for (auto [total, name, title] : {std::tuple{&m_booksPanel.income, "Label21", "Einnahmen:"},
                                      {&m_booksPanel.expense, "Label23", "Ausgaben:"},
                                      {&m_booksPanel.balance, "Label25", "Differenz:"}}) {
        auto* line = new QHBoxLayout;
        line->addWidget(new QLabel(title, panel));
        line->addStretch();
        auto* value = new QLabel("0,00", panel);
        value->setObjectName(name);
        line->addWidget(value);
        *total = value;
        bar.addControl({P::Books, row += 10}, line);
    }
    auto* currencyLine = new QHBoxLayout;
    currencyLine->addWidget(new QLabel("Aktuelle Währung:", panel));
    m_booksPanel.currency = new QLabel("EUR", panel);
    m_booksPanel.currency->setObjectName("Label28");
    currencyLine->addWidget(m_booksPanel.currency);
    currencyLine->addStretch();
    bar.addControl({P::Books, 40}, currencyLine);
    bar.addKey({P::Books, 50}, "Button3", "Daten &aktualisieren", [this] { refreshTotals(); });
}

void LedgerPart::trapped(const char* formName, const std::function<void()>& routine)
{
    try {
        routine();
    } catch (const RunError& error) {
        m_window.faultReporter().report(error, formName);
    }
}

bool LedgerPart::update(const LedgerChangeRoutine& change)
{
    bool changed = false;
    {
        WaitCursor hourglass;
        changed = updateLedger(m_ledger, m_paths, change);
    }
    m_books->tellOutsideChange();
    return changed;
}

void LedgerPart::fileReceipt()
{
    fileReceiptRow({});
}

void LedgerPart::fileReceiptRow(const std::vector<std::string>& fields)
{
    // The cash book may give the receipt today's date for a closed day, or keep it from the ledger.
    const auto filed = m_books->prepareFiling(fields);
    if (!filed)
        return;
    {
        WaitCursor hourglass;
        zw::fileReceiptRow(m_ledger, *filed, m_paths);
    }
    m_grid->setCurrentIndex(m_model->index(0, 0));
    m_books->tellOutsideChange();
}

void LedgerPart::runToolbarKey(const std::string& key)
{
    trapped("Quittung", [&] {
        if (key == "anzeigen") {
            WaitCursor hourglass;
            m_operations.anzeigen();
            if (m_tabs->count() > 1)
                m_tabs->setCurrentIndex(0);
        } else if (key == "bearbeiten") {
            m_operations.bearbeiten();
        } else if (key == "loeschen") {
            m_operations.loeschen();
        } else if (key == "loeschen_gesamt") {
            m_operations.loeschen_gesamt();
        } else if (key == "alle_felder") {
            m_operations.alle_felder();
        } else if (key == "drucken") {
            printList(LedgerList::drucken);
        } else if (key == "einnahmen_drucken") {
            printList(LedgerList::einnahmen_drucken);
        } else if (key == "ausgaben_drucken") {
            printList(LedgerList::ausgaben_drucken);
        }
    });
}

void LedgerPart::printList(LedgerList kind)
{
    QPrinter printer;
    if (printerDialog)
        printerDialog(printer);
    printLedgerList(ledgerList(m_ledger, kind), printer);
}

void LedgerPart::refreshTotals()
{
    trapped("Quittung", [&] {
        const auto totals = panelTotals(m_ledger, m_settings);
        const auto& panel = m_booksPanel;
        panel.expense->setText(qt(totals.expense));
        panel.income->setText(qt(totals.income));
        panel.balance->setText(qt(totals.balance));
        panel.currency->setText(qt(totals.currency));
        QPalette colours = panel.balance->palette();
        colours.setColor(QPalette::WindowText, totals.balanceNegative
                                                   ? QColor(255, 0, 0)
                                                   : QApplication::palette().color(QPalette::ButtonText));
        panel.balance->setPalette(colours);
    });
}

LedgerPart& installLedgerPart(const PartContext& context)
{
    auto* part = new LedgerPart(context.window, context.form, context.settings, context.paths);
    context.window.setReceiptFiler([part](const std::vector<std::string>& row) { part->fileReceiptRow(row); });
    return *part;
}

void installLedger(const PartContext& context)
{
    installLedgerPart(context);
}

} // namespace zw
