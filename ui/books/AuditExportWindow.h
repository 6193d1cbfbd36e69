#pragma once

#include <QDialog>
#include <filesystem>

#include "books/BookDate.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace zw {

class ProgramPaths;

// "Daten für die Betriebsprüfung": a period and a folder, then the audit export with its progress.
class AuditExportWindow : public QDialog
{
public:
    // The period offered first is the calendar year before `today`, the one an audit usually asks for.
    AuditExportWindow(QWidget* parent, const ProgramPaths& paths, const BookDate& today,
                      const std::filesystem::path& folder);

    QLineEdit* fromField() const { return m_from; }
    QLineEdit* toField() const { return m_to; }
    QLineEdit* folderField() const { return m_folder; }
    QLabel* resultLabel() const { return m_result; }
    QPushButton* exportButton() const { return m_export; }

    void exportData();

private:
    void chooseFolder();

    const ProgramPaths& m_paths;
    QLineEdit* m_from = nullptr;
    QLineEdit* m_to = nullptr;
    QLineEdit* m_folder = nullptr;
    QProgressBar* m_progress = nullptr;
    QLabel* m_result = nullptr;
    QPushButton* m_export = nullptr;
};

} // namespace zw
