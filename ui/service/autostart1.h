#pragma once

#include <QDialog>
#include <string>

class QLineEdit;
class QPushButton;

namespace zw {

class FormHost;

// "Autostartfunktion": the program in the desktop session's autostart, or out of it.
class autostart1 : public QDialog
{
public:
    autostart1(const std::string& programPath, FormHost& host, QWidget* parent);

private:
    FormHost& m_host;
    QLineEdit* m_filename;
    QPushButton* m_add;
};

} // namespace zw
