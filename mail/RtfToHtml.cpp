#include "mail/RtfToHtml.h"

#include <cstdio>

#include "core/HtmlText.h"
#include "export/rtf/RtfReader.h"

namespace zw {
namespace {

std::string runStyle(const rtf::Document& document, const rtf::CharFormat& format)
{
    std::string style;
    if (format.font >= 0 && static_cast<std::size_t>(format.font) < document.fonts.size() &&
        !document.fonts[static_cast<std::size_t>(format.font)].name.empty()) {
        style += "font-family:'" + htmlEscaped(document.fonts[static_cast<std::size_t>(format.font)].name) + "';";
    }
    style += "font-size:" + std::to_string(format.halfPoints / 2) + (format.halfPoints % 2 ? ".5pt;" : "pt;");
    if (format.colour > 0 && static_cast<std::size_t>(format.colour) <= document.colours.size()) {
        const rtf::Colour& colour = document.colours[static_cast<std::size_t>(format.colour) - 1];
        char hex[8];
        std::snprintf(hex, sizeof hex, "#%02x%02x%02x", colour.red & 0xFF, colour.green & 0xFF, colour.blue & 0xFF);
        style += "color:";
        style += hex;
        style += ';';
    }
    return style;
}

} // namespace

std::string RtfToHtml::Convert(std::string_view rtf, bool fullDocument, std::string_view title) const
{
    const rtf::Document document = rtf::readRtf(rtf);
    std::string body;
    for (const rtf::Paragraph& paragraph : document.paragraphs) {
        static constexpr const char* kAlign[] = {"left", "center", "right", "justify"};
        body += "<p style=\"margin:0;text-align:";
        body += kAlign[static_cast<int>(paragraph.alignment)];
        body += "\">";
        for (const rtf::Run& run : paragraph.runs) {
            if (run.picture || run.text.empty())
                continue;
            const rtf::CharFormat& f = run.format;
            body += "<span style=\"" + runStyle(document, f) + "\">";
            body += std::string(f.bold ? "<b>" : "") + (f.italic ? "<i>" : "") + (f.underline ? "<u>" : "") +
                    (f.strikethrough ? "<s>" : "");
            appendHtmlEscaped(body, run.text, true);
            body += std::string(f.strikethrough ? "</s>" : "") + (f.underline ? "</u>" : "") +
                    (f.italic ? "</i>" : "") + (f.bold ? "</b>" : "") + "</span>";
        }
        body += paragraph.runs.empty() ? "<br></p>\r\n" : "</p>\r\n";
    }
    if (!fullDocument)
        return body;
    return "<!DOCTYPE html>\r\n<html><head><meta charset=\"utf-8\"><title>" + htmlEscaped(title) +
           "</title></head>\r\n<body>\r\n" + body + "</body></html>\r\n";
}

} // namespace zw
