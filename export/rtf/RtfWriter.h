#pragma once

#include <ostream>
#include <string>

#include "export/rtf/RtfDocument.h"

namespace zw::rtf {

// Writes RTF 1.x in the program's form: the header with code page and language, the font and colour tables,
// \viewkind4\uc1, then one \par per paragraph. Characters outside ASCII are written as \'hh when Windows-1252 has
// them, else as \uN?; the result is plain ASCII.
void writeRtf(const Document& document, std::ostream& out);
std::string writeRtf(const Document& document);

} // namespace zw::rtf
