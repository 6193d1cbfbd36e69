#include "core/FormElement.h"

#include <array>

namespace zw {
namespace {

constexpr std::array<std::string_view, kFormElementCount> kNames = {
    "Label1",  "Label2",  "Label3",  "Label4",  "Label5",        "Label6",  "Label7",          "Label8",
    "Label9",  "Label10", "Label11", "Label12", "Label13",       "Label14", "Label15",         "Label16",
    "Label18", "Label29", "Label30", "Text1",   "Text2",         "Text3",   "Text4",           "Text5",
    "Text6",   "Text7",   "Text8",   "Text9",   "Text10",        "Text11",  "Text12",          "Text13",
    "Text14",  "RTFBox",  "steuernummer2", "para19", "betrag_duplikat", "Datum2", "einbe",      "ausbe",
    "Image3",  "Image6",  "Image7",  "Command1", "autoge",       "List1"};

} // namespace

std::string_view elementName(FormElement element) { return kNames[indexOf(element)]; }

} // namespace zw
