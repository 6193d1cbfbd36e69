#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "core/FormElement.h"

namespace zw {

// One entry of the receipt type menus: what the menu shows, what goes into Label1, at which size.
struct ReceiptType
{
    std::string_view menuCaption;
    std::string_view title;
    int pointSize;
};

enum class ReceiptTypeMenu { beleg1, beleg2, beleg3 };

inline constexpr int kTitlePointSize = 18;
inline constexpr std::string_view kDefaultReceiptType = "Quittung";
// Index of "Eigene Belegart..." in the beleg1 menu; index 8 there is a separator.
inline constexpr int kOwnTypeIndex = 9;
inline constexpr int kSeparatorIndex = 8;

std::span<const ReceiptType> receiptTypes(ReceiptTypeMenu menu);
// The entry behind an index, nullopt for the separator, the own type and unknown indices.
std::optional<ReceiptType> receiptType(ReceiptTypeMenu menu, int index);

inline constexpr int kLabelSetSize = 15;

// The fifteen captions that the label sets replace, in the order of the keys Felder/Bezeichnung1..15.
inline constexpr std::array<FormElement, kLabelSetSize> kLabelSetElements = {
    FormElement::Label2,  FormElement::Label18, FormElement::Label3,  FormElement::Label12, FormElement::Label14,
    FormElement::Label15, FormElement::Label4,  FormElement::Label5,  FormElement::Label6,  FormElement::Label7,
    FormElement::Label8,  FormElement::Label9,  FormElement::Label10, FormElement::Label11, FormElement::Label29};

enum class LabelLanguage { FormDefault, German, English };

const std::array<std::string_view, kLabelSetSize>& labelSet(LabelLanguage language);

} // namespace zw
