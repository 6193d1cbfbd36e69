#include "ui/books/DatevWindow.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "app/CommonDialog.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"
#include "ui/frame/UserLocale.h"

namespace zw {
namespace {

constexpr const char* kTitle = "DATEV-Export";

// The account captions with their access keys, in the order of DatevAccount.
const std::array<QString, kDatevAccountCount> kAccountCaptions = {
    QStringLiteral("&Kasse:"),          QStringLiteral("Erlöse &19 %:"),   QStringLiteral("Erlöse &7 %:"),
    QStringLiteral("Erlöse &0 %:"),     QStringLiteral("A&usgaben 19 %:"), QStringLiteral("Ausgabe&n 7 %:"),
    QStringLiteral("Aus&gaben 0 %:"),   QStringLiteral("&Privatentnahme:"), QStringLiteral("Privat&einlage:"),
};

// The same calendar as the receipt's date field: German names, a grid, a popup.
QDateEdit* dateField(QWidget* parent, QDate day)
{
    auto* field = new QDateEdit(day, parent);
    field->setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
    field->setCalendarPopup(true);
    field->setLocale(QLocale(QLocale::German, QLocale::Germany));
    field->calendarWidget()->setGridVisible(true);
    field->calendarWidget()->setLocale(QLocale(QLocale::German, QLocale::Germany));
    return field;
}

BookDate bookDateOf(const QDate& day) { return {day.year(), day.month(), day.day()}; }

QLabel* buddyLabel(const QString& caption, QWidget* field, QWidget* parent)
{
    auto* label = new QLabel(caption, parent);
    label->setBuddy(field);
    return label;
}

} // namespace

DatevWindow::DatevWindow(QWidget* parent, Settings& settings, const ProgramPaths& paths, CommonDialog& fileDialog,
                         const Clock& clock)
    : QDialog(parent), m_settings(settings), m_paths(paths), m_fileDialog(fileDialog), m_clock(clock)
{
    setWindowTitle(QString::fromUtf8(kTitle));
    auto* layout = new QVBoxLayout(this);

    // The month before this one: the adviser's usual batch.
    const QDate day = today(clock);
    const QDate firstOfMonth = day.addDays(1 - day.day());
    auto* range = new QGroupBox(QStringLiteral("Zeitraum"), this);
    auto* rangeLayout = new QHBoxLayout(range);
    m_from = dateField(range, firstOfMonth.addMonths(-1));
    m_to = dateField(range, firstOfMonth.addDays(-1));
    rangeLayout->addWidget(buddyLabel(QStringLiteral("&Von:"), m_from, range));
    rangeLayout->addWidget(m_from);
    rangeLayout->addSpacing(12);
    rangeLayout->addWidget(buddyLabel(QStringLiteral("B&is:"), m_to, range));
    rangeLayout->addWidget(m_to);
    rangeLayout->addStretch();
    layout->addWidget(range);

    auto* client = new QGroupBox(QStringLiteral("Steuerberater und Mandant"), this);
    auto* clientLayout = new QGridLayout(client);
    m_consultant = new QLineEdit(client);
    m_client = new QLineEdit(client);
    m_fiscalStart = new QLineEdit(client);
    m_fiscalStart->setPlaceholderText(QStringLiteral("TT.MM."));
    m_length = new QSpinBox(client);
    m_length->setRange(4, 8);
    m_chart = new QComboBox(client);
    m_chart->addItems({QStringLiteral("SKR03"), QStringLiteral("SKR04")});
    const int width = fontMetrics().horizontalAdvance(QStringLiteral("99999999")) + 24;
    for (QWidget* field : std::initializer_list<QWidget*>{m_consultant, m_client, m_fiscalStart, m_length, m_chart})
        field->setMinimumWidth(width);
    clientLayout->addWidget(buddyLabel(QStringLiteral("&Beraternummer:"), m_consultant, client), 0, 0);
    clientLayout->addWidget(m_consultant, 0, 1);
    clientLayout->addWidget(buddyLabel(QStringLiteral("&Mandantennummer:"), m_client, client), 0, 2);
    clientLayout->addWidget(m_client, 0, 3);
    clientLayout->addWidget(buddyLabel(QStringLiteral("Beginn des &Wirtschaftsjahres:"), m_fiscalStart, client), 1, 0);
    clientLayout->addWidget(m_fiscalStart, 1, 1);
    clientLayout->addWidget(buddyLabel(QStringLiteral("S&achkontenlänge:"), m_length, client), 1, 2);
    clientLayout->addWidget(m_length, 1, 3);
    clientLayout->addWidget(buddyLabel(QStringLiteral("Konten&rahmen:"), m_chart, client), 2, 0);
    clientLayout->addWidget(m_chart, 2, 1);
    clientLayout->setColumnStretch(4, 1);
    layout->addWidget(client);

    auto* accounts = new QGroupBox(QStringLiteral("Konten"), this);
    auto* accountLayout = new QGridLayout(accounts);
    for (std::size_t i = 0; i < kDatevAccountCount; ++i) {
        const int line = static_cast<int>(i);
        m_accounts[i] = new QLineEdit(accounts);
        m_accounts[i]->setMaximumWidth(width);
        m_names[i] = new QLabel(accounts);
        m_automatic[i] = new QCheckBox(QStringLiteral("Automatikkonto"), accounts);
        m_automatic[i]->setToolTip(
            QStringLiteral("Das Konto bucht die Umsatzsteuer selbst; die Buchung erhält dann keinen BU-Schlüssel."));
        accountLayout->addWidget(buddyLabel(kAccountCaptions[i], m_accounts[i], accounts), line, 0);
        accountLayout->addWidget(m_accounts[i], line, 1);
        accountLayout->addWidget(m_automatic[i], line, 2);
        accountLayout->addWidget(m_names[i], line, 3);
        connect(m_accounts[i], &QLineEdit::textChanged, this, [this, i] { showAccountName(i); });
    }
    accountLayout->setColumnStretch(3, 1);
    layout->addWidget(accounts);

    auto* buttons = new QDialogButtonBox(this);
    auto* exportButton = buttons->addButton(QStringLiteral("E&xportieren"), QDialogButtonBox::AcceptRole);
    auto* closeButton = buttons->addButton(QStringLiteral("&Schließen"), QDialogButtonBox::RejectRole);
    exportButton->setDefault(true);
    layout->addWidget(buttons);
    connect(exportButton, &QPushButton::clicked, this, &DatevWindow::exportBatch);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::reject);

    showSettings(loadDatevSettings(m_settings));
    connect(m_chart, &QComboBox::currentIndexChanged, this, &DatevWindow::chartChanged);

    // Down each column as the eye reads it: range, adviser, then each account with its switch.
    QWidget* previous = m_from;
    for (QWidget* next : std::initializer_list<QWidget*>{m_to, m_consultant, m_client, m_fiscalStart, m_length, m_chart}) {
        setTabOrder(previous, next);
        previous = next;
    }
    for (std::size_t i = 0; i < kDatevAccountCount; ++i) {
        setTabOrder(previous, m_accounts[i]);
        setTabOrder(m_accounts[i], m_automatic[i]);
        previous = m_automatic[i];
    }
    setTabOrder(previous, exportButton);
    setTabOrder(exportButton, closeButton);
    m_from->setFocus();
}

void DatevWindow::showSettings(const DatevSettings& datev)
{
    m_consultant->setText(qt(datev.consultantNumber));
    m_client->setText(qt(datev.clientNumber));
    m_fiscalStart->setText(qt(datev.fiscalYearStart));
    m_length->setValue(datev.accountLength);
    m_chart->setCurrentIndex(datev.chart == ChartOfAccounts::SKR04 ? 1 : 0);
    for (std::size_t i = 0; i < kDatevAccountCount; ++i) {
        m_accounts[i]->setText(qt(datev.accounts[i].number));
        m_automatic[i]->setChecked(datev.accounts[i].automatic);
        showAccountName(i);
    }
}

void DatevWindow::chartChanged()
{
    const auto chart = m_chart->currentIndex() == 1 ? ChartOfAccounts::SKR04 : ChartOfAccounts::SKR03;
    const auto accounts = defaultAccounts(chart);
    for (std::size_t i = 0; i < kDatevAccountCount; ++i) {
        m_accounts[i]->setText(qt(accounts[i].number));
        m_automatic[i]->setChecked(accounts[i].automatic);
        showAccountName(i);
    }
}

void DatevWindow::showAccountName(std::size_t index)
{
    const auto chart = m_chart->currentIndex() == 1 ? ChartOfAccounts::SKR04 : ChartOfAccounts::SKR03;
    m_names[index]->setText(
        qt(std::string(accountNameOf(chart, static_cast<DatevAccount>(index), m_accounts[index]->text().toStdString()))));
}

DatevSettings DatevWindow::typedSettings() const
{
    DatevSettings datev;
    datev.consultantNumber = m_consultant->text().trimmed().toStdString();
    datev.clientNumber = m_client->text().trimmed().toStdString();
    datev.fiscalYearStart = m_fiscalStart->text().trimmed().toStdString();
    datev.accountLength = m_length->value();
    datev.chart = m_chart->currentIndex() == 1 ? ChartOfAccounts::SKR04 : ChartOfAccounts::SKR03;
    for (std::size_t i = 0; i < kDatevAccountCount; ++i)
        datev.accounts[i] = {m_accounts[i]->text().trimmed().toStdString(), m_automatic[i]->isChecked()};
    return datev;
}

void DatevWindow::exportBatch()
{
    DatevRequest request{typedSettings(), bookDateOf(m_from->date()), bookDateOf(m_to->date()), m_clock.now()};
    saveDatevSettings(m_settings, request.settings);
    // What the importer would refuse is told before the file is asked for.
    auto problem = datevSettingsProblem(request.settings);
    if (!problem)
        problem = datevRangeProblem(request.settings, request.from, request.to);
    if (problem) {
        message(*problem, true);
        return;
    }
    m_fileDialog.DialogTitle = kTitle;
    m_fileDialog.Filter = "DATEV-Buchungsstapel (*.csv)|*.csv";
    m_fileDialog.DefaultExt = "csv";
    m_fileDialog.Flags = CommonDialog::kOverwritePrompt | CommonDialog::kHideReadOnly;
    const std::filesystem::path suggested = datevFileName(request.from, request.to);
    const std::filesystem::path last = m_fileDialog.FileName;
    m_fileDialog.FileName = (last.has_parent_path() ? last.parent_path() / suggested : suggested).string();
    m_fileDialog.ShowSave();
    if (m_fileDialog.FileName.empty())
        return;
    const std::filesystem::path target = m_fileDialog.FileName;
    try {
        message(datevSummaryText(exportDatev(m_paths, request, target), target), false);
    } catch (const RunError& error) {
        message(error.description(), true);
    }
}

void DatevWindow::message(const std::string& text, bool failed)
{
    MessageDialog::messageBox(this, text, failed ? MessageStyle::Error : MessageStyle::Information, kTitle);
}

} // namespace zw
