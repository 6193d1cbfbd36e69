#pragma once

#include <string>

class QBoxLayout;
class QPlainTextEdit;
class QPushButton;
class QString;
class QWidget;

// The helpers the issuer and picture file windows share.
namespace zw::printwindows {

QString toBox(const std::string& text);
// The text boxes hold LF; the files and the form hold CR LF.
std::string fromBox(const QPlainTextEdit* box);
QPushButton* button(const char* name, const char* caption, QWidget* parent);
// "Speichern" and "Abbrechen" at the right of the window's last row.
void addSaveAndLeave(QBoxLayout* layout, QPushButton* save, QPushButton* leave);

} // namespace zw::printwindows
