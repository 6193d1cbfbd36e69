#pragma once

#include <QDialog>
#include <array>
#include <memory>

#include "service/WebUpdate.h"
#include "service/ZipArchive.h"
#include "ui/frame/PartContext.h"
#include "ui/net/QtEventPoster.h"

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
class Quittung;
class SettingsStore;

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
    static JobPanel jobPanel(QGroupBox* panel, QLabel* intro, const JobNames& names);
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

// "WebUp": asks the vendor's server for a newer version and fetches its installer.
class webupdate1 : public QDialog
{
public:
    webupdate1(const ProgramPaths& paths, FormHost& host, std::function<void()> endProgram, QWidget* parent);
    ~webupdate1() override;

protected:
    void done(int result) override;

private:
    void check();
    void fetch();
    void showProgress();
    void downloaded();

    const ProgramPaths& m_paths;
    FormHost& m_host;
    std::function<void()> m_endProgram;
    QtEventPoster m_poster;
    std::unique_ptr<net::Transfer> m_description;
    std::unique_ptr<clsDownload> m_download;
    UpdateCheck m_check;
    bool m_closing = false;
    std::array<QLabel*, 5> m_captions{};
    std::array<QLabel*, 7> m_lblStatus{}; // 0 size, 1 received, 5 speed, 6 status
    QLineEdit* m_txtFolder;
    QProgressBar* m_prb;
    std::vector<QWidget*> m_lblInfo;
    QPushButton *m_check1, *m_update4, *m_folder2;
};

// The backup window, the settings export and both update commands join the main window here.
void installService(const PartContext& context);

} // namespace zw
