#pragma once

#include <QImage>

#include "export/BitmapFile.h"
#include "export/rtf/RtfDocument.h"

class QTextCursor;
class QTextDocument;

namespace zw {

// The pixels of a picture in the plain form the writers take; the alpha channel, if any, is dropped.
Bitmap bitmapOfImage(const QImage& image);

// Inserts a picture at the cursor as the rich-text box holds it: the image a resource of the document, shown at
// its size on paper (15 twips to the pixel). `png` are the picture's file bytes when it came from a file; they are
// kept so that saving writes them unchanged.
void insertPicture(QTextCursor& cursor, const QImage& image, int goalWidthTwips = 0, int goalHeightTwips = 0,
                   const std::string& png = {});

// The rich-text model and the toolkit's text document, both ways: paragraphs and alignment, font, size, bold,
// italic, underline, strikethrough, colour, and pictures. Text without a font of its own is in the document's
// default font, which heads the font table.
void toTextDocument(const rtf::Document& document, QTextDocument& target);
rtf::Document fromTextDocument(const QTextDocument& source);

} // namespace zw
