#include "ledger/Currency.h"

#include "app/TextFile.h"
#include "core/CodePage.h"
#include "core/FormHost.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"

namespace zw {

CurrencyChoice::CurrencyChoice(ReceiptForm& form, Settings& settings, FormHost& host)
    : m_form(form), m_settings(settings), m_host(host)
{
}

std::string CurrencyChoice::storedCode() const
{
    return m_settings.get(kApplicationName, "Waehrung", "waehr.Text", "");
}

std::vector<std::string> CurrencyChoice::suggestions(const std::filesystem::path& waehrungDat)
{
    try {
        std::vector<std::string> codes;
        for (auto& line : readTextLines(waehrungDat)) {
            if (!line.empty())
                codes.push_back(std::move(line));
        }
        return codes;
    } catch (const RunError&) {
        return defaultCurrencySuggestions(); // a missing list still offers the common codes
    }
}

void CurrencyChoice::save(const std::string& waehr)
{
    m_settings.save(kApplicationName, "Waehrung", "waehr.Text", waehr);
    m_form.setText(FormElement::Text2, firstCharacters(waehr, 3));
    m_form.setChecked("eur", false);
    m_form.setChecked("waehrungfestlegen", true);
    m_host.showNotice(Notice::optionen1);
}

void CurrencyChoice::remove()
{
    m_form.setText(FormElement::Text2, "EUR");
    m_settings.removeSection(kApplicationName, "Waehrung"); // nothing to delete is no failure here
    m_host.showNotice(Notice::optionen1);
}

const std::vector<std::string>& defaultCurrencySuggestions()
{
    static const std::vector<std::string> kCodes = {"EUR", "USD", "CHF", "GBP", "JPY", "SEK", "NOK", "DKK",
                                                    "PLN", "CZK", "HUF", "CAD", "AUD", "CNY", "TRY", "RUB"};
    return kCodes;
}

} // namespace zw
