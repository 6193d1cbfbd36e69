#pragma once

class QTextDocument;

namespace zw::rtf {
struct Document;
}

namespace zw {

// Fills a Qt text document with a rich-text model: paragraphs, alignment, bold, italic, underline, strikethrough,
// size, font, colour and pictures. The screen half of the rich-text boxes; files go through export/rtf.
void showRichText(const rtf::Document& document, QTextDocument& target);

} // namespace zw
