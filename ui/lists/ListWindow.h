#pragma once

#include <QDialog>
#include <cstdint>
#include <filesystem>
#include <functional>

#include "core/FormElement.h"
#include "lists/ListReport.h"
#include "lists/ListTable.h"

class QLabel;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QTableView;

namespace zw {

class FaultReporter;
class FormHost;
class ListModel;
class ProgramPaths;
class ReceiptForm;

// von_liste and artikel_fuer: one window over its list file, configured by its ListKind. Every change is saved
// at once; hinzu_bar fills the receipt and the window stays open.
class ListWindow : public QDialog
{
public:
    ListWindow(const ListKind& kind, ReceiptForm& form, FormHost& host, FaultReporter& faults,
               const ProgramPaths& paths, QWidget* parent = nullptr);
    ~ListWindow() override;

    ListTable& table() { return m_table; }
    QTableView* grid() const { return m_grid; }
    // The report with the given choices, as cmdHTMLStart runs it after frmReportSetup; false if it failed.
    bool makeReport(const ReportOptions& options);

    // Runs a receipt field's change event after hinzu_bar wrote the field, as typing runs it (the completion).
    std::function<void(FormElement)> fieldWritten;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void load();
    void save(GridOperation operation);
    void newRow();
    void deleteRows();
    void takeOver();
    void startReport();
    void showReport(const std::filesystem::path& file, bool inBrowser);
    void paintProgress(int percent);

    ListTable m_table;
    ReceiptForm& m_form;
    FormHost& m_host;
    FaultReporter& m_faults;
    std::filesystem::path m_file;
    std::filesystem::path m_reportFile;
    ListModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QRadioButton* m_gross = nullptr;
    QStackedWidget* m_reportPanels = nullptr;
    QLabel* m_progress = nullptr;
    QLabel* m_progressText = nullptr;
    std::int32_t m_sum = 0; // kept between two reports, as the old window did
};

} // namespace zw
