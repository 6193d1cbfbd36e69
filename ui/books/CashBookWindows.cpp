#include "ui/books/CashBookWindows.h"

#include <QAbstractTableModel>
#include <QDesktopServices>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QUrl>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "books/JournalCheck.h"
#include "core/FormHost.h"
#include "core/RunError.h"
#include "ledger/LedgerStore.h"
#include "print/ArchivePdf.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"
#include "ui/frame/Quittung.h"

namespace zw {

// The journal's entries as a table; cells are made when shown, so a long journal lists at once.
class JournalModel : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;

    void setEntries(std::vector<JournalEntry> entries)
    {
        beginResetModel();
        m_entries = std::move(entries);
        endResetModel();
    }
    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
    }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : kJournalColumnCount; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
            return {};
        return qt(entryCells(m_entries.at(static_cast<std::size_t>(index.row()))).at(static_cast<std::size_t>(index.column())));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const char* const kCaptions[kJournalColumnCount] = {"Nr.",   "Zeit",   "Benutzer", "Vorgang",
                                                                   "Zeile", "Vorher", "Nachher"};
        if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
            return QAbstractTableModel::headerData(section, orientation, role);
        return QString::fromUtf8(kCaptions[section]);
    }

private:
    std::vector<JournalEntry> m_entries;
};

JournalWindow::JournalWindow(QWidget* parent, const ProgramPaths& paths) : QDialog(parent), m_paths(paths)
{
    setWindowTitle(QStringLiteral("Änderungsprotokoll"));
    auto* layout = new QVBoxLayout(this);
    auto* filter = new QHBoxLayout;
    m_from = new QLineEdit(this);
    m_to = new QLineEdit(this);
    for (auto* field : {m_from, m_to}) {
        field->setPlaceholderText(QStringLiteral("TT.MM.JJJJ"));
        field->setMaximumWidth(120);
    }
    auto* show = new QPushButton(QStringLiteral("&Anzeigen"), this);
    filter->addWidget(new QLabel(QStringLiteral("Von:"), this));
    filter->addWidget(m_from);
    filter->addWidget(new QLabel(QStringLiteral("Bis:"), this));
    filter->addWidget(m_to);
    filter->addWidget(show);
    filter->addStretch();
    layout->addLayout(filter);

    m_model = new JournalModel(this);
    m_table = new QTableView(this);
    m_table->setModel(m_model);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    layout->addWidget(m_table, 1);

    auto* bottom = new QHBoxLayout;
    m_verdict = new QLabel(this);
    m_verdict->setWordWrap(true);
    m_verdict->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* check = new QPushButton(QStringLiteral("&Prüfen"), this);
    auto* close = new QPushButton(QStringLiteral("&Schließen"), this);
    bottom->addWidget(m_verdict, 1);
    bottom->addWidget(check);
    bottom->addWidget(close);
    layout->addLayout(bottom);

    connect(show, &QPushButton::clicked, this, &JournalWindow::showEntries);
    connect(m_from, &QLineEdit::returnPressed, this, &JournalWindow::showEntries);
    connect(m_to, &QLineEdit::returnPressed, this, &JournalWindow::showEntries);
    connect(check, &QPushButton::clicked, this, &JournalWindow::verify);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    resize(900, 480);
    showEntries();
    verify();
    for (int column = 0; column < 5; ++column)
        m_table->resizeColumnToContents(column);
    m_table->setColumnWidth(5, 220);
}

JournalWindow::~JournalWindow() = default;

void JournalWindow::showEntries()
{
    auto listing = listJournal(m_paths, m_from->text().toStdString(), m_to->text().toStdString());
    if (!listing.problem.empty()) {
        MessageDialog::messageBox(this, listing.problem, MessageStyle::Warning, "Änderungsprotokoll");
        return;
    }
    m_model->setEntries(std::move(listing.entries));
    m_table->scrollToBottom();
}

void JournalWindow::verify()
{
    try {
        const auto verdict = verifyJournal(m_paths);
        m_verdict->setText(qt(verdict.message));
        m_verdict->setStyleSheet(verdict.sound ? QString() : QStringLiteral("color: #c00000; font-weight: bold;"));
    } catch (const RunError& error) {
        m_verdict->setText(qt(error.description()));
        m_verdict->setStyleSheet(QStringLiteral("color: #c00000; font-weight: bold;"));
    }
}

DailyCloseWindow::DailyCloseWindow(QWidget* parent, CashBook& book, const DocumentWriter& writer)
    : QDialog(parent), m_book(book), m_writer(writer)
{
    setWindowTitle(QStringLiteral("Tagesabschluss"));
    auto* layout = new QVBoxLayout(this);
    auto* dayRow = new QHBoxLayout;
    m_day = new QLineEdit(qt(m_book.today().german()), this);
    m_day->setMaximumWidth(120);
    auto* compute = new QPushButton(QStringLiteral("&Berechnen"), this);
    dayRow->addWidget(new QLabel(QStringLiteral("Tag:"), this));
    dayRow->addWidget(m_day);
    dayRow->addWidget(compute);
    dayRow->addStretch();
    layout->addLayout(dayRow);

    auto* columns = new QHBoxLayout;
    auto* figures = new QGroupBox(QStringLiteral("Kasse laut Belegliste"), this);
    auto* figureGrid = new QGridLayout(figures);
    const char* const kFigureCaptions[] = {"Anfangsbestand:", "Einnahmen:", "Ausgaben:", "Kassensoll:"};
    for (int i = 0; i < 4; ++i) {
        figureGrid->addWidget(new QLabel(QString::fromUtf8(kFigureCaptions[i]), figures), i, 0);
        m_figureLabels[static_cast<std::size_t>(i)] = new QLabel(figures);
        m_figureLabels[static_cast<std::size_t>(i)]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        figureGrid->addWidget(m_figureLabels[static_cast<std::size_t>(i)], i, 1);
    }
    m_expected = m_figureLabels[3];
    figureGrid->addWidget(new QLabel(QStringLiteral("Gezählt:"), figures), 5, 0);
    m_counted = new QLabel(figures);
    m_counted->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    figureGrid->addWidget(m_counted, 5, 1);
    figureGrid->addWidget(new QLabel(QStringLiteral("Differenz:"), figures), 6, 0);
    m_difference = new QLabel(figures);
    m_difference->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    figureGrid->addWidget(m_difference, 6, 1);
    figureGrid->addWidget(new QLabel(QStringLiteral("Notiz zur Differenz:"), figures), 7, 0, 1, 2);
    m_note = new QLineEdit(figures);
    figureGrid->addWidget(m_note, 8, 0, 1, 2);
    m_problem = new QLabel(figures);
    m_problem->setWordWrap(true);
    m_problem->setStyleSheet(QStringLiteral("color: #c00000;"));
    figureGrid->addWidget(m_problem, 9, 0, 1, 2);
    figureGrid->setRowStretch(10, 1);
    columns->addWidget(figures, 1);

    auto* sheet = new QGroupBox(QStringLiteral("Zählprotokoll"), this);
    auto* sheetGrid = new QGridLayout(sheet);
    sheetGrid->setVerticalSpacing(2);
    for (std::size_t i = 0; i < kDenominations.size(); ++i) {
        const int row = static_cast<int>(i);
        sheetGrid->addWidget(new QLabel(qt(denominationCaption(kDenominations[i])), sheet), row, 0);
        m_counts[i] = new QLineEdit(sheet);
        m_counts[i]->setMaximumWidth(70);
        m_counts[i]->setAlignment(Qt::AlignRight);
        sheetGrid->addWidget(m_counts[i], row, 1);
        m_countAmounts[i] = new QLabel(sheet);
        m_countAmounts[i]->setMinimumWidth(90);
        m_countAmounts[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        sheetGrid->addWidget(m_countAmounts[i], row, 2);
        connect(m_counts[i], &QLineEdit::textChanged, this, &DailyCloseWindow::recount);
    }
    columns->addWidget(sheet);
    layout->addLayout(columns, 1);

    auto* buttons = new QHBoxLayout;
    auto* withdrawal = new QPushButton(QStringLiteral("Private&ntnahme..."), this);
    auto* deposit = new QPushButton(QStringLiteral("Privatein&lage..."), this);
    m_closeDay = new QPushButton(QStringLiteral("&Abschließen"), this);
    auto* close = new QPushButton(QStringLiteral("&Schließen"), this);
    buttons->addWidget(withdrawal);
    buttons->addWidget(deposit);
    buttons->addStretch();
    buttons->addWidget(m_closeDay);
    buttons->addWidget(close);
    layout->addLayout(buttons);

    connect(compute, &QPushButton::clicked, this, &DailyCloseWindow::refresh);
    connect(m_day, &QLineEdit::returnPressed, this, &DailyCloseWindow::refresh);
    connect(withdrawal, &QPushButton::clicked, this, [this] { privateRow(JournalOperation::PrivateWithdrawal); });
    connect(deposit, &QPushButton::clicked, this, [this] { privateRow(JournalOperation::PrivateDeposit); });
    connect(m_closeDay, &QPushButton::clicked, this, &DailyCloseWindow::closeDay);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    refresh();
    m_counts.front()->setFocus();
}

void DailyCloseWindow::message(const std::string& text, MessageStyle style)
{
    MessageDialog::messageBox(this, text, style, "Tagesabschluss");
}

void DailyCloseWindow::tellOutsideChange(bool changed)
{
    if (changed)
        message(kOutsideChangeNotice, MessageStyle::Warning);
}

void DailyCloseWindow::refresh()
{
    m_figures.reset();
    m_refusal.clear();
    const auto day = parseGermanDate(m_day->text().toStdString());
    try {
        if (!day)
            throw RunError(13, "\"" + m_day->text().toStdString() + "\" ist kein Datum der Form TT.MM.JJJJ.");
        try {
            loadLedger(m_ledger, m_book.paths());
        } catch (const RunError& error) {
            if (error.number() != RunError::fileNotFound().number())
                throw;
        }
        m_figures = m_book.preview(m_ledger, *day);
        m_refusal = m_book.closeRefusal(*day).value_or("");
    } catch (const RunError& error) {
        m_refusal = error.description();
    }
    const CloseRecord empty;
    const CloseRecord& record = m_figures ? m_figures->record : empty;
    const Cents values[] = {record.opening, record.takings, record.payouts, record.expected()};
    for (std::size_t i = 0; i < m_figureLabels.size(); ++i)
        m_figureLabels[i]->setText(m_figures ? qt(centsText(values[i]) + " EUR") : QString());
    recount();
}

void DailyCloseWindow::recount()
{
    std::array<std::string, kDenominations.size()> typed;
    for (std::size_t i = 0; i < typed.size(); ++i)
        typed[i] = m_counts[i]->text().toStdString();
    const auto evaluation = evaluateCounts(typed);
    for (std::size_t i = 0; i < typed.size(); ++i) {
        const Cents amount = evaluation.sheet.counts[i] * kDenominations[i];
        m_countAmounts[i]->setText(amount != 0 ? qt(centsText(amount) + " EUR") : QString());
    }
    m_counted->setText(qt(centsText(evaluation.sheet.total()) + " EUR"));
    if (!m_figures) {
        m_difference->clear();
        m_problem->setText(qt(m_refusal));
        m_closeDay->setEnabled(false);
        return;
    }
    m_problem->setText(qt(m_refusal.empty() ? evaluation.problem : m_refusal));
    const Cents difference = evaluation.sheet.total() - m_figures->record.expected();
    m_difference->setText(qt(centsText(difference) + " EUR"));
    m_difference->setStyleSheet(difference != 0 ? QStringLiteral("color: #c00000; font-weight: bold;") : QString());
    m_closeDay->setEnabled(evaluation.problem.empty() && m_refusal.empty());
}

void DailyCloseWindow::closeDay()
{
    const auto day = parseGermanDate(m_day->text().toStdString());
    if (!day || !m_figures)
        return;
    std::array<std::string, kDenominations.size()> typed;
    for (std::size_t i = 0; i < typed.size(); ++i)
        typed[i] = m_counts[i]->text().toStdString();
    const auto evaluation = evaluateCounts(typed);
    CashBook::CloseRequest request{*day, evaluation.sheet.total(), evaluation.sheet,
                                   m_note->text().toStdString(), firmLines(m_book.paths())};
    try {
        const auto result = m_book.close(m_ledger, request, m_writer);
        tellOutsideChange(result.changedOutside);
        const auto report = m_book.paths().dataFolder() / result.report.name;
        const int answer = MessageDialog::askWithCaptions(
            this,
            "Die Kasse ist bis zum " + result.record.to.german() + " abgeschlossen. Der Kassenbericht liegt in\r" +
                report.string() + "\r\rSoll er jetzt zum Drucken geöffnet werden?",
            MessageStyle::QuestionYesNo, "Tagesabschluss", {QStringLiteral("&Ja"), QStringLiteral("&Nein")});
        if (answer == kAnswerYes)
            QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(report.string())));
        accept();
    } catch (const RunError& error) {
        message(error.description(), MessageStyle::Error);
    }
}

void DailyCloseWindow::privateRow(JournalOperation operation)
{
    const bool withdrawal = operation == JournalOperation::PrivateWithdrawal;
    const std::string title = withdrawal ? "Privatentnahme" : "Privateinlage";
    const auto day = parseGermanDate(m_day->text().toStdString());
    if (!day)
        return;
    const auto amountText = MessageDialog::askText(this, "Betrag der " + title + " in EUR:", MessageStyle::Information,
                                                   title, "", MessageDialog::HelpOpener());
    if (!amountText)
        return;
    try {
        const Cents amount = parseTypedAmount(*amountText);
        if (withdrawal)
            if (const auto warning = cashMinusWarning(m_ledger, amount))
                message(*warning, MessageStyle::Warning);
        const auto note = MessageDialog::askText(this, "Notiz (freiwillig):", MessageStyle::Information, title, "",
                                                 MessageDialog::HelpOpener());
        const auto outcome = m_book.privateRow(m_ledger, operation, *day, amount, note.value_or(""));
        tellOutsideChange(outcome.changedOutside);
    } catch (const RunError& error) {
        message(error.description(), MessageStyle::Error);
    }
    refresh();
}

} // namespace zw
