#pragma once

#include <string>

class QProgressBar;
class QPushButton;
class QString;
class QWidget;

// The helpers the service's windows share.
namespace zw::servicewindows {

QPushButton* button(const char* name, const QString& caption, QWidget* owner);
QProgressBar* progressBar(const char* name, QWidget* owner);
// A text of the data folder with its CR LF line ends, as a text box shows it.
QString lines(const std::string& text);

} // namespace zw::servicewindows
