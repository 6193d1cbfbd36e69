#include "ui/books/YearChartWindow.h"

#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "app/CommonDialog.h"
#include "app/FaultReporter.h"
#include "core/RunError.h"
#include "ledger/LedgerStore.h"
#include "print/YearChart.h"

namespace zw {
namespace {

constexpr std::string_view kWindowName = "auswertung";

} // namespace

YearChartWindow::YearChartWindow(QWidget* parent, const ProgramPaths& paths, FaultReporter& faults, Dialogs dialogs,
                                 int currentYear)
    : QDialog(parent), m_faults(faults), m_dialogs(dialogs)
{
    setWindowTitle(QStringLiteral("Auswertung"));
    askPrinter = [this](QPrinter& printer) {
        QPrintDialog dialog(&printer, this);
        return dialog.exec() == QDialog::Accepted;
    };

    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    m_years = new QComboBox(this);
    auto* yearCaption = new QLabel(QStringLiteral("&Jahr:"), this);
    yearCaption->setBuddy(m_years);
    top->addWidget(yearCaption);
    top->addWidget(m_years);
    top->addStretch();
    layout->addLayout(top);

    m_view = new QChartView(this);
    m_view->setRenderHint(QPainter::Antialiasing);
    m_view->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(m_view, 1);

    m_table = new QTableWidget(this);
    m_table->setColumnCount(static_cast<int>(kVatTableColumns));
    QStringList captions;
    for (const auto& caption : vatTableCaptions())
        captions << QString::fromStdString(caption);
    m_table->setHorizontalHeaderLabels(captions);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    m_table->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(m_table);

    auto* bottom = new QHBoxLayout;
    m_note = new QLabel(this);
    m_note->setWordWrap(true);
    auto* printKey = new QPushButton(QStringLiteral("&Drucken..."), this);
    auto* pngKey = new QPushButton(QStringLiteral("Als P&NG speichern..."), this);
    auto* pdfKey = new QPushButton(QStringLiteral("Als PD&F speichern..."), this);
    auto* closeKey = new QPushButton(QStringLiteral("&Schließen"), this);
    bottom->addWidget(m_note, 1);
    for (auto* key : {printKey, pngKey, pdfKey, closeKey})
        bottom->addWidget(key);
    layout->addLayout(bottom);
    closeKey->setDefault(true);

    connect(printKey, &QPushButton::clicked, this, &YearChartWindow::print);
    connect(pngKey, &QPushButton::clicked, this, [this] { save(PictureFile::Png); });
    connect(pdfKey, &QPushButton::clicked, this, [this] { save(PictureFile::Pdf); });
    connect(closeKey, &QPushButton::clicked, this, &QDialog::accept);

    try {
        loadLedger(m_ledger, paths);
    } catch (const RunError& error) {
        // Before the first filing there is no ledger; the year is shown empty.
        if (error.number() != RunError::fileNotFound().number())
            m_faults.report(error, kWindowName);
    }
    showYear(currentYear);
    // The pass for this year found every year of the ledger; after a faulty row only this year is offered.
    std::vector<int> years = m_figures.years;
    if (!std::binary_search(years.begin(), years.end(), currentYear))
        years.insert(std::lower_bound(years.begin(), years.end(), currentYear), currentYear);
    for (int year : years)
        m_years->addItem(QString::number(year), year);
    m_years->setCurrentIndex(m_years->findData(currentYear));
    connect(m_years, &QComboBox::currentIndexChanged, this,
            [this](int index) { showYear(m_years->itemData(index).toInt()); });
    m_years->setFocus();
    resize(980, 700);
}

YearChartWindow::~YearChartWindow() = default;

void YearChartWindow::showYear(int year)
{
    try {
        m_figures = yearFigures(m_ledger, year);
    } catch (const RunError& error) {
        m_faults.report(error, kWindowName);
        m_figures = YearFigures{};
        m_figures.year = year;
    }
    QChart* old = m_view->chart();
    QChart* chart = newYearChart(m_figures);
    m_view->setChart(chart);
    delete old;
    // The month names follow the room the window gives them.
    connect(chart, &QChart::plotAreaChanged, this, [chart] { fitMonthCaptions(*chart); }, Qt::QueuedConnection);
    fillTable();
    say(m_figures.undatedRows == 0
            ? QString()
            : QStringLiteral("%1 Zeilen der Belegliste ohne lesbares Datum sind nicht enthalten.")
                  .arg(m_figures.undatedRows));
}

void YearChartWindow::fillTable()
{
    const auto rows = vatTableRows(m_figures);
    m_table->setRowCount(static_cast<int>(rows.size()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < kVatTableColumns; ++column) {
            auto* item = new QTableWidgetItem(QString::fromStdString(rows[row][column]));
            item->setTextAlignment((column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
            if (row + 1 == rows.size()) {
                QFont bold = item->font();
                bold.setBold(true);
                item->setFont(bold);
            }
            m_table->setItem(static_cast<int>(row), static_cast<int>(column), item);
        }
    }
    // As high as its rows, so the table never scrolls and the chart takes the rest.
    int height = m_table->horizontalHeader()->height() + 2 * m_table->frameWidth();
    for (int row = 0; row < m_table->rowCount(); ++row)
        height += m_table->rowHeight(row);
    m_table->setFixedHeight(height);
    m_table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void YearChartWindow::say(const QString& text) { m_note->setText(text); }

void YearChartWindow::print()
{
    QPrinter printer;
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(yearChartTitle(m_figures.year));
    if (!askPrinter(printer))
        return;
    try {
        printYearPicture(m_figures, printer);
    } catch (const RunError& error) {
        m_faults.report(error, kWindowName);
    }
}

void YearChartWindow::save(PictureFile kind)
{
    const bool png = kind == PictureFile::Png;
    CommonDialog& dialog = png ? m_dialogs.png : m_dialogs.pdf;
    dialog.DialogTitle = png ? "Auswertung als PNG speichern" : "Auswertung als PDF speichern";
    dialog.Filter = png ? "PNG-Bild (*.png)|*.png" : "PDF-Dokument (*.pdf)|*.pdf";
    dialog.DefaultExt = png ? "png" : "pdf";
    dialog.FileName = yearChartTitle(m_figures.year).toStdString() + "." + dialog.DefaultExt;
    dialog.Flags = CommonDialog::kOverwritePrompt | CommonDialog::kPathMustExist;
    dialog.ShowSave();
    if (dialog.FileName.empty())
        return;
    try {
        if (png)
            saveYearPicturePng(m_figures, dialog.FileName, kYearPictureSize);
        else
            saveYearPicturePdf(m_figures, dialog.FileName);
        say(QStringLiteral("Gespeichert: %1").arg(QString::fromStdString(dialog.FileName)));
    } catch (const RunError& error) {
        m_faults.report(error, kWindowName);
    }
}

} // namespace zw
