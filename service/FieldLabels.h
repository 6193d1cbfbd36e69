#pragma once

#include <array>
#include <functional>
#include <string>

#include "core/ReceiptTypes.h"

namespace zw {

class ReceiptForm;
class Settings;

// The hint beside each of the fifteen fields of the label editor, in the order of the keys Bezeichnung1..15.
extern const std::array<const char*, kLabelSetSize> kFieldLabelHints;

using FieldLabelTexts = std::array<std::string, kLabelSetSize>;

// The labels the editor opens with: the main window's fifteen captions.
FieldLabelTexts currentFieldLabels(const ReceiptForm& form);
// What Reset writes into the fields: the German set.
FieldLabelTexts resetFieldLabels();

// Save: each text under Felder/Bezeichnung<n>, then each label of the form, thirty steps in all. `step` gets the
// bar after each: the value read back as a whole number plus 3.33, rounded, so it moves by 3 and ends at 90.
void saveFieldLabels(Settings& settings, ReceiptForm& form, const FieldLabelTexts& texts,
                     const std::function<void(int value)>& step);

} // namespace zw
