#include "ui/service/datensicherung.h"

#include <QApplication>
#include <QDir>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "core/FormHost.h"
#include "service/Backup.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"
#include "ui/service/ServiceControls.h"

namespace zw {
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

using servicewindows::button;
using servicewindows::progressBar;

datensicherung::JobPanel datensicherung::jobPanel(QGroupBox* panel, QLabel* intro, const JobNames& names,
                                                  const QString& note)
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
    job.grid->addWidget(wrapped(note, panel), 6, 0, 1, 2);
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
    m_packing = jobPanel(backup, label1,
                         {"Text1", "cmdPackIt", "Daten&sicherung starten", "ProgressBar1", "txtStatus", "Label8"},
                         "Sollte Ihnen am Ende angezeigt werden, dass 0 Dateien gesichert wurden, dann war die "
                         "Datensicherung fehlerhaft.");

    auto* restore = new QGroupBox("  Datenrücksicherung ", this);
    restore->setObjectName("Frames2");
    m_restoring = jobPanel(restore, nullptr,
                           {"Text2", "Button2", "W&iederherstellung", "ProgressBar2", "txtStatus2", "Label9"},
                           "TIPP: Die Datensicherung wird immer in das zuständige\nProgrammverzeichnis "
                           "rückgesichert. Sie finden dort ein neues\nVerzeichnis mit allen Dateien.");
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

} // namespace zw
