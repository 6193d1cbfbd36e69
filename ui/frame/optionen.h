#pragma once

#include <QDialog>
#include <memory>

class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace zw {

class OptionenLogic;

// The settings window: it shows the fields of its logic and hands every click to it.
class optionen : public QDialog
{
public:
    optionen(QWidget* parent, OptionenLogic& logic);

    // Runs the load steps; a failure ends the load and is thrown on after the fields show what was loaded.
    void laden();

private:
    void showFields();
    void takeEdits();

    OptionenLogic& m_logic;
    QRadioButton* m_option1 = nullptr;
    QRadioButton* m_option2 = nullptr;
    QLineEdit* m_rate = nullptr;
    QLineEdit* m_abstand = nullptr;
    QLineEdit* m_anzahl = nullptr;
    QLineEdit* m_oben = nullptr;
    QLineEdit* m_number = nullptr;
    QLineEdit* m_type = nullptr;
    QLabel* m_buttonStyle = nullptr;
    QCheckBox* m_calculation = nullptr;
    QCheckBox* m_date = nullptr;
    QCheckBox* m_ruler = nullptr;
    QCheckBox* m_tips = nullptr;
    bool m_showing = false;
};

} // namespace zw
