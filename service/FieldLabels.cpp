#include "service/FieldLabels.h"

#include <cmath>

#include "core/ReceiptForm.h"
#include "core/Settings.h"

namespace zw {

const std::array<const char*, kLabelSetSize> kFieldLabelHints = {
    "(Aussteller)", "(Nummer)", "(Währung)", "(Netto)", "(% MwSt.)", "(Gesamtbetrag)", "(Gesamtbetrag in Worten)",
    "(von)", "(für)", "(richtig erhalten zu haben..)", "(Ort)", "(Datum)", "(Buchungsvermerke)",
    "(Stempel/Unterschrift...)", "(Steuernummer)"};

FieldLabelTexts currentFieldLabels(const ReceiptForm& form)
{
    FieldLabelTexts texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = form.text(kLabelSetElements[i]);
    return texts;
}

FieldLabelTexts resetFieldLabels()
{
    FieldLabelTexts texts;
    const auto& german = labelSet(LabelLanguage::German);
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = german[i];
    return texts;
}

void saveFieldLabels(Settings& settings, ReceiptForm& form, const FieldLabelTexts& texts,
                     const std::function<void(int value)>& step)
{
    int bar = 0;
    const auto advance = [&] {
        bar = static_cast<int>(std::lround(bar + 3.33));
        if (step)
            step(bar);
    };
    for (std::size_t i = 0; i < texts.size(); ++i) {
        advance();
        settings.save(kApplicationName, "Felder", "Bezeichnung" + std::to_string(i + 1), texts[i]);
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        advance();
        form.setText(kLabelSetElements[i], texts[i]);
    }
}

} // namespace zw
