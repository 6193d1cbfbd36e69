#include "ui/books/AuditExportWindow.h"

#include <QApplication>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "books/AuditExport.h"
#include "core/RunError.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"

namespace zw {
namespace {

constexpr const char* kTitle = "Daten für die Betriebsprüfung";

} // namespace

AuditExportWindow::AuditExportWindow(QWidget* parent, const ProgramPaths& paths, const BookDate& today,
                                     const std::filesystem::path& folder)
    : QDialog(parent), m_paths(paths)
{
    setWindowTitle(qt(kTitle));
    auto* layout = new QVBoxLayout(this);
    auto* intro =
        new QLabel(QStringLiteral("Belegliste, Änderungsprotokoll und Tagesabschlüsse des Zeitraums im "
                                  "Beschreibungsstandard der Finanzverwaltung (GDPdU/GoBD, Datenträger"
                                  "überlassung Z3): index.xml mit DTD und drei CSV-Dateien."),
                   this);
    intro->setWordWrap(true);
    layout->addWidget(intro);

    auto* grid = new QGridLayout;
    m_from = new QLineEdit(qt(BookDate{today.year - 1, 1, 1}.german()), this);
    m_to = new QLineEdit(qt(BookDate{today.year - 1, 12, 31}.german()), this);
    for (auto* field : {m_from, m_to}) {
        field->setPlaceholderText(QStringLiteral("TT.MM.JJJJ"));
        field->setMaximumWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("00.00.00000")) + 16);
    }
    auto* period = new QHBoxLayout;
    period->addWidget(m_from);
    period->addWidget(new QLabel(QStringLiteral("bis"), this));
    period->addWidget(m_to);
    period->addStretch();
    auto* periodCaption = new QLabel(QStringLiteral("&Zeitraum:"), this);
    periodCaption->setBuddy(m_from);
    grid->addWidget(periodCaption, 0, 0);
    grid->addLayout(period, 0, 1, 1, 2);
    auto* folderCaption = new QLabel(QStringLiteral("&Ordner:"), this);
    m_folder = new QLineEdit(qt(folder.string()), this);
    m_folder->setMinimumWidth(320);
    auto* browse = new QPushButton(QStringLiteral("&Durchsuchen..."), this);
    grid->addWidget(folderCaption, 1, 0);
    grid->addWidget(m_folder, 1, 1);
    grid->addWidget(browse, 1, 2);
    folderCaption->setBuddy(m_folder);
    grid->setColumnStretch(1, 1);
    layout->addLayout(grid);

    m_progress = new QProgressBar(this);
    m_progress->setRange(0, 100);
    m_progress->setValue(0);
    layout->addWidget(m_progress);
    m_result = new QLabel(this);
    m_result->setWordWrap(true);
    // Room for the two lines of the result, so the window keeps its size when it comes.
    m_result->setMinimumHeight(2 * m_result->fontMetrics().lineSpacing());
    m_result->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_result);
    auto* buttons = new QHBoxLayout;
    m_export = new QPushButton(QStringLiteral("&Exportieren"), this);
    m_export->setDefault(true);
    auto* close = new QPushButton(QStringLiteral("&Schließen"), this);
    buttons->addStretch();
    buttons->addWidget(m_export);
    buttons->addWidget(close);
    layout->addLayout(buttons);

    layout->setSizeConstraint(QLayout::SetMinimumSize);
    connect(browse, &QPushButton::clicked, this, &AuditExportWindow::chooseFolder);
    connect(m_export, &QPushButton::clicked, this, &AuditExportWindow::exportData);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
}

void AuditExportWindow::chooseFolder()
{
    const QString chosen = QFileDialog::getExistingDirectory(
        this, qt("Ordner für die Daten der Betriebsprüfung"), m_folder->text());
    if (!chosen.isEmpty())
        m_folder->setText(chosen);
}

void AuditExportWindow::exportData()
{
    m_result->clear();
    m_export->setEnabled(false);
    m_progress->setValue(0);
    try {
        const auto period = auditPeriod(m_from->text().toStdString(), m_to->text().toStdString());
        const std::filesystem::path folder = m_folder->text().trimmed().toStdString();
        // The window repaints while a long ledger is read; typing waits until the export is done.
        const auto counts = exportAuditData(m_paths, period, folder, [this](int percent) {
            m_progress->setValue(percent);
            QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        });
        m_result->setText(qt(auditSummary(counts, folder)));
    } catch (const RunError& error) {
        m_progress->setValue(0);
        MessageDialog::messageBox(this, error.description(), MessageStyle::Error, kTitle);
    }
    m_export->setEnabled(true);
}

} // namespace zw
