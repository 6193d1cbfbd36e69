#pragma once

#include <string>
#include <string_view>

namespace zw {

// Text for HTML: "&", "<", ">" and '"' as entities; with lineBreaks every LF becomes "<br>" and CR falls away.
void appendHtmlEscaped(std::string& html, std::string_view text, bool lineBreaks = false);
std::string htmlEscaped(std::string_view text, bool lineBreaks = false);

} // namespace zw
