#include "ui/books/DailyCloseWindow.h"

#include <QDesktopServices>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "core/RunError.h"
#include "ledger/LedgerStore.h"
#include "ui/books/OutsideChangeNotice.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"

namespace zw {

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
