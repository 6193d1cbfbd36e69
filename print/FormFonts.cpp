#include "print/FormFonts.h"

#include <algorithm>

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

Qt::Alignment alignmentOf(Align align)
{
    switch (align) {
    case Align::Centre:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case Align::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case Align::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

void installFontSubstitutes()
{
    QFont::insertSubstitution("Arial", "Liberation Sans");
    QFont::insertSubstitution("Courier New", "Liberation Mono");
    QFont::insertSubstitution("Verdana", "DejaVu Sans");
}

QFont scaledFont(QFont font, double scale)
{
    if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * scale)));
    else
        font.setPointSizeF(std::max(1.0, font.pointSizeF() * scale));
    return font;
}

} // namespace zw
