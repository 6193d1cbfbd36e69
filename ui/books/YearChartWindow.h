#pragma once

#include <QDialog>
#include <functional>

#include "books/YearFigures.h"
#include "ledger/ReceiptLedger.h"

class QChart;
class QChartView;
class QComboBox;
class QLabel;
class QPrinter;
class QPushButton;
class QTableWidget;

namespace zw {

class CommonDialog;
class FaultReporter;
class ProgramPaths;

// "Auswertung": the picture of a chosen year (takings, payouts and the cash per month) and its VAT rates, to print
// or to save as PNG or PDF. The window reads belege.dat itself when it opens.
class YearChartWindow : public QDialog
{
public:
    struct Dialogs
    {
        CommonDialog& png;
        CommonDialog& pdf;
    };
    YearChartWindow(QWidget* parent, const ProgramPaths& paths, FaultReporter& faults, Dialogs dialogs,
                    int currentYear);
    ~YearChartWindow() override;

    QComboBox* yearChooser() const { return m_years; }
    QChartView* chartView() const { return m_view; }
    QTableWidget* vatTable() const { return m_table; }
    QLabel* note() const { return m_note; }
    const YearFigures& figures() const { return m_figures; }

    void showYear(int year);
    void print();
    enum class PictureFile { Png, Pdf };
    // Asks for the file in the window's own file dialog; a cancel ends here.
    void save(PictureFile kind);

    // Shows the printer dialog; false when the user cancelled. Tests put a printer of their own here.
    std::function<bool(QPrinter& printer)> askPrinter;

private:
    void fillTable();
    void say(const QString& text);

    ReceiptLedger m_ledger;
    YearFigures m_figures;
    FaultReporter& m_faults;
    Dialogs m_dialogs;
    QComboBox* m_years = nullptr;
    QChartView* m_view = nullptr;
    QTableWidget* m_table = nullptr;
    QLabel* m_note = nullptr;
};

} // namespace zw
