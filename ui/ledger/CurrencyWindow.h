#pragma once

#include <QDialog>

class QLineEdit;

namespace zw {

class CurrencyChoice;
class ProgramPaths;

// waehrung1: the currency code with its suggestion list.
class CurrencyWindow : public QDialog
{
public:
    CurrencyWindow(QWidget* parent, CurrencyChoice& choice, const ProgramPaths& paths);
    QLineEdit* waehr() const { return m_waehr; }

private:
    QLineEdit* m_waehr = nullptr;
};

} // namespace zw
