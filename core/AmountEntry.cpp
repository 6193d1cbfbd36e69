#include "core/AmountEntry.h"

#include <cstdint>
#include <utility>

#include "core/AmountWords.h"
#include "core/FormHost.h"
#include "core/GermanNumbers.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"

namespace zw {
namespace {

using E = FormElement;

constexpr std::string_view kAmountPattern = "0.00";
constexpr double kLargestRoundedWordsValue = 2147483647.0;

enum class GrossReformat
{
    Yes,
    No
};

bool automaticCalculationOn(const ReceiptForm& form)
{
    if (form.settings() == nullptr)
        return true;
    const std::string value = form.settings()->get(kApplicationName, "Options", "Berechnung", "");
    // Only a stored zero turns it off; an absent, empty or unreadable value counts as on.
    return value.empty() || !isNumeric(value) || parseAmount(value) != 0.0;
}

void formatField(ReceiptForm& form, FormElement element)
{
    form.setText(element, formatPatternText(form.text(element), kAmountPattern));
}

// Steps 1 to 5 of RETURN in Text12, and step 6 when asked. Throws at the first fault.
void computeFromGross(ReceiptForm& form, GrossReformat reformat)
{
    const double factor = checkedSum(1.0, checkedQuotient(parseAmount(form.text(E::Text3)), 100.0));
    const double net = checkedQuotient(parseAmount(form.text(E::Text12)), factor);
    form.setText(E::Text10, formatPattern(net, kAmountPattern));
    // The share field is reformatted as it stands before it gets its value; that changes nothing but is kept.
    formatField(form, E::Text11);
    // Gross minus the rounded net, so that the three printed amounts add up.
    const double share =
        checkedDifference(parseAmount(form.text(E::Text12)), parseAmount(form.text(E::Text10)));
    form.setText(E::Text11, formatNumber(share));
    formatField(form, E::Text11);
    if (reformat == GrossReformat::Yes)
        formatField(form, E::Text12);
}

// Steps 1 to 5 of RETURN in Text10. Throws at the first fault.
void computeFromNet(ReceiptForm& form)
{
    const double vat = checkedQuotient(
        checkedProduct(parseAmount(form.text(E::Text3)), parseAmount(form.text(E::Text10))), 100.0);
    form.setText(E::Text11, formatPattern(vat, kAmountPattern));
    // The rounded share is added, not the exact one.
    const double gross = checkedSum(parseAmount(form.text(E::Text10)), parseAmount(form.text(E::Text11)));
    form.setText(E::Text12, formatPattern(gross, kAmountPattern));
    formatField(form, E::Text10);
}

void wordsBySwitch(ReceiptForm& form)
{
    if (form.betragCheck() == 1)
        wordsByRounding(form);
    else
        wordsByTruncation(form);
}

void showNoRate(ReceiptForm& form)
{
    if (form.host() == nullptr)
        return;
    form.host()->showMessage(kNoRateText, MessageStyle::Error, kNoRateTitle);
    form.host()->openWindow("optionen");
}

// Collects what the form would show, for the command line.
class CollectingHost : public FormHost
{
public:
    void showMessage(std::string_view text, MessageStyle /*style*/, std::string_view /*title*/) override
    {
        if (!message)
            message = std::string(text);
    }
    int confirmQuestion(std::string_view /*text*/, MessageStyle /*style*/,
                        std::string_view /*title*/) override
    {
        return kAnswerCancel;
    }
    std::optional<std::string> askText(std::string_view /*text*/, MessageStyle /*style*/,
                                       std::string_view /*title*/, std::string_view /*initial*/) override
    {
        return std::nullopt;
    }
    void showNotice(Notice /*notice*/) override {}
    void beep() override {}
    void openWindow(std::string_view /*name*/) override {}

    std::optional<std::string> message;
};

EntryOutcome outcomeOf(const ReceiptForm& form, CollectingHost& host)
{
    return {{form.text(E::Text10), form.text(E::Text11), form.text(E::Text12), form.text(E::Text4)},
            std::move(host.message)};
}

} // namespace

int keyPress(ReceiptForm& form, FormElement element, int keyCode)
{
    if (element != E::Text12 && element != E::Text10 && element != E::Text9)
        return keyCode;
    // "," "-" "." "/" and the digits; the date field shares the rule, hence "-" and "/".
    if ((keyCode >= 44 && keyCode <= 57) || keyCode == kKeyBackspace)
        return keyCode;
    if (keyCode == kKeyReturn) {
        if (element == E::Text12)
            returnInGross(form);
        else if (element == E::Text10)
            returnInNet(form);
        else
            dateReturn(form);
        return keyCode;
    }
    if (form.host() != nullptr) {
        form.host()->beep();
        form.host()->showMessage(kWrongKeyText, MessageStyle::Warning, kWrongKeyTitle);
    }
    return 0;
}

void returnInGross(ReceiptForm& form)
{
    if (form.text(E::Text12).empty())
        return;
    try {
        computeFromGross(form, GrossReformat::Yes);
        wordsBySwitch(form);
    } catch (const RunError&) {
        showNoRate(form);
    }
}

void returnInNet(ReceiptForm& form)
{
    if (form.text(E::Text10).empty())
        return;
    try {
        computeFromNet(form);
        // Entering the net always cuts the cents in the words, whatever betrag_check shows.
        wordsByTruncation(form);
    } catch (const RunError&) {
        showNoRate(form);
    }
}

void rechnen1(ReceiptForm& form)
{
    computeFromGross(form, GrossReformat::Yes);
    wordsByRounding(form);
}

void rechnen2(ReceiptForm& form)
{
    computeFromNet(form);
    wordsByRounding(form);
}

void wordsByRounding(ReceiptForm& form)
{
    if (parseAmount(form.text(E::Text12)) < kLargestRoundedWordsValue) {
        const std::int32_t whole = roundHalfEven(parseAmount(form.text(E::Text12)));
        form.setText(E::Text4, getZahl_in_Worten(whole));
        return;
    }
    if (form.host() != nullptr)
        form.host()->beep();
    form.setText(E::Text4, std::string(kTooLargeForWords));
}

void wordsByTruncation(ReceiptForm& form)
{
    form.setText(E::betrag_duplikat, form.text(E::Text12));
    form.setText(E::betrag_duplikat, formatPatternText(form.text(E::betrag_duplikat), ""));
    // The scan stops at the decimal comma, so the cents fall away.
    const double whole = leadingNumber(form.text(E::betrag_duplikat));
    form.setText(E::Text4, BetragInWorten(whole));
}

void dateReturn(ReceiptForm& form)
{
    if (form.text(E::Text9) == kDateShorthand)
        form.setText(E::Text9, form.text(E::Datum2));
}

void grossChanged(ReceiptForm& form)
{
    if (!automaticCalculationOn(form) || form.text(E::Text12).empty())
        return;
    // While the user types, a half-entered number or a missing rate leaves the fields partly updated: the
    // amounts stop at the first fault, the words are tried all the same, and nothing is shown.
    try {
        computeFromGross(form, GrossReformat::No);
    } catch (const RunError&) {
    }
    try {
        wordsBySwitch(form);
    } catch (const RunError&) {
    }
}

EntryOutcome grossEntry(std::string_view text12, std::string_view text3, WordsRule words, Settings* settings)
{
    CollectingHost host;
    ReceiptForm form;
    form.attach(settings, &host);
    form.setBetragCheck(words == WordsRule::Rounding ? 1 : 0);
    form.setText(E::Text3, std::string(text3));
    form.setText(E::Text12, std::string(text12));
    returnInGross(form);
    return outcomeOf(form, host);
}

EntryOutcome netEntry(std::string_view text10, std::string_view text3, Settings* settings)
{
    CollectingHost host;
    ReceiptForm form;
    form.attach(settings, &host);
    form.setText(E::Text3, std::string(text3));
    form.setText(E::Text10, std::string(text10));
    returnInNet(form);
    return outcomeOf(form, host);
}

std::string amountWords(std::string_view text12, WordsRule words)
{
    CollectingHost host;
    ReceiptForm form;
    form.attach(nullptr, &host);
    form.setText(E::Text12, std::string(text12));
    if (words == WordsRule::Rounding)
        wordsByRounding(form);
    else
        wordsByTruncation(form);
    return form.text(E::Text4);
}

} // namespace zw
