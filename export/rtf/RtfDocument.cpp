#include "export/rtf/RtfDocument.h"

namespace zw::rtf {

std::string Paragraph::text() const
{
    std::string out;
    for (const auto& run : runs)
        out += run.text;
    return out;
}

std::string Document::plainText() const
{
    std::string out;
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        if (i > 0)
            out += '\n';
        out += paragraphs[i].text();
    }
    return out;
}

void Document::append(std::string text, const CharFormat& format)
{
    if (text.empty())
        return;
    if (paragraphs.empty())
        newParagraph();
    auto& runs = paragraphs.back().runs;
    if (!runs.empty() && runs.back().format == format && !runs.back().picture)
        runs.back().text += text;
    else
        runs.push_back({std::move(text), format, std::nullopt});
}

void Document::appendPicture(Picture picture, const CharFormat& format)
{
    if (paragraphs.empty())
        newParagraph();
    paragraphs.back().runs.push_back({{}, format, std::move(picture)});
}

void Document::newParagraph(Alignment alignment) { paragraphs.push_back({{}, alignment}); }

} // namespace zw::rtf
