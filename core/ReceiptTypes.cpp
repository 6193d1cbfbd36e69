#include "core/ReceiptTypes.h"

namespace zw {
namespace {

// "Heilbehandung" is the menu's own spelling; the title it sets is spelt right.
constexpr std::array<ReceiptType, 6> kHealth = {{
    {"Behandlungskosten", "Behandlungskosten", 18},
    {"Heilbehandung", "Heilbehandlung", 18},
    {"Praxisgebühr", "Praxisgebühr", 18},
    {"Praxisgebühr und Zuzahlungen", "Praxisgebühr und Zuzahlungen", 12},
    {"Therapiekosten", "Therapiekosten", 18},
    {"Zuzahlungen", "Zuzahlungen", 18},
}};

constexpr std::array<ReceiptType, 6> kSchool = {{
    {"Klassenfahrt", "Klassenfahrt", 18},
    {"Kopiergeld", "Kopiergeld", 18},
    {"Kursfahrt", "Kursfahrt", 18},
    {"Materialbestellung", "Materialbestellung", 18},
    {"Schulbücher", "Schulbücher", 18},
    {"Semestergebühr", "Semestergebühr", 18},
}};

constexpr std::array<ReceiptType, 8> kGeneral = {{
    {"Ausgabebeleg", "Ausgabebeleg", 18},
    {"Ausgaben", "Ausgaben", 18},
    {"Barverkauf", "Barverkauf", 18},
    {"Einnahmebeleg", "Einnahmebeleg", 18},
    {"Einnahmen", "Einnahmen", 18},
    {"Fahrtkosten", "Fahrtkosten", 18},
    {"Rechnung", "Rechnung", 18},
    {"Quittung", "Quittung", 18},
}};

constexpr std::array<std::string_view, kLabelSetSize> kFormDefault = {
    "Aussteller", "Nummer:", "Währung", "Netto", "% MwSt.", "Gesamtbetrag", "Gesamtbetrag in Worten", "von", "für",
    "richtig erhalten zu haben, bestätigt", "Ort", "Datum", "Buchungsvermerke", "Stempel/Unterschrift des Empfängers",
    "Steuernummer:"};

// The German set drops the colon that the form's own tax number caption has.
constexpr std::array<std::string_view, kLabelSetSize> kGerman = {
    "Aussteller", "Nummer:", "Währung", "Netto", "% MwSt.", "Gesamtbetrag", "Gesamtbetrag in Worten", "von", "für",
    "richtig erhalten zu haben, bestätigt", "Ort", "Datum", "Buchungsvermerke", "Stempel/Unterschrift des Empfängers",
    "Steuernummer"};

// The English words are the program's own and stay as they are.
constexpr std::array<std::string_view, kLabelSetSize> kEnglish = {
    "Exhibitor", "Number:", "Currency", "Net", "% VAT", "Total", "Total in words", "from", "for",
    "correct to reseive", "Place", "Date", "Booking notes", "Stamp/signature from listener", "Tax number"};

} // namespace

std::span<const ReceiptType> receiptTypes(ReceiptTypeMenu menu)
{
    switch (menu) {
    case ReceiptTypeMenu::beleg1:
        return kGeneral;
    case ReceiptTypeMenu::beleg2:
        return kHealth;
    case ReceiptTypeMenu::beleg3:
        return kSchool;
    }
    return {};
}

std::optional<ReceiptType> receiptType(ReceiptTypeMenu menu, int index)
{
    auto types = receiptTypes(menu);
    if (index < 0 || static_cast<std::size_t>(index) >= types.size())
        return std::nullopt;
    return types[static_cast<std::size_t>(index)];
}

const std::array<std::string_view, kLabelSetSize>& labelSet(LabelLanguage language)
{
    switch (language) {
    case LabelLanguage::German:
        return kGerman;
    case LabelLanguage::English:
        return kEnglish;
    case LabelLanguage::FormDefault:
        break;
    }
    return kFormDefault;
}

} // namespace zw
