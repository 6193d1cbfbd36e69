#pragma once

#include <QFont>

#include "core/FormElement.h"
#include "print/ReceiptLayout.h"

namespace zw {

class ReceiptForm;

// The font an element of the receipt area is drawn in: the screen and the photograph take it from here.
QFont formFont(const ReceiptForm& form, FormElement element);

// The font drawn smaller by scale (below 1), for a caption too long for its room.
QFont scaledFont(QFont font, double scale);

// Where a one-line field puts its text: the screen and the photograph take it from here.
Qt::Alignment alignmentOf(Align align);

// The form is laid out for Arial and Courier New; their metric twins keep every text at its width.
void installFontSubstitutes();

} // namespace zw
