#pragma once

#include <QDialog>
#include <array>
#include <vector>

#include "service/FieldLabels.h"

class QLineEdit;
class QProgressBar;
class QPushButton;

namespace zw {

class ReceiptForm;
class Settings;

// "Feldbezeichnung ändern": the fifteen printed labels of the receipt.
class feldbezeichnung : public QDialog
{
public:
    feldbezeichnung(Settings& settings, ReceiptForm& form, QWidget* parent);

    void reset();
    void save();

private:
    Settings& m_settings;
    ReceiptForm& m_form;
    std::array<QLineEdit*, kLabelSetSize> m_fields{};
    QProgressBar* m_bar;
    std::vector<QPushButton*> m_keys;
};

} // namespace zw
