#pragma once

#include <cstddef>
#include <string_view>

namespace zw {

// The form is measured in twips; a screen pixel is 15 of them (96 per inch).
inline constexpr int kTwipsPerPixel = 15;

// Every named thing on the receipt form: captions, typed fields, hidden working fields and pictures.
// A label's text is its caption; a field's text is its value.
enum class FormElement : unsigned char {
    Label1, Label2, Label3, Label4, Label5, Label6, Label7, Label8, Label9, Label10, Label11, Label12,
    Label13, Label14, Label15, Label16, Label18, Label29, Label30,
    Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text11, Text12, Text13, Text14,
    RTFBox, steuernummer2, para19,
    betrag_duplikat, Datum2, einbe, ausbe,
    Image3, Image6, Image7, Command1, autoge, List1,
    Count
};

inline constexpr std::size_t kFormElementCount = static_cast<std::size_t>(FormElement::Count);

constexpr std::size_t indexOf(FormElement element) { return static_cast<std::size_t>(element); }

// The internal name of an element ("Text12"), used by files, the command line and diagnostics.
std::string_view elementName(FormElement element);

} // namespace zw
