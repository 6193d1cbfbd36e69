#pragma once

#include <QFont>

#include "core/FormElement.h"

namespace zw {

class ReceiptForm;

// The font an element of the receipt area is drawn in: the screen and the photograph take it from here.
QFont formFont(const ReceiptForm& form, FormElement element);

// The form is laid out for Arial and Courier New; their metric twins keep every text at its width.
void installFontSubstitutes();

} // namespace zw
