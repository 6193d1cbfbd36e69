#pragma once

#include <QDialog>
#include <QImage>
#include <functional>

#include "print/PrintDialogFields.h"
#include "print/PrintJob.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace zw {

class ProgramPaths;
class ReceiptForm;
class RunError;
class Settings;

// The print dialog "Druckmenü": shows temp/temp_.bmp and prints it once per run on the chosen printer, paper,
// colour, quality and position. print/PrintDialogFields holds what it reads from the form and the settings and
// the request it builds; the dialog shows those fields and writes nothing back to the form.
class druckmenue2011 : public QDialog
{
public:
    druckmenue2011(const ReceiptForm& form, Settings& settings, const ProgramPaths& paths, const QString& printer,
                   PrintJob job, QWidget* parent = nullptr);

    // The printer chosen last; the next opening starts at it.
    QString chosenPrinter() const;
    // A failed print: the caller shows the error window.
    std::function<void(const RunError&)> reportFault;

    void applyPaper(Paper paper);
    void print();

private:
    Paper paper() const;
    PrintDialogFields fields() const;
    void showFields(const PrintDialogFields& fields);

    const ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    PrintJob m_job;
    QImage m_picture;
    QLabel* m_preview = nullptr;
    QComboBox* m_printers = nullptr;
    QRadioButton* m_din[3] = {};
    QRadioButton* m_colour[2] = {};
    QComboBox* m_quality = nullptr;
    QLineEdit* m_x = nullptr;
    QLineEdit* m_y = nullptr;
    QLineEdit* m_width = nullptr;
    QLineEdit* m_height = nullptr;
    QLineEdit* m_secondTop = nullptr;
    QCheckBox* m_closeAfterPrint = nullptr;
    QPushButton* m_printButton = nullptr;
};

} // namespace zw
