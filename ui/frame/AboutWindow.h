#pragma once

#include <string>

class QWidget;

namespace zw {

enum class AboutText
{
    Program,
    ProgramAndRights
};

// The windows info1 and Copyright: the program's name and version, for Copyright also the system and the
// notice of rights, and the vendor's web page; shown modally.
void showAboutWindow(QWidget* parent, const char* name, const char* title, AboutText text,
                     const std::string& webHome);

} // namespace zw
