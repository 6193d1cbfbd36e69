#pragma once

#include <QDialog>
#include <string>

#include "service/ZipArchive.h"

class QFileSystemModel;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListView;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTreeView;

namespace zw {

class FormHost;
class ProgramPaths;

// "Datensicherung": packs daten/ into backup_zw6.zip in a chosen folder and restores it over the program folder.
class datensicherung : public QDialog
{
public:
    datensicherung(const ProgramPaths& paths, FormHost& host, QWidget* parent);

    // The folder the tree shows as chosen.
    QString folder() const;
    void chooseFolder(const QString& folder);

private:
    // The controls a job's panel shares with the other: path, start key, bar, percentage and result.
    struct JobPanel
    {
        QGridLayout* grid;
        QLineEdit* path;
        QPushButton* start;
        QProgressBar* bar;
        QLineEdit* status; // the percentage the packer writes
        QLabel* result;
    };
    struct JobNames
    {
        const char *path, *start, *caption, *bar, *status, *result;
    };
    static JobPanel jobPanel(QGroupBox* panel, QLabel* intro, const JobNames& names, const QString& note);
    // Runs pack or restore with the panel's key disabled meanwhile, its bar fed, and the count shown.
    void runJob(const JobPanel& panel,
                int (*job)(const ProgramPaths&, const std::string&, const ZipStatus&, const ZipNotice&),
                std::string (*countText)(int));
    void deleteArchive();
    void createFolder();
    void showPanel(int index);
    void showFiles();

    const ProgramPaths& m_paths;
    FormHost& m_host;
    QFileSystemModel* m_folders;
    QFileSystemModel* m_files;
    QTreeView* m_tree;
    QListView* m_fileList;
    QStackedWidget* m_panels;
    JobPanel m_packing{}, m_restoring{};
    QLineEdit* m_newFolder;
    QPushButton *m_backupPanel, *m_restorePanel;
};

} // namespace zw
