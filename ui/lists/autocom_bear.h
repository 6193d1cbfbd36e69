#pragma once

#include <QDialog>

#include "lists/AutocompleteEditor.h"

class QLabel;
class QLineEdit;
class QListWidget;

namespace zw {

class FaultReporter;

class Autocomplete;
class FormHost;

// "Autovervollständigungsdatei bearbeiten": the entries of autocom.dat in List1, to add, delete, clear, rid
// of duplicates and save; "Zurück" brings the saved file into the running completion.
class autocom_bear : public QDialog
{
public:
    // A fault of the load goes to `faults` (the error window); the buttons' faults end in the run time's message.
    autocom_bear(Autocomplete& list, FormHost& host, FaultReporter& faults, QWidget* parent = nullptr);

private:
    // Runs one button's routine; a fault it does not trap ends in the run time's message.
    void run(const std::function<void()>& routine);
    void refill();

    AutocompleteEditor m_editor;
    FormHost& m_host;
    QLineEdit* m_text1 = nullptr;
    QListWidget* m_list1 = nullptr;
    QLabel* m_label1 = nullptr;
};

} // namespace zw
