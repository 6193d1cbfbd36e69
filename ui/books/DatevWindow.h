#pragma once

#include <QDialog>
#include <array>
#include <string>

#include "books/DatevExport.h"

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace zw {

class CommonDialog;
class ProgramPaths;
class Settings;
class Clock;

// "DATEV-Export": the range, the adviser's numbers, the chart and its accounts; "Exportieren" asks for the file
// and writes the booking batch.
class DatevWindow : public QDialog
{
public:
    DatevWindow(QWidget* parent, Settings& settings, const ProgramPaths& paths, CommonDialog& fileDialog,
                const Clock& clock);

    QDateEdit* fromField() const { return m_from; }
    QDateEdit* toField() const { return m_to; }
    QLineEdit* consultantField() const { return m_consultant; }
    QLineEdit* clientField() const { return m_client; }
    QComboBox* chartChoice() const { return m_chart; }
    QLineEdit* accountField(DatevAccount which) const { return m_accounts[static_cast<std::size_t>(which)]; }
    QCheckBox* automaticSwitch(DatevAccount which) const { return m_automatic[static_cast<std::size_t>(which)]; }

    // The settings as the fields hold them.
    DatevSettings typedSettings() const;
    // Stores the fields, asks for the file and writes it; every refusal is told in German.
    void exportBatch();

private:
    void showSettings(const DatevSettings& datev);
    void chartChanged();
    void showAccountName(std::size_t index);
    void message(const std::string& text, bool failed);

    Settings& m_settings;
    const ProgramPaths& m_paths;
    CommonDialog& m_fileDialog;
    const Clock& m_clock;
    QDateEdit* m_from = nullptr;
    QDateEdit* m_to = nullptr;
    QLineEdit* m_consultant = nullptr;
    QLineEdit* m_client = nullptr;
    QLineEdit* m_fiscalStart = nullptr;
    QSpinBox* m_length = nullptr;
    QComboBox* m_chart = nullptr;
    std::array<QLineEdit*, kDatevAccountCount> m_accounts{};
    std::array<QLabel*, kDatevAccountCount> m_names{};
    std::array<QCheckBox*, kDatevAccountCount> m_automatic{};
};

} // namespace zw
