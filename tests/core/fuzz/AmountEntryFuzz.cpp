// Feeds arbitrary text to the rate, gross and net fields and to the number rules; any crash, sanitizer report
// or escaped exception is a finding.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/AmountEntry.h"
#include "core/GermanNumbers.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "tests/core/FakeHost.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The first byte picks the switch and the field, the rest up to a tab is the rate, after it the amount.
    if (size == 0)
        return 0;
    const std::string_view input(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::size_t tab = input.find('\t');
    const std::string_view rate =
        tab == std::string_view::npos ? std::string_view("19") : input.substr(0, tab);
    const std::string_view amount = tab == std::string_view::npos ? input : input.substr(tab + 1);

    zw::test::FakeHost host;
    zw::ReceiptForm form;
    form.attach(nullptr, &host);
    form.setBetragCheck(data[0] & 1);
    form.setText(zw::FormElement::Text3, std::string(rate));
    for (std::size_t i = 1; i <= amount.size(); ++i)
        form.setText(zw::FormElement::Text12, std::string(amount.substr(0, i)));
    zw::keyPress(form, zw::FormElement::Text12, zw::kKeyReturn);
    form.setText(zw::FormElement::Text10, std::string(amount));
    zw::keyPress(form, zw::FormElement::Text10, zw::kKeyReturn);
    zw::keyPress(form, (data[0] & 2) ? zw::FormElement::Text10 : zw::FormElement::Text12, data[0]);

    // The entry paths above read, round and spell the amount; these patterns they do not use.
    try {
        const double value = zw::parseAmount(amount);
        (void)zw::formatPattern(value, "#,##0.00 KB/s");
        (void)zw::formatPattern(value, "0.0%");
    } catch (const zw::RunError&) {
    }
    (void)zw::formatPatternText(amount, "#####.##");
    return 0;
}
