#include "ui/service/ServiceWindows.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QTreeView>
#include <QUrl>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "app/SettingsStore.h"
#include "app/VendorAddresses.h"
#include "app/Version.h"
#include "core/RunError.h"
#include "service/Backup.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/fehlerform.h"

namespace zw {

namespace fs = std::filesystem;

namespace {

QLabel* wrapped(const QString& text, QWidget* owner)
{
    auto* label = new QLabel(text, owner);
    label->setWordWrap(true);
    return label;
}

QLineEdit* readOnlyField(const char* name, QWidget* owner)
{
    auto* field = new QLineEdit(owner);
    field->setObjectName(name);
    field->setReadOnly(true);
    return field;
}

QProgressBar* progressBar(const char* name, QWidget* owner)
{
    auto* bar = new QProgressBar(owner);
    bar->setObjectName(name);
    bar->setRange(0, 100);
    bar->setValue(0);
    return bar;
}

QPushButton* button(const char* name, const QString& caption, QWidget* owner)
{
    auto* key = new QPushButton(caption, owner);
    key->setObjectName(name);
    return key;
}

// The packer's percentage reaches the box and the bar, and the window repaints while the job runs.
ZipStatus statusInto(QLineEdit* box, QProgressBar* bar)
{
    return [box, bar](const std::string& percent) {
        box->setText(qt(percent));
        bar->setValue(progressValueOf(percent));
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
}


} // namespace

datensicherung::JobPanel datensicherung::jobPanel(QGroupBox* panel, QLabel* intro, const JobNames& names)
{
    JobPanel job{new QGridLayout(panel), readOnlyField(names.path, panel), button(names.start, names.caption, panel),
                 progressBar(names.bar, panel), readOnlyField(names.status, panel), new QLabel(panel)};
    job.result->setObjectName(names.result);
    job.status->setMaximumWidth(60);
    if (intro != nullptr)
        job.grid->addWidget(intro, 0, 0, 1, 2);
    job.grid->addWidget(new QLabel("Pfad der Sicherungsdatei:", panel), 1, 0);
    job.grid->addWidget(job.path, 1, 1);
    job.grid->addWidget(new QLabel("Name der Sicherungsdatei:", panel), 2, 0);
    job.grid->addWidget(new QLabel(kBackupArchiveName, panel), 2, 1);
    job.grid->addWidget(job.start, 3, 0);
    job.grid->addWidget(job.bar, 3, 1);
    job.grid->addWidget(job.status, 4, 0);
    job.grid->addWidget(job.result, 4, 1);
    job.grid->setRowStretch(7, 1);
    return job;
}

datensicherung::datensicherung(const ProgramPaths& paths, FormHost& host, QWidget* parent)
    : QDialog(parent), m_paths(paths), m_host(host)
{
    setObjectName("datensicherung");
    setWindowTitle("Datensicherung");
    setModal(true);

    m_folders = new QFileSystemModel(this);
    m_folders->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    m_folders->setRootPath("/");
    m_tree = new QTreeView(this);
    m_tree->setObjectName("TreeEx1");
    m_tree->setModel(m_folders);
    for (int column = 1; column < m_folders->columnCount(); ++column)
        m_tree->hideColumn(column);
    m_tree->header()->hide();
    m_files = new QFileSystemModel(this);
    m_files->setFilter(QDir::Files);
    m_files->setNameFilters({"*.zip"});
    m_files->setNameFilterDisables(false);
    m_fileList = new QListView(this);
    m_fileList->setObjectName("File1");
    m_fileList->setModel(m_files);
    auto* left = new QVBoxLayout;
    left->addWidget(m_tree, 3);
    left->addWidget(m_fileList, 1);

    m_panels = new QStackedWidget(this);
    auto* welcome = new QGroupBox("  Herzlich willkommen ", this);
    welcome->setObjectName("Frames3");
    auto* welcomeText = new QVBoxLayout(welcome);
    welcomeText->addWidget(wrapped("Wählen Sie links den Ordner, in dem die Sicherungsdatei liegt oder angelegt "
                                   "werden soll, und anschließend unten \"Datensicherung\" oder \"Wiederherstellen\".",
                                   welcome));
    welcomeText->addStretch();

    auto* backup = new QGroupBox(" Datensicherung anlegen ", this);
    backup->setObjectName("xpFrame1");
    auto* label1 = wrapped("Starten Sie hier die Datensicherung. Es wird der gesamte Inhalt des Programmverzeichnisses "
                           "mit Ausnahme der dort enthaltenen Ordner gesichert.",
                           backup);
    label1->setObjectName("Label1");
    m_packing = jobPanel(backup, label1, {"Text1", "cmdPackIt", "Daten&sicherung starten", "ProgressBar1",
                                                   "txtStatus", "Label8"});
    m_packing.grid->addWidget(wrapped("Sollte Ihnen am Ende angezeigt werden, dass 0 Dateien gesichert wurden, dann "
                                    "war die Datensicherung fehlerhaft.",
                                    backup),
                            6, 0, 1, 2);

    auto* restore = new QGroupBox("  Datenrücksicherung ", this);
    restore->setObjectName("Frames2");
    m_restoring = jobPanel(restore, nullptr, {"Text2", "Button2", "W&iederherstellung", "ProgressBar2",
                                                       "txtStatus2", "Label9"});
    m_restoring.grid->addWidget(wrapped("TIPP: Die Datensicherung wird immer in das zuständige\nProgrammverzeichnis "
                                      "rückgesichert. Sie finden dort ein neues\nVerzeichnis mit allen Dateien.",
                                      restore),
                              6, 0, 1, 2);
    for (QWidget* panel : {static_cast<QWidget*>(welcome), static_cast<QWidget*>(backup),
                           static_cast<QWidget*>(restore)})
        m_panels->addWidget(panel);

    auto* top = new QHBoxLayout;
    top->addLayout(left, 2);
    top->addWidget(m_panels, 3);

    m_backupPanel = button("Button3", "&Datensicherung", this);
    m_restorePanel = button("cmdExtractIt", "&Wiederherstellen", this);
    auto* remove = button("Button1", "Sicherung &löschen", this);
    auto* folderLabel = new QLabel("Neuer &Ordner:", this);
    folderLabel->setObjectName("xpLabel1");
    m_newFolder = new QLineEdit(this);
    m_newFolder->setObjectName("xpText1");
    folderLabel->setBuddy(m_newFolder);
    auto* create = button("anlegen", "&Anlegen", this);
    auto* back = button("xpButton1", "&Zurück", this);
    auto* keys = new QHBoxLayout;
    for (QWidget* key : {static_cast<QWidget*>(m_backupPanel), static_cast<QWidget*>(m_restorePanel),
                         static_cast<QWidget*>(remove), static_cast<QWidget*>(folderLabel),
                         static_cast<QWidget*>(m_newFolder), static_cast<QWidget*>(create)})
        keys->addWidget(key);
    keys->addStretch();
    keys->addWidget(back);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(keys);

    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index) { chooseFolder(m_folders->filePath(index)); });
    connect(m_backupPanel, &QPushButton::clicked, this, [this] { showPanel(1); });
    connect(m_restorePanel, &QPushButton::clicked, this, [this] { showPanel(2); });
    connect(m_packing.start, &QPushButton::clicked, this, [this] { runJob(m_packing, &packData, &packedText); });
    connect(m_restoring.start, &QPushButton::clicked, this,
            [this] { runJob(m_restoring, &restoreData, &restoredText); });
    connect(remove, &QPushButton::clicked, this, &datensicherung::deleteArchive);
    connect(create, &QPushButton::clicked, this, &datensicherung::createFolder);
    connect(back, &QPushButton::clicked, this, &QDialog::accept);

    showPanel(0);
    chooseFolder(QDir::homePath());
    resize(820, 520);
}

QString datensicherung::folder() const { return m_packing.path->text(); }

void datensicherung::chooseFolder(const QString& folder)
{
    const QModelIndex index = m_folders->index(folder);
    if (m_tree->currentIndex() != index) {
        m_tree->setCurrentIndex(index);
        m_tree->scrollTo(index);
    }
    m_packing.path->setText(folder);
    m_restoring.path->setText(folder);
    showFiles();
}

void datensicherung::showFiles()
{
    m_fileList->setRootIndex(m_files->setRootPath(folder()));
}

void datensicherung::showPanel(int index)
{
    m_panels->setCurrentIndex(index);
    m_backupPanel->setEnabled(index != 1);
    m_restorePanel->setEnabled(index != 2);
}

void datensicherung::runJob(const JobPanel& panel,
                            int (*job)(const ProgramPaths&, const std::string&, const ZipStatus&, const ZipNotice&),
                            std::string (*countText)(int))
{
    panel.start->setEnabled(false);
    const int count = job(m_paths, folder().toStdString(), statusInto(panel.status, panel.bar),
                          [this](const std::string& message) {
                              m_host.showMessage(message, MessageStyle::Warning, "Datensicherung");
                          });
    panel.result->setText(qt(countText(count)));
    showFiles(); // a new archive is listed at once
    panel.start->setEnabled(true);
}

void datensicherung::deleteArchive()
{
    const QString file = m_files->fileName(m_fileList->currentIndex());
    const std::string question = deleteArchiveQuestion(folder().toStdString(), file.toStdString());
    if (MessageDialog::askWithCaptions(this, question, MessageStyle::QuestionYesNo, "Sicherungsdatei löschen",
                                       {"Weiter prüfen...", "Hilfe", "Hilfe"}) != kAnswerYes)
        return;
    faulttrap::trapped([&] {
        deleteBackupArchive(folder().toStdString(), file.toStdString());
        showFiles();
    })();
}

void datensicherung::createFolder()
{
    faulttrap::trapped([&] {
        createBackupFolder(folder().toStdString(), m_newFolder->text().toStdString());
        m_newFolder->clear();
        showFiles();
    })();
}

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

void installService(const PartContext& context)
{
    Quittung& window = context.window;
    const SettingsStore& settings = context.settings;
    const ProgramPaths& paths = context.paths;
    window.setCommand("sicherung", [&window, &paths] { window.openWindow("datensicherung"); });
    window.setWindowOpener("datensicherung", [&window, &paths] {
        datensicherung backup(paths, window, &window);
        backup.exec();
    });
    window.setCommand("regspeichern", [&window, &settings, &paths] {
        regspeichern(window.fileDialog("regspeichern"), paths, settings.fileOf("zettelwerk"), window,
                     [](const fs::path& script) {
                         QProcess::startDetached("/bin/sh", {qt(script.string())}, qt(script.parent_path().string()));
                     });
    });
    window.setCommand("updaten", [&window, &paths] {
        updaten(window, vendorAddresses(paths),
                [](const std::string& url) { QDesktopServices::openUrl(QUrl(qt(url))); });
    });
    window.setCommand("webup", [&window] { window.openWindow("webupdate1"); });
    window.setWindowOpener("webupdate1", [&window, &paths] {
        webupdate1 update(paths, window, [&window] { window.unloadAll(); }, &window);
        update.exec();
    });
}

} // namespace zw
