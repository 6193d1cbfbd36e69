#pragma once

#include <string>
#include <string_view>

namespace zw {

// HTML from the rich text of a message editor: bold, italic, underline, strike-through, colour, font, size,
// alignment and line breaks, every text escaped. With fullDocument a whole HTML 5 page in UTF-8 with the title.
class RtfToHtml
{
public:
    std::string Convert(std::string_view rtf, bool fullDocument, std::string_view title) const;
};

} // namespace zw
