#include "print/FormFonts.h"

#include "core/ReceiptForm.h"

namespace zw {

QFont formFont(const ReceiptForm& form, FormElement element)
{
    QFont font(QString::fromStdString(form.fontFamily(element)));
    int size = 9;
    if (element == FormElement::Label1)
        size = form.pointSize(FormElement::Label1);
    else if (element == FormElement::Label29 || element == FormElement::Label18)
        size = 7;
    font.setPointSize(size);
    font.setBold(element == FormElement::Label1);
    return font;
}

void installFontSubstitutes()
{
    QFont::insertSubstitution("Arial", "Liberation Sans");
    QFont::insertSubstitution("Courier New", "Liberation Mono");
    QFont::insertSubstitution("Verdana", "DejaVu Sans");
}

} // namespace zw
