#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zw {

class FormHost;
class ReceiptForm;
class Settings;

// The window waehrung1 as logic: the field waehr, its suggestion list and the three buttons.
class CurrencyChoice
{
public:
    CurrencyChoice(ReceiptForm& form, Settings& settings, FormHost& host);

    // Opening: the stored code (empty when none) and the suggestions of daten/waehrung.dat.
    std::string storedCode() const;
    static std::vector<std::string> suggestions(const std::filesystem::path& waehrungDat);

    // `Command4` "&Speichern": stores the text as it is; Text2 takes at most its first three characters.
    void save(const std::string& waehr);
    // `Button2` "&Währung löschen": back to "EUR" and the whole section Waehrung deleted.
    void remove();

private:
    ReceiptForm& m_form;
    Settings& m_settings;
    FormHost& m_host;
};

// The suggestions written to a fresh data folder; "EUR" and "USD" lead.
const std::vector<std::string>& defaultCurrencySuggestions();

} // namespace zw
