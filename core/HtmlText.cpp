#include "core/HtmlText.h"

namespace zw {

void appendHtmlEscaped(std::string& html, std::string_view text, bool lineBreaks)
{
    for (char c : text) {
        switch (c) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\r':
            if (!lineBreaks)
                html += c;
            break;
        case '\n':
            html += lineBreaks ? "<br>" : "\n";
            break;
        default:
            html += c;
        }
    }
}

std::string htmlEscaped(std::string_view text, bool lineBreaks)
{
    std::string html;
    html.reserve(text.size());
    appendHtmlEscaped(html, text, lineBreaks);
    return html;
}

} // namespace zw
