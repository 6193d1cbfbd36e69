#include "ledger/Currency.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/ReceiptForm.h"
#include "tests/core/FakeHost.h"
#include "tests/app/ProgramFolder.h"

namespace zw {
namespace {

using F = FormElement;

class CurrencyTest : public ::testing::Test, protected test::FakeFormParts
{
protected:
    CurrencyChoice choice{form, settings, host};
};

TEST_F(CurrencyTest, SavingACodeStoresItTicksTheMenuAndLeavesAmounts)
{
    form.setText(F::Text12, "119,00");
    choice.save("CHF");
    EXPECT_TRUE(form.isChecked("waehrungfestlegen"));
    EXPECT_FALSE(form.isChecked("eur"));
    EXPECT_EQ(form.text(F::Text12), "119,00");
    EXPECT_THAT(host.notices, ::testing::ElementsAre(Notice::optionen1));

    // A long code is stored whole, but the field takes three characters.
    choice.save("€uro");
    EXPECT_EQ(settings.option("Waehrung", "waehr.Text"), "€uro");
    EXPECT_EQ(form.text(F::Text2), "€ur");
}

TEST_F(CurrencyTest, DeletingRemovesTheWholeSection)
{
    choice.save("CHF");
    settings.set("Waehrung", "anderer", "x");
    choice.remove();
    EXPECT_EQ(form.text(F::Text2), "EUR");
    for (const auto& [key, value] : settings.values)
        EXPECT_NE(std::get<1>(key), "Waehrung");
    choice.remove(); // nothing left to delete is no failure
}

TEST_F(CurrencyTest, SuggestionsComeFromTheDataFileOrTheBuiltInList)
{
    test::ProgramFolder home;
    home.writeBytes("waehrung.dat", "EUR\r\nUSD\r\n\r\nCHF\r\n");
    EXPECT_THAT(CurrencyChoice::suggestions(home.paths.dataFile("waehrung.dat")),
                ::testing::ElementsAre("EUR", "USD", "CHF"));
    const auto builtIn = CurrencyChoice::suggestions(home.paths.dataFile("fehlt.dat"));
    EXPECT_THAT(builtIn, ::testing::Contains("EUR"));
    EXPECT_THAT(builtIn, ::testing::Contains("USD"));
}

} // namespace
} // namespace zw
