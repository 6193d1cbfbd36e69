#include "ui/service/webupdate1.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "app/Version.h"
#include "core/FormHost.h"
#include "core/RunError.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"
#include "ui/service/ServiceControls.h"

namespace zw {

namespace fs = std::filesystem;

using servicewindows::button;
using servicewindows::progressBar;

webupdate1::webupdate1(const ProgramPaths& paths, FormHost& host, std::function<void()> endProgram, QWidget* parent)
    : QDialog(parent), m_paths(paths), m_host(host), m_endProgram(std::move(endProgram))
{
    setObjectName("webupdate1");
    setWindowTitle("WebUp");
    setModal(true);
    auto* grid = new QGridLayout(this);
    const char* captionLabels[5] = {"", "Name:", "Version:", "Größe der Datei:", "Download:"};
    for (int i = 0; i < 5; ++i) {
        m_captions[static_cast<std::size_t>(i)] = new QLabel(this);
        m_captions[static_cast<std::size_t>(i)]->setObjectName(QString("Text%1").arg(i + 1));
        m_captions[static_cast<std::size_t>(i)]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        grid->addWidget(new QLabel(captionLabels[i], this), i, 0);
        grid->addWidget(m_captions[static_cast<std::size_t>(i)], i, 1, 1, 2);
    }
    auto* folderLabel = new QLabel("&Zielordner:", this);
    m_txtFolder = new QLineEdit(qt((paths.tempFolder() / "").string()), this);
    m_txtFolder->setObjectName("txtFolder");
    folderLabel->setBuddy(m_txtFolder);
    m_folder2 = button("Command2", "...", this);
    m_folder2->setToolTip("Verzeichnis wählen");
    m_folder2->setFixedWidth(m_folder2->fontMetrics().horizontalAdvance("...") + 24);
    // The default folder exists in every install; a removed one comes back rather than failing the fetch.
    std::error_code ignored;
    fs::create_directories(paths.tempFolder(), ignored);
    grid->addWidget(folderLabel, 5, 0);
    grid->addWidget(m_txtFolder, 5, 1);
    grid->addWidget(m_folder2, 5, 2);
    m_prb = progressBar("PRB", this);
    grid->addWidget(m_prb, 6, 0, 1, 3);
    const std::pair<int, const char*> infos[] = {{0, "Dateigröße:"}, {1, "Empfangen:"}, {5, "Geschwindigkeit:"}};
    int row = 7;
    for (const auto& [index, caption] : infos) {
        auto* info = new QLabel(caption, this);
        info->setObjectName("lblInfo");
        m_lblInfo.push_back(info);
        auto* value = new QLabel(this);
        value->setObjectName(QString("lblStatus%1").arg(index));
        m_lblInfo.push_back(value);
        m_lblStatus[static_cast<std::size_t>(index)] = value;
        grid->addWidget(info, row, 0);
        grid->addWidget(value, row++, 1, 1, 2);
    }
    m_lblStatus[6] = new QLabel(this);
    m_lblStatus[6]->setObjectName("lblStatus6");
    grid->addWidget(m_lblStatus[6], row++, 0, 1, 3);
    m_check1 = button("Command1", " Über&prüfen", this);
    m_check1->setToolTip("Prüfen ob bereits ein Update vorhanden ist.");
    m_update4 = button("Command4", " &Update", this);
    m_update4->setToolTip("Online-Update starten");
    m_update4->setEnabled(false);
    auto* close = button("Command5", " &Abbrechen", this);
    auto* keys = new QHBoxLayout;
    keys->addWidget(m_check1);
    keys->addWidget(m_update4);
    keys->addStretch();
    keys->addWidget(close);
    grid->addLayout(keys, row, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnMinimumWidth(1, 360);
    m_prb->hide();
    for (QWidget* info : m_lblInfo)
        info->hide();

    m_download = std::make_unique<clsDownload>(m_poster);
    m_download->Update = [this] { showProgress(); };
    m_download->Finished = [this] { downloaded(); };
    connect(m_check1, &QPushButton::clicked, this, &webupdate1::check);
    connect(m_update4, &QPushButton::clicked, this, &webupdate1::fetch);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_folder2, &QPushButton::clicked, this, [this] {
        const QString chosen = QFileDialog::getExistingDirectory(this, "Bitte wählen Sie einen Ordner:");
        if (!chosen.isEmpty())
            m_txtFolder->setText(chosen + "/");
    });
}

webupdate1::~webupdate1() = default;

void webupdate1::done(int result)
{
    // Closing during a transfer stops it; its end then changes nothing here.
    m_closing = true;
    m_download->StopDownload();
    if (m_description)
        m_description->abort();
    QDialog::done(result);
}

void webupdate1::check()
{
    m_check1->setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    net::TransferEvents events;
    events.finished = [this](const net::TransferResult&) {
        QApplication::restoreOverrideCursor();
        m_check1->setEnabled(true);
        if (m_closing)
            return;
        faulttrap::trapped([&] {
            const auto outcome = m_check.take(m_description->body(), m_paths.home() / "webup.inf", versionText());
            for (std::size_t i = 0; i < m_captions.size(); ++i)
                m_captions[i]->setText(qt(m_check.captions[i]).remove(QChar(0)).remove(QChar(8)));
            const QString status = qt(updateStatusText(outcome));
            if (outcome == UpdateOutcome::Newer) {
                m_lblStatus[6]->setText(status);
                m_update4->setEnabled(true);
                m_check1->setEnabled(false);
            } else if (outcome == UpdateOutcome::Same) {
                m_host.showMessage(updateStatusText(outcome), static_cast<MessageStyle>(112), "Online-Update");
                m_lblStatus[6]->setText(status);
            }
        })();
    };
    m_description = std::make_unique<net::Transfer>(m_poster, std::move(events));
    m_description->start(updateDescriptionRequest(vendorAddresses(m_paths)));
}

void webupdate1::fetch()
{
    m_prb->show();
    for (QWidget* info : m_lblInfo)
        info->show();
    const std::string folder = m_txtFolder->text().toStdString();
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        m_host.showMessage("Bitte ein gültiges, vorhandenes Verzeichnis angeben.", MessageStyle::Warning, "WebUp");
        return;
    }
    m_update4->setEnabled(false);
    m_folder2->setEnabled(false);
    m_lblStatus[6]->setText("Status: Download wird gestartet. Bitte warten ...");
    m_download->Download(m_captions[4]->text().toStdString(), folder);
}

void webupdate1::showProgress()
{
    // The user's own separators, not the German ones the program's widgets default to.
    const QLocale locale = QLocale::system();
    const auto shown = downloadDisplay(*m_download, {locale.groupSeparator().toStdString(),
                                                     locale.decimalPoint().toStdString()});
    if (m_download->ErrorNumber == 0) {
        m_lblStatus[0]->setText(qt(shown.size));
        m_lblStatus[1]->setText(qt(shown.received));
        m_lblStatus[5]->setText(qt(shown.speed));
        m_prb->setValue(shown.percent);
    }
    m_lblStatus[6]->setText(qt(shown.status));
    // The running line stands for a moment only: every block ends on the finished line, as it always did.
    if (m_download->ErrorNumber == 0) {
        m_lblStatus[6]->repaint();
        m_lblStatus[6]->setText(qt(downloadEndStatus(*m_download)));
    }
}

void webupdate1::downloaded()
{
    if (m_closing)
        return;
    m_lblStatus[6]->setText(qt(downloadEndStatus(*m_download)));
    if (m_download->ErrorNumber != 0)
        return; // nothing arrived that could be renamed or started
    fs::path installer;
    if (!faulttrap::trapped([&] {
            installer = renameInstaller(m_txtFolder->text().toStdString());
            return true;
        })())
        return;
    // Asked in the message shape: its "JA" starts the update.
    if (MessageDialog::showMessage(this, updateStartQuestion(), MessageStyle::QuestionYesNo, "Update") != kAnswerYes)
        return;
    QDesktopServices::openUrl(QUrl::fromLocalFile(qt(installer.string())));
    QTimer::singleShot(2000, this, [this] { m_endProgram(); });
}

} // namespace zw
