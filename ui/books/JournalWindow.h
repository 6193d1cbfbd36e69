#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QTableView;

namespace zw {

class JournalModel;
class ProgramPaths;

// "Änderungsprotokoll": the journal's entries between two days and the verdict of its check.
class JournalWindow : public QDialog
{
public:
    JournalWindow(QWidget* parent, const ProgramPaths& paths);
    ~JournalWindow() override;

    QLineEdit* fromField() const { return m_from; }
    QLineEdit* toField() const { return m_to; }
    QTableView* table() const { return m_table; }
    QLabel* verdict() const { return m_verdict; }

    void showEntries();
    void verify();

private:
    const ProgramPaths& m_paths;
    QLineEdit* m_from = nullptr;
    QLineEdit* m_to = nullptr;
    QTableView* m_table = nullptr;
    JournalModel* m_model = nullptr;
    QLabel* m_verdict = nullptr;
};

} // namespace zw
