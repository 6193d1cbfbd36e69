#pragma once

#include <string_view>

#include "export/rtf/RtfDocument.h"

namespace zw::rtf {

// Reads the RTF that the program's rich-text boxes use: groups, the font and colour tables, \par, \line, \tab,
// \b \i \ul \ulnone \strike \fs \f \cf \plain \pard, the alignments, the escapes \\ \{ \} \~ \'hh and \uN with \ucN,
// and PNG pictures (\pict\pngblip, in hex or after \binN, also inside \*\shppict); other picture kinds are passed
// over. Destinations it does not show (\*..., \info, \stylesheet, \nonshppict, ...) are skipped. Bytes of 0x80 and above in
// the source are taken as UTF-8, since the program holds its rich text as UTF-8 in memory; \'hh is Windows-1252.
// Unbalanced braces and unknown words are passed over: a damaged report still shows what it can.
Document readRtf(std::string_view source);

} // namespace zw::rtf
